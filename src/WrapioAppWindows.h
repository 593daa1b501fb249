// The manager as people see it: the dashboard, and the status item with its menu and previews.
#pragma once

#include "AppDelegate.h"
#include "Platform/Linux/LinuxModifierKeys.h"
#include "Platform/Linux/LinuxMotion.h"
#include "Platform/Linux/LinuxStatusHosts.h"
#include "Session/ManagerInterface.h"
#include "ViewModels/ArchiveExchange.h"
#include "Views/DashboardWindow.h"
#include "Views/Pages/BrowserWindow.h"
#include "Views/Widgets/PreviewPanelWidget.h"
#include "Views/Widgets/QtFileDialogs.h"
#include "Views/Widgets/QtThisApplication.h"
#include "Views/Widgets/TrayStatusItem.h"
#include "WrapioAppServices.h"

#include <functional>
#include <memory>

namespace wrapio {

/// The program's windows: those that exist, and the dashboard, which is made anew when it is asked for.
class ManagerApplication final : public ThisApplication {
public:
    /// `dashboard` must outlive this. `quit` ends the program once it may end.
    ManagerApplication(DashboardWindow& dashboard, std::function<void()> quit)
        : m_dashboard(dashboard)
        , m_quit(std::move(quit)) {}

    void activate() override {}
    [[nodiscard]] std::vector<ApplicationWindow> windows() const override;
    void makeKeyAndOrderFront(const ApplicationWindow& window) override;
    void terminate() override { m_quit(); }

    /// What the desktop gave so that the next window may come to the front.
    void setActivationToken(const QByteArray& token) { m_token = token; }

private:
    DashboardWindow& m_dashboard;
    std::function<void()> m_quit;
    QtThisApplication m_toolkit;
    QByteArray m_token;
};

/// Needs a QApplication and a display. Main thread.
class WindowedInterface final : public ManagerInterface {
public:
    /// `services`, whose catalogue is open, and `notifications` must outlive this. `quit` is called at most once.
    WindowedInterface(WrapioAppServices& services, const Catalogue& catalogue, NotificationCenter& notifications,
                      std::function<void()> quit);

    void start(bool background) override;
    void activate(const QByteArray& token) override;
    void open(const QStringList& urls, const QByteArray& token) override;
    bool edit(const QUuid& app, const QByteArray& token) override;

private:
    [[nodiscard]] MenuBarController& menuBarController();
    void dashboardClosed();

    WrapioAppServices& m_services;
    Catalogue m_catalogue;
    QtFileDialogs m_dialogs;
    ArchiveExchange m_exchange;
    DashboardWindow m_dashboard;
    BrowserWindow m_browser;
    ManagerApplication m_application;
    LinuxStatusHosts m_hosts;
    LinuxModifierKeys m_keys;
    LinuxMotion m_motion;
    TrayStatusBar m_bar{m_hosts};
    WidgetMenu m_menu;
    PreviewPanelWidget m_panel;
    WindowCaptureService m_capture;
    PreviewWindowController m_preview;
    std::unique_ptr<MenuBarController> m_controller;
    AppDelegate m_delegate;
};

}  // namespace wrapio
