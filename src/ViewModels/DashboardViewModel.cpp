// The dashboard's state: what it shows, and the editor sheet. Its operations are in the files beside.
#include "ViewModels/DashboardViewModel.h"

#include "ViewModels/AppSummary.h"
#include "ViewModels/Forwarding.h"
#include "ViewModels/QuickStart.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace wrapio {

DashboardViewModel::DashboardViewModel(const ViewModelServices& services)
    : m_services(services)
    , m_rows({.isOutdated = [this](const AppConfiguration& config) { return isOutdated(config); },
              .iconRevision = [this](const QUuid& id) { return m_services.faviconService.iconRevision(id); },
              .hasIcon = [this](const QUuid& id) { return m_services.faviconService.hasSavedIcon(id); }}) {
    forwardAll();
    observeServices();
    readTemplateVersion();
    rebuildRows();
}

DashboardViewModel::~DashboardViewModel() {
    // A sheet that goes away may still take its record back: nobody here is to hear of that.
    m_subscriptions.clear();
    m_editor.reset();
}

void DashboardViewModel::forwardAll() {
    using Self = DashboardViewModel;
    m_subscriptions.push_back(m_searchText.onDidChange([this] { showMatches(); }));
    m_subscriptions.push_back(forward(m_editingContext, *this, &Self::editingContextChanged));
    m_subscriptions.push_back(forward(m_errorData, *this, &Self::errorDataChanged));
    m_subscriptions.push_back(forward(m_searchText, *this, &Self::searchTextChanged));
    m_subscriptions.push_back(forward(m_isUpdatingAll, *this, &Self::isUpdatingAllChanged));
    m_subscriptions.push_back(forward(m_updateProgress, *this, &Self::updateProgressChanged));
    m_subscriptions.push_back(forward(m_pendingDelete, *this, &Self::pendingDeleteConfigChanged));
    m_subscriptions.push_back(forward(m_undoableDelete, *this, &Self::undoableDeleteChanged));
    m_subscriptions.push_back(forward(m_isExchanging, *this, &Self::isExchangingChanged));
    m_subscriptions.push_back(forward(m_exchangeProgress, *this, &Self::exchangeProgressChanged));
}

void DashboardViewModel::observeServices() {
    auto& catalogue = m_services.configManager.configurationsProperty();
    auto& running = m_services.appLifecycleManager.runningAppIdsProperty();
    m_subscriptions.push_back(catalogue.onDidChange([this] { rebuildRows(); }));
    m_subscriptions.push_back(running.onDidChange([this] {
        rebuildRows();
        startWhatHasEnded();
    }));
}

void DashboardViewModel::rebuildRows() {
    m_rows.rebuild(m_services.configManager.configurations(), m_services.appLifecycleManager.runningAppIds());
    const auto outdated =
        std::count_if(m_rows.all().begin(), m_rows.all().end(), [](const auto& row) { return row->isOutdated; });
    m_outdatedCount = static_cast<int>(outdated);
    showMatches();
}

void DashboardViewModel::showMatches() {
    AppRowList matches;
    for (const std::size_t position : m_rows.matching(searchText()))
        matches.push_back(m_rows.all()[position]);
    m_appList.show(matches);
    Q_EMIT appsChanged();
}

/// Read now and then instead of with every change of the catalogue: it is a file.
void DashboardViewModel::readTemplateVersion() {
    m_templateVersion = m_services.versionManager.runnerTemplateVersion();
    m_olderVersions.clear();
}

bool DashboardViewModel::isOutdated(const AppConfiguration& config) const {
    if (!config.runnerVersion && !config.configuredURL)
        return false;  // nothing could be made of it
    return isOlderThanTemplate(config.runnerVersion.value_or(QString()));
}

bool DashboardViewModel::isOlderThanTemplate(const QString& version) const {
    const auto known = m_olderVersions.constFind(version);
    if (known != m_olderVersions.constEnd())
        return *known;
    return *m_olderVersions.insert(version, VersionManager::isVersion(m_templateVersion, version));
}

std::vector<AppConfiguration> DashboardViewModel::filteredConfigurations() const {
    const auto& records = m_services.configManager.configurations();
    std::vector<AppConfiguration> filtered;
    for (const std::size_t position : m_rows.matching(searchText()))
        filtered.push_back(records[position]);
    return filtered;
}

