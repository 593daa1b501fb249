// Where a generated app lives, and how it is started, brought forward, stopped, made again and watched.
#pragma once

#include "Models/AppConfiguration.h"
#include "Models/ConfigurationManager.h"
#include "Platform/AnyError.h"
#include "Platform/Scheduler.h"
#include "Platform/Workspace.h"
#include "Services/BundleGenerator.h"
#include "Utilities/ObservableProperty.h"
#include "Utilities/SharedInstance.h"

#include <QSet>

#include <tl/expected.hpp>

#include <memory>
#include <optional>
#include <set>

namespace wrapio {

class AppLifecycleError {
public:
    static AppLifecycleError appNotFound(const QString& bundleURL) { return AppLifecycleError(bundleURL); }

    /// The bundle that was looked for.
    [[nodiscard]] const QString& bundleURL() const { return m_bundleURL; }
    [[nodiscard]] QString description() const { return QStringLiteral("App bundle not found at: ") + m_bundleURL; }
    bool operator==(const AppLifecycleError&) const = default;

private:
    explicit AppLifecycleError(QString bundleURL)
        : m_bundleURL(std::move(bundleURL)) {}
    QString m_bundleURL;
};

/// The set of running apps may be one second behind the processes. Main thread.
class AppLifecycleManager : public SharedInstance<AppLifecycleManager> {
public:
    using Ids = std::set<QUuid>;

    /// Starts to watch: looks at once, then every second. `versions`, like everything else, must outlive this.
    AppLifecycleManager(ConfigurationManager& store, BundleGenerator& generator, const VersionManager& versions,
                        Workspace& workspace, FileSystem& files, Scheduler& scheduler, Directories directories);
    AppLifecycleManager(const AppLifecycleManager&) = delete;
    AppLifecycleManager& operator=(const AppLifecycleManager&) = delete;

    /// The apps whose bundles are running. Observers are told of real changes only.
    [[nodiscard]] const Ids& runningAppIds() const { return m_runningAppIds->value(); }
    [[nodiscard]] ObservableProperty<Ids>& runningAppIdsProperty() { return *m_runningAppIds; }

    /// Where an app's bundle is looked for. The disk is not consulted.
    [[nodiscard]] QString getBundleURL(const AppConfiguration& config) const;
    /// The bundles of all that runs, for questions about many apps at once.
    [[nodiscard]] QSet<QString> runningBundles() const;
    /// The first running application that was started from the app's bundle.
    [[nodiscard]] std::optional<RunningApplication> runningApplication(const AppConfiguration& config) const;

    /// Starts the app. Fails when its bundle is missing; a later failure is told in diagnostics only.
    [[nodiscard]] tl::expected<void, AppLifecycleError> launch(const AppConfiguration& config);
    /// Brings the running app to the front. An app that does not run is not started.
    void focus(const AppConfiguration& config);
    /// Asks the running app to end, and ends it when it cannot be asked. Does not wait.
    void quit(const AppConfiguration& config);
    /// Makes the app's bundle, over the old one, and records the template's version in the catalogue. Blocks. Fails
    /// with a FileError or whatever the generator fails with.
    [[nodiscard]] tl::expected<void, AnyError> generate(const AppConfiguration& config);
    /// For runs over many apps: starts what is slow about the one that is generated after the present one.
    void prepareGeneration(const AppConfiguration& config);
    /// Asks the app to take over a browser's session. Fails as generate() and launch() do.
    [[nodiscard]] tl::expected<void, AnyError> openImportSession(const AppConfiguration& config,
                                                                 const std::optional<QString>& source);

    /// Compares the processes with the catalogue; a change is published in a later turn of the event loop.
    void checkRunningApps();

private:
    void startMonitoring();
    [[nodiscard]] tl::expected<void, AnyError> removeOldBundle(const AppConfiguration& config);
    [[nodiscard]] tl::expected<void, AnyError> launchInstead(const AppConfiguration& config);

    ConfigurationManager& m_store;
    BundleGenerator& m_generator;
    const VersionManager& m_versions;
    Workspace& m_workspace;
    FileSystem& m_files;
    Scheduler& m_scheduler;
    Directories m_directories;
    std::shared_ptr<ObservableProperty<Ids>> m_runningAppIds;  ///< shared so that a late turn knows it is gone
    ScheduledTask timer;
};

}  // namespace wrapio
