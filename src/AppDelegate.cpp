#include "AppDelegate.h"

#include "Platform/Diagnostics.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double symbolPointSize = 14;

}  // namespace

AppDelegate::AppDelegate(Surroundings surroundings)
    : m_surroundings(std::move(surroundings))
    , m_router(m_surroundings.notificationCenter, {.activate = [this] { m_surroundings.application.activate(); },
                                                   .showMainWindow = [this] { showMainWindow(); }}) {}

void AppDelegate::applicationDidFinishLaunching() {
    printDiagnostics(u"✅ Wrapio launched - setting up menu bar with NSStatusItem"_s);
    setupMenuBar();
}

void AppDelegate::applicationOpen(const QStringList& urls) {
    for (const QString& url : urls)
        handleIncomingURL(url);
}

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
    if (!hasVisibleWindows)
        showMainWindow();
    return true;
}

void AppDelegate::setupMenuBar() {
    m_statusItem = m_surroundings.statusBar.makeStatusItem(StatusBar::squareLength);
    if (!m_statusItem->hasButton()) {
        printDiagnostics(u"❌ Status item button is nil!"_s);
        return;
    }
    if (const auto image = buttonImage())
        m_statusItem->setImage(*image);
    m_menuController = &m_surroundings.sharedMenuBarController();
    m_statusItem->setMenu(m_menuController->menu());
    m_statusItem->setVisible(true);
    printDiagnostics(u"✅ Menu bar setup complete with hover preview support"_s);
}

std::optional<StatusImage> AppDelegate::buttonImage() const {
    if (const auto picture = m_surroundings.resources.image(u"MenuBarIcon"_s))
        return StatusImage{*picture, true, QString(), 0, FontWeight::regular};
    const auto symbol = m_surroundings.resources.image(u"square.grid.2x2"_s);
    if (!symbol)
        return std::nullopt;
    return StatusImage{.image = *symbol,
                       .isTemplate = true,
                       .accessibilityDescription = u"Wrapio"_s,
                       .pointSize = symbolPointSize,
                       .weight = FontWeight::medium};
}

void AppDelegate::handleIncomingURL(const QString& url) {
    m_router.handleIncomingURL(url);
}

void AppDelegate::showMainWindow() {
    for (const ApplicationWindow& window : m_surroundings.application.windows()) {
        if (window.canBecomeMain) {
            m_surroundings.application.makeKeyAndOrderFront(window);
            return;
        }
    }
}

}  // namespace wrapio
