#include "Shell/AppWindow.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/Actions.h"
#include "Shell/Diagnostics.h"
#include "Shell/GObjects.h"
#include "Shell/MessageDialog.h"
#include "Shell/ProfileFile.h"
#include "Shell/Snapshot.h"

namespace wrapio {

namespace {

constexpr std::size_t longestTitle = 200;
constexpr std::size_t longestAddress = 120;

gboolean quit(GtkApplication* application) {
    g_action_group_activate_action(G_ACTION_GROUP(application), "quit", nullptr);
    return TRUE;
}

GDBusConnection* busOf(GtkApplication* application) {
    return g_application_get_dbus_connection(G_APPLICATION(application));
}

}  // namespace

AppWindow::AppWindow(GtkApplication* application, const Bundle& bundle, const ProfilePaths& paths)
    : m_bundle(bundle)
    , m_application(application)
    , m_window(GTK_WINDOW(gtk_application_window_new(application)))
    , m_content(bundle.config, paths)
    , m_ownedView(m_content.makeView())
    , m_view(m_ownedView.get())
    , m_page(m_view)
    , m_header(bundle.config.isDevMode)
    , m_permissions(m_banners, paths.data + "/permissions")
    , m_notifications(busOf(application), bundle.config.name, bundle.info.desktopId, [this] { present(); })
    , m_cookies(m_content.session(), paths.data + "/session-cookies")
    , m_messages(
          m_content.userContent(),
          [this](const std::string& text) {
              m_badge.setByPage(text);
              updateTitle();
          },
          [this](const std::string& need) { tellMissingAbility(need); })
    , m_find(m_view)
    , m_programs([this](const std::string& address, const std::string& reason) {
        showMessageDialog(m_window, {"The address could not be opened", "“" + displayText(address, longestAddress) +
                                                                            "”: " + displayText(reason, longestTitle)});
    })
    , m_downloads(m_content.session(), [this](const std::string& address) { m_programs.open(address); })
    , m_popups(m_window, m_content, m_programs, bundle.config.isDevMode,
               [this](WebKitWebView* view) { attachShared(view); })
    , m_loader(m_view)
    , m_guard(
          m_loader, policyOf(bundle.config), [this](const std::string& address) { handOff(address); },
          [this] { return m_popups.open(m_view, m_guard.policy()); })
    , m_troubles(m_page, m_loader, bundle.config.isDevMode)
    , m_import(m_window, m_content.session(), bundle.config, paths.cache, [this] { m_troubles.reload(); })
    , m_badge(bundle.config.badgeEnabled)
    , m_launcherBadge(busOf(application), bundle.info.desktopId)
    , m_colorScheme(busOf(application))
    , m_style(GTK_WIDGET(m_window), bundle.config.theme)
    , m_placement(m_window, paths.data + "/window")
    , m_toldPath(paths.data + "/told") {
    m_told = ToldAbilities::parse(readProfileFile(m_toldPath));
    buildWindow(application);
    addActions();
    connectView();
    attachShared(m_view);
    setZoom(m_placement.zoom());
    updateNavigation();
    updateTitle();
    m_cookies.restore([this] {
        m_isReady = true;
        for (const auto& action : std::exchange(m_waiting, {}))
            action();
    });
}

AppWindow::~AppWindow() {
    m_launcherBadge.show({});
    g_signal_handlers_disconnect_by_data(m_view, this);
    // The window and its page go with the process, for the reason that prepareToQuit() has.
}

void AppWindow::buildWindow(GtkApplication* application) {
    // The window goes with this object, not before it.
    g_signal_connect_swapped(m_window, "close-request", G_CALLBACK(&quit), application);
    gtk_window_set_icon_name(m_window, m_bundle.info.desktopId.c_str());
    gtk_widget_add_css_class(GTK_WIDGET(m_window), "app-window");
    gtk_window_set_titlebar(m_window, m_header.widget());
    GtkWidget* frame = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_widget_add_css_class(frame, "app-frame");
    for (GtkWidget* part : {m_banners.widget(), m_find.widget(), m_page.widget(), m_downloads.widget()})
        gtk_box_append(GTK_BOX(frame), part);
    gtk_window_set_child(m_window, frame);
    gtk_window_set_focus(m_window, GTK_WIDGET(m_view));
}

void AppWindow::connectView() {
    const auto onProperty = [this](const char* signal, auto handler) { connect(m_view, signal, handler, this); };
    onProperty("notify::title", [](GObject*, GParamSpec*, AppWindow* self) { self->updateTitle(); });
    onProperty("notify::uri", [](GObject*, GParamSpec*, AppWindow* self) { self->updateNavigation(); });
    onProperty("notify::is-loading", [](GObject*, GParamSpec*, AppWindow* self) {
        self->m_header.setLoading(webkit_web_view_is_loading(self->m_view) != FALSE);
        self->updateNavigation();
    });
    connect(
        webkit_web_view_get_back_forward_list(m_view), "changed",
        [](GObject*, GObject*, gpointer, AppWindow* self) { self->updateNavigation(); }, this);
}

void AppWindow::attachShared(WebKitWebView* view) {
    m_permissions.attach(view);
    m_notifications.attach(view);
}

void AppWindow::present() {
    gtk_window_present(m_window);
}

void AppWindow::whenReady(std::function<void()> action) {
    if (m_isReady)
        action();
    else
        m_waiting.push_back(std::move(action));
}

void AppWindow::loadStart() {
    if (!std::exchange(m_hasPage, true))
        whenReady([this] { m_guard.loadStart(m_bundle.config.url); });
}

void AppWindow::handle(const AppRequest& request) {
    if (const auto* import = std::get_if<ImportSessionRequest>(&request)) {
        loadStart();
        return m_import.offer(import->source);
    }
    const std::string& address = std::get<AddressRequest>(request).address;
    if (m_guard.policy().decideRequest(address) != Verdict::Inside)
        return reportLine("“" + displayText(address, longestTitle) + "” is ignored: it does not belong to this app");
    m_hasPage = true;
    whenReady([this, address] { m_guard.loadRequested(address); });
}

void AppWindow::drawTo(std::function<void(std::string answer)> finish) const {
    takeSnapshot(m_page, m_header.widget(), std::move(finish));
}

void AppWindow::prepareToQuit(std::function<void()> finish) {
    m_placement.save(webkit_web_view_get_zoom_level(m_view));
    // Only the surface: for a moment after its start, the toolkit crashes when a window goes that it has not yet told
    // assistive programs about, and nothing would be saved.
    if (GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(m_window)))
        gdk_surface_hide(surface);
    if (m_isReady)
        m_cookies.save(std::move(finish));
    else
        finish();
}

