# The services of a Linux desktop: files, processes, time, network.
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)

wrapio_layer(wrapio_platform_linux
  FOLDER Platform/Linux
  SOURCES ApplicationActivator.cpp ChildReaper.cpp EndSignals.cpp FileCatalogueLock.cpp FileDefaults.cpp
          HttpTransfer.cpp LinuxDirectories.cpp LinuxFileSystem.cpp LinuxResources.cpp LinuxSystemHealth.cpp
          LinuxWorkspace.cpp LocalSocket.cpp Machine.cpp PrivateFolder.cpp ProcessList.cpp ProcessStart.cpp QtHttpClient.cpp
          QtScheduler.cpp SessionBus.cpp SessionBusApplication.cpp TemporaryFile.cpp TreeCopy.cpp TreeRemoval.cpp
          X11Windows.cpp
  PUBLIC wrapio_platform_linux_files Qt6::Network
  PRIVATE Qt6::DBus PkgConfig::XCB)