bool DashboardViewModel::isSearchEmpty() const {
    return !searchText().isEmpty() && m_appList.count() == 0;
}

std::vector<AppConfiguration> DashboardViewModel::outdatedApps() const {
    std::vector<AppConfiguration> outdated;
    for (const AppConfiguration& config : m_services.configManager.configurations()) {
        if (isOutdated(config))
            outdated.push_back(config);
    }
    return outdated;
}

void DashboardViewModel::appear() {
    readTemplateVersion();
    rebuildRows();
}

int DashboardViewModel::appCount() const {
    return static_cast<int>(m_services.configManager.configurations().size());
}

void DashboardViewModel::createNewApp() {
    edit(AppEditingContext{.mode = ConfigurationMode::create});
}

void DashboardViewModel::editApp(const AppConfiguration& config) {
    edit(AppEditingContext{.mode = ConfigurationMode::edit, .appId = config.id, .isNew = false});
}

void DashboardViewModel::closeEditor() {
    edit(std::nullopt);
}

void DashboardViewModel::edit(const std::optional<AppEditingContext>& context) {
    m_editingContext.set(context);
    replaceEditor();
    Q_EMIT editorChanged();
}

void DashboardViewModel::replaceEditor() {
    auto previous = std::shared_ptr<EditorSheetViewModel>(std::move(m_editor));
    if (previous) {
        disconnect(previous.get(), nullptr, this, nullptr);
        previous->cancel();  // of an app that was saved nothing is taken back
        // It may be the sheet itself that asks to be closed: it goes once it has returned.
        m_services.scheduler.async([previous] {});
    }
    if (editingContext()) {
        m_editor = std::make_unique<EditorSheetViewModel>(
            m_services, *editingContext(), [this](const AppConfiguration& config) { deleteWithUndo(config); });
        connect(m_editor.get(), &EditorSheetViewModel::dismissed, this, &DashboardViewModel::closeEditor);
        // An icon may change without its record.
        connect(&m_editor->configuration(), &ConfigurationViewModel::fetchedIconChanged, this,
                &DashboardViewModel::rebuildRows);
        m_editor->open();
    } else if (m_waitingRequest) {
        m_services.scheduler.async([self = QPointer(this)] {
            if (self)
                self->serveWaitingRequest();
        });
    }
}

void DashboardViewModel::moveApp(const QString& draggedId, const QString& targetId) {
    const auto& records = m_services.configManager.configurations();
    const auto placeOf = [&records](const QString& id) {
        return std::find_if(records.begin(), records.end(),
                            [uuid = QUuid(id)](const AppConfiguration& record) { return record.id == uuid; }) -
               records.begin();
    };
    m_services.configManager.moveApp(placeOf(draggedId), placeOf(targetId));
}

void DashboardViewModel::recoverFromError() {
    const auto error = errorData();
    dismissError();
    if (error && error->recoveryAction)
        error->recoveryAction();
}

void DashboardViewModel::dismissError() {
    m_errorData.set(std::nullopt);
}

ObservableProperty<std::optional<AppEditingContext>>& DashboardViewModel::editingContextProperty() {
    return m_editingContext;
}

ObservableProperty<std::optional<AppConfiguration>>& DashboardViewModel::pendingDeleteConfigProperty() {
    return m_pendingDelete;
}

ObservableProperty<std::optional<UndoableDelete>>& DashboardViewModel::undoableDeleteProperty() {
    return m_undoableDelete;
}

QVariant DashboardViewModel::editingContextVariant() const {
    return toVariant(editingContext());
}

QVariant DashboardViewModel::errorDataVariant() const {
    return toVariant(errorData());
}

QVariant DashboardViewModel::updateProgressVariant() const {
    return toVariant(updateProgress());
}

QVariant DashboardViewModel::pendingDeleteVariant() const {
    return pendingDeleteConfig() ? QVariant::fromValue(AppSummary::of(*pendingDeleteConfig())) : QVariant();
}

QVariant DashboardViewModel::undoableDeleteVariant() const {
    return toVariant(undoableDelete());
}

QVariant DashboardViewModel::exchangeProgressVariant() const {
    return toVariant(exchangeProgress());
}

QVariantList DashboardViewModel::templates() const {
    return quickStartTemplates();
}

}  // namespace wrapio
