// wrapio-menu-bar: the status item with its menu and previews over a recorded catalogue, without the rest of the program.
#include "AppDelegate.h"
#include "Fakes/FakeScreenCapture.h"
#include "Offline/OfflineFixture.h"
#include "Platform/Linux/LinuxModifierKeys.h"
#include "Platform/Linux/LinuxResources.h"
#include "Platform/Linux/LinuxStatusHosts.h"
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
    parser.addOption({u"offline"_s, u"The recorded catalogue."_s, u"fixture"_s, u"dozen"_s});
    parser.process(*QCoreApplication::instance());
    return runOffline(parser);
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
