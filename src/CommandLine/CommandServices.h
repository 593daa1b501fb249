// What commands work with.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/CatalogueLock.h"
#include "Platform/FileSystem.h"
#include "Platform/Resources.h"
#include "Platform/Scheduler.h"
#include "Platform/ScreenCapture.h"
#include "Platform/Workspace.h"
#include "Services/AppLifecycleManager.h"
#include "Services/CollectionExportService.h"
#include "Services/Doctor.h"
#include "Services/FaviconService.h"
#include "Services/PreviewCacheManager.h"
#include "Services/VersionManager.h"

#include <functional>

#include <tl/expected.hpp>

namespace wrapio {

/// The catalogue and what stands on it.
struct Catalogue {
    ConfigurationManager& store;
    AppLifecycleManager& lifecycle;
    Doctor& doctor;
};

/// Opens the catalogue when a command first needs it, so that nobody waits for a command that is still fetching.
class CatalogueProvider {
public:
    CatalogueProvider() = default;
    virtual ~CatalogueProvider() = default;
    CatalogueProvider(const CatalogueProvider&) = delete;
    CatalogueProvider& operator=(const CatalogueProvider&) = delete;

    /// The catalogue to be changed; waits while another process changes it.
    [[nodiscard]] virtual tl::expected<Catalogue, CatalogueBusy> openForChanges() = 0;
    /// The catalogue to be looked at. Nothing that is done to it reaches the disk while another process holds it.
    [[nodiscard]] virtual Catalogue openForReading() = 0;
};

/// What pictures of apps are made of.
struct PictureServices {
    ScreenCapture& screen;
    const PreviewCacheManager& previews;
};

/// All of it outlives the commands.
struct CommandServices {
    CatalogueProvider& catalogue;
    FaviconService& favicons;
    const VersionManager& versions;
    Workspace& workspace;
    FileSystem& files;
    const Resources& resources;
    Scheduler& scheduler;
    std::function<CollectionExportService&()> exchange;  ///< made when it is first needed
    std::function<PictureServices()> pictures = {};      ///< made when it is first needed
    std::function<bool(const QUuid&)> showEditor = {};   ///< false, or absent, where there are no windows
};

}  // namespace wrapio
