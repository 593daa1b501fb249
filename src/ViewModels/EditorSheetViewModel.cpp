#include "ViewModels/EditorSheetViewModel.h"

#include "ViewModels/Forwarding.h"
#include "ViewModels/OldBundleRemoval.h"
#include "ViewModels/QuickStart.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace wrapio {

EditorSheetViewModel::EditorSheetViewModel(const ViewModelServices& services, AppEditingContext context,
                                           RemoveWithUndo removeWithUndo)
    : m_services(services)
    , m_context(std::move(context))
    , m_removeWithUndo(std::move(removeWithUndo))
    , m_form(services.configManager, services.faviconService, services.resources, services.fileDialogs,
             services.files) {}

EditorSheetViewModel::~EditorSheetViewModel() {
    m_subscriptions.clear();
    if (!m_isFinished)
        discardNewApp();
}

void EditorSheetViewModel::open() {
    ConfigurationManager& store = m_services.configManager;
    if (!m_context.appId) {
        m_context.previousSelection = store.selectedAppId();
        m_context.appId = store.createApp().id;
    }
    store.selectApp(*m_context.appId);
    observe();
    catalogueChanged();
    switch (m_context.mode) {
    case ConfigurationMode::create:
        break;
    case ConfigurationMode::edit:
        if (!isAppMissing())
            fill([this] { m_form.loadConfiguration(); });
        break;
    case ConfigurationMode::template_:
        if (m_context.appTemplate && !isAppMissing())
            fill([this] { m_form.applyTemplate(*m_context.appTemplate); });
        break;
    }
    updateHints();
}

void EditorSheetViewModel::observe() {
    auto& store = m_services.configManager;
    m_subscriptions.push_back(forward(m_isAppMissing, *this, &EditorSheetViewModel::isAppMissingChanged));
    m_subscriptions.push_back(forward(m_errorData, *this, &EditorSheetViewModel::errorDataChanged));
    m_subscriptions.push_back(m_form.urlInputProperty().onDidChange([this] { addressChanged(); }));
    m_subscriptions.push_back(m_form.isDevModeProperty().onDidChange([this] { devModeChanged(); }));
    m_subscriptions.push_back(m_form.appNameInputProperty().onDidChange([this] { updateHints(); }));
    m_subscriptions.push_back(store.configurationsProperty().onDidChange([this] { catalogueChanged(); }));
    m_subscriptions.push_back(store.selectedAppIdProperty().onDidChange([this] { holdSelection(); }));
}

std::optional<AppConfiguration> EditorSheetViewModel::record() const {
    return m_context.appId ? m_services.configManager.find(*m_context.appId) : std::nullopt;
}

/// Changes the form as a whole. What the form does by itself when a person types would come in between.
void EditorSheetViewModel::fill(const std::function<void()>& change) {
    m_isFilling = true;
    change();
    m_isFilling = false;
    m_wasDevMode = m_form.isDevMode();
    updateHints();
}

void EditorSheetViewModel::addressChanged() {
    if (m_isFilling)
        return;
    m_form.validateURL(m_form.urlInput());
    updateHints();
}

void EditorSheetViewModel::devModeChanged() {
    if (m_isFilling)
        return;
    m_form.validateURL(m_form.urlInput());
    const bool becameTrue = m_form.isDevMode() && !std::exchange(m_wasDevMode, m_form.isDevMode());
    if (becameTrue && !isAppMissing())
        m_form.applyDefaultDevIcon();
    updateHints();
}

void EditorSheetViewModel::catalogueChanged() {
    const bool isMissing = !record();
    if (isMissing != isAppMissing())
        m_isAppMissing.set(isMissing);
    m_knowsOtherApps = false;
    Q_EMIT removesOtherAppsChanged();
    // Once for all changes of one turn: saving alone makes nine.
    if (std::exchange(m_hintsAreDue, true))
        return;
    m_services.scheduler.async([self = QPointer(this)] {
        if (self && !self->m_isFinished)
            self->updateHints();
    });
}

/// Requests from outside may select another app while the sheet is open. In a later turn, since the store is telling.
void EditorSheetViewModel::holdSelection() {
    m_services.scheduler.async([self = QPointer(this)] {
        if (self && !self->m_isFinished && self->m_services.configManager.selectedAppId() != self->m_context.appId)
            self->m_services.configManager.selectApp(*self->m_context.appId);
    });
}

