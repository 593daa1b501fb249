#include "Shell/WindowPlacement.h"

#include "Shell/GObjects.h"
#include "Shell/ProfileFile.h"

// The library's macros would shadow names of the toolkit.
#include <gdk/x11/gdkx.h>

namespace wrapio {

namespace {

constexpr std::size_t largestFile = 4096;
constexpr int least = 40;  // pixels of a window that must lie on a monitor

GdkSurface* x11Surface(GtkWindow* window) {
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
    return surface != nullptr && GDK_IS_X11_SURFACE(surface) ? surface : nullptr;
}

Display* displayOf(GdkSurface* surface) {
    return gdk_x11_display_get_xdisplay(gdk_surface_get_display(surface));
}

bool liesOnMonitor(GdkSurface* surface, const WindowPosition& place, int width) {
    GListModel* monitors = gdk_display_get_monitors(gdk_surface_get_display(surface));
    for (guint i = 0; i < g_list_model_get_n_items(monitors); ++i) {
        const ObjectPtr<GdkMonitor> monitor(GDK_MONITOR(g_list_model_get_item(monitors, i)));
        GdkRectangle area{};
        gdk_monitor_get_geometry(monitor.get(), &area);
        const bool isWide = place.x + width > area.x + least && place.x < area.x + area.width - least;
        if (isWide && place.y >= area.y - least && place.y < area.y + area.height - least)
            return true;
    }
    return false;
}

std::optional<WindowPosition> positionOf(GdkSurface* surface) {
    Display* display = displayOf(surface);
    const int scale = gdk_surface_get_scale_factor(surface);
    int x = 0;
    int y = 0;
    Window child = 0;
    if (XTranslateCoordinates(display, gdk_x11_surface_get_xid(surface), XDefaultRootWindow(display), 0, 0, &x, &y,
                              &child) == 0)
        return std::nullopt;
    return WindowPosition{x / scale, y / scale};
}

}  // namespace

WindowPlacement::WindowPlacement(GtkWindow* window, std::string path)
    : m_window(window)
    , m_path(std::move(path)) {
    m_state = parseWindowState(readProfileFile(m_path, largestFile));
    gtk_window_set_default_size(window, m_state.width, m_state.height);
    if (m_state.isMaximized)
        gtk_window_maximize(window);
    g_signal_connect_after(window, "map", G_CALLBACK(&WindowPlacement::mapped), this);
}

void WindowPlacement::mapped(GtkWidget*, gpointer self) {
    const auto& placement = *static_cast<WindowPlacement*>(self);
    const WindowState& state = placement.m_state;
    GdkSurface* surface = x11Surface(placement.m_window);
    if (surface == nullptr || !state.position || state.isMaximized ||
        !liesOnMonitor(surface, *state.position, state.width))
        return;
    const int scale = gdk_surface_get_scale_factor(surface);
    XMoveWindow(displayOf(surface), gdk_x11_surface_get_xid(surface), state.position->x * scale,
                state.position->y * scale);
}

void WindowPlacement::save(double zoom) {
    WindowState state = m_state;
    state.zoom = zoom;
    state.isMaximized = gtk_window_is_maximized(m_window) != FALSE;
    const bool isOrdinary = !state.isMaximized && gtk_window_is_fullscreen(m_window) == FALSE;
    if (isOrdinary) {
        gtk_window_get_default_size(m_window, &state.width, &state.height);
        GdkSurface* surface = x11Surface(m_window);
        state.position = surface != nullptr ? positionOf(surface) : std::nullopt;
    }
    writeProfileFile(m_path, windowStateText(state));
    m_state = state;
}

}  // namespace wrapio
