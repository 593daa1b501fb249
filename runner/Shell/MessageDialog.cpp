#include "Shell/MessageDialog.h"

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

GtkWidget* addButtons(GtkWindow* window, GtkBox* box, const std::vector<Choice>& choices) {
    GtkWidget* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
    gtk_widget_set_halign(row, GTK_ALIGN_END);
    gtk_widget_set_margin_top(row, 12);
    for (const Choice& choice : choices) {
        const auto action = choice.action;
        gtk_box_append(GTK_BOX(row), makeChoiceButton({choice.label, [window, action] {
                                                           gtk_window_destroy(window);
                                                           if (action)
                                                               action();
                                                       }}));
    }
    gtk_box_append(box, row);
    return gtk_widget_get_first_child(row);
}

}  // namespace

GtkWindow* makeDialogWindow(GtkWindow* parent) {
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_widget_add_css_class(GTK_WIDGET(window), "app-dialog");
    gtk_window_set_title(window, g_get_application_name());
    GtkWidget* header = gtk_header_bar_new();
    gtk_widget_add_css_class(header, "app-header");
    gtk_window_set_titlebar(window, header);
    gtk_window_set_transient_for(window, parent);
    gtk_window_set_modal(window, TRUE);
    gtk_window_set_destroy_with_parent(window, TRUE);
    closeOnEscape(window);
    return window;
}

GtkBox* fillDialog(GtkWindow* window, const Message& message) {
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
    gtk_widget_set_margin_start(box, margin);
    gtk_widget_set_margin_end(box, margin);
    gtk_widget_set_margin_top(box, margin);
    gtk_widget_set_margin_bottom(box, margin);
    addLabel(GTK_BOX(box), message.title, "notice-title");
    if (!message.body.empty())
        addLabel(GTK_BOX(box), message.body, "notice-body");
    gtk_window_set_child(window, box);
    return GTK_BOX(box);
}

void showMessageDialog(GtkWindow* parent, const Message& message, const std::vector<Choice>& choices) {
    GtkWindow* window = makeDialogWindow(parent);
    gtk_window_set_resizable(window, FALSE);
    GtkBox* box = fillDialog(window, message);
    GtkWidget* first = addButtons(window, box, choices);
    gtk_window_set_default_widget(window, first);
    gtk_window_set_focus(window, first);
    gtk_window_present(window);
}

}  // namespace wrapio
