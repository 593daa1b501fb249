#include "Shell/HeaderBar.h"

#include "Shell/GObjects.h"

namespace wrapio {

namespace {

GtkWidget* makeButton(const char* icon, const char* tooltip, const char* action) {
    GtkWidget* button = gtk_button_new_from_icon_name(icon);
    gtk_widget_set_tooltip_text(button, tooltip);
    gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, tooltip, -1);
    gtk_actionable_set_action_name(GTK_ACTIONABLE(button), action);
    gtk_widget_set_focus_on_click(button, FALSE);
    return button;
}

GtkLabel* makeLabel(const char* styleClass) {
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_label_set_single_line_mode(GTK_LABEL(label), TRUE);
    gtk_widget_add_css_class(label, styleClass);
    return GTK_LABEL(label);
}

struct Item {
    const char* label;
    const char* action;
};

void addSection(GMenu* menu, std::initializer_list<Item> items) {
    const ObjectPtr<GMenu> section(g_menu_new());
    for (const Item& item : items)
        g_menu_append(section.get(), item.label, item.action);
    g_menu_append_section(menu, nullptr, G_MENU_MODEL(section.get()));
}

ObjectPtr<GMenu> makeMenu(bool isDevMode) {
    ObjectPtr<GMenu> menu(g_menu_new());
    addSection(
        menu.get(),
        {{"Home", "win.home"}, {"Copy Address", "win.copy-address"}, {"Open in Browser", "win.open-in-browser"}});
    addSection(menu.get(), {{"Find in Page…", "win.find"},
                            {"Print…", "win.print"},
                            {"Larger", "win.zoom-in"},
                            {"Smaller", "win.zoom-out"},
                            {"Usual Size", "win.zoom-reset"},
                            {"Full Screen", "win.full-screen"}});
    addSection(menu.get(), {{"Permissions…", "win.permissions"},
                            {"Import Session…", "win.import-session"},
                            {"Clear Data…", "win.clear-data"}});
    if (isDevMode)
        addSection(menu.get(), {{"Inspect Page", "win.inspect"}, {"Reload without the Cache", "win.hard-reload"}});
    addSection(menu.get(), {{"Keyboard Shortcuts", "win.shortcuts"}, {"Quit", "app.quit"}});
    return menu;
}

GtkWidget* makeMenuButton(bool isDevMode) {
    const auto menu = makeMenu(isDevMode);
    GtkWidget* button = gtk_menu_button_new();
    gtk_menu_button_set_icon_name(GTK_MENU_BUTTON(button), "open-menu-symbolic");
    gtk_menu_button_set_menu_model(GTK_MENU_BUTTON(button), G_MENU_MODEL(menu.get()));
    gtk_popover_set_has_arrow(gtk_menu_button_get_popover(GTK_MENU_BUTTON(button)), FALSE);
    gtk_menu_button_set_primary(GTK_MENU_BUTTON(button), TRUE);
    gtk_widget_set_tooltip_text(button, "Menu");
    return button;
}

}  // namespace

HeaderBar::HeaderBar(bool isDevMode)
    : m_bar(gtk_header_bar_new())
    , m_reload(makeButton("view-refresh-symbolic", "Reload (Ctrl+R)", "win.reload")) {
    gtk_widget_add_css_class(m_bar, "app-header");
    auto* bar = GTK_HEADER_BAR(m_bar);
    gtk_header_bar_pack_start(bar, makeButton("go-previous-symbolic", "Back (Alt+Left)", "win.back"));
    gtk_header_bar_pack_start(bar, makeButton("go-next-symbolic", "Forward (Alt+Right)", "win.forward"));
    gtk_header_bar_pack_start(bar, m_reload);
    gtk_header_bar_pack_end(bar, makeMenuButton(isDevMode));
    addTitleLabels();
}

void HeaderBar::addTitleLabels() {
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_widget_set_valign(box, GTK_ALIGN_CENTER);
    m_title = makeLabel("title");
    m_subtitle = makeLabel("subtitle");
    gtk_widget_set_visible(GTK_WIDGET(m_subtitle), FALSE);
    gtk_box_append(GTK_BOX(box), GTK_WIDGET(m_title));
    gtk_box_append(GTK_BOX(box), GTK_WIDGET(m_subtitle));
    gtk_header_bar_set_title_widget(GTK_HEADER_BAR(m_bar), box);
}

void HeaderBar::setTitle(const std::string& title) {
    gtk_label_set_text(m_title, title.c_str());
}

void HeaderBar::setSubtitle(const std::string& subtitle) {
    gtk_label_set_text(m_subtitle, subtitle.c_str());
    gtk_widget_set_visible(GTK_WIDGET(m_subtitle), !subtitle.empty());
}

void HeaderBar::setLoading(bool isLoading) {
    gtk_button_set_icon_name(GTK_BUTTON(m_reload), isLoading ? "process-stop-symbolic" : "view-refresh-symbolic");
    gtk_widget_set_tooltip_text(m_reload, isLoading ? "Stop" : "Reload (Ctrl+R)");
    gtk_actionable_set_action_name(GTK_ACTIONABLE(m_reload), isLoading ? "win.stop" : "win.reload");
}

}  // namespace wrapio
