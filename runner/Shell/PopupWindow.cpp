#include "Shell/PopupWindow.h"

#include "RunnerCore/DisplayText.h"
#include "Utilities/AddressText.h"

#include <algorithm>

namespace wrapio {

namespace {

constexpr int usualWidth = 600;
constexpr int usualHeight = 700;
constexpr int leastSide = 200;
constexpr int mostSide = 2000;
constexpr std::size_t longestHost = 80;

int sideOf(int wanted, int usual) {
    return wanted > 0 ? std::clamp(wanted, leastSide, mostSide) : usual;
}

}  // namespace

WindowSize sizeOfWindow(WebKitWebView* view) {
    WindowSize size;
    gtk_window_get_default_size(GTK_WINDOW(gtk_widget_get_root(GTK_WIDGET(view))), &size.width, &size.height);
    return size;
}

PopupWindow::PopupWindow(GtkWindow* parent, WindowSize openerSize, ObjectPtr<WebKitWebView> view,
                         const NavigationPolicy& policy, bool isDevMode, Hooks hooks)
    : m_openerSize(openerSize)
    , m_view(std::move(view))
    , m_hooks(std::move(hooks))
    , m_page(m_view.get())
    , m_loader(m_view.get())
    , m_guard(
          m_loader, policy, [this](const std::string& address) { handOff(address); }, m_hooks.makePopup)
    , m_troubles(m_page, m_loader, isDevMode)
    , m_window(GTK_WINDOW(gtk_window_new())) {
    buildWindow(parent);
    connect(
        m_view.get(), "ready-to-show", [](WebKitWebView*, PopupWindow* self) { self->readyToShow(); }, this);
    connect(
        m_view.get(), "close", [](WebKitWebView*, PopupWindow* self) { self->m_hooks.onGone(); }, this);
    connect(
        m_view.get(), "notify::uri", [](GObject*, GParamSpec*, PopupWindow* self) { self->updateTitle(); }, this);
    connect(
        m_view.get(), "load-changed",
        [](WebKitWebView*, WebKitLoadEvent event, PopupWindow* self) {
            if (event == WEBKIT_LOAD_COMMITTED)
                gtk_window_present(self->m_window);
        },
        this);
}

PopupWindow::~PopupWindow() {
    g_signal_handlers_disconnect_by_data(m_view.get(), this);
    gtk_window_destroy(m_window);
}

void PopupWindow::buildWindow(GtkWindow* parent) {
    gtk_window_set_application(m_window, gtk_window_get_application(parent));
    gtk_window_set_transient_for(m_window, parent);
    gtk_window_set_icon_name(m_window, gtk_window_get_icon_name(parent));
    gtk_widget_add_css_class(GTK_WIDGET(m_window), "app-window");
    GtkWidget* header = gtk_header_bar_new();
    gtk_widget_add_css_class(header, "app-header");
    m_host = GTK_LABEL(gtk_label_new(nullptr));
    // The end of a long name tells whose it is.
    gtk_label_set_ellipsize(m_host, PANGO_ELLIPSIZE_START);
    gtk_widget_add_css_class(GTK_WIDGET(m_host), "title");
    gtk_header_bar_set_title_widget(GTK_HEADER_BAR(header), GTK_WIDGET(m_host));
    gtk_window_set_titlebar(m_window, header);
    gtk_window_set_child(m_window, m_page.widget());
    connect(
        m_window, "close-request",
        [](GtkWindow*, PopupWindow* self) -> gboolean {
            self->m_hooks.onGone();
            return TRUE;
        },
        this);
    updateTitle();
}

void PopupWindow::readyToShow() {
    WebKitWindowProperties* wishes = webkit_web_view_get_window_properties(m_view.get());
    GdkRectangle size{};
    webkit_window_properties_get_geometry(wishes, &size);
    gtk_window_set_default_size(m_window, sideOf(size.width, usualWidth), sideOf(size.height, usualHeight));
    // Without a wish for a size the engine reports the opener's; the bars that it reports as shown tell nothing.
    if (size.width == m_openerSize.width && size.height == m_openerSize.height)
        return;
    m_guard.openToEverySite();
    gtk_window_present(m_window);
}

void PopupWindow::handOff(const std::string& address) {
    m_hooks.handOff(address);
    if (!m_troubles.hasShownPage())
        m_hooks.onGone();
}

void PopupWindow::updateTitle() {
    const TextPtr address(g_strdup(webkit_web_view_get_uri(m_view.get())));
    const auto parts = parseAddress(orEmpty(address.get()));
    const std::string host = displayText(parts ? parts->host.value_or("") : "", longestHost);
    gtk_label_set_text(m_host, host.c_str());
    gtk_window_set_title(m_window, host.empty() ? g_get_application_name() : host.c_str());
}

}  // namespace wrapio
