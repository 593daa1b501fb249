wrapio_test(URLRequestTest
  SOURCES URLRequestRouterTest.cpp WrapioURLBridgeTest.cpp
  LIBRARIES wrapio_fakes wrapio_exchange)
wrapio_test(CollectionTest
  SOURCES CollectionExportTest.cpp CollectionImportTest.cpp CollectionRecordsTest.cpp
  LIBRARIES wrapio_fakes wrapio_exchange wrapio_platform_linux)
