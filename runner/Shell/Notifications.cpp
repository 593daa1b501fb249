#include "Shell/Notifications.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/Diagnostics.h"

#include <string_view>

namespace wrapio {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* servicePath = "/org/freedesktop/Notifications";
constexpr std::size_t longestTitle = 200;
constexpr std::size_t longestBody = 1000;
constexpr std::size_t mostWaiting = 10;

ObjectPtr<WebKitNotification> keep(WebKitNotification* notification) {
    g_object_ref(notification);
    return ObjectPtr<WebKitNotification>(notification);
}

std::string bodyOf(WebKitNotification* notification, bool hasMarkup) {
    const std::string body = displayText(orEmpty(webkit_notification_get_body(notification)), longestBody);
    if (!hasMarkup)
        return body;
    const TextPtr escaped(g_markup_escape_text(body.c_str(), -1));
    return escaped.get();
}

bool names(GVariant* capabilities, std::string_view ability) {
    bool isNamed = false;
    GVariantIter* list = nullptr;
    const char* name = nullptr;
    g_variant_get(capabilities, "(as)", &list);
    while (g_variant_iter_next(list, "&s", &name))
        isNamed = isNamed || ability == name;
    g_variant_iter_free(list);
    return isNamed;
}

}  // namespace

struct Notifications::Call {
    Notifications* owner;
    ObjectPtr<WebKitNotification> notification;
};

Notifications::Notifications(GDBusConnection* bus, std::string appName, std::string icon,
                             std::function<void()> onClicked)
    : m_bus(bus)
    , m_appName(std::move(appName))
    , m_icon(std::move(icon))
    , m_onClicked(std::move(onClicked)) {
    if (bus != nullptr)
        m_subscription = g_dbus_connection_signal_subscribe(bus, service, service, nullptr, servicePath, nullptr,
                                                            G_DBUS_SIGNAL_FLAGS_NONE, &signalled, this, nullptr);
}

Notifications::~Notifications() {
    g_cancellable_cancel(m_life.get());
    if (m_bus != nullptr)
        g_dbus_connection_signal_unsubscribe(m_bus, m_subscription);
    for (const auto& [id, notification] : m_shown)
        g_signal_handlers_disconnect_by_data(notification.get(), this);
}

void Notifications::attach(WebKitWebView* view) {
    connect(
        view, "show-notification",
        [](WebKitWebView*, WebKitNotification* notification, Notifications* self) -> gboolean {
            self->show(notification);
            return TRUE;
        },
        this);
}

void Notifications::show(WebKitNotification* notification) {
    if (m_bus == nullptr || !m_limiter.allow(std::chrono::steady_clock::now()))
        return;
    if (m_hasMarkup)
        return send(notification);
    if (m_waiting.empty())
        askForAbilities();
    if (m_waiting.size() < mostWaiting)
        m_waiting.push_back(keep(notification));
}

void Notifications::askForAbilities() {
    g_dbus_connection_call(m_bus, service, servicePath, service, "GetCapabilities", nullptr, G_VARIANT_TYPE("(as)"),
                           G_DBUS_CALL_FLAGS_NONE, -1, m_life.get(), &abilitiesKnown, this);
}

void Notifications::abilitiesKnown(GObject* bus, GAsyncResult* result, gpointer self) {
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error);
    const bool isGivenUp = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    g_clear_error(&error);
    if (isGivenUp)
        return;
    auto* notifications = static_cast<Notifications*>(self);
    auto waiting = std::exchange(notifications->m_waiting, {});
    if (answer == nullptr)
        return reportLine("notifications are not shown: the desktop has no service for them");
    notifications->m_hasMarkup = names(answer, "body-markup");
    g_variant_unref(answer);
    for (const auto& notification : waiting)
        notifications->send(notification.get());
}

void Notifications::send(WebKitNotification* notification) {
    const std::string title = displayText(orEmpty(webkit_notification_get_title(notification)), longestTitle);
    const std::string body = bodyOf(notification, m_hasMarkup.value_or(true));
    GVariantBuilder actions;
    g_variant_builder_init(&actions, G_VARIANT_TYPE_STRING_ARRAY);
    g_variant_builder_add(&actions, "s", "default");
    g_variant_builder_add(&actions, "s", "Show");
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(m_icon.c_str()));
    GVariant* call = g_variant_new("(susssasa{sv}i)", m_appName.c_str(), 0U, m_icon.c_str(), title.c_str(),
                                   body.c_str(), &actions, &hints, -1);
    g_dbus_connection_call(m_bus, service, servicePath, service, "Notify", call, G_VARIANT_TYPE("(u)"),
                           G_DBUS_CALL_FLAGS_NONE, -1, m_life.get(), &sent, new Call{this, keep(notification)});
}

void Notifications::sent(GObject* bus, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Call> call(static_cast<Call*>(data));
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr);
    if (answer == nullptr)
        return;
    guint32 id = 0;
    g_variant_get(answer, "(u)", &id);
    g_variant_unref(answer);
    connect(
        call->notification.get(), "closed",
        [](WebKitNotification* notification, Notifications* self) { self->closed(notification); }, call->owner);
    call->owner->m_shown[id] = std::move(call->notification);
}

void Notifications::closed(WebKitNotification* notification) {
    for (auto entry = m_shown.begin(); entry != m_shown.end(); ++entry) {
        if (entry->second.get() != notification)
            continue;
        g_dbus_connection_call(m_bus, service, servicePath, service, "CloseNotification",
                               g_variant_new("(u)", entry->first), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
                               nullptr, nullptr);
        g_signal_handlers_disconnect_by_data(notification, this);
        m_shown.erase(entry);
        return;
    }
}

WebKitNotification* Notifications::find(guint32 id) const {
    const auto found = m_shown.find(id);
    return found == m_shown.end() ? nullptr : found->second.get();
}

void Notifications::signalled(GDBusConnection*, const char*, const char*, const char*, const char* signal,
                              GVariant* parameters, gpointer self) {
    auto* notifications = static_cast<Notifications*>(self);
    const std::string_view name = signal;
    guint32 id = 0;
    if (name == "ActionInvoked" && g_variant_is_of_type(parameters, G_VARIANT_TYPE("(us)")))
        g_variant_get(parameters, "(us)", &id, nullptr);
    else if (name == "NotificationClosed" && g_variant_is_of_type(parameters, G_VARIANT_TYPE("(uu)")))
        g_variant_get(parameters, "(uu)", &id, nullptr);
    WebKitNotification* notification = notifications->find(id);
    if (notification == nullptr)
        return;
    if (name == "NotificationClosed")
        return webkit_notification_close(notification);
    webkit_notification_clicked(notification);
    notifications->m_onClicked();
}

}  // namespace wrapio
