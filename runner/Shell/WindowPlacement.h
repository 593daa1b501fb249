// Remembers how the person has left the window.
#pragma once

#include "RunnerCore/WindowState.h"

#include <gtk/gtk.h>

#include <string>

namespace wrapio {

/// Lives on the main thread, no longer than its window.
class WindowPlacement {
public:
    /// Reads the file at `path`, if there is one, and gives `window`, not shown yet, its size. The place on the screen
    /// follows when the window is shown, where the desktop lets programs choose it.
    WindowPlacement(GtkWindow* window, std::string path);
    WindowPlacement(const WindowPlacement&) = delete;
    WindowPlacement& operator=(const WindowPlacement&) = delete;

    [[nodiscard]] double zoom() const { return m_state.zoom; }

    /// Writes down how the window is now, with the page's `zoom`.
    void save(double zoom);

private:
    static void mapped(GtkWidget*, gpointer self);

    GtkWindow* m_window;
    std::string m_path;
    WindowState m_state;
};

}  // namespace wrapio
