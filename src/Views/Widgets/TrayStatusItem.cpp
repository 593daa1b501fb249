#include "Views/Widgets/TrayStatusItem.h"

#include "Views/Widgets/TintedIcon.h"

#include <QCursor>
#include <QGuiApplication>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Nobody tells the colour of the bar; this one is seen on light bars as well as on dark ones.
constexpr QColor shapeColor(0x84, 0x8A, 0x94);

bool isDisplayless() {
    const QString platform = QGuiApplication::platformName();
    return platform == u"offscreen" || platform == u"minimal";
}

}  // namespace

TrayStatusItem::TrayStatusItem(StatusHosts& hosts)
    : m_hosts(hosts)
    , m_appearance(hosts.onAppearance([this] { appear(); })) {}

bool TrayStatusItem::hasButton() const {
    return !isDisplayless();
}

void TrayStatusItem::setImage(const StatusImage& image) {
    if (image.isTemplate)
        m_icon = statusIcon(image.image, shapeColor);
    else
        m_icon = QIcon(QPixmap::fromImage(image.image));
    if (m_tray)
        m_tray->setIcon(m_icon);
}

void TrayStatusItem::setMenu(MenuBarMenu& menu) {
    m_menu = dynamic_cast<WidgetMenu*>(&menu);
    Q_ASSERT(m_menu);
    if (m_tray)
        m_tray->setContextMenu(&m_menu->desktopMenu());
}

void TrayStatusItem::setVisible(bool isVisible) {
    m_isVisible = isVisible;
    appear();
}

void TrayStatusItem::showMessage(const QString& title, const QString& text) {
    if (m_tray)
        m_tray->showMessage(title, text, m_icon);
}

/// The toolkit decides once and for all how it shows items; so it is asked only when there is somebody to show them.
void TrayStatusItem::appear() {
    if (!m_tray && m_isVisible && hasButton() && m_hosts.isPresent()) {
        m_tray = std::make_unique<QSystemTrayIcon>(m_icon);
        m_tray->setToolTip(u"Wrapio"_s);
        connect(m_tray.get(), &QSystemTrayIcon::activated, this, &TrayStatusItem::activate);
        if (m_menu)
            m_tray->setContextMenu(&m_menu->desktopMenu());
    }
    if (m_tray)
        m_tray->setVisible(m_isVisible);
}

void TrayStatusItem::activate(QSystemTrayIcon::ActivationReason reason) {
    if (!m_menu || (reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::DoubleClick))
        return;
    // Wayland opens no menu that belongs to no window; the desktop's own copy is at the other button.
    if (QGuiApplication::platformName().startsWith(u"wayland"))
        m_menu->choose(MenuAction::openManager);
    else
        m_menu->popup(QCursor::pos());
}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem(double length) {
    Q_UNUSED(length)
    return std::make_unique<TrayStatusItem>(m_hosts);
}

}  // namespace wrapio
