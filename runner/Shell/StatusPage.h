// A full page of the window that says something instead of showing a site.
#pragma once

#include "RunnerCore/BundleError.h"
#include "Shell/Choice.h"

#include <gtk/gtk.h>

#include <string>
#include <vector>

namespace wrapio {

/// A handle on widgets that their parent in the window owns; valid as long as that lives.
class StatusPage {
public:
    /// Makes the widgets, with the symbolic icon `iconName` on top.
    explicit StatusPage(const char* iconName);

    /// Shows `message` and a button for each of `choices`; the first one is suggested.
    void show(const Message& message, const std::vector<Choice>& choices);

    /// Gives the keyboard to the first button.
    void focus();

    [[nodiscard]] GtkWidget* widget() const { return m_page; }

private:
    GtkWidget* m_page;
    GtkLabel* m_title;
    GtkLabel* m_body;
    GtkBox* m_buttons;
};

}  // namespace wrapio
