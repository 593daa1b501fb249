// wrapio-menu-bar: the status item with its menu and previews, without the rest of the program. Over the catalogue of
// HOME, or with --offline over a recorded one that touches nothing.
#include "AppDelegate.h"
#include "Fakes/FakeScreenCapture.h"
#include "Fakes/FakeUserDefaults.h"
#include "Offline/OfflineFixture.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/FileDefaults.h"
#include "Platform/Linux/LinuxDirectories.h"
#include "Platform/Linux/LinuxModifierKeys.h"
#include "Platform/Linux/LinuxResources.h"
#include "Platform/Linux/LinuxScreenCapture.h"
#include "Platform/Linux/LinuxStatusHosts.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/QtHttpClient.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/Linux/X11Windows.h"
#include "Views/Widgets/PreviewPanelWidget.h"
#include "Views/Widgets/QtThisApplication.h"
#include "Views/Widgets/TrayStatusItem.h"
#include "Views/Widgets/WidgetMenu.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QWindow>

#include <cstdio>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// The catalogue of HOME and what stands on it, as the program has it.
class RealApps {
public:
    RealApps(const Directories& folders, Scheduler& scheduler, const Resources& resources)
        : m_directories(folders)
        , m_workspace(folders, scheduler, [](const QString&) { return std::nullopt; })
        , m_versions(resources, files)
        , m_generator(m_tools, files, resources, m_favicons, m_icons, m_launchServices, m_versions)
        , m_store(m_defaults, files, m_launchServices, m_previews, scheduler, folders)
        , m_lifecycle(m_store, m_generator, m_versions, m_workspace, files, scheduler, folders)
        , m_screen(RunnerSnapshot::runtimeFolderOfSession(), scheduler) {}

    [[nodiscard]] ConfigurationManager& store() { return m_store; }
    [[nodiscard]] AppLifecycleManager& lifecycle() { return m_lifecycle; }
    [[nodiscard]] Workspace& workspace() { return m_workspace; }
    [[nodiscard]] ScreenCapture& screen() { return m_screen; }
    [[nodiscard]] PreviewCacheManager& previews() { return m_previews; }

    LinuxFileSystem files;

private:
    Directories m_directories;
    FileDefaults m_defaults{m_directories.configuration};
    ProcessToolRunner m_processes;
    DesktopRegistration m_registration{*m_directories.applicationSupport, LinuxResources::thisExecutable(),
                                       m_processes};
    LinuxToolRunner m_tools{m_registration};
    LinuxWorkspace m_workspace;
    QtHttpClient m_http;
    LaunchServicesManager m_launchServices{m_tools, files, m_workspace, m_directories};
    PreviewCacheManager m_previews{files, m_directories};
    FaviconService m_favicons{m_http, files, m_directories};
    IconService m_icons{m_tools, files};
    VersionManager m_versions;
    BundleGenerator m_generator;
    ConfigurationManager m_store;
    AppLifecycleManager m_lifecycle;
    LinuxScreenCapture m_screen;
};

/// What is drawn, over any apps.
class MenuBar {
public:
    MenuBar(const Resources& resources, Scheduler& scheduler, ConfigurationManager& store,
            AppLifecycleManager& lifecycle, Workspace& workspace, ScreenCapture& screen, PreviewCacheManager& previews,
            const FileSystem& files)
        : m_panel(resources, [] { return hasX11Compositor(); })
        , m_capture(screen, lifecycle, workspace)
        , m_preview({lifecycle, m_capture, previews, files, scheduler}, &m_panel)
        , m_services{store, lifecycle, workspace, m_preview, m_keys, m_application, scheduler}
        , m_delegate({m_bar, resources, m_application, m_notifications, [this]() -> MenuBarController& {
                          if (!m_controller)
                              m_controller = std::make_unique<MenuBarController>(m_services, m_menu);
                          return *m_controller;
                      }}) {}

    void start() { m_delegate.applicationDidFinishLaunching(); }
    [[nodiscard]] PreviewWindowController& preview() { return m_preview; }

private:
    LinuxStatusHosts m_hosts;
    TrayStatusBar m_bar{m_hosts};
    LinuxModifierKeys m_keys;
    QtThisApplication m_application;
    NotificationCenter m_notifications;
    WidgetMenu m_menu;
    PreviewPanelWidget m_panel;
    WindowCaptureService m_capture;
    PreviewWindowController m_preview;
    MenuBarServices m_services;
    std::unique_ptr<MenuBarController> m_controller;
    AppDelegate m_delegate;
};

int runReal(const QCommandLineParser& parser) {
    const auto directories = linuxDirectories();
    if (!directories)
        return 1;
    QtScheduler scheduler;
    const LinuxResources resources(parser.value(u"share"_s));
    RealApps apps(*directories, scheduler, resources);
    MenuBar bar(resources, scheduler, apps.store(), apps.lifecycle(), apps.workspace(), apps.screen(), apps.previews(),
                apps.files);
    bar.start();
    // Without a display's keys or pointer: the preview of one app, for as long as the program runs.
    for (const AppConfiguration& config : apps.store().configurations()) {
        if (config.displayName() == parser.value(u"preview"_s))
            scheduler.async([&bar, config] { bar.preview().showPreview(config); });
    }
    return QCoreApplication::exec();
}

int runOffline(const QCommandLineParser& parser) {
    QtScheduler scheduler;
    const LinuxResources resources(parser.value(u"share"_s));
    OfflineFixture fixture(parser.value(u"offline"_s), scheduler);
    FakeScreenCapture screen(scheduler);
    for (const RunningApplication& application : fixture.workspace.running)
        screen.addWindow(application.processIdentifier, QRectF(0, 0, 640, 400), Qt::darkCyan);
    PreviewCacheManager previews(fixture.services().files, fixture.services().directories);
    MenuBar bar(resources, scheduler, fixture.store(), fixture.lifecycle(), fixture.workspace, screen, previews,
                fixture.services().files);
    bar.start();
    return QCoreApplication::exec();
}

}  // namespace

int run() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({u"share"_s, u"Where the program's pictures and its template are."_s, u"folder"_s});
    parser.addOption({u"offline"_s, u"Use a recorded catalogue."_s, u"fixture"_s});
    parser.addOption({u"preview"_s, u"Show the preview of an app at once."_s, u"name"_s});
    parser.process(*QCoreApplication::instance());
    return parser.isSet(u"offline"_s) ? runOffline(parser) : runReal(parser);
}

}  // namespace wrapio

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(wrapio::AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    QWindow dashboard;  // stands for the program's own window
    dashboard.setTitle(QStringLiteral("Wrapio"));
    dashboard.resize(300, 200);
    return wrapio::run();
}
