#include "Services/CollectionExportService.h"

#include "Services/CollectionExportError.h"

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString archiveExtension = u"wrapio"_s;

AnyError exportUnderWay() {
    // Exports share the archive's place in the temporary directory.
    return CollectionExportError::archiveFailed(u"another export is under way"_s);
}

/// Does all steps of a job at once.
template <typename Job, typename Progressed>
tl::expected<void, AnyError> runToEnd(Job& job, Progressed progressed) {
    while (true) {
        const auto more = job.step();
        if (!more)
            return tl::unexpected(more.error());
        progressed(job);
        if (!*more)
            return {};
    }
}

}  // namespace

CollectionExportService::CollectionExportService(ToolRunner& tools, FileSystem& files, Scheduler& scheduler,
                                                 Directories directories)
    : m_tools(tools)
    , m_files(files)
    , m_scheduler(scheduler)
    , m_directories(std::move(directories)) {}

std::shared_ptr<CollectionExport> CollectionExportService::startExport(std::vector<AppConfiguration> configurations,
                                                                       FaviconService& faviconService) {
    if (!m_export.expired())
        return nullptr;
    const auto job = std::make_shared<CollectionExport>(
        CollectionExport::System{m_tools, m_files, faviconService, m_directories.temporary}, std::move(configurations),
        m_scheduler.now());
    m_export = job;
    return job;
}

std::shared_ptr<CollectionImport> CollectionExportService::startImport(const QString& url,
                                                                       const Destination& destination) {
    return std::make_shared<CollectionImport>(
        CollectionImport::System{m_tools, m_files, destination.store, destination.faviconService,
                                 destination.appLifecycleManager, m_directories.temporary},
        url);
}

/// The job lives in `m_jobs` and nowhere else between two turns, so a turn that finds it gone knows that this is gone,
/// too, and touches neither.
template <typename Job>
void CollectionExportService::runInTurns(std::shared_ptr<Job> job, const std::function<void(const Job&)>& progressed,
                                         const Finished<Job>& finished) {
    const std::weak_ptr<Job> weak = job;
    m_jobs.insert(std::move(job));
    m_scheduler.async([this, weak, progressed, finished] {
        auto present = weak.lock();
        if (!present)
            return;
        const auto more = present->step();
        if (more)
            progressed(*present);
        if (more && *more) {
            runInTurns(std::move(present), progressed, finished);
            return;
        }
        m_jobs.erase(present);
        finished(std::move(present), more ? tl::expected<void, AnyError>() : tl::unexpected(more.error()));
    });
}

void CollectionExportService::makeInTurns(std::vector<AppConfiguration> configurations, FaviconService& faviconService,
                                          const ExportProgressed& progressed, const ExportCompletion& completion,
                                          const std::function<void(std::shared_ptr<CollectionExport>)>& made) {
    auto job = startExport(std::move(configurations), faviconService);
    if (!job) {
        m_scheduler.async([completion] { completion(tl::unexpected(exportUnderWay())); });
        return;
    }
    const Finished<CollectionExport> finished = [completion, made](auto archive, const auto& result) {
        if (result) {
            made(std::move(archive));
            return;
        }
        archive.reset();
        completion(tl::unexpected(result.error()));
    };
    runInTurns<CollectionExport>(
        std::move(job), [progressed](const CollectionExport& e) { progressed(e.done(), e.total()); }, finished);
}

void CollectionExportService::exportAll(std::vector<AppConfiguration> configurations, FaviconService& faviconService,
                                        FileDialogs& dialogs, const ExportProgressed& progressed,
                                        const ExportCompletion& completion) {
    makeInTurns(std::move(configurations), faviconService, progressed, completion,
                [this, &dialogs, completion](auto job) { askWhereToSave(std::move(job), dialogs, completion); });
}

void CollectionExportService::exportToURL(const QString& url, std::vector<AppConfiguration> configurations,
                                          FaviconService& faviconService, const ExportProgressed& progressed,
                                          const ExportCompletion& completion) {
    makeInTurns(std::move(configurations), faviconService, progressed, completion, [url, completion](auto job) {
        const auto moved = job->moveTo(url);
        job.reset();
        if (moved)
            completion(url);
        else
            completion(tl::unexpected(moved.error()));
    });
}

void CollectionExportService::askWhereToSave(std::shared_ptr<CollectionExport> job, FileDialogs& dialogs,
                                             const ExportCompletion& completion) {
    const std::weak_ptr<CollectionExport> weak = job;
    m_jobs.insert(std::move(job));
    const SaveFileRequest request{
        .title = u"Export Apps"_s, .proposedName = u"My Apps.wrapio"_s, .extension = archiveExtension};
    dialogs.saveFile(request, [this, weak, completion](const std::optional<QString>& url) {
        auto present = weak.lock();
        if (!present)
            return;
        const auto moved = url ? present->moveTo(*url) : tl::expected<void, AnyError>();
        m_jobs.erase(present);
        present.reset();
        if (moved)
            completion(url);
        else
            completion(tl::unexpected(moved.error()));
    });
}

tl::expected<void, AnyError> CollectionExportService::exportTo(const QString& url,
                                                               std::vector<AppConfiguration> configurations,
                                                               FaviconService& faviconService,
                                                               const ExportProgressed& progressed) {
    const auto job = startExport(std::move(configurations), faviconService);
    if (!job)
        return tl::unexpected(exportUnderWay());
    auto made = runToEnd(*job, [&progressed](const CollectionExport& e) { progressed(e.done(), e.total()); });
    return made ? job->moveTo(url) : made;
}

void CollectionExportService::importCollection(const Destination& destination, FileDialogs& dialogs,
                                               const ImportProgressed& progressed, const ImportCompletion& completion) {
    const OpenFileRequest request{.title = u"Import Apps"_s, .extensions = {archiveExtension}};
    const auto alive = std::weak_ptr(m_alive);
    dialogs.openFile(request, [this, alive, destination, progressed, completion](const std::optional<QString>& url) {
        if (alive.expired())
            return;
        if (url)
            importFromURL(*url, destination, progressed, completion);
        else
            completion(ImportOutcome());
    });
}

void CollectionExportService::importFromURL(const QString& url, const Destination& destination,
                                            const ImportProgressed& progressed, const ImportCompletion& completion) {
    const Finished<CollectionImport> finished = [completion](auto job, const auto& result) {
        const ImportOutcome outcome = job->outcome();
        job.reset();
        if (result)
            completion(outcome);
        else
            completion(tl::unexpected(result.error()));
    };
    runInTurns<CollectionImport>(
        startImport(url, destination), [progressed](const CollectionImport& i) { progressed(i.progress()); }, finished);
}

tl::expected<ImportOutcome, AnyError> CollectionExportService::importAndWait(const QString& url,
                                                                             const Destination& destination,
                                                                             const ImportProgressed& progressed) {
    const auto job = startImport(url, destination);
    if (const auto done = runToEnd(*job, [&progressed](const CollectionImport& i) { progressed(i.progress()); }); !done)
        return tl::unexpected(done.error());
    return job->outcome();
}

}  // namespace wrapio
