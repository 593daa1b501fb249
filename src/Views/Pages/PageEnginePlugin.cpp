#include "Views/Pages/PageEnginePlugin.h"

#include <QtWebEngineQuick/qtwebenginequickglobal.h>

namespace wrapio {

void PageEnginePlugin::prepare() {
    QtWebEngineQuick::initialize();
}

}  // namespace wrapio
