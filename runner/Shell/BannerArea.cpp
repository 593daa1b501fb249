#include "Shell/BannerArea.h"

#include "Shell/GObjects.h"

namespace wrapio {

BannerArea::BannerArea()
    : m_box(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0)) {}

void BannerArea::show(const std::string& id, const std::string& text, const std::vector<Choice>& choices,
                      std::function<void()> onClosed) {
    close(id);
    GtkWidget* bar = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
    gtk_widget_add_css_class(bar, "app-bar");
    GtkWidget* label = gtk_label_new(text.c_str());
    gtk_label_set_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_xalign(GTK_LABEL(label), 0.0F);
    gtk_widget_set_hexpand(label, TRUE);
    gtk_box_append(GTK_BOX(bar), label);
    for (const Choice& choice : choices) {
        GtkWidget* button = makeChoiceButton({choice.label, [this, id, action = choice.action] {
                                                  takeAway(id);
                                                  if (action)
                                                      action();
                                              }});
        gtk_widget_set_valign(button, GTK_ALIGN_CENTER);
        gtk_box_append(GTK_BOX(bar), button);
    }
    GtkWidget* closeButton = gtk_button_new_from_icon_name("window-close-symbolic");
    gtk_widget_add_css_class(closeButton, "flat");
    gtk_widget_set_valign(closeButton, GTK_ALIGN_CENTER);
    gtk_widget_set_tooltip_text(closeButton, "Close");
    connectAction(closeButton, "clicked", [this, id] { close(id); });
    gtk_box_append(GTK_BOX(bar), closeButton);
    gtk_box_append(GTK_BOX(m_box), bar);
    m_banners[id] = {bar, std::move(onClosed)};
}

void BannerArea::close(const std::string& id) {
    if (const auto onClosed = takeAway(id))
        onClosed();
}

std::function<void()> BannerArea::takeAway(const std::string& id) {
    const auto found = m_banners.find(id);
    if (found == m_banners.end())
        return {};
    const Banner banner = std::move(found->second);
    m_banners.erase(found);
    gtk_box_remove(GTK_BOX(m_box), banner.widget);
    return banner.onClosed;
}

}  // namespace wrapio
