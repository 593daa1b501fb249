# Collections as files, and requests by address.
wrapio_layer(wrapio_exchange
  FOLDER Services
  SOURCES ArchiveTool.cpp CollectionExport.cpp CollectionExportError.cpp CollectionExportService.cpp
          CollectionImport.cpp CollectionManifest.cpp CollectionRecords.cpp ScratchDirectory.cpp URLRequestRouter.cpp
          WrapioURLBridge.cpp
  PUBLIC wrapio_services)
