// What the program does when the desktop tells it something: that it has started, that it was asked for, what to open.
#pragma once

#include "Platform/Resources.h"
#include "Services/URLRequestRouter.h"
#include "Utilities/NotificationCenter.h"
#include "Views/MenuBarController.h"
#include "Views/StatusItem.h"
#include "Views/ThisApplication.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace wrapio {

/// Main thread.
class AppDelegate {
public:
    /// All of it outlives the delegate.
    struct Surroundings {
        StatusBar& statusBar;
        const Resources& resources;
        ThisApplication& application;
        NotificationCenter& notificationCenter;
        std::function<MenuBarController&()> sharedMenuBarController;  ///< made when it is first asked for
    };

    explicit AppDelegate(Surroundings surroundings);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching();
    /// Hands on addresses that other programs gave, one after the other.
    void applicationOpen(const QStringList& urls);
    /// The program was asked for again. Always true: the desktop may do what it does then, too.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    /// False: without a window, the program lives on in its status item.
    [[nodiscard]] static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

    /// Nothing before launching has finished.
    [[nodiscard]] StatusItem* statusItem() const { return m_statusItem.get(); }
    /// Null before launching has finished, and where there is no place for a menu.
    [[nodiscard]] MenuBarController* menuController() const { return m_menuController; }

private:
    void setupMenuBar();
    [[nodiscard]] std::optional<StatusImage> buttonImage() const;
    void handleIncomingURL(const QString& url);
    void showMainWindow();

    Surroundings m_surroundings;
    URLRequestRouter m_router;
    std::unique_ptr<StatusItem> m_statusItem;
    MenuBarController* m_menuController = nullptr;
};

}  // namespace wrapio
