# Pictures of windows. A library of its own, so that nothing else pays for what it links.
pkg_check_modules(XCB_CAPTURE REQUIRED IMPORTED_TARGET xcb xcb-composite xcb-shm)

wrapio_layer(wrapio_platform_linux_capture
  FOLDER Platform/Linux
  SOURCES LinuxScreenCapture.cpp RunnerSnapshot.cpp SnapshotReply.cpp X11CaptureSession.cpp X11Pixels.cpp
          X11ScreenCapture.cpp
  PUBLIC wrapio_platform_linux
  PRIVATE PkgConfig::XCB_CAPTURE)
