#include "Shell/FindBar.h"

#include "Shell/GObjects.h"

namespace wrapio {

namespace {

constexpr guint mostMatches = 1000;
constexpr guint32 findOptions = WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE | WEBKIT_FIND_OPTIONS_WRAP_AROUND;

GtkWidget* makeButton(const char* icon, const char* tooltip, std::function<void()> action) {
    GtkWidget* button = gtk_button_new_from_icon_name(icon);
    gtk_widget_add_css_class(button, "flat");
    gtk_widget_set_tooltip_text(button, tooltip);
    gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, tooltip, -1);
    connectAction(button, "clicked", std::move(action));
    return button;
}

std::string matchesText(guint count) {
    if (count > mostMatches)
        return "More than " + std::to_string(mostMatches) + " matches";
    return count == 1 ? "1 match" : std::to_string(count) + " matches";
}

}  // namespace

FindBar::FindBar(WebKitWebView* view)
    : m_view(view)
    , m_finder(webkit_web_view_get_find_controller(view))
    , m_bar(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6))
    , m_entry(gtk_search_entry_new())
    , m_result(GTK_LABEL(gtk_label_new(nullptr))) {
    gtk_widget_add_css_class(m_bar, "app-bar");
    gtk_widget_set_visible(m_bar, FALSE);
    gtk_widget_set_size_request(m_entry, 260, -1);
    auto* box = GTK_BOX(m_bar);
    gtk_box_append(box, m_entry);
    gtk_box_append(box, makeButton("go-up-symbolic", "Previous match (Ctrl+Shift+G)", [this] { findPrevious(); }));
    gtk_box_append(box, makeButton("go-down-symbolic", "Next match (Ctrl+G)", [this] { findNext(); }));
    gtk_widget_set_hexpand(GTK_WIDGET(m_result), TRUE);
    gtk_label_set_xalign(m_result, 0.0F);
    gtk_box_append(box, GTK_WIDGET(m_result));
    gtk_box_append(box, makeButton("window-close-symbolic", "Close (Esc)", [this] { close(); }));
    connectAction(m_entry, "search-changed", [this] { search(); });
    connectAction(m_entry, "activate", [this] { findNext(); });
    connectAction(m_entry, "stop-search", [this] { close(); });
    connect(
        m_finder, "found-text",
        [](WebKitFindController*, guint count, FindBar* self) { self->showResult(matchesText(count), true); }, this);
    connect(
        m_finder, "failed-to-find-text",
        [](WebKitFindController*, FindBar* self) { self->showResult("Not found", false); }, this);
}

FindBar::~FindBar() {
    g_signal_handlers_disconnect_by_data(m_finder, this);
}

void FindBar::open() {
    gtk_widget_set_visible(m_bar, TRUE);
    gtk_widget_grab_focus(m_entry);
    gtk_editable_select_region(GTK_EDITABLE(m_entry), 0, -1);
    search();
}

void FindBar::close() {
    webkit_find_controller_search_finish(m_finder);
    gtk_widget_set_visible(m_bar, FALSE);
    gtk_widget_grab_focus(GTK_WIDGET(m_view));
}

void FindBar::findNext() {
    if (gtk_widget_get_visible(m_bar))
        webkit_find_controller_search_next(m_finder);
    else
        open();
}

void FindBar::findPrevious() {
    if (gtk_widget_get_visible(m_bar))
        webkit_find_controller_search_previous(m_finder);
    else
        open();
}

void FindBar::search() {
    const char* text = gtk_editable_get_text(GTK_EDITABLE(m_entry));
    if (*text != '\0')
        return webkit_find_controller_search(m_finder, text, findOptions, mostMatches);
    webkit_find_controller_search_finish(m_finder);
    showResult("", true);
}

void FindBar::showResult(const std::string& text, bool isFound) {
    gtk_label_set_text(m_result, text.c_str());
    if (isFound)
        gtk_widget_remove_css_class(m_entry, "error");
    else
        gtk_widget_add_css_class(m_entry, "error");
}

}  // namespace wrapio
