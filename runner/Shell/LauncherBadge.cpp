#include "Shell/LauncherBadge.h"

#include <functional>

namespace wrapio {

LauncherBadge::LauncherBadge(GDBusConnection* bus, std::string desktopId)
    : m_bus(bus)
    , m_desktopId(std::move(desktopId)) {}

void LauncherBadge::show(const Badge& badge) {
    if (m_bus == nullptr || badge == m_shown)
        return;
    m_shown = badge;
    const std::string address = "application://" + m_desktopId + ".desktop";
    // Listeners tell the entries of several programs apart by the object's path.
    const std::string path = "/com/canonical/unity/launcherentry/" + std::to_string(std::hash<std::string>{}(address));
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", "count", g_variant_new_int64(badge.count.value_or(0)));
    g_variant_builder_add(&properties, "{sv}", "count-visible", g_variant_new_boolean(badge.count.has_value()));
    g_variant_builder_add(&properties, "{sv}", "urgent", g_variant_new_boolean(badge.isFlagged));
    g_dbus_connection_emit_signal(m_bus, nullptr, path.c_str(), "com.canonical.Unity.LauncherEntry", "Update",
                                  g_variant_new("(sa{sv})", address.c_str(), &properties), nullptr);
}

}  // namespace wrapio
