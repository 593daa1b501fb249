// The exchange of the collection by archive files.
#pragma once

#include "Platform/Directories.h"
#include "Platform/FileDialogs.h"
#include "Platform/FileSystem.h"
#include "Platform/Scheduler.h"
#include "Platform/ToolRunner.h"
#include "ViewModels/CollectionExchange.h"

namespace wrapio {

/// Everything outlives this, and this outlives its tasks.
class ArchiveExchange final : public CollectionExchange {
public:
    ArchiveExchange(ToolRunner& tools, FileSystem& files, FileDialogs& dialogs, Scheduler& scheduler,
                    Directories directories);

    [[nodiscard]] ScheduledTask exportAll(const std::vector<AppConfiguration>& configurations,
                                          FaviconService& faviconService, ProgressObserver progress,
                                          ExportCompletion completion) override;
    [[nodiscard]] ScheduledTask importCollection(ConfigurationManager& store, FaviconService& faviconService,
                                                 AppLifecycleManager& appLifecycleManager, ProgressObserver progress,
                                                 ImportCompletion completion) override;

private:
    ToolRunner& m_tools;
    FileSystem& m_files;
    FileDialogs& m_dialogs;
    Scheduler& m_scheduler;
    Directories m_directories;
};

}  // namespace wrapio
