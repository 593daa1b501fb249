# Dialogs. A library of its own, so that commands do not pay for widgets.
wrapio_layer(wrapio_dialogs
  FOLDER Views/Widgets
  SOURCES QtFileDialogs.cpp
  PUBLIC wrapio_platform
  PRIVATE Qt6::Widgets)
