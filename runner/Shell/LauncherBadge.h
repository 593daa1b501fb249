// Shows a count on the app's icon in docks and task bars that follow the launcher entry signal.
#pragma once

#include "RunnerCore/Badge.h"

#include <gio/gio.h>

#include <string>

namespace wrapio {

/// Lives on the main thread.
class LauncherBadge {
public:
    /// `bus` may be null: there is no badge then. Otherwise it outlives this object.
    LauncherBadge(GDBusConnection* bus, std::string desktopId);

    /// Shows `badge`, or takes it away when it is empty. What is shown already is not sent again.
    void show(const Badge& badge);

private:
    GDBusConnection* m_bus;
    std::string m_desktopId;
    Badge m_shown;
};

}  // namespace wrapio
