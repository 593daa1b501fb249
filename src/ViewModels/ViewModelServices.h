// What the view models work with.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/Directories.h"
#include "Platform/FileDialogs.h"
#include "Platform/FileSystem.h"
#include "Platform/Resources.h"
#include "Platform/Scheduler.h"
#include "Platform/Workspace.h"
#include "Services/AppLifecycleManager.h"
#include "Services/FaviconService.h"
#include "Services/LaunchServicesManager.h"
#include "Services/VersionManager.h"
#include "ViewModels/CollectionExchange.h"

namespace wrapio {

/// Built by the composition root. Everything here outlives the view models.
struct ViewModelServices {
    ConfigurationManager& configManager;
    AppLifecycleManager& appLifecycleManager;
    FaviconService& faviconService;
    const VersionManager& versionManager;
    LaunchServicesManager& launchServices;
    CollectionExchange& collectionExchange;
    FileDialogs& fileDialogs;
    FileSystem& files;
    Workspace& workspace;
    const Resources& resources;
    Scheduler& scheduler;
    Directories directories;
};

}  // namespace wrapio
