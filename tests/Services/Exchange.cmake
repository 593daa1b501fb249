wrapio_test(URLRequestTest
  SOURCES URLRequestRouterTest.cpp WrapioURLBridgeTest.cpp
  LIBRARIES wrapio_fakes wrapio_exchange)
wrapio_test(CollectionTest
  SOURCES CollectionExportTest.cpp CollectionImportTest.cpp CollectionRecordsTest.cpp
  LIBRARIES wrapio_fakes wrapio_exchange wrapio_platform_linux)
wrapio_test(ArchiveExchangeTest
  SOURCES ArchiveExchangeTest.cpp
  LIBRARIES wrapio_fakes wrapio_exchange wrapio_platform_linux wrapio_platform_linux_tools wrapio_platform_darwin)
target_compile_definitions(ArchiveExchangeTest PRIVATE WRAPIO_TEST_FIXTURES="${PROJECT_SOURCE_DIR}/tests/Fixtures")
