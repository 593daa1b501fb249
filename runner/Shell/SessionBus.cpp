#include "Shell/SessionBus.h"

#include "Shell/GObjects.h"

#include <gio/gio.h>

#include <array>
#include <utility>

namespace wrapio {

namespace {

constexpr int answerTimeout = 5000;  // milliseconds

std::string objectPath(const std::string& desktopId) {
    std::string path = "/" + desktopId;
    for (char& c : path) {
        if (c == '.')
            c = '/';
        else if (c == '-')
            c = '_';
    }
    return path;
}

/// What lets the first process take the focus that the person gave to this one.
GVariant* platformData() {
    constexpr std::array<std::pair<const char*, const char*>, 2> tokens{
        {{"activation-token", "XDG_ACTIVATION_TOKEN"}, {"desktop-startup-id", "DESKTOP_STARTUP_ID"}}};
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    for (const auto& [key, variable] : tokens) {
        const char* token = g_getenv(variable);
        if (token != nullptr && g_utf8_validate(token, -1, nullptr))
            g_variant_builder_add(&data, "{sv}", key, g_variant_new_string(token));
    }
    return g_variant_builder_end(&data);
}

GVariant* addressList(const std::vector<std::string>& addresses) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
    for (const std::string& address : addresses)
        g_variant_builder_add(&list, "s", address.c_str());
    return g_variant_builder_end(&list);
}

}  // namespace

bool askOverSessionBus(const std::string& desktopId, const std::vector<std::string>& addresses) {
    const ObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus)
        return false;
    GVariant* arguments = addresses.empty() ? g_variant_new("(@a{sv})", platformData())
                                            : g_variant_new("(@as@a{sv})", addressList(addresses), platformData());
    GError* error = nullptr;
    GVariant* answer =
        g_dbus_connection_call_sync(bus.get(), desktopId.c_str(), objectPath(desktopId).c_str(),
                                    "org.freedesktop.Application", addresses.empty() ? "Activate" : "Open", arguments,
                                    nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, answerTimeout, nullptr, &error);
    if (answer != nullptr)
        g_variant_unref(answer);
    // A process that is busy has the request all the same; asking again would open the addresses twice.
    const bool isReached = error == nullptr || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT);
    g_clear_error(&error);
    return isReached;
}

}  // namespace wrapio
