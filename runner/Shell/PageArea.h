// The place of the page in a window: the web view, or a message where there is no page to show.
#pragma once

#include "Shell/StatusPage.h"

#include <webkit/webkit.h>

#include <vector>

namespace wrapio {

/// A handle on widgets that the window owns; valid as long as that lives.
class PageArea {
public:
    explicit PageArea(WebKitWebView* view);

    void showPage();
    void showStatus(const Message& message, const std::vector<Choice>& choices);

    [[nodiscard]] bool showsPage() const;
    [[nodiscard]] GtkWidget* widget() const { return GTK_WIDGET(m_overlay); }
    [[nodiscard]] WebKitWebView* view() const { return m_view; }

    /// What is shown at present: the view's widget or the message's.
    [[nodiscard]] GtkWidget* visibleWidget() const { return gtk_stack_get_visible_child(m_stack); }

private:
    WebKitWebView* m_view;
    StatusPage m_status{"dialog-warning-symbolic"};
    GtkStack* m_stack;
    GtkOverlay* m_overlay;
    GtkProgressBar* m_progress;
};

}  // namespace wrapio
