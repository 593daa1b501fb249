#include "Views/Pages/Pages.h"

#include "Views/Components/Components.h"

// Generated with the module. Naming it keeps it linked.
void qml_register_types_Wrapio_Pages();

namespace wrapio {

void usePages(QQmlEngine& engine) {
    [[maybe_unused]] static volatile auto registration = &qml_register_types_Wrapio_Pages;
    useComponents(engine);
}

}  // namespace wrapio
