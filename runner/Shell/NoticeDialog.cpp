#include "Shell/NoticeDialog.h"

#include "Shell/GObjects.h"

namespace wrapio {

namespace {

constexpr int margin = 24;
constexpr int lineLength = 48;

void addLabel(GtkBox* box, const std::string& text, const char* styleClass) {
    GtkWidget* label = gtk_label_new(text.c_str());
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_max_width_chars(GTK_LABEL(label), lineLength);
    gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
    gtk_widget_add_css_class(label, styleClass);
    gtk_box_append(box, label);
}

void closeOnEscape(GtkWindow* window) {
    GtkEventController* keys = gtk_shortcut_controller_new();
    gtk_shortcut_controller_add_shortcut(
        GTK_SHORTCUT_CONTROLLER(keys),
        gtk_shortcut_new(gtk_keyval_trigger_new(GDK_KEY_Escape, static_cast<GdkModifierType>(0)),
                         gtk_named_action_new("window.close")));
    gtk_widget_add_controller(GTK_WIDGET(window), keys);
}

}  // namespace

void showNoticeDialog(GtkWindow* parent, const Message& message) {
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_widget_add_css_class(GTK_WIDGET(window), "app-dialog");
    gtk_window_set_title(window, g_get_application_name());
    GtkWidget* header = gtk_header_bar_new();
    gtk_widget_add_css_class(header, "app-header");
    gtk_window_set_titlebar(window, header);
    gtk_window_set_transient_for(window, parent);
    gtk_window_set_modal(window, TRUE);
    gtk_window_set_destroy_with_parent(window, TRUE);
    gtk_window_set_resizable(window, FALSE);
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
    gtk_widget_set_margin_start(box, margin);
    gtk_widget_set_margin_end(box, margin);
    gtk_widget_set_margin_top(box, margin);
    gtk_widget_set_margin_bottom(box, margin);
    addLabel(GTK_BOX(box), message.title, "notice-title");
    addLabel(GTK_BOX(box), message.body, "notice-body");
    GtkWidget* close = gtk_button_new_with_label("Close");
    gtk_widget_set_halign(close, GTK_ALIGN_END);
    gtk_widget_set_margin_top(close, 12);
    gtk_actionable_set_action_name(GTK_ACTIONABLE(close), "window.close");
    gtk_box_append(GTK_BOX(box), close);
    gtk_window_set_child(window, box);
    gtk_window_set_default_widget(window, close);
    gtk_window_set_focus(window, close);
    closeOnEscape(window);
    gtk_window_present(window);
}

}  // namespace wrapio
