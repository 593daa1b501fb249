// Cookies that outlive the engine's own keeping: those of the session, and those of another browser.
#pragma once

#include "RunnerCore/StoredCookie.h"
#include "Shell/GObjects.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>
#include <vector>

namespace wrapio {

/// Adds `cookies` to the session, and calls `finish` when the last one is there.
void addCookies(WebKitNetworkSession* session, const std::vector<StoredCookie>& cookies, std::function<void()> finish);

/// Keeps the cookies that end with the session over a restart: people expect an app to stay signed in. Lives on the
/// main thread, no longer than the session.
class SessionCookies {
public:
    /// Keeps them in the file at `path`.
    SessionCookies(WebKitNetworkSession* session, std::string path);
    ~SessionCookies();
    SessionCookies(const SessionCookies&) = delete;
    SessionCookies& operator=(const SessionCookies&) = delete;

    /// Brings the kept cookies back, then calls `finish`; at once when there are none.
    void restore(std::function<void()> finish);

    /// Writes them down, then calls `finish`. Otherwise it happens by itself a moment after cookies change.
    void save(std::function<void()> finish);

    /// Removes what is kept.
    void clear();

private:
    struct Saving;
    static void received(GObject* manager, GAsyncResult* result, gpointer data);

    WebKitNetworkSession* m_session;
    WebKitCookieManager* m_manager;
    std::string m_path;
    std::string m_written;
    Timeout m_delay;
    ObjectPtr<GCancellable> m_life{g_cancellable_new()};
};

}  // namespace wrapio
