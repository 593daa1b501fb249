#include "Views/Components/Components.h"

#include "Design/Design.h"

// Generated with the module. Naming it keeps it linked.
void qml_register_types_Wrapio_Components();

namespace wrapio {

void useComponents(QQmlEngine& engine) {
    [[maybe_unused]] static volatile auto registration = &qml_register_types_Wrapio_Components;
    useDesign(engine);
}

}  // namespace wrapio
