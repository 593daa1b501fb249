#include "Shell/AppWindow.h"

#include "RunnerCore/DisplayText.h"
#include "RunnerCore/PageTitle.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"
#include "Shell/NoticeDialog.h"
#include "Shell/WebContent.h"
#include "Shell/WindowStyle.h"

namespace wrapio {

namespace {

constexpr int usualWidth = 1200;
constexpr int usualHeight = 800;
constexpr std::size_t longestTitle = 200;
constexpr std::size_t longestAddress = 120;

GtkProgressBar* makeProgressBar() {
    GtkWidget* bar = gtk_progress_bar_new();
    gtk_widget_add_css_class(bar, "load-progress");
    gtk_widget_set_valign(bar, GTK_ALIGN_START);
    gtk_widget_set_can_target(bar, FALSE);
    gtk_widget_set_visible(bar, FALSE);
    return GTK_PROGRESS_BAR(bar);
}

}  // namespace

AppWindow::AppWindow(GtkApplication* application, const Bundle& bundle, const ProfilePaths& paths)
    : m_bundle(bundle)
    , m_view(makeWebView(bundle.config, paths))
    , m_header(bundle.config.isDevMode)
    , m_programs([this](const std::string& address, const std::string& reason) {
        showNoticeDialog(m_window, {"The address could not be opened", "“" + displayText(address, longestAddress) +
                                                                           "”: " + displayText(reason, longestTitle)});
    })
    , m_guard(m_view, policyOf(bundle.config), [this](const std::string& address) { handOff(address); })
    , m_badge(g_application_get_dbus_connection(G_APPLICATION(application)), bundle.info.desktopId) {
    buildWindow(application);
    addActions();
    connectView();
    updateNavigation();
    updateTitle();
}

AppWindow::~AppWindow() {
    m_badge.show(std::nullopt);
    g_signal_handlers_disconnect_by_data(m_view, this);
    g_signal_handlers_disconnect_by_data(m_view, &m_guard);
    gtk_window_destroy(m_window);
}

void AppWindow::buildWindow(GtkApplication* application) {
    m_window = GTK_WINDOW(gtk_application_window_new(application));
    // The window goes with this object, not before it.
    g_signal_connect_swapped(m_window, "close-request", G_CALLBACK(&AppWindow::quit), application);
    gtk_window_set_default_size(m_window, usualWidth, usualHeight);
    gtk_window_set_icon_name(m_window, m_bundle.info.desktopId.c_str());
    gtk_widget_add_css_class(GTK_WIDGET(m_window), "app-window");
    gtk_window_set_titlebar(m_window, m_header.widget());
    m_stack = GTK_STACK(gtk_stack_new());
    gtk_stack_add_child(m_stack, GTK_WIDGET(m_view));
    gtk_stack_add_child(m_stack, m_status.widget());
    GtkWidget* overlay = gtk_overlay_new();
    gtk_widget_add_css_class(overlay, "app-frame");
    gtk_overlay_set_child(GTK_OVERLAY(overlay), GTK_WIDGET(m_stack));
    m_progress = makeProgressBar();
    gtk_overlay_add_overlay(GTK_OVERLAY(overlay), GTK_WIDGET(m_progress));
    gtk_window_set_child(m_window, overlay);
    gtk_window_set_focus(m_window, GTK_WIDGET(m_view));
    applyWindowStyle(GTK_WIDGET(m_window), m_bundle.config.theme);
    connect(
        m_status.button(), "clicked", [](GtkButton*, AppWindow* self) { self->reload(); }, this);
}

gboolean AppWindow::quit(GApplication* application) {
    g_application_quit(application);
    return TRUE;
}

void AppWindow::addAction(const char* name, void (*handler)(AppWindow& self)) {
    const ObjectPtr<GSimpleAction> action(g_simple_action_new(name, nullptr));
    g_object_set_data(G_OBJECT(action.get()), "wrapio-handler", reinterpret_cast<gpointer>(handler));
    connect(
        action.get(), "activate",
        [](GSimpleAction* activated, GVariant*, AppWindow* self) {
            using Handler = void (*)(AppWindow&);
            reinterpret_cast<Handler>(g_object_get_data(G_OBJECT(activated), "wrapio-handler"))(*self);
        },
        this);
    g_action_map_add_action(G_ACTION_MAP(m_window), G_ACTION(action.get()));
}

void AppWindow::addActions() {
    addAction("back", [](AppWindow& self) { webkit_web_view_go_back(self.m_view); });
    addAction("forward", [](AppWindow& self) { webkit_web_view_go_forward(self.m_view); });
    addAction("reload", [](AppWindow& self) { self.reload(); });
    addAction("stop", [](AppWindow& self) { webkit_web_view_stop_loading(self.m_view); });
    addAction("home", [](AppWindow& self) { self.m_guard.loadStart(self.m_bundle.config.url); });
    addAction("copy-address", [](AppWindow& self) {
        gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(self.m_window)), self.currentAddress().c_str());
    });
    addAction("open-in-browser", [](AppWindow& self) { self.m_programs.open(self.currentAddress()); });
    if (m_bundle.config.isDevMode)
        addAction("inspect",
                  [](AppWindow& self) { webkit_web_inspector_show(webkit_web_view_get_inspector(self.m_view)); });
}

