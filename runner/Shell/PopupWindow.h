// A window that a page has opened, usually to sign in; it goes when the page closes it.
#pragma once

#include "Shell/LoadTroubles.h"
#include "Shell/NavigationGuard.h"
#include "Shell/PageArea.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <functional>

namespace wrapio {

struct WindowSize {
    int width = 0;
    int height = 0;
};

/// The size of the window that shows `view`, as the engine reports it to pages.
[[nodiscard]] WindowSize sizeOfWindow(WebKitWebView* view);

/// Shown once it is known to be wanted. A small window (a script asked for a size) may show any site, and always says
/// which; any other window follows the rules of the app's own. Lives on the main thread, no longer than its parent.
class PopupWindow {
public:
    struct Hooks {
        NavigationGuard::HandOff handOff;
        NavigationGuard::PopupMaker makePopup;
        std::function<void()> onGone;  ///< the window is to be deleted, but not before the call has returned
    };

    PopupWindow(GtkWindow* parent, WindowSize openerSize, ObjectPtr<WebKitWebView> view, const NavigationPolicy& policy,
                bool isDevMode, Hooks hooks);
    ~PopupWindow();
    PopupWindow(const PopupWindow&) = delete;
    PopupWindow& operator=(const PopupWindow&) = delete;

    [[nodiscard]] WebKitWebView* view() const { return m_view.get(); }

private:
    void buildWindow(GtkWindow* parent);
    void handOff(const std::string& address);
    void readyToShow();
    void updateTitle();

    WindowSize m_openerSize;
    ObjectPtr<WebKitWebView> m_view;
    Hooks m_hooks;
    PageArea m_page;
    PageLoader m_loader;
    NavigationGuard m_guard;
    LoadTroubles m_troubles;
    GtkWindow* m_window;
    GtkLabel* m_host = nullptr;
};

}  // namespace wrapio
