// The window of an app: title bar, web view, and what is shown in its place when there is no page.
#pragma once

#include "RunnerCore/AppRequest.h"
#include "RunnerCore/Bundle.h"
#include "Shell/DefaultPrograms.h"
#include "Shell/HeaderBar.h"
#include "Shell/LauncherBadge.h"
#include "Shell/NavigationGuard.h"
#include "Shell/ProfileFolder.h"
#include "Shell/StatusPage.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <optional>
#include <string>

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

    /// Loads the app's own address, unless a page has been asked for.
    void loadStart();

    void handle(const AppRequest& request);

private:
    void buildWindow(GtkApplication* application);
    void addActions();
    void addAction(const char* name, void (*handler)(AppWindow& self));
    void connectView();
    void handOff(const std::string& address);
    void reload();
    void updateNavigation();
    void updateTitle();
    void updateProgress();
    void showPage();
    void showFailure(const Message& message);
    void offerImport(const ImportSessionRequest& request);
    [[nodiscard]] std::string currentAddress() const;

    static gboolean quit(GApplication* application);
    static void loadChanged(WebKitWebView*, WebKitLoadEvent event, AppWindow* self);
    static gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, const char* address, GError* error, AppWindow* self);
    static gboolean tlsFailed(WebKitWebView*, const char* address, GTlsCertificate*, GTlsCertificateFlags,
                              AppWindow* self);
    static void processEnded(WebKitWebView*, WebKitWebProcessTerminationReason, AppWindow* self);

    const Bundle& m_bundle;
    WebKitWebView* m_view;
    HeaderBar m_header;
    StatusPage m_status{"dialog-warning-symbolic"};
    DefaultPrograms m_programs;
    NavigationGuard m_guard;
    LauncherBadge m_badge;
    GtkWindow* m_window = nullptr;
    GtkStack* m_stack = nullptr;
    GtkProgressBar* m_progress = nullptr;
    std::string m_failedAddress;  ///< what a retry loads; empty while a page is shown
    bool m_hasPage = false;       ///< a page was asked for
    bool m_hasCommitted = false;  ///< a page was shown
};

}  // namespace wrapio
