wrapio_test(URLRequestTest
  SOURCES URLRequestRouterTest.cpp WrapioURLBridgeTest.cpp
  LIBRARIES wrapio_fakes wrapio_exchange)
