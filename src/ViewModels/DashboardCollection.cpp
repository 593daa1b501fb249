// What the dashboard does with the whole collection: update, export and import.
#include "Platform/Diagnostics.h"
#include "ViewModels/DashboardViewModel.h"

#include <QPointer>

namespace wrapio {

using namespace Qt::StringLiterals;

void DashboardViewModel::updateAllApps() {
    if (isUpdatingAll())
        return;
    readTemplateVersion();
    const std::vector<AppConfiguration> outdated = outdatedApps();
    if (outdated.empty())
        return;
    m_updateQueue.clear();
    for (const AppConfiguration& config : outdated)
        m_updateQueue.push_back(config.id);
    m_isUpdatingAll.set(true);
    m_updateProgress.set(Progress{0, static_cast<int>(outdated.size())});
    m_services.scheduler.async([self = QPointer(this)] {
        if (self)
            self->updateNext();
    });
}

/// One app per turn of the event loop, so that the window stays responsive and shows the progress.
void DashboardViewModel::updateNext() {
    if (m_updateQueue.empty()) {
        endUpdatingAll();
        return;
    }
    // As it is now: since the run began, it may have been edited or removed.
    const auto config = m_services.configManager.find(m_updateQueue.front());
    m_updateQueue.pop_front();
    prepareNextUpdate();
    if (config) {
        if (const auto generated = m_services.appLifecycleManager.generate(*config); !generated)
            printDiagnostics(u"Failed to update "_s + config->displayName() + u": "_s +
                             generated.error().description());
    }
    Progress progress = updateProgress().value_or(Progress());
    ++progress.current;
    m_updateProgress.set(progress);
    m_services.scheduler.async([self = QPointer(this)] {
        if (self)
            self->updateNext();
    });
}

void DashboardViewModel::prepareNextUpdate() {
    const auto next = m_updateQueue.empty() ? std::nullopt : m_services.configManager.find(m_updateQueue.front());
    if (next)
        m_services.appLifecycleManager.prepareGeneration(*next);
}

void DashboardViewModel::endUpdatingAll() {
    m_isUpdatingAll.set(false);
    m_updateProgress.set(std::nullopt);
}

void DashboardViewModel::exportApps() {
    if (isExchanging())
        return;
    m_isExchanging.set(true);
    m_exchange = m_services.collectionExchange.exportAll(
        m_services.configManager.configurations(), m_services.faviconService,
        [this](const Progress& progress) { m_exchangeProgress.set(progress); },
        [this](const tl::expected<std::optional<QString>, AnyError>& result) { finishExport(result); });
}

void DashboardViewModel::finishExport(const tl::expected<std::optional<QString>, AnyError>& result) {
    endExchange();
    if (!result) {
        m_errorData.set(AppErrorData{
            .title = u"Export Failed"_s, .message = u"Could not export app collection."_s, .error = result.error()});
    } else if (*result) {
        printDiagnostics(u"[Dashboard] Exported to "_s + **result);
    }
}

void DashboardViewModel::importApps() {
    if (isExchanging())
        return;
    m_isExchanging.set(true);
    m_exchange = m_services.collectionExchange.importCollection(
        m_services.configManager, m_services.faviconService, m_services.appLifecycleManager,
        [this](const Progress& progress) { m_exchangeProgress.set(progress); },
        [this](const tl::expected<int, AnyError>& result) { finishImport(result); });
}

void DashboardViewModel::finishImport(const tl::expected<int, AnyError>& result) {
    endExchange();
    if (result) {
        printDiagnostics(u"[Dashboard] Imported %1 app(s)"_s.arg(*result));
        return;
    }
    m_errorData.set(AppErrorData{
        .title = u"Import Failed"_s, .message = u"Could not import app collection."_s, .error = result.error()});
}

void DashboardViewModel::endExchange() {
    m_isExchanging.set(false);
    m_exchangeProgress.set(std::nullopt);
}

}  // namespace wrapio
