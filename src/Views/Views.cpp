#include "Views/Views.h"

#include "Views/Components/Components.h"
#include "Views/IconProviders.h"

#include <QQmlEngine>

// Generated with the module. Naming it keeps it linked.
void qml_register_types_Wrapio_Views();

namespace wrapio {

using namespace Qt::StringLiterals;

void useViews(QQmlEngine& engine, FaviconService& favicons, const Resources& resources) {
    [[maybe_unused]] static volatile auto registration = &qml_register_types_Wrapio_Views;
    useComponents(engine);
    engine.addImageProvider(u"appicon"_s, new AppIconProvider(favicons));
    engine.addImageProvider(u"template"_s, new TemplateImageProvider(resources));
}

}  // namespace wrapio
