# One manager, and how other processes reach it.
wrapio_layer(wrapio_session
  FOLDER Session
  SOURCES CommandClient.cpp CommandServer.cpp Manager.cpp ManagerClaim.cpp RemoteConsole.cpp SessionMessage.cpp
  PUBLIC wrapio_command_line)
