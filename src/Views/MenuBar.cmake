# The menu of the status item and the preview panel: what they hold and do, drawn by nobody.
wrapio_layer(wrapio_menu_bar
  FOLDER Views
  SOURCES MenuBarController.cpp MenuBarItems.cpp PreviewWindowController.cpp
  PUBLIC wrapio_previews)
