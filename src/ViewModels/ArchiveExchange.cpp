#include "ViewModels/ArchiveExchange.h"

#include "Services/CollectionExportService.h"

#include <memory>
#include <utility>

namespace wrapio {

namespace {

Progress progressOf(std::size_t done, std::size_t total) {
    return {static_cast<int>(done), static_cast<int>(total)};
}

/// Reading the icons takes no time to speak of: only apps whose bundles are made count as done.
Progress progressOf(const ImportProgress& progress) {
    switch (progress.stage) {
    case ImportProgress::Stage::readingIcons:
        return progressOf(0, progress.total);
    case ImportProgress::Stage::generatingApps:
        return progressOf(progress.done, progress.total);
    }
    return {};
}

/// An operation ends where it stands when its service goes, so each has a service of its own that goes with its task.
ScheduledTask taskOf(std::shared_ptr<CollectionExportService> service) {
    return ScheduledTask([service = std::move(service)]() mutable { service.reset(); });
}

}  // namespace

ArchiveExchange::ArchiveExchange(ToolRunner& tools, FileSystem& files, FileDialogs& dialogs, Scheduler& scheduler,
                                 Directories directories)
    : m_tools(tools)
    , m_files(files)
    , m_dialogs(dialogs)
    , m_scheduler(scheduler)
    , m_directories(std::move(directories)) {}

ScheduledTask ArchiveExchange::exportAll(const std::vector<AppConfiguration>& configurations,
                                         FaviconService& faviconService, ProgressObserver progress,
                                         ExportCompletion completion) {
    auto service = std::make_shared<CollectionExportService>(m_tools, m_files, m_scheduler, m_directories);
    service->exportAll(
        configurations, faviconService, m_dialogs,
        [progress = std::move(progress)](std::size_t done, std::size_t total) { progress(progressOf(done, total)); },
        completion);
    return taskOf(std::move(service));
}

ScheduledTask ArchiveExchange::importCollection(ConfigurationManager& store, FaviconService& faviconService,
                                                AppLifecycleManager& appLifecycleManager, ProgressObserver progress,
                                                ImportCompletion completion) {
    auto service = std::make_shared<CollectionExportService>(m_tools, m_files, m_scheduler, m_directories);
    service->importCollection(
        {store, faviconService, appLifecycleManager}, m_dialogs,
        [progress = std::move(progress)](const ImportProgress& step) { progress(progressOf(step)); },
        [completion = std::move(completion)](const tl::expected<ImportOutcome, AnyError>& result) {
            completion(result.map([](const ImportOutcome& outcome) { return static_cast<int>(outcome.imported); }));
        });
    return taskOf(std::move(service));
}

}  // namespace wrapio
