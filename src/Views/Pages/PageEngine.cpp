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
    const QString library = folder + u"/libwrapio-pages.so"_s;
    QPluginLoader loader(library);
    auto* const engine = qobject_cast<PageEngine*>(loader.instance());
    if (!engine) {
        printDiagnostics(u"⚠️ [WebView] "_s + library + u": "_s + loader.errorString());
        return false;
    }
    engine->prepare();
    isReady = true;
    return true;
}

}  // namespace wrapio
