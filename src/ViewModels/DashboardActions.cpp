// What the dashboard does with one app: start, stop, delete, and put back.
#include "Platform/Diagnostics.h"
#include "ViewModels/DashboardViewModel.h"
#include "ViewModels/QuickStart.h"

#include <QPointer>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

void DashboardViewModel::launchApp(const AppConfiguration& config) {
    if (const auto launched = m_services.appLifecycleManager.launch(config); !launched)
        handleLaunchFailure(config, AnyError(launched.error()));
}

void DashboardViewModel::handleLaunchFailure(const AppConfiguration& config, const AnyError& error) {
    if (!error.as<AppLifecycleError>()) {
        printDiagnostics(u"Launch failed: "_s + error.description());
        showErrorAlert(config, error);
        return;
    }
    printDiagnostics(u"[Dashboard] App bundle missing, attempting to generate..."_s);
    if (const auto launched = generateAndLaunch(config); !launched) {
        printDiagnostics(u"Generation/Launch failed: "_s + launched.error().description());
        showErrorAlert(config, launched.error());
    }
}

tl::expected<void, AnyError> DashboardViewModel::generateAndLaunch(const AppConfiguration& config) {
    if (auto generated = m_services.appLifecycleManager.generate(config); !generated)
        return generated;
    if (const auto launched = m_services.appLifecycleManager.launch(config); !launched)
        return tl::unexpected(AnyError(launched.error()));
    return {};
}

void DashboardViewModel::showErrorAlert(const AppConfiguration& config, const AnyError& error) {
    auto regenerate = [&store = m_services.configManager, &lifecycle = m_services.appLifecycleManager, id = config.id] {
        if (const auto record = store.find(id))
            static_cast<void>(lifecycle.generate(*record));  // that it failed shows when the app is launched
    };
    m_errorData.set(AppErrorData{.title = u"Launch Failed"_s,
                                 .message = u"Could not launch '"_s + config.displayName() +
                                            u"'. This usually happens if the app bundle was moved or deleted."_s,
                                 .error = error,
                                 .recoveryAction = std::move(regenerate)});
}

void DashboardViewModel::quitApp(const AppConfiguration& config) {
    m_services.appLifecycleManager.quit(config);
}

void DashboardViewModel::restartApp(const AppConfiguration& config) {
    if (!m_services.appLifecycleManager.runningAppIds().contains(config.id)) {
        launchApp(config);
        return;
    }
    m_restarts[config.id] =
        m_services.scheduler.after(restartSeconds, [this, id = config.id] { m_restarts.erase(id); });
    m_services.appLifecycleManager.quit(config);
}

void DashboardViewModel::startWhatHasEnded() {
    const auto& running = m_services.appLifecycleManager.runningAppIds();
    std::erase_if(m_restarts, [this, &running](const auto& restart) {
        if (running.contains(restart.first))
            return false;
        m_services.scheduler.async([self = QPointer(this), id = restart.first] {
            if (self)
                self->launchApp(canonicalText(id));
        });
        return true;
    });
}

void DashboardViewModel::updateApp(const AppConfiguration& config) {
    if (const auto generated = m_services.appLifecycleManager.generate(config); !generated)
        m_errorData.set(generationFailed(generated.error()));
}

void DashboardViewModel::openWebsite(const AppConfiguration& config) {
    if (config.configuredURL && !m_services.workspace.open(config.configuredURL->absoluteString()))
        printDiagnostics(u"[Dashboard] Could not open "_s + config.configuredURL->absoluteString());
}

void DashboardViewModel::requestDelete(const AppConfiguration& config) {
    m_pendingDelete.set(config);
}

void DashboardViewModel::cancelDelete() {
    m_pendingDelete.set(std::nullopt);
}

void DashboardViewModel::confirmDelete() {
    const auto config = pendingDeleteConfig();
    if (!config)
        return;
    m_pendingDelete.set(std::nullopt);
    deleteWithUndo(*config);
}

void DashboardViewModel::deleteWithUndo(const AppConfiguration& config) {
    auto icon = m_services.faviconService.loadSavedIcon(config.id);
    const auto& records = m_services.configManager.configurations();
    const auto place = std::find_if(records.begin(), records.end(),
                                    [&config](const AppConfiguration& record) { return record.id == config.id; });
    const auto index = static_cast<std::size_t>(place - records.begin());
    m_services.configManager.removeApp(config.id);
    undoDismissTask.cancel();
    m_undoableDelete.set(UndoableDelete{.config = config, .icon = std::move(icon), .originalIndex = index});
    undoDismissTask = m_services.scheduler.after(undoSeconds, [this] { m_undoableDelete.set(std::nullopt); });
}

void DashboardViewModel::undoDelete() {
    const auto deleted = undoableDelete();
    if (!deleted)
        return;
    undoDismissTask.cancel();
    m_undoableDelete.set(std::nullopt);
    m_services.configManager.insertApp(deleted->config, deleted->originalIndex);
    if (deleted->icon) {
        m_services.faviconService.saveIcon(*deleted->icon, deleted->config.id);
        rebuildRows();
    }
    if (const auto generated = m_services.appLifecycleManager.generate(deleted->config); !generated)
        printDiagnostics(u"Failed to regenerate undone app: "_s + generated.error().description());
}

template <typename Action>
void DashboardViewModel::withRecord(const QString& id, Action action) {
    if (const auto record = m_services.configManager.find(QUuid(id)))
        action(*record);
}

void DashboardViewModel::createFromTemplate(const QString& stableId) {
    if (const auto appTemplate = quickStartTemplate(stableId))
        createFromTemplate(*appTemplate);
}

void DashboardViewModel::editApp(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { editApp(record); });
}

void DashboardViewModel::launchApp(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { launchApp(record); });
}

void DashboardViewModel::quitApp(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { quitApp(record); });
}

void DashboardViewModel::restartApp(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { restartApp(record); });
}

void DashboardViewModel::updateApp(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { updateApp(record); });
}

void DashboardViewModel::openWebsite(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { openWebsite(record); });
}

void DashboardViewModel::requestDelete(const QString& id) {
    withRecord(id, [this](const AppConfiguration& record) { requestDelete(record); });
}

}  // namespace wrapio
