# Pictures of the apps' windows.
wrapio_layer(wrapio_previews
  FOLDER Services
  SOURCES WindowCaptureService.cpp
  PUBLIC wrapio_services)
