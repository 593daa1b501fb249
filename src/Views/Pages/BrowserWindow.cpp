#include "Views/Pages/BrowserWindow.h"

#include "Platform/Diagnostics.h"
#include "Views/Pages/Pages.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <utility>

namespace wrapio {

using namespace Qt::StringLiterals;

BrowserWindow::BrowserWindow(const PageServices& services, std::function<bool()> loadEngine)
    : m_services(services)
    , m_loadEngine(std::move(loadEngine)) {}

BrowserWindow::~BrowserWindow() {
    close();
}

bool BrowserWindow::show(const QUuid& app) {
    const auto config = m_services.configManager.find(app);
    if (!config || !config->configuredURL || !m_loadEngine())
        return false;
    // Pages are judged against, and remembered in, the current configuration.
    m_services.configManager.selectApp(app);
    close();
    if (!open(*config))
        return false;
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    return true;
}

bool BrowserWindow::open(const AppConfiguration& app) {
    m_model = std::make_unique<BrowserModel>(m_services, *app.configuredURL, app.isDevMode);
    m_page = std::make_unique<EnginePage>(m_services.scheduler);
    m_engine = std::make_unique<QQmlEngine>();
    usePages(*m_engine);
    QQmlComponent component(m_engine.get(), QUrl(u"qrc:/qt-project.org/imports/Wrapio/Pages/BrowserScene.qml"_s));
    QObject* const root = component.createWithInitialProperties({{u"model"_s, QVariant::fromValue(m_model.get())},
                                                                 {u"page"_s, QVariant::fromValue(m_page.get())},
                                                                 {u"appName"_s, app.displayName()}});
    m_window = qobject_cast<QQuickWindow*>(root);
    if (!m_window) {
        printDiagnostics(u"❌ [WebView] "_s + component.errorString());
        delete root;
        close();
        return false;
    }
    connect(m_window, &QQuickWindow::visibleChanged, this, [this](bool visible) {
        // In a later turn: the window is still being told that it is closed.
        if (!visible)
            QMetaObject::invokeMethod(this, &BrowserWindow::close, Qt::QueuedConnection);
    });
    m_model->attach(*m_page);
    return true;
}

void BrowserWindow::close() {
    if (m_window)
        m_window->disconnect(this);
    // The model lets go of the page, and the engine's view goes before the objects that it is bound to.
    delete m_window.data();
    m_model.reset();
    m_engine.reset();
    m_page.reset();
}

}  // namespace wrapio
