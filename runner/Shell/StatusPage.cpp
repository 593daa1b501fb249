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
    m_button = GTK_BUTTON(gtk_button_new());
    gtk_widget_set_halign(GTK_WIDGET(m_button), GTK_ALIGN_CENTER);
    gtk_widget_set_margin_top(GTK_WIDGET(m_button), 12);
    gtk_widget_add_css_class(GTK_WIDGET(m_button), "suggested-action");
    gtk_box_append(GTK_BOX(m_page), GTK_WIDGET(m_button));
}

void StatusPage::show(const Message& message, const std::string& action) {
    gtk_label_set_text(m_title, message.title.c_str());
    gtk_label_set_text(m_body, message.body.c_str());
    gtk_button_set_label(m_button, action.c_str());
}

}  // namespace wrapio