void AppWindow::handOff(const std::string& address) {
    m_programs.open(address);
    if (m_troubles.hasShownPage())
        return;
    m_troubles.showInstead(
        {"This page is in your browser now",
         displayText(address, longestAddress) + "\n\nIt does not belong to this app, so it was opened outside."},
        m_bundle.config.url);
}

std::string AppWindow::currentAddress() const {
    const std::string address = orEmpty(webkit_web_view_get_uri(m_view));
    return address.starts_with("http") ? address : m_bundle.config.url;
}

void AppWindow::updateNavigation() {
    setActionEnabled(actions(), "back", webkit_web_view_can_go_back(m_view) != FALSE);
    setActionEnabled(actions(), "forward", webkit_web_view_can_go_forward(m_view) != FALSE);
    setActionEnabled(actions(), "stop", webkit_web_view_is_loading(m_view) != FALSE);
}

void AppWindow::updateTitle() {
    const std::string& name = m_bundle.config.name;
    const std::string pageTitle = displayText(orEmpty(webkit_web_view_get_title(m_view)), longestTitle);
    m_badge.setTitle(pageTitle);
    gtk_window_set_title(m_window, m_badge.titleOf(name).c_str());
    m_header.setTitle(name);
    m_header.setSubtitle(pageTitle == name ? "" : pageTitle);
    m_launcherBadge.show(m_badge.shown());
}

void AppWindow::tellMissingAbility(const std::string& need) {
    const auto ability = missingAbilityOf(need);
    if (!ability || !m_told.tell(*ability))
        return;
    writeProfileFile(m_toldPath, m_told.text());
    m_banners.show("missing " + need, missingAbilityText(*ability),
                   {{"Open in Browser", [this] { m_programs.open(currentAddress()); }}});
}

}  // namespace wrapio
