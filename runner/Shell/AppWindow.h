// The window of an app: title bar, web view, and what is shown around it and in its place.
#pragma once

#include "RunnerCore/AppRequest.h"
#include "RunnerCore/Badge.h"
#include "RunnerCore/Bundle.h"
#include "RunnerCore/MissingAbility.h"
#include "Shell/BannerArea.h"
#include "Shell/ColorScheme.h"
#include "Shell/Cookies.h"
#include "Shell/DefaultPrograms.h"
#include "Shell/Downloads.h"
#include "Shell/FindBar.h"
#include "Shell/HeaderBar.h"
#include "Shell/LauncherBadge.h"
#include "Shell/LoadTroubles.h"
#include "Shell/NavigationGuard.h"
#include "Shell/Notifications.h"
#include "Shell/PageArea.h"
#include "Shell/PageMessages.h"
#include "Shell/Permissions.h"
#include "Shell/Popups.h"
#include "Shell/ProfileFolder.h"
#include "Shell/SessionImport.h"
#include "Shell/WebContent.h"
#include "Shell/WindowPlacement.h"
#include "Shell/WindowStyle.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <functional>
#include <string>
#include <vector>

namespace wrapio {

/// Lives on the main thread, from the first activation to the end of the application, which outlives it.
class AppWindow {
public:
    AppWindow(GtkApplication* application, const Bundle& bundle, const ProfilePaths& paths);
    ~AppWindow();
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;

    /// Shows the window, in front and not minimised.
    void present();

    /// Loads the app's own address, unless a page has been asked for. Nothing is loaded before the session's cookies
    /// are back.
    void loadStart();

    void handle(const AppRequest& request);

    /// Draws the window; see takeSnapshot.
    void drawTo(std::function<void(std::string answer)> finish) const;

    /// Takes the window away and calls `finish` once everything that must survive is written.
    void prepareToQuit(std::function<void()> finish);

private:
    void buildWindow(GtkApplication* application);
    void addActions();
    void addPageActions();
    void addViewActions();
    void connectView();
    void attachShared(WebKitWebView* view);
    void handOff(const std::string& address);
    void setZoom(double zoom);
    void toggleFullScreen();
    void print();
    void askToClearData();
    void clearData();
    void updateNavigation();
    void updateTitle();
    void tellMissingAbility(const std::string& need);
    void whenReady(std::function<void()> action);
    [[nodiscard]] std::string currentAddress() const;
    [[nodiscard]] GActionMap* actions() const { return G_ACTION_MAP(m_window); }

    const Bundle& m_bundle;
    GtkApplication* m_application;
    GtkWindow* m_window;
    WebContent m_content;
    ObjectPtr<WebKitWebView> m_ownedView;
    WebKitWebView* m_view;
    PageArea m_page;
    HeaderBar m_header;
    BannerArea m_banners;
    Permissions m_permissions;
    Notifications m_notifications;
    SessionCookies m_cookies;
    PageMessages m_messages;
    FindBar m_find;
    DefaultPrograms m_programs;
    Downloads m_downloads;
    Popups m_popups;
    PageLoader m_loader;
    NavigationGuard m_guard;
    LoadTroubles m_troubles;
    SessionImport m_import;
    BadgeState m_badge;
    LauncherBadge m_launcherBadge;
    ColorScheme m_colorScheme;
    WindowStyle m_style;
    WindowPlacement m_placement;
    ToldAbilities m_told;
    std::string m_toldPath;
    bool m_isReady = false;  ///< the session's cookies are back
    std::vector<std::function<void()>> m_waiting;
    bool m_hasPage = false;  ///< a page was asked for
};

}  // namespace wrapio
