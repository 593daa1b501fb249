// A full page of the window that says something instead of showing a site.
#pragma once

#include "RunnerCore/BundleError.h"

#include <gtk/gtk.h>

#include <string>

namespace wrapio {

/// A handle on widgets that their parent in the window owns; valid as long as that lives.
class StatusPage {
public:
    /// Makes the widgets, with the symbolic icon `iconName` on top.
    explicit StatusPage(const char* iconName);

    /// Shows `message` and a button that says `action`.
    void show(const Message& message, const std::string& action);

    [[nodiscard]] GtkWidget* widget() const { return m_page; }
    [[nodiscard]] GtkButton* button() const { return m_button; }

private:
    GtkWidget* m_page;
    GtkLabel* m_title;
    GtkLabel* m_body;
    GtkButton* m_button;
};

}  // namespace wrapio
