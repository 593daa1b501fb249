// Follows the desktop's wish for light or dark windows.
#pragma once

#include <gio/gio.h>

namespace wrapio {

/// Lives on the main thread, while the toolkit runs. Windows and pages are told through the toolkit's settings.
class ColorScheme {
public:
    /// Asks the desktop over `bus`, which may be null, and listens for changes.
    explicit ColorScheme(GDBusConnection* bus);
    ~ColorScheme();
    ColorScheme(const ColorScheme&) = delete;
    ColorScheme& operator=(const ColorScheme&) = delete;

private:
    GDBusConnection* m_bus;
    GCancellable* m_asking = nullptr;
    guint m_subscription = 0;
};

}  // namespace wrapio
