// Stands in for a desktop's services on a test's session bus: notifications, and the choice of light or dark.
//
// Commands come on standard input, one a line: "color-scheme N", "click ID" (the latest notification for 0). What
// programs ask for goes to standard output, one line each: "notify ID REPLACES NAME|ICON|TITLE|BODY", "close ID".
#include <gio/gio.h>
#include <glib-unix.h>

#include <cstdio>
#include <string>

namespace {

constexpr const char* description = R"(<node>
<interface name="org.freedesktop.Notifications">
  <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="GetServerInformation"><arg type="s" direction="out"/><arg type="s" direction="out"/>
    <arg type="s" direction="out"/><arg type="s" direction="out"/></method>
</interface>
<interface name="org.freedesktop.portal.Settings">
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
</interface></node>)";

constexpr const char* notificationsPath = "/org/freedesktop/Notifications";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";

struct Services {
    GDBusConnection* bus = nullptr;
    guint32 scheme = 0;
    guint32 latest = 0;
    int namesOwned = 0;
};

Services services;

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

void notified(GVariant* parameters, GDBusMethodInvocation* call) {
    const char* name = nullptr;
    const char* icon = nullptr;
    const char* title = nullptr;
    const char* body = nullptr;
    guint32 replaces = 0;
    g_variant_get(parameters, "(&su&s&s&sasa{sv}i)", &name, &replaces, &icon, &title, &body, nullptr, nullptr, nullptr);
    services.latest = replaces != 0 ? replaces : services.latest + 1;
    say("notify " + std::to_string(services.latest) + " " + std::to_string(replaces) + " " + name + "|" + icon + "|" +
        title + "|" + body);
    g_dbus_method_invocation_return_value(call, g_variant_new("(u)", services.latest));
}

void called(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant* parameters,
            GDBusMethodInvocation* call, gpointer) {
    const std::string name = method;
    if (name == "Notify")
        return notified(parameters, call);
    if (name == "CloseNotification") {
        guint32 id = 0;
        g_variant_get(parameters, "(u)", &id);
        say("close " + std::to_string(id));
        return g_dbus_method_invocation_return_value(call, nullptr);
    }
    if (name == "GetCapabilities") {
        const char* const capabilities[] = {"body", "body-markup", "actions", nullptr};
        return g_dbus_method_invocation_return_value(call, g_variant_new("(^as)", capabilities));
    }
    if (name == "GetServerInformation")
        return g_dbus_method_invocation_return_value(call, g_variant_new("(ssss)", "fake", "tests", "1", "1.2"));
    GVariant* value = g_variant_new_variant(g_variant_new_uint32(services.scheme));
    g_dbus_method_invocation_return_value(call, g_variant_new("(v)", value));
}

void obey(const std::string& line) {
    unsigned number = 0;
    if (std::sscanf(line.c_str(), "color-scheme %u", &number) == 1) {
        services.scheme = number;
        g_dbus_connection_emit_signal(
            services.bus, nullptr, portalPath, "org.freedesktop.portal.Settings", "SettingChanged",
            g_variant_new("(ssv)", "org.freedesktop.appearance", "color-scheme", g_variant_new_uint32(number)),
            nullptr);
    } else if (std::sscanf(line.c_str(), "click %u", &number) == 1) {
        const guint32 id = number != 0 ? number : services.latest;
        g_dbus_connection_emit_signal(services.bus, nullptr, notificationsPath, "org.freedesktop.Notifications",
                                      "ActionInvoked", g_variant_new("(us)", id, "default"), nullptr);
    }
}

gboolean readCommands(GIOChannel* channel, GIOCondition, gpointer loop) {
    char* line = nullptr;
    if (g_io_channel_read_line(channel, &line, nullptr, nullptr, nullptr) != G_IO_STATUS_NORMAL) {
        g_main_loop_quit(static_cast<GMainLoop*>(loop));
        return G_SOURCE_REMOVE;
    }
    obey(line);
    g_free(line);
    return G_SOURCE_CONTINUE;
}

void ownName(const char* name) {
    g_bus_own_name_on_connection(
        services.bus, name, G_BUS_NAME_OWNER_FLAGS_NONE,
        [](GDBusConnection*, const char*, gpointer) {
            if (++services.namesOwned == 2)
                say("ready");
        },
        nullptr, nullptr, nullptr);
}

}  // namespace

int main() {
    services.bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (services.bus == nullptr)
        return 1;
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(description, nullptr);
    const GDBusInterfaceVTable table{&called, nullptr, nullptr, {}};
    g_dbus_connection_register_object(services.bus, notificationsPath, node->interfaces[0], &table, nullptr, nullptr,
                                      nullptr);
    g_dbus_connection_register_object(services.bus, portalPath, node->interfaces[1], &table, nullptr, nullptr, nullptr);
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    GIOChannel* input = g_io_channel_unix_new(0);
    g_io_add_watch(input, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), &readCommands, loop);
    ownName("org.freedesktop.Notifications");
    ownName("org.freedesktop.portal.Desktop");
    g_main_loop_run(loop);
    return 0;
}
