// Shows a count on the app's icon in docks and task bars that follow the launcher entry signal.
#pragma once

#include <gio/gio.h>

#include <optional>
#include <string>

namespace wrapio {

/// Lives on the main thread.
class LauncherBadge {
public:
    /// `bus` may be null: there is no badge then. Otherwise it outlives this object.
    LauncherBadge(GDBusConnection* bus, std::string desktopId);

    /// Shows `count`, or takes the badge away when there is none or it is zero. Equal counts are sent once.
    void show(std::optional<int> count);

private:
    GDBusConnection* m_bus;
    std::string m_desktopId;
    int m_shown = 0;
};

}  // namespace wrapio
