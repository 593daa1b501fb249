// Moves a whole collection of apps between machines or people, as one file.
#pragma once

#include "Platform/Directories.h"
#include "Platform/FileDialogs.h"
#include "Platform/Scheduler.h"
#include "Services/CollectionExport.h"
#include "Services/CollectionImport.h"
#include "Utilities/SharedInstance.h"

#include <tl/expected.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace wrapio {

/// Main thread. Whatever is passed by reference must outlive the operation. Operations with a completion return at once
/// and do one app per turn of the event loop; the completion comes once, unless this goes away before: then the
/// operation ends where it stands and its scratch files go.
class CollectionExportService : public SharedInstance<CollectionExportService> {
public:
    /// Called after every step with the number of apps that are done.
    using ExportProgressed = std::function<void(std::size_t done, std::size_t total)>;
    /// Where the archive is now, or nothing when the person cancelled.
    using ExportCompletion = std::function<void(tl::expected<std::optional<QString>, AnyError>)>;
    using ImportProgressed = std::function<void(const ImportProgress& progress)>;
    /// Whether the catalogue reached the disk, its `saveFailure()` tells.
    using ImportCompletion = std::function<void(tl::expected<ImportOutcome, AnyError>)>;

    /// Where an import puts its apps.
    struct Destination {
        ConfigurationManager& store;
        FaviconService& faviconService;
        AppLifecycleManager& appLifecycleManager;
    };

    CollectionExportService(ToolRunner& tools, FileSystem& files, Scheduler& scheduler, Directories directories);
    CollectionExportService(const CollectionExportService&) = delete;
    CollectionExportService& operator=(const CollectionExportService&) = delete;

    /// Makes the archive of `configurations`, asks where to save it and saves it there. Fails with a
    /// CollectionExportError, FileError or LaunchError.
    void exportAll(std::vector<AppConfiguration> configurations, FaviconService& faviconService, FileDialogs& dialogs,
                   const ExportProgressed& progressed, const ExportCompletion& completion);
    /// The same without asking: saves the archive at the absolute path `url`, over a file that is there.
    void exportToURL(const QString& url, std::vector<AppConfiguration> configurations, FaviconService& faviconService,
                     const ExportProgressed& progressed, const ExportCompletion& completion);
    /// The same without asking, done when it returns: saves the archive at the absolute path `url`, over a file that is
    /// there.
    [[nodiscard]] tl::expected<void, AnyError> exportTo(const QString& url,
                                                        std::vector<AppConfiguration> configurations,
                                                        FaviconService& faviconService,
                                                        const ExportProgressed& progressed);

    /// Asks for an archive and imports it; nothing is imported when the person cancels.
    void importCollection(const Destination& destination, FileDialogs& dialogs, const ImportProgressed& progressed,
                          const ImportCompletion& completion);
    /// Imports the archive at `url`. Fails with a CollectionExportError, DecodingError, FileError or LaunchError; the
    /// catalogue is as it was then. An app whose bundle cannot be made is imported all the same and told in the
    /// outcome.
    void importFromURL(const QString& url, const Destination& destination, const ImportProgressed& progressed,
                       const ImportCompletion& completion);
    /// The same, done when it returns.
    [[nodiscard]] tl::expected<ImportOutcome, AnyError>
    importAndWait(const QString& url, const Destination& destination, const ImportProgressed& progressed);

private:
    [[nodiscard]] std::shared_ptr<CollectionExport> startExport(std::vector<AppConfiguration> configurations,
                                                                FaviconService& faviconService);
    [[nodiscard]] std::shared_ptr<CollectionImport> startImport(const QString& url, const Destination& destination);
    /// Makes the archive in turns and hands it to `made`; a failure goes to `completion`.
    void makeInTurns(std::vector<AppConfiguration> configurations, FaviconService& faviconService,
                     const ExportProgressed& progressed, const ExportCompletion& completion,
                     const std::function<void(std::shared_ptr<CollectionExport>)>& made);
    void askWhereToSave(std::shared_ptr<CollectionExport> job, FileDialogs& dialogs,
                        const ExportCompletion& completion);
    /// Takes the job over, with how it ended.
    template <typename Job>
    using Finished = std::function<void(std::shared_ptr<Job>, const tl::expected<void, AnyError>&)>;
    template <typename Job>
    void runInTurns(std::shared_ptr<Job> job, const std::function<void(const Job&)>& progressed,
                    const Finished<Job>& finished);

    ToolRunner& m_tools;
    FileSystem& m_files;
    Scheduler& m_scheduler;
    Directories m_directories;
    std::weak_ptr<CollectionExport> m_export;                ///< the one that is under way
    std::set<std::shared_ptr<void>> m_jobs;                  ///< all that are; turns to come know them weakly
    std::shared_ptr<int> m_alive = std::make_shared<int>();  ///< tells late answers whether this is still there
};

}  // namespace wrapio
