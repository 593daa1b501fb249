// The status item in a desktop's tray.
#pragma once

#include "Platform/StatusHosts.h"
#include "Views/StatusItem.h"
#include "Views/Widgets/WidgetMenu.h"

#include <QIcon>
#include <QSystemTrayIcon>

#include <memory>

namespace wrapio {

/// Shows up as soon as there is somebody to show it, now or later. A click opens the menu; the other button shows the
/// copy that the desktop draws.
class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// `hosts` must outlive this.
    explicit TrayStatusItem(StatusHosts& hosts);

    [[nodiscard]] bool hasButton() const override;
    void setImage(const StatusImage& image) override;
    void setMenu(MenuBarMenu& menu) override;
    void setVisible(bool isVisible) override;
    void showMessage(const QString& title, const QString& text) override;

private:
    void appear();
    void activate(QSystemTrayIcon::ActivationReason reason);

    StatusHosts& m_hosts;
    Subscription m_appearance;
    QIcon m_icon;
    WidgetMenu* m_menu = nullptr;
    std::unique_ptr<QSystemTrayIcon> m_tray;  ///< none before there was a host
    bool m_isVisible = false;
};

class TrayStatusBar final : public StatusBar {
public:
    explicit TrayStatusBar(StatusHosts& hosts)
        : m_hosts(hosts) {}

    /// The desktop decides how long items are.
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override;

private:
    StatusHosts& m_hosts;
};

}  // namespace wrapio
