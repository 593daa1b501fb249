// The whole program below the views, on fakes, over one of several recorded catalogues. For demos and for tests of
// views.
#pragma once

#include "Fakes/FakeCollectionExchange.h"
#include "Fakes/FakeFileDialogs.h"
#include "Fakes/FakeHttpClient.h"
#include "Fakes/FakeResources.h"
#include "Fakes/FakeUserDefaults.h"
#include "Fakes/FakeWorkspace.h"
#include "Fakes/RecordingToolRunner.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "ViewModels/DashboardViewModel.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace wrapio {

/// Lives in a temporary home that goes with it, and touches nothing of the user's. Main thread.
class OfflineFixture {
public:
    /// The names that the constructor knows: "empty", "one", "dozen", "thousand", "running" (a third of a dozen runs),
    /// "outdated" (most of a dozen are older than the template) and "failing" (bundles are missing and none can be
    /// made).
    [[nodiscard]] static QStringList names();

    /// Builds everything on `scheduler`, which must outlive this. `name` is one of names().
    OfflineFixture(const QString& name, Scheduler& scheduler);
    OfflineFixture(const OfflineFixture&) = delete;
    OfflineFixture& operator=(const OfflineFixture&) = delete;

    [[nodiscard]] DashboardViewModel& dashboard() { return *m_dashboard; }
    [[nodiscard]] ConfigurationManager& store() { return *m_store; }
    [[nodiscard]] AppLifecycleManager& lifecycle() { return *m_lifecycle; }
    [[nodiscard]] FaviconService& favicons() { return m_favicons; }
    [[nodiscard]] ViewModelServices services();
    /// Takes the dashboard away, as if its window were closed; dashboard() must not be called any more.
    void closeDashboard() { m_dashboard.reset(); }

    FakeWorkspace workspace;
    FakeHttpClient http;
    FakeFileDialogs dialogs;
    FakeCollectionExchange exchange;
    FakeResources resources;

private:
    void makeTemplate();
    void makeTools();
    void storeCatalogue(const std::vector<AppConfiguration>& records);
    void makeBundles(const std::vector<AppConfiguration>& records);

    QTemporaryDir m_home;
    Directories m_directories;
    LinuxFileSystem m_files;
    RecordingToolRunner m_tools;
    FakeUserDefaults m_defaults;
    Scheduler& m_scheduler;
    LaunchServicesManager m_launchServices;
    PreviewCacheManager m_previews;
    FaviconService m_favicons;
    IconService m_icons;
    VersionManager m_versions;
    BundleGenerator m_generator;
    std::unique_ptr<ConfigurationManager> m_store;
    std::unique_ptr<AppLifecycleManager> m_lifecycle;
    std::unique_ptr<DashboardViewModel> m_dashboard;
};

}  // namespace wrapio