void EditorSheetViewModel::collectOtherApps() {
    if (std::exchange(m_knowsOtherApps, true))
        return;
    m_otherApps.clear();
    for (const AppConfiguration& other : m_services.configManager.configurations()) {
        if (other.id != m_context.appId)
            m_otherApps.push_back({other.displayName(), BundlePlaces(other.displayName())});
    }
}

void EditorSheetViewModel::updateHints() {
    m_hintsAreDue = false;
    collectOtherApps();
    AppConfiguration form;
    form.appName = m_form.storedName();
    form.configuredURL = m_form.isValidURL() ? m_form.address() : std::nullopt;
    const bool isNamed = form.configuredURL || !form.appName.value_or(QString()).isEmpty();
    const QString name = form.displayName();
    const BundlePlaces places(name);
    const auto other = std::find_if(m_otherApps.begin(), m_otherApps.end(),
                                    [&places](const OtherApp& app) { return app.places.overlap(places); });
    m_bundleHint = isNamed && other != m_otherApps.end() ? sharedBundleHint(other->displayName) : QString();
    m_nameHint = isNamed && !places.agree() ? unsafeNameHint() : QString();
    m_safeName = m_nameHint.isEmpty() ? QString() : safeNameFor(name);
    Q_EMIT hintsChanged();
}

bool EditorSheetViewModel::save() {
    const auto before = record();
    if (!before || m_isFinished)
        return false;
    if (!m_replaced)
        m_replaced = before;
    m_services.configManager.selectApp(before->id);
    if (!m_form.saveConfiguration() || !generateSaved())
        return false;
    finish();
    return true;
}

bool EditorSheetViewModel::generateSaved() {
    const auto saved = record();
    if (!saved)
        return true;
    if (const auto generated = m_services.appLifecycleManager.generate(*saved); !generated) {
        m_errorData.set(generationFailed(generated.error()));
        return false;
    }
    if (m_replaced->runnerVersion)  // else it never had a bundle of its own
        removeOldBundle(*m_replaced, *saved, m_services);
    return true;
}

void EditorSheetViewModel::cancel() {
    if (!m_isFinished)
        discardNewApp();
    finish();
}

void EditorSheetViewModel::discardNewApp() {
    const auto id = m_context.appId;
    if (!isNew() || !id)
        return;
    m_isFinished = true;
    ConfigurationManager& store = m_services.configManager;
    const bool wasSelected = store.selectedAppId() == id;
    store.discardApp(*id);
    m_services.faviconService.deleteSavedIcon(*id);
    if (wasSelected && m_context.previousSelection)
        store.selectApp(*m_context.previousSelection);
}

void EditorSheetViewModel::removeApp() {
    const auto app = record();
    if (!app || isNew()) {
        cancel();
        return;
    }
    m_isFinished = true;
    m_services.configManager.selectApp(app->id);
    fill([this] { m_form.resetConfiguration(); });
    finish();
}

void EditorSheetViewModel::removeOnlyThisApp() {
    const auto app = record();
    if (!app || isNew()) {
        cancel();
        return;
    }
    m_isFinished = true;
    m_removeWithUndo(*app);
    finish();
}

void EditorSheetViewModel::finish() {
    m_isFinished = true;
    Q_EMIT dismissed();
}

void EditorSheetViewModel::applyTemplate(const QString& stableId) {
    if (const auto chosen = quickStartTemplate(stableId); chosen && !isAppMissing())
        fill([this, &chosen] { m_form.applyTemplate(*chosen); });
}

void EditorSheetViewModel::takeSafeName() {
    if (!m_safeName.isEmpty())
        m_form.setAppNameInput(QString(m_safeName));
}

void EditorSheetViewModel::dismissError() {
    m_errorData.set(std::nullopt);
}

EditorSheetViewModel::Mode EditorSheetViewModel::modeForBindings() const {
    switch (m_context.mode) {
    case ConfigurationMode::create:
        return Mode::Create;
    case ConfigurationMode::edit:
        return Mode::Edit;
    case ConfigurationMode::template_:
        return Mode::Template;
    }
    return Mode::Create;
}

QVariant EditorSheetViewModel::errorDataVariant() const {
    return toVariant(errorData());
}

}  // namespace wrapio
