#include "Views/Pages/PageEngine.h"

#include "Platform/Diagnostics.h"

#include <QPluginLoader>

namespace wrapio {

using namespace Qt::StringLiterals;

bool loadPageEngine(const QString& folder) {
    static bool isReady = false;
    if (isReady)
        return true;
    // Never unloaded: the engine's threads live as long as the process.
    QPluginLoader loader(folder + u"/libwrapio-pages.so"_s);
    auto* const engine = qobject_cast<PageEngine*>(loader.instance());
    if (!engine) {
        printDiagnostics(u"⚠️ [WebView] "_s + loader.errorString());
        return false;
    }
    engine->prepare();
    isReady = true;
    return true;
}

}  // namespace wrapio
