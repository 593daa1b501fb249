#include "Views/SettingsWindow.h"

#include "Platform/Diagnostics.h"
#include "Views/Views.h"

#include <QQmlComponent>
#include <QQmlEngine>

namespace wrapio {

using namespace Qt::StringLiterals;

SettingsWindow::SettingsWindow(const ViewModelServices& services)
    : m_services(services) {}

SettingsWindow::~SettingsWindow() {
    tearDown();
}

void SettingsWindow::show() {
    if (!m_window || !m_window->isVisible()) {
        tearDown();
        const auto app = m_services.configManager.selectedAppId();
        if (!app || !open(*app))
            return;
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

bool SettingsWindow::open(const QUuid& app) {
    const AppEditingContext context{.mode = ConfigurationMode::edit, .appId = app, .isNew = false};
    m_editor = std::make_unique<EditorSheetViewModel>(
        m_services, context, [this](const AppConfiguration& config) { m_services.configManager.removeApp(config.id); });
    m_editor->open();
    m_engine = std::make_unique<QQmlEngine>();
    useViews(*m_engine, m_services.faviconService, m_services.resources);
    QQmlComponent component(m_engine.get(), QUrl(u"qrc:/qt-project.org/imports/Wrapio/Views/SettingsScene.qml"_s));
    QObject* const root = component.createWithInitialProperties({{u"editor"_s, QVariant::fromValue(m_editor.get())}});
    m_window = qobject_cast<QQuickWindow*>(root);
    if (m_window)
        return true;
    printDiagnostics(u"❌ [Dashboard] "_s + component.errorString());
    delete root;
    tearDown();
    return false;
}

void SettingsWindow::tearDown() {
    delete m_window.data();
    m_engine.reset();
    m_editor.reset();
}

}  // namespace wrapio
