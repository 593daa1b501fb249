// The bar that finds text in the page.
#pragma once

#include <webkit/webkit.h>

#include <string>

namespace wrapio {

/// A handle on widgets that the window owns; lives as long as that and the view.
class FindBar {
public:
    explicit FindBar(WebKitWebView* view);
    ~FindBar();
    FindBar(const FindBar&) = delete;
    FindBar& operator=(const FindBar&) = delete;

    /// Shows the bar and gives it the keyboard.
    void open();
    /// Hides it, takes the marks away and gives the keyboard back to the page.
    void close();
    void findNext();
    void findPrevious();

    [[nodiscard]] GtkWidget* widget() const { return m_bar; }

private:
    void search();
    void showResult(const std::string& text, bool isFound);

    WebKitWebView* m_view;
    WebKitFindController* m_finder;
    GtkWidget* m_bar;
    GtkWidget* m_entry;
    GtkLabel* m_result;
};

}  // namespace wrapio
