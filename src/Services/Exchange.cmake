# Collections as files, and requests by address.
wrapio_layer(wrapio_exchange
  FOLDER Services
  SOURCES URLRequestRouter.cpp WrapioURLBridge.cpp
  PUBLIC wrapio_services)
