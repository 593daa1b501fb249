#include "WrapioAppWindows.h"

#include "Design/Appearance.h"
#include "Platform/Linux/Machine.h"
#include "Platform/Linux/X11Windows.h"
#include "Views/Pages/PageEngine.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QQuickWindow>

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Stands for the dashboard while it is closed; no window of the toolkit has this number.
constexpr quint64 closedDashboard = 0;
const QString dashboardTitle = u"Wrapio"_s;
const QString dashboardIdentifier = u"main"_s;
/// The picture of the program itself.
const QString programIcon = u"wrapio"_s;
/// As large as switchers of windows draw it; each program on the display keeps a copy.
constexpr int windowIconWidth = 128;
/// There once people have been told that the program goes on without its window.
const QString toldKey = u"told_about_running_on"_s;

ViewModelServices viewModelServices(WrapioAppServices& services, const Catalogue& catalogue,
                                    CollectionExchange& exchange, FileDialogs& dialogs) {
    PlatformServices& platform = services.platform;
    SharedServices& shared = services.shared;
    return {catalogue.store,
            catalogue.lifecycle,
            shared.favicons,
            shared.versions,
            shared.launchServices,
            exchange,
            dialogs,
            platform.files,
            platform.workspace,
            platform.resources,
            platform.scheduler,
            platform.directories};
}

}  // namespace

std::vector<ApplicationWindow> ManagerApplication::windows() const {
    std::vector<ApplicationWindow> list = m_toolkit.windows();
    if (!m_dashboard.isOpen())
        list.insert(list.begin(), {closedDashboard, dashboardTitle, dashboardIdentifier, true});
    return list;
}

void ManagerApplication::makeKeyAndOrderFront(const ApplicationWindow& window) {
    if (window.number == closedDashboard || window.title == dashboardTitle)
        m_dashboard.show(QString::fromUtf8(std::exchange(m_token, {})));
    else
        m_toolkit.makeKeyAndOrderFront(window);
}

WindowedInterface::WindowedInterface(WrapioAppServices& services, const Catalogue& catalogue,
                                     NotificationCenter& notifications, std::function<void()> quit)
    : m_services(services)
    , m_catalogue(catalogue)
    , m_exchange(services.platform.tools, services.platform.files, m_dialogs, services.platform.scheduler,
                 services.platform.directories)
    , m_dashboard(viewModelServices(services, catalogue, m_exchange, m_dialogs), notifications)
    , m_browser({catalogue.store, services.platform.workspace, services.platform.scheduler},
                [] { return loadPageEngine(QCoreApplication::applicationDirPath()); })
    , m_application(m_dashboard, std::move(quit))
    , m_motion(&chooseReducedMotion)
    , m_panel(services.platform.resources, [] { return hasX11Compositor(); })
    , m_capture(services.platform.screen(), catalogue.lifecycle, services.platform.workspace)
    , m_preview({catalogue.lifecycle, m_capture, services.shared.previews, services.platform.files,
                 services.platform.scheduler},
                &m_panel)
    , m_delegate({m_bar, services.platform.resources, m_application, notifications,
                  [this]() -> MenuBarController& { return menuBarController(); }}) {
    // Asked for when the first window opens: the program in the background shows none.
    QObject::connect(&m_dashboard, &DashboardWindow::opened, &m_dashboard, [this, &services] {
        m_motion.follow();
        if (const auto icon = services.platform.resources.image(programIcon);
            icon && QGuiApplication::windowIcon().isNull())
            QGuiApplication::setWindowIcon(
                QPixmap::fromImage(icon->scaledToWidth(windowIconWidth, Qt::SmoothTransformation)));
    });
    m_dashboard.setSiteOpener([this](const QUuid& app) { return m_browser.show(app); });
    QObject::connect(&m_dashboard, &DashboardWindow::closed, &m_dashboard, [this] { dashboardClosed(); });
}

void WindowedInterface::start(bool background) {
    m_delegate.applicationDidFinishLaunching();
    if (!background)
        activate(qgetenv("XDG_ACTIVATION_TOKEN"));
}

void WindowedInterface::activate(const QByteArray& token) {
    m_application.setActivationToken(token);
    m_dashboard.show(QString::fromUtf8(token));
}

void WindowedInterface::open(const QStringList& urls, const QByteArray& token) {
    m_application.setActivationToken(token);
    m_delegate.applicationOpen(urls);
}

bool WindowedInterface::edit(const QUuid& app, const QByteArray& token) {
    activate(token);
    DashboardViewModel* const viewModel = m_dashboard.viewModel();
    // What is typed into an open sheet is not to be lost.
    if (viewModel && !viewModel->editor())
        viewModel->editApp(canonicalText(app));
    return viewModel;
}

MenuBarController& WindowedInterface::menuBarController() {
    if (!m_controller) {
        m_controller = std::make_unique<MenuBarController>(
            MenuBarServices{m_catalogue.store, m_catalogue.lifecycle, m_services.platform.workspace, m_preview, m_keys,
                            m_application, m_services.platform.scheduler},
            m_menu);
    }
    return *m_controller;
}

/// Where nobody shows status items, the program could not be reached any more.
void WindowedInterface::dashboardClosed() {
    if (!m_hosts.isPresent()) {
        m_application.terminate();
        return;
    }
    giveBackReleasedMemory();
    UserDefaults& defaults = m_services.platform.defaults;
    if (defaults.data(toldKey) || !m_delegate.statusItem())
        return;
    m_delegate.statusItem()->showMessage(u"Wrapio is still here"_s,
                                         u"Your apps are in the status area. Quit Wrapio from its menu."_s);
    static_cast<void>(defaults.setData("true", toldKey));
}

}  // namespace wrapio
