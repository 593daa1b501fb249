# Keys, the place of status items, and motion. A library of its own, so that nothing else pays for what it links.
pkg_check_modules(XCB_KEYS REQUIRED IMPORTED_TARGET xcb xcb-xinput)

wrapio_layer(wrapio_platform_linux_interaction
  FOLDER Platform/Linux
  SOURCES LinuxModifierKeys.cpp LinuxMotion.cpp LinuxMotion.h LinuxStatusHosts.cpp LinuxStatusHosts.h X11KeyEvents.cpp
  PUBLIC wrapio_platform_linux Qt6::DBus
  PRIVATE PkgConfig::XCB_KEYS)
set_target_properties(wrapio_platform_linux_interaction PROPERTIES AUTOMOC ON)
