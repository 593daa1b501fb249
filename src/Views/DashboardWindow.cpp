#include "Views/DashboardWindow.h"

#include "Platform/Diagnostics.h"
#include "Services/Notifications.h"
#include "Services/WrapioURLBridge.h"
#include "Views/SettingsWindow.h"
#include "Views/Views.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

DashboardWindow::DashboardWindow(const ViewModelServices& services, NotificationCenter& notifications)
    : m_services(services)
    , m_notifications(notifications) {
    // Requests that arrive while no window is open stay in their slots until show().
    for (const auto name : {notifications::createAppFromURL, notifications::importSessionFromURL})
        m_subscriptions.push_back(notifications.addObserver(name, [this] { takeRequests(); }));
}

DashboardWindow::~DashboardWindow() {
    tearDown();
}

bool DashboardWindow::show(const QString& activationToken) {
    if (!m_window && !open())
        return false;
    // Read by the platform's plug-in when it raises a window.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    if (m_window->windowStates() & Qt::WindowMinimized)
        m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    qunsetenv("XDG_ACTIVATION_TOKEN");
    takeRequests();
    return true;
}

bool DashboardWindow::open() {
    m_viewModel = std::make_unique<DashboardViewModel>(m_services);
    m_engine = std::make_unique<QQmlEngine>();
    useViews(*m_engine, m_services.faviconService, m_services.resources);
    QQmlComponent component(m_engine.get(), QUrl(u"qrc:/qt-project.org/imports/Wrapio/Views/MainWindow.qml"_s));
    QObject* const root =
        component.createWithInitialProperties({{u"viewModel"_s, QVariant::fromValue(m_viewModel.get())}});
    m_window = qobject_cast<QQuickWindow*>(root);
    if (!m_window) {
        printDiagnostics(u"❌ [Dashboard] "_s + component.errorString());
        delete root;
        tearDown();
        return false;
    }
    connect(m_window, SIGNAL(reloadRequested()), this, SLOT(postReload()));
    connect(m_window, SIGNAL(websiteRequested(QString)), this, SLOT(openSite(QString)));
    connect(m_window, &QQuickWindow::visibleChanged, this, [this](bool visible) {
        // In a later turn: the window is still being told that it is closed.
        if (!visible)
            QMetaObject::invokeMethod(this, &DashboardWindow::close, Qt::QueuedConnection);
    });
    Q_EMIT opened();
    return true;
}

void DashboardWindow::close() {
    if (!m_window)
        return;
    tearDown();
    Q_EMIT closed();
}

void DashboardWindow::tearDown() {
    m_settings.reset();
    if (m_window)
        m_window->disconnect(this);
    delete m_window.data();
    m_engine.reset();
    m_viewModel.reset();
}

void DashboardWindow::showSettings() {
    if (!m_settings)
        m_settings = std::make_unique<SettingsWindow>(m_services);
    m_settings->show();
}

void DashboardWindow::takeRequests() {
    if (!m_viewModel)
        return;
    if (const auto request = WrapioURLBridge::takePendingCreateRequest())
        m_viewModel->createFromURLRequest(*request);
    if (const auto request = WrapioURLBridge::takePendingImportSessionRequest())
        m_viewModel->importSessionFromURLRequest(*request);
}

void DashboardWindow::openSite(const QString& appId) {
    if (!m_openSite || !m_openSite(QUuid(appId)))
        m_viewModel->openWebsite(appId);
}

void DashboardWindow::postReload() {
    m_notifications.post(notifications::reloadPage);
}

}  // namespace wrapio
