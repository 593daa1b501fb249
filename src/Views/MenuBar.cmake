# The menu of the status item and the preview panel: what they hold and do, drawn by nobody.
wrapio_layer(wrapio_menu_bar
  FOLDER Views
  SOURCES MenuBarController.cpp MenuBarItems.cpp PreviewWindowController.cpp
  PUBLIC wrapio_previews)

# The same, drawn by widgets. A library of its own, so that nothing else pays for them.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)
wrapio_layer(wrapio_menu_bar_widgets
  FOLDER Views/Widgets
  SOURCES MenuStyle.cpp MenuStyle.h PopupMenu.cpp PopupMenu.h PreviewButton.cpp PreviewButton.h PreviewContentDrawing.cpp
          PreviewContentView.cpp PreviewContentView.h PreviewPanelWidget.cpp PreviewPanelWidget.h QtThisApplication.cpp
          Symbols.cpp TintedIcon.cpp TrayStatusItem.cpp TrayStatusItem.h WidgetMenu.cpp WidgetMenu.h
  PUBLIC wrapio_menu_bar Qt6::Widgets)
set_target_properties(wrapio_menu_bar_widgets PROPERTIES AUTOMOC ON)
