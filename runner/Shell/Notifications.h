// Shows pages' notifications under the app's own name and icon.
#pragma once

#include "RunnerCore/RateLimiter.h"
#include "Shell/GObjects.h"

#include <gio/gio.h>
#include <webkit/webkit.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wrapio {

/// Lives on the main thread, at least as long as the views it is attached to.
class Notifications {
public:
    /// Sends over `bus`, which may be null: there are none then. `icon` is the name of the app's icon; `onClicked` is
    /// told when the person wants to see where a notification came from.
    Notifications(GDBusConnection* bus, std::string appName, std::string icon, std::function<void()> onClicked);
    ~Notifications();
    Notifications(const Notifications&) = delete;
    Notifications& operator=(const Notifications&) = delete;

    void attach(WebKitWebView* view);

private:
    struct Call;

    void show(WebKitNotification* notification);
    void askForAbilities();
    void send(WebKitNotification* notification);
    void closed(WebKitNotification* notification);
    [[nodiscard]] WebKitNotification* find(guint32 id) const;

    static void abilitiesKnown(GObject* bus, GAsyncResult* result, gpointer self);
    static void sent(GObject* bus, GAsyncResult* result, gpointer data);
    static void signalled(GDBusConnection*, const char*, const char*, const char*, const char* signal,
                          GVariant* parameters, gpointer self);

    GDBusConnection* m_bus;
    std::string m_appName;
    std::string m_icon;
    std::function<void()> m_onClicked;
    ObjectPtr<GCancellable> m_life{g_cancellable_new()};
    guint m_subscription = 0;
    std::optional<bool> m_hasMarkup;  ///< of the service; nothing before it was asked
    std::vector<ObjectPtr<WebKitNotification>> m_waiting;
    std::map<guint32, ObjectPtr<WebKitNotification>> m_shown;
    RateLimiter m_limiter{10, std::chrono::seconds(10)};
};

}  // namespace wrapio
