// The window's title bar: back, forward, reload, the app's name over the page's title, and the menu.
#pragma once

#include <gtk/gtk.h>

#include <string>

namespace wrapio {

/// A handle on widgets that the window owns; valid as long as that lives. Buttons and menu use the window's actions.
class HeaderBar {
public:
    explicit HeaderBar(bool isDevMode);

    void setTitle(const std::string& title);
    /// The line below the title; hidden when empty.
    void setSubtitle(const std::string& subtitle);
    /// The reload button stops a page that loads.
    void setLoading(bool isLoading);

    [[nodiscard]] GtkWidget* widget() const { return m_bar; }

private:
    void addTitleLabels();

    GtkWidget* m_bar;
    GtkWidget* m_reload;
    GtkLabel* m_title = nullptr;
    GtkLabel* m_subtitle = nullptr;
};

}  // namespace wrapio
