// Styles the app's windows: their fixed look, and the theme of the app.
#pragma once

#include "RunnerCore/ThemeStyleSheet.h"

#include <gtk/gtk.h>

namespace wrapio {

/// The style sheets over the desktop's own, for every window of this process. Follows the desktop between light and
/// dark. Lives on the main thread, as long as its window is used.
class WindowStyle {
public:
    WindowStyle(GtkWidget* window, const Theme& theme);
    ~WindowStyle();
    WindowStyle(const WindowStyle&) = delete;
    WindowStyle& operator=(const WindowStyle&) = delete;

private:
    void update();

    GtkWidget* m_window;
    GtkSettings* m_settings;  ///< the display's own; outlives the window
    Theme m_theme;
    GtkCssProvider* m_provider;
};

}  // namespace wrapio
