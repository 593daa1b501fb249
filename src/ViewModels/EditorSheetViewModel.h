// One opening of the editor sheet: from its record to the saved app, or back to where it began.
#pragma once

#include "Utilities/ObservableProperty.h"
#include "ViewModels/AppEditingContext.h"
#include "ViewModels/AppErrorData.h"
#include "ViewModels/BundleHints.h"
#include "ViewModels/ConfigurationViewModel.h"
#include "ViewModels/ViewModelServices.h"

#include <QObject>
#include <QVariant>

#include <functional>
#include <optional>
#include <vector>

namespace wrapio {

/// Keeps its app the store's current one while it is open, since the form works on that. A sheet for a new app that
/// goes away without having made it leaves neither record nor icon behind. Main thread.
class EditorSheetViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(wrapio::ConfigurationViewModel* configuration READ configurationPointer CONSTANT)
    Q_PROPERTY(Mode mode READ modeForBindings CONSTANT)
    Q_PROPERTY(bool isNew READ isNew CONSTANT)
    Q_PROPERTY(bool isAppMissing READ isAppMissing NOTIFY isAppMissingChanged)
    Q_PROPERTY(QVariant errorData READ errorDataVariant NOTIFY errorDataChanged)
    Q_PROPERTY(QString bundleHint READ bundleHint NOTIFY hintsChanged)
    Q_PROPERTY(QString nameHint READ nameHint NOTIFY hintsChanged)
    Q_PROPERTY(QString safeName READ safeName NOTIFY hintsChanged)
    Q_PROPERTY(bool removesOtherApps READ removesOtherApps NOTIFY removesOtherAppsChanged)

public:
    /// ConfigurationMode for bindings, which only see names that begin with a capital.
    enum class Mode { Create, Edit, Template };
    Q_ENUM(Mode)

    /// Deletes an app so that it can be undone.
    using RemoveWithUndo = std::function<void(const AppConfiguration&)>;

    EditorSheetViewModel(const ViewModelServices& services, AppEditingContext context, RemoveWithUndo removeWithUndo);
    ~EditorSheetViewModel() override;

    /// Begins: makes the app the current one, a blank new one first of all, and fills the form as the mode says.
    void open();

    [[nodiscard]] ConfigurationViewModel& configuration() { return m_form; }
    [[nodiscard]] ConfigurationMode mode() const { return m_context.mode; }
    [[nodiscard]] bool isNew() const { return m_context.isNew; }
    /// The record that is edited; absent when it does not exist (any more).
    [[nodiscard]] std::optional<AppConfiguration> record() const;
    [[nodiscard]] bool isAppMissing() const { return m_isAppMissing.value(); }
    [[nodiscard]] const std::optional<AppErrorData>& errorData() const { return m_errorData.value(); }
    [[nodiscard]] ObservableProperty<std::optional<AppErrorData>>& errorDataProperty() { return m_errorData; }

    /// That another app has the same bundle; empty when none has.
    [[nodiscard]] const QString& bundleHint() const { return m_bundleHint; }
    /// That the name holds characters on which the rules for a bundle's place disagree; empty when they agree.
    [[nodiscard]] const QString& nameHint() const { return m_nameHint; }
    /// The nearest name on which they agree; empty when there is no hint or no such name.
    [[nodiscard]] const QString& safeName() const { return m_safeName; }
    /// True when removing by `removeApp()` takes more apps than this one.
    [[nodiscard]] bool removesOtherApps() const { return m_services.configManager.configurations().size() > 1; }

    /// Saves the form and makes the bundle, all at once. False when the form could not be saved, or the bundle could
    /// not be made: then the messages of the form or `errorData` say why, and the sheet stays. Under another name, the
    /// bundle of the old name goes once the new one stands.
    Q_INVOKABLE bool save();
    /// Closes the sheet. Of a new app nothing stays behind.
    Q_INVOKABLE void cancel();
    /// Resets the whole catalogue, whatever it holds, and closes the sheet; see `removesOtherApps`. A new app is
    /// cancelled.
    Q_INVOKABLE void removeApp();
    /// Deletes this app, with undo, and closes the sheet. A new app is cancelled.
    Q_INVOKABLE void removeOnlyThisApp();
    /// Applies the quick-start template of that stable id.
    Q_INVOKABLE void applyTemplate(const QString& stableId);
    /// Puts the safe name into the form.
    Q_INVOKABLE void takeSafeName();
    Q_INVOKABLE void dismissError();

    // For bindings.
    [[nodiscard]] ConfigurationViewModel* configurationPointer() { return &m_form; }
    [[nodiscard]] Mode modeForBindings() const;
    [[nodiscard]] QVariant errorDataVariant() const;

Q_SIGNALS:
    /// The sheet is done; its owner closes it.
    void dismissed();
    void isAppMissingChanged();
    void errorDataChanged();
    void hintsChanged();
    void removesOtherAppsChanged();

private:
    void observe();
    void fill(const std::function<void()>& change);
    void addressChanged();
    void devModeChanged();
    void catalogueChanged();
    void holdSelection();
    void updateHints();
    void collectOtherApps();
    [[nodiscard]] bool generateSaved();
    void discardNewApp();
    void finish();

    ViewModelServices m_services;
    AppEditingContext m_context;
    RemoveWithUndo m_removeWithUndo;
    ConfigurationViewModel m_form;

    ObservableProperty<bool> m_isAppMissing{false};
    ObservableProperty<std::optional<AppErrorData>> m_errorData;
    QString m_bundleHint;
    QString m_nameHint;
    QString m_safeName;

    /// Another app, for the hints: worked out once per change of the catalogue, not with every key.
    struct OtherApp {
        QString displayName;
        BundlePlaces places;
    };
    std::vector<OtherApp> m_otherApps;
    bool m_knowsOtherApps = false;
    bool m_hintsAreDue = false;
    std::optional<AppConfiguration> m_replaced;  ///< the record before the first attempt to save
    bool m_isFilling = false;
    bool m_wasDevMode = false;
    bool m_isFinished = false;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace wrapio