void AppWindow::connectView() {
    const auto onProperty = [this](const char* signal, auto handler) { connect(m_view, signal, handler, this); };
    onProperty("notify::title", [](GObject*, GParamSpec*, AppWindow* self) { self->updateTitle(); });
    onProperty("notify::uri", [](GObject*, GParamSpec*, AppWindow* self) { self->updateNavigation(); });
    onProperty("notify::is-loading", [](GObject*, GParamSpec*, AppWindow* self) { self->updateProgress(); });
    onProperty("notify::estimated-load-progress",
               [](GObject*, GParamSpec*, AppWindow* self) { self->updateProgress(); });
    connect(
        webkit_web_view_get_back_forward_list(m_view), "changed",
        [](GObject*, GObject*, gpointer, AppWindow* self) { self->updateNavigation(); }, this);
    g_signal_connect(m_view, "load-changed", G_CALLBACK(&AppWindow::loadChanged), this);
    g_signal_connect(m_view, "load-failed", G_CALLBACK(&AppWindow::loadFailed), this);
    g_signal_connect(m_view, "load-failed-with-tls-errors", G_CALLBACK(&AppWindow::tlsFailed), this);
    g_signal_connect(m_view, "web-process-terminated", G_CALLBACK(&AppWindow::processEnded), this);
}

void AppWindow::present() {
    gtk_window_present(m_window);
}

void AppWindow::loadStart() {
    if (!m_hasPage)
        m_guard.loadStart(m_bundle.config.url);
    m_hasPage = true;
}

void AppWindow::handle(const AppRequest& request) {
    if (const auto* import = std::get_if<ImportSessionRequest>(&request)) {
        loadStart();
        return offerImport(*import);
    }
    const std::string& address = std::get<AddressRequest>(request).address;
    if (m_guard.loadRequested(address))
        m_hasPage = true;
    else
        reportLine("“" + displayText(address, longestTitle) + "” is ignored: it does not belong to this app");
}

void AppWindow::handOff(const std::string& address) {
    m_programs.open(address);
    if (m_hasCommitted)
        return;
    m_failedAddress = m_bundle.config.url;
    showFailure(
        {"This page is in your browser now",
         displayText(address, longestAddress) + "\n\nIt does not belong to this app, so it was opened outside."});
}

void AppWindow::reload() {
    if (m_failedAddress.empty())
        webkit_web_view_reload(m_view);
    else
        webkit_web_view_load_uri(m_view, m_failedAddress.c_str());
}

std::string AppWindow::currentAddress() const {
    const std::string address = orEmpty(webkit_web_view_get_uri(m_view));
    return address.starts_with("http") ? address : m_bundle.config.url;
}

