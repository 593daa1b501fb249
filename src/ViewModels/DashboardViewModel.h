// The coordinator behind the dashboard window.
#pragma once

#include "Models/AppTemplate.h"
#include "Platform/AnyError.h"
#include "Services/WrapioURLBridge.h"
#include "Utilities/ObservableProperty.h"
#include "ViewModels/AppEditingContext.h"
#include "ViewModels/AppErrorData.h"
#include "ViewModels/AppListModel.h"
#include "ViewModels/AppRows.h"
#include "ViewModels/EditorSheetViewModel.h"
#include "ViewModels/Progress.h"
#include "ViewModels/UndoableDelete.h"
#include "ViewModels/ViewModelServices.h"

#include <QObject>
#include <QVariant>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace wrapio {

/// Turns what the views ask for into work on the store and the services, and owns the dashboard's passing state. Lives
/// as long as the window. Main thread. Every observable property tells its coming value before it changes, and emits
/// its signal afterwards. Operations that take an id as text are for bindings; an id that is not in the catalogue (any
/// more) is ignored.
class DashboardViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariant editingContext READ editingContextVariant NOTIFY editingContextChanged)
    Q_PROPERTY(wrapio::EditorSheetViewModel* editor READ editor NOTIFY editorChanged)
    Q_PROPERTY(QVariant errorData READ errorDataVariant NOTIFY errorDataChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool isUpdatingAll READ isUpdatingAll NOTIFY isUpdatingAllChanged)
    Q_PROPERTY(QVariant updateProgress READ updateProgressVariant NOTIFY updateProgressChanged)
    Q_PROPERTY(QVariant pendingDeleteConfig READ pendingDeleteVariant NOTIFY pendingDeleteConfigChanged)
    Q_PROPERTY(QVariant undoableDelete READ undoableDeleteVariant NOTIFY undoableDeleteChanged)
    Q_PROPERTY(bool isExchanging READ isExchanging NOTIFY isExchangingChanged)
    Q_PROPERTY(QVariant exchangeProgress READ exchangeProgressVariant NOTIFY exchangeProgressChanged)
    Q_PROPERTY(wrapio::AppListModel* filteredConfigurations READ appList CONSTANT)
    Q_PROPERTY(bool isSearchEmpty READ isSearchEmpty NOTIFY appsChanged)
    Q_PROPERTY(int appCount READ appCount NOTIFY appsChanged)
    Q_PROPERTY(int outdatedCount READ outdatedCount NOTIFY appsChanged)
    Q_PROPERTY(QVariantList templates READ templates CONSTANT)

