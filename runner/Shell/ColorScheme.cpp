#include "Shell/ColorScheme.h"

#include "Shell/GObjects.h"

#include <gtk/gtk.h>

#include <string_view>

namespace wrapio {

namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* settingsInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* schemeKey = "color-scheme";
constexpr guint32 prefersDark = 1;

/// Follows `value`, which the desktop wraps in one variant or in two; takes it over.
void follow(GVariant* value) {
    while (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT)) {
        GVariant* inner = g_variant_get_variant(value);
        g_variant_unref(value);
        value = inner;
    }
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) {
        const gboolean isDark = g_variant_get_uint32(value) == prefersDark ? TRUE : FALSE;
        g_object_set(gtk_settings_get_default(), "gtk-application-prefer-dark-theme", isDark, nullptr);
    }
    g_variant_unref(value);
}

void answered(GObject* bus, GAsyncResult* result, gpointer) {
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr);
    if (answer == nullptr)
        return;
    follow(g_variant_get_child_value(answer, 0));
    g_variant_unref(answer);
}

void changed(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters, gpointer) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")))
        return;
    const char* group = nullptr;
    const char* key = nullptr;
    GVariant* value = nullptr;
    g_variant_get(parameters, "(&s&sv)", &group, &key, &value);
    if (std::string_view(group) == appearance && std::string_view(key) == schemeKey)
        follow(value);
    else
        g_variant_unref(value);
}

}  // namespace

ColorScheme::ColorScheme(GDBusConnection* bus)
    : m_bus(bus) {
    if (bus == nullptr)
        return;
    m_asking = g_cancellable_new();
    m_subscription =
        g_dbus_connection_signal_subscribe(bus, portal, settingsInterface, "SettingChanged", portalPath, appearance,
                                           G_DBUS_SIGNAL_FLAGS_NONE, &changed, nullptr, nullptr);
    g_dbus_connection_call(bus, portal, portalPath, settingsInterface, "Read",
                           g_variant_new("(ss)", appearance, schemeKey), G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NONE,
                           -1, m_asking, &answered, nullptr);
}

ColorScheme::~ColorScheme() {
    if (m_bus == nullptr)
        return;
    g_cancellable_cancel(m_asking);
    g_object_unref(m_asking);
    g_dbus_connection_signal_unsubscribe(m_bus, m_subscription);
}

}  // namespace wrapio
