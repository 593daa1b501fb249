// What stands in the menu of the status item, and what happens in it.
#pragma once

#include "Models/ConfigurationManager.h"
#include "Platform/ModifierKeys.h"
#include "Platform/Scheduler.h"
#include "Platform/Workspace.h"
#include "Services/AppLifecycleManager.h"
#include "Utilities/SharedInstance.h"
#include "Views/MenuBarMenu.h"
#include "Views/PreviewWindowController.h"
#include "Views/ThisApplication.h"

#include <memory>
#include <vector>

namespace wrapio {

/// What the controller works with; all of it outlives the controller.
struct MenuBarServices {
    ConfigurationManager& store;
    AppLifecycleManager& lifecycle;
    Workspace& workspace;
    PreviewWindowController& preview;
    ModifierKeys& keys;
    ThisApplication& application;
    Scheduler& scheduler;
};

/// Main thread. The menu is made anew whenever the catalogue or the set of running apps changes.
class MenuBarController : public SharedInstance<MenuBarController>, private MenuDelegate {
public:
    static constexpr double debounceInterval = 0.1;

    MenuBarController(MenuBarServices services, MenuBarMenu& menu);
    MenuBarController(const MenuBarController&) = delete;
    MenuBarController& operator=(const MenuBarController&) = delete;
    ~MenuBarController() override;

    /// The one menu, which the status item shows.
    [[nodiscard]] MenuBarMenu& menu() const { return m_menu; }

    void rebuildMenu();
    /// The item of an app.
    [[nodiscard]] static MenuItem makeMenuItem(const AppConfiguration& config, bool isRunning);

    void launchOrFocusApp(const MenuItem& item);
    void openManager();
    void quitAllApps();
    void quitWrapio();

private:
    void menuWillOpen() override;
    void menuWillHighlight(const MenuItem* item) override;
    void menuDidClose() override;
    void menuDidChoose(const MenuItem& item) override;

    void subscribe();
    void setupEventMonitors();
    void handleFlagsChanged();
    void hoverOver(const AppConfiguration& config);
    void moveOffItem();
    void updateWatching();
    [[nodiscard]] std::function<void()> rebuildingLater();

    MenuBarServices m_services;
    MenuBarMenu& m_menu;
    ScheduledTask hoverDebounceWorkItem;
    std::optional<AppConfiguration> currentHighlightedConfig;
    std::vector<Subscription> cancellables;
    Subscription localEventMonitor;
    Subscription globalEventMonitor;
    bool m_isMenuOpen = false;
    std::shared_ptr<MenuBarController*> m_self;  ///< so that queued work knows whether this is gone
};

}  // namespace wrapio