public:
    /// For how long a deletion can be undone, in seconds.
    static constexpr double undoSeconds = 5;
    /// For how long a restart waits for the app to end, in seconds.
    static constexpr double restartSeconds = 10;

    explicit DashboardViewModel(const ViewModelServices& services);
    ~DashboardViewModel() override;

    [[nodiscard]] const std::optional<AppEditingContext>& editingContext() const { return m_editingContext.value(); }
    [[nodiscard]] const std::optional<AppErrorData>& errorData() const { return m_errorData.value(); }
    [[nodiscard]] const QString& searchText() const { return m_searchText.value(); }
    [[nodiscard]] bool isUpdatingAll() const { return m_isUpdatingAll.value(); }
    [[nodiscard]] const std::optional<Progress>& updateProgress() const { return m_updateProgress.value(); }
    [[nodiscard]] const std::optional<AppConfiguration>& pendingDeleteConfig() const { return m_pendingDelete.value(); }
    [[nodiscard]] const std::optional<UndoableDelete>& undoableDelete() const { return m_undoableDelete.value(); }
    [[nodiscard]] bool isExchanging() const { return m_isExchanging.value(); }
    [[nodiscard]] const std::optional<Progress>& exchangeProgress() const { return m_exchangeProgress.value(); }

    [[nodiscard]] ObservableProperty<std::optional<AppEditingContext>>& editingContextProperty();
    [[nodiscard]] ObservableProperty<std::optional<AppErrorData>>& errorDataProperty() { return m_errorData; }
    [[nodiscard]] ObservableProperty<QString>& searchTextProperty() { return m_searchText; }
    [[nodiscard]] ObservableProperty<bool>& isUpdatingAllProperty() { return m_isUpdatingAll; }
    [[nodiscard]] ObservableProperty<std::optional<Progress>>& updateProgressProperty() { return m_updateProgress; }
    [[nodiscard]] ObservableProperty<std::optional<AppConfiguration>>& pendingDeleteConfigProperty();
    [[nodiscard]] ObservableProperty<std::optional<UndoableDelete>>& undoableDeleteProperty();

    void setSearchText(const QString& text) { m_searchText.set(text); }

    /// The records that the search leaves, in catalogue order.
    [[nodiscard]] std::vector<AppConfiguration> filteredConfigurations() const;
    /// The same as a list model.
    [[nodiscard]] AppListModel* appList() { return &m_appList; }
    /// True when there is a search and it leaves nothing.
    [[nodiscard]] bool isSearchEmpty() const;
    /// The records whose bundles are older than the template, in catalogue order. A record with an address that no
    /// version was ever recorded for counts as older.
    [[nodiscard]] std::vector<AppConfiguration> outdatedApps() const;
    [[nodiscard]] int appCount() const;
    [[nodiscard]] int outdatedCount() const { return m_outdatedCount; }
    /// The sheet of `editingContext`; null while it is absent.
    [[nodiscard]] EditorSheetViewModel* editor() const { return m_editor.get(); }

    /// The dashboard comes on screen: looks again at what may have changed on disk since.
    Q_INVOKABLE void appear();

    /// Opens the editor for a new app.
    Q_INVOKABLE void createNewApp();
    /// Makes a record of a template's values and opens the editor for it.
    void createFromTemplate(const AppTemplate& appTemplate);
    /// Opens the editor for a record.
    void editApp(const AppConfiguration& config);
    /// Closes the editor; an app that was new and not saved goes.
    Q_INVOKABLE void closeEditor();

    /// Starts the app or brings it to the front. A missing bundle is made first. A failure becomes `errorData`.
    void launchApp(const AppConfiguration& config);
    /// What launchApp() does when starting the app failed with `error`.
    void handleLaunchFailure(const AppConfiguration& config, const AnyError& error);
    /// Asks the running app to end.
    void quitApp(const AppConfiguration& config);
    /// Ends the app and starts it once it has ended; starts it at once when it does not run.
    void restartApp(const AppConfiguration& config);
    /// Makes the app's bundle anew. A failure becomes `errorData`.
    void updateApp(const AppConfiguration& config);
    /// Opens the app's address with the program that the desktop uses for it.
    void openWebsite(const AppConfiguration& config);

    /// Asks for a confirmation of the deletion.
    void requestDelete(const AppConfiguration& config);
    Q_INVOKABLE void cancelDelete();
    /// Deletes what was requested, at once, and offers to undo that for five seconds. An older offer ends.
    Q_INVOKABLE void confirmDelete();
    /// Puts the deleted record back at its place and makes its bundle again.
    Q_INVOKABLE void undoDelete();

    /// Makes the bundles of all outdated apps anew, one per turn of the event loop. A failure is told in diagnostics
    /// only. Ignored while it runs and when no app is outdated.
    Q_INVOKABLE void updateAllApps();
    /// Exports the whole catalogue. Ignored while an export or an import runs.
    Q_INVOKABLE void exportApps();
    /// Imports an archive into the catalogue. Ignored while an export or an import runs.
    Q_INVOKABLE void importApps();

    /// Makes a record of another program's request and opens the editor for it. While the editor is open for another
    /// app, the latest request waits until it is closed: what is typed there is not to be lost.
    void createFromURLRequest(const WrapioCreateRequest& request);
    /// Opens the session import of the app that is for the request's site. A failure becomes `errorData`.
    void importSessionFromURLRequest(const WrapioImportSessionRequest& request);
    /// The first record for the site of `matching`: of the same host, or one a subdomain of the other, "www." aside.
    [[nodiscard]] std::optional<AppConfiguration> findConfiguration(const WrapioImportSessionRequest& matching) const;

    /// Moves the dragged record to the place that the target has in the catalogue, whatever the search shows.
    Q_INVOKABLE void moveApp(const QString& draggedId, const QString& targetId);
    /// Runs the recovery action of `errorData`, which is absent then.
    Q_INVOKABLE void recoverFromError();
    Q_INVOKABLE void dismissError();

    Q_INVOKABLE void createFromTemplate(const QString& stableId);
    Q_INVOKABLE void editApp(const QString& id);
    Q_INVOKABLE void launchApp(const QString& id);
    Q_INVOKABLE void quitApp(const QString& id);
    Q_INVOKABLE void restartApp(const QString& id);
    Q_INVOKABLE void updateApp(const QString& id);
    Q_INVOKABLE void openWebsite(const QString& id);
    Q_INVOKABLE void requestDelete(const QString& id);

    // For bindings, where an absent value is `undefined`.
    [[nodiscard]] QVariant editingContextVariant() const;
    [[nodiscard]] QVariant errorDataVariant() const;
    [[nodiscard]] QVariant updateProgressVariant() const;
    [[nodiscard]] QVariant pendingDeleteVariant() const;
    [[nodiscard]] QVariant undoableDeleteVariant() const;
    [[nodiscard]] QVariant exchangeProgressVariant() const;
    [[nodiscard]] QVariantList templates() const;

