// Export and import of the whole collection, as the dashboard starts them.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/AnyError.h"
#include "Platform/Scheduler.h"
#include "Services/AppLifecycleManager.h"
#include "Services/FaviconService.h"
#include "ViewModels/Progress.h"

#include <tl/expected.hpp>

#include <functional>
#include <optional>
#include <vector>

namespace wrapio {

/// Main thread. Every operation shows its own dialog, returns at once and works in small steps, one app per turn of the
/// event loop at most, so that the window stays responsive. Its callbacks come in later turns; `completion` comes once.
/// When the answered task goes away before that, the operation stops between two steps, the catalogue stays consistent,
/// and no callback comes any more.
class CollectionExchange {
public:
    using ExportCompletion = std::function<void(tl::expected<std::optional<QString>, AnyError>)>;
    using ImportCompletion = std::function<void(tl::expected<int, AnyError>)>;
    using ProgressObserver = std::function<void(const Progress&)>;

    CollectionExchange() = default;
    virtual ~CollectionExchange() = default;
    CollectionExchange(const CollectionExchange&) = delete;
    CollectionExchange& operator=(const CollectionExchange&) = delete;

    /// Writes `configurations` and their icons into an archive. Answers its path, or nothing when cancelled.
    [[nodiscard]] virtual ScheduledTask exportAll(const std::vector<AppConfiguration>& configurations,
                                                  FaviconService& faviconService, ProgressObserver progress,
                                                  ExportCompletion completion) = 0;
    /// Adds the apps of an archive to `store` and makes their bundles. Answers how many; 0 when cancelled.
    [[nodiscard]] virtual ScheduledTask importCollection(ConfigurationManager& store, FaviconService& faviconService,
                                                         AppLifecycleManager& appLifecycleManager,
                                                         ProgressObserver progress, ImportCompletion completion) = 0;
};

}  // namespace wrapio
