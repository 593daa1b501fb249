// An export and an import whose course a test decides.
#pragma once

#include "ViewModels/CollectionExchange.h"

#include <memory>

namespace wrapio {

class FakeCollectionExchange final : public CollectionExchange {
public:
    ScheduledTask exportAll(const std::vector<AppConfiguration>& configurations, FaviconService& faviconService,
                            ProgressObserver progress, ExportCompletion completion) override {
        exported = configurations;
        exportIcons = &faviconService;
        ++exports;
        m_export = std::move(completion);
        m_progress = std::move(progress);
        return ScheduledTask([this] {
            ++cancelled;
            m_export = nullptr;
            m_progress = nullptr;
        });
    }

    ScheduledTask importCollection(ConfigurationManager& store, FaviconService& faviconService,
                                   AppLifecycleManager& appLifecycleManager, ProgressObserver progress,
                                   ImportCompletion completion) override {
        importedInto = &store;
        importIcons = &faviconService;
        importLifecycle = &appLifecycleManager;
        ++imports;
        m_progress = std::move(progress);
        m_import = std::move(completion);
        return ScheduledTask([this] {
            ++cancelled;
            m_import = nullptr;
            m_progress = nullptr;
        });
    }

    void finishExport(const tl::expected<std::optional<QString>, AnyError>& result) {
        std::exchange(m_export, nullptr)(result);
    }
    void finishImport(const tl::expected<int, AnyError>& result) { std::exchange(m_import, nullptr)(result); }
    void tell(const Progress& progress) const { m_progress(progress); }
    /// True while somebody waits for a result.
    [[nodiscard]] bool isAwaited() const { return m_export || m_import; }

    int exports = 0;
    int imports = 0;
    int cancelled = 0;  ///< tasks that went away, finished ones included
    std::vector<AppConfiguration> exported;
    FaviconService* exportIcons = nullptr;
    ConfigurationManager* importedInto = nullptr;
    FaviconService* importIcons = nullptr;
    AppLifecycleManager* importLifecycle = nullptr;

private:
    ExportCompletion m_export;
    ImportCompletion m_import;
    ProgressObserver m_progress;
};

}  // namespace wrapio
