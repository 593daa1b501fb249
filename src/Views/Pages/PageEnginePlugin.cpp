// The library of pages: the one file that is linked to the engine.
#include "Views/Pages/PageEngine.h"

#include <QObject>
#include <QtWebEngineQuick/qtwebenginequickglobal.h>

namespace wrapio {

class PageEnginePlugin final : public QObject, public PageEngine {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.wrapio.PageEngine/1")
    Q_INTERFACES(wrapio::PageEngine)

public:
    void prepare() override { QtWebEngineQuick::initialize(); }
};

}  // namespace wrapio

#include "PageEnginePlugin.moc"
