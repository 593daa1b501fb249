#include "Design/Design.h"

#include "Design/ShadowImageProvider.h"
#include "Design/SymbolImageProvider.h"

#include <QQmlEngine>

// Generated with the modules. Naming them keeps them linked.
void qml_register_types_Wrapio_Design();
void qml_register_types_Wrapio_Design_Core();

namespace wrapio {

using namespace Qt::StringLiterals;

void useDesign(QQmlEngine& engine) {
    [[maybe_unused]] static volatile auto registration = &qml_register_types_Wrapio_Design;
    [[maybe_unused]] static volatile auto coreRegistration = &qml_register_types_Wrapio_Design_Core;
    engine.addImageProvider(u"symbol"_s, new SymbolImageProvider);
    engine.addImageProvider(u"shadow"_s, new ShadowImageProvider);
}

}  // namespace wrapio