Q_SIGNALS:
    void editingContextChanged();
    void editorChanged();
    void errorDataChanged();
    void searchTextChanged();
    void isUpdatingAllChanged();
    void updateProgressChanged();
    void pendingDeleteConfigChanged();
    void undoableDeleteChanged();
    void isExchangingChanged();
    void exchangeProgressChanged();
    /// The catalogue, or what is derived from it and from the search, has changed.
    void appsChanged();

private:
    void forwardAll();
    void observeServices();
    void rebuildRows();
    void showMatches();
    void readTemplateVersion();
    [[nodiscard]] bool isOutdated(const AppConfiguration& config) const;
    [[nodiscard]] bool isOlderThanTemplate(const QString& version) const;
    void edit(const std::optional<AppEditingContext>& context);
    void replaceEditor();
    void deleteWithUndo(const AppConfiguration& config);
    void showErrorAlert(const AppConfiguration& config, const AnyError& error);
    [[nodiscard]] tl::expected<void, AnyError> generateAndLaunch(const AppConfiguration& config);
    void startWhatHasEnded();
    void updateNext();
    void prepareNextUpdate();
    void endUpdatingAll();
    void finishExport(const tl::expected<std::optional<QString>, AnyError>& result);
    void finishImport(const tl::expected<int, AnyError>& result);
    void endExchange();
    void serveWaitingRequest();
    template <typename Change>
    void change(const QUuid& id, Change change);
    template <typename Action>
    void withRecord(const QString& id, Action action);

    ViewModelServices m_services;

    ObservableProperty<std::optional<AppEditingContext>> m_editingContext;
    ObservableProperty<std::optional<AppErrorData>> m_errorData;
    ObservableProperty<QString> m_searchText;
    ObservableProperty<bool> m_isUpdatingAll{false};
    ObservableProperty<std::optional<Progress>> m_updateProgress;
    ObservableProperty<std::optional<AppConfiguration>> m_pendingDelete;
    ObservableProperty<std::optional<UndoableDelete>> m_undoableDelete;
    ObservableProperty<bool> m_isExchanging{false};
    ObservableProperty<std::optional<Progress>> m_exchangeProgress;

    AppRows m_rows;
    AppListModel m_appList;
    QString m_templateVersion;
    mutable QHash<QString, bool> m_olderVersions;  ///< what was asked about versions since the template's was read
    int m_outdatedCount = 0;

    std::unique_ptr<EditorSheetViewModel> m_editor;
    std::optional<WrapioCreateRequest> m_waitingRequest;
    ScheduledTask undoDismissTask;
    std::map<QUuid, ScheduledTask>
        m_restarts;  ///< apps that are to start once they have ended, until they took too long
    std::deque<QUuid> m_updateQueue;
    ScheduledTask m_exchange;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace wrapio