void AppWindow::updateNavigation() {
    const auto enable = [this](const char* name, gboolean isEnabled) {
        g_simple_action_set_enabled(G_SIMPLE_ACTION(g_action_map_lookup_action(G_ACTION_MAP(m_window), name)),
                                    isEnabled);
    };
    enable("back", webkit_web_view_can_go_back(m_view));
    enable("forward", webkit_web_view_can_go_forward(m_view));
}

void AppWindow::updateTitle() {
    const std::string& name = m_bundle.config.name;
    const std::string pageTitle = displayText(orEmpty(webkit_web_view_get_title(m_view)), longestTitle);
    const auto unread = m_bundle.config.badgeEnabled ? unreadCountOfTitle(pageTitle) : std::nullopt;
    const bool hasUnread = unread.value_or(0) > 0;
    gtk_window_set_title(m_window, hasUnread ? ("(" + std::to_string(*unread) + ") " + name).c_str() : name.c_str());
    m_header.setTitle(name);
    m_header.setSubtitle(pageTitle == name ? "" : pageTitle);
    m_badge.show(unread);
}

void AppWindow::updateProgress() {
    const bool isLoading = webkit_web_view_is_loading(m_view);
    m_header.setLoading(isLoading);
    gtk_widget_set_visible(GTK_WIDGET(m_progress), isLoading);
    gtk_progress_bar_set_fraction(m_progress, webkit_web_view_get_estimated_load_progress(m_view));
}

void AppWindow::showPage() {
    m_failedAddress.clear();
    m_hasCommitted = true;
    if (gtk_stack_get_visible_child(m_stack) == GTK_WIDGET(m_view))
        return;
    gtk_stack_set_visible_child(m_stack, GTK_WIDGET(m_view));
    gtk_widget_grab_focus(GTK_WIDGET(m_view));
}

void AppWindow::showFailure(const Message& message) {
    m_status.show(message, "Try Again");
    gtk_stack_set_visible_child(m_stack, m_status.widget());
    gtk_widget_grab_focus(GTK_WIDGET(m_status.button()));
}

void AppWindow::offerImport(const ImportSessionRequest& request) {
    const std::string source = request.source.empty() ? "your browser" : "“" + request.source + "”";
    showNoticeDialog(m_window, {"Importing a browser session is not available yet",
                                "Nothing was taken over from " + source + ". Sign in to " + m_bundle.config.name +
                                    " in this window instead; the app keeps you signed in."});
}

void AppWindow::loadChanged(WebKitWebView*, WebKitLoadEvent event, AppWindow* self) {
    if (event == WEBKIT_LOAD_COMMITTED)
        self->showPage();
    self->updateNavigation();
}

gboolean AppWindow::loadFailed(WebKitWebView*, WebKitLoadEvent, const char* address, GError* error, AppWindow* self) {
    // Loads that were given up on purpose: replaced, stopped, handed to another program, or turned into a download.
    const bool isOnPurpose =
        g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) ||
        g_error_matches(error, WEBKIT_POLICY_ERROR, WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE);
    if (isOnPurpose)
        return TRUE;
    self->m_failedAddress = orEmpty(address);
    self->showFailure({"This page cannot be reached", displayText(self->m_failedAddress, longestAddress) + "\n\n" +
                                                          displayText(error->message, longestTitle) +
                                                          ". Check the connection and try again."});
    return TRUE;
}

gboolean AppWindow::tlsFailed(WebKitWebView*, const char* address, GTlsCertificate*, GTlsCertificateFlags,
                              AppWindow* self) {
    self->m_failedAddress = orEmpty(address);
    self->showFailure({"This connection is not private",
                       displayText(self->m_failedAddress, longestAddress) +
                           "\n\nThe site cannot prove that it is what it says, so the page was not loaded."});
    return TRUE;
}

void AppWindow::processEnded(WebKitWebView*, WebKitWebProcessTerminationReason, AppWindow* self) {
    self->m_failedAddress = self->currentAddress();
    self->showFailure({"This page stopped working", "The rest of the app is fine. Load the page again to go on."});
}

}  // namespace wrapio
