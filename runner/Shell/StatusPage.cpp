#include "Shell/StatusPage.h"

namespace wrapio {

namespace {

constexpr int pageMargin = 36;
constexpr int lineLength = 56;

GtkLabel* addLabel(GtkWidget* page, const char* styleClass) {
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_justify(GTK_LABEL(label), GTK_JUSTIFY_CENTER);
    gtk_label_set_max_width_chars(GTK_LABEL(label), lineLength);
    gtk_widget_set_halign(label, GTK_ALIGN_CENTER);
    gtk_label_set_selectable(GTK_LABEL(label), FALSE);
    gtk_widget_add_css_class(label, styleClass);
    gtk_box_append(GTK_BOX(page), label);
    return GTK_LABEL(label);
}

}  // namespace

StatusPage::StatusPage(const char* iconName)
    : m_page(gtk_box_new(GTK_ORIENTATION_VERTICAL, 12)) {
    gtk_widget_add_css_class(m_page, "status-page");
    gtk_widget_set_valign(m_page, GTK_ALIGN_CENTER);
    gtk_widget_set_margin_start(m_page, pageMargin);
    gtk_widget_set_margin_end(m_page, pageMargin);
    gtk_widget_set_margin_top(m_page, pageMargin);
    gtk_widget_set_margin_bottom(m_page, pageMargin);
    GtkWidget* icon = gtk_image_new_from_icon_name(iconName);
    gtk_image_set_pixel_size(GTK_IMAGE(icon), 64);
    gtk_widget_add_css_class(icon, "dim-label");
    gtk_box_append(GTK_BOX(m_page), icon);
    m_title = addLabel(m_page, "title-2");
    m_body = addLabel(m_page, "body");
    m_buttons = GTK_BOX(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12));
    gtk_widget_set_halign(GTK_WIDGET(m_buttons), GTK_ALIGN_CENTER);
    gtk_widget_set_margin_top(GTK_WIDGET(m_buttons), 12);
    gtk_box_append(GTK_BOX(m_page), GTK_WIDGET(m_buttons));
}

void StatusPage::show(const Message& message, const std::vector<Choice>& choices) {
    gtk_label_set_text(m_title, message.title.c_str());
    gtk_label_set_text(m_body, message.body.c_str());
    while (GtkWidget* old = gtk_widget_get_first_child(GTK_WIDGET(m_buttons)))
        gtk_box_remove(m_buttons, old);
    for (const Choice& choice : choices) {
        GtkWidget* button = makeChoiceButton(choice);
        if (&choice == &choices.front())
            gtk_widget_add_css_class(button, "suggested-action");
        gtk_box_append(m_buttons, button);
    }
}

void StatusPage::focus() {
    if (GtkWidget* first = gtk_widget_get_first_child(GTK_WIDGET(m_buttons)))
        gtk_widget_grab_focus(first);
}

}  // namespace wrapio
