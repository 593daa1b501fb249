// Finds out when a site that could not be reached can be reached again.
#pragma once

#include "Shell/GObjects.h"

#include <gio/gio.h>

#include <functional>
#include <string>

namespace wrapio {

/// Looks by connecting, with growing pauses and whenever the network changes. Lives on the main thread.
class RecoveryProbe {
public:
    RecoveryProbe();
    ~RecoveryProbe();
    RecoveryProbe(const RecoveryProbe&) = delete;
    RecoveryProbe& operator=(const RecoveryProbe&) = delete;

    /// Calls `onReached` once the host of `address` (http or https) takes connections. The pauses go on growing until
    /// `forget`.
    void watch(const std::string& address, std::function<void()> onReached);

    /// Stops looking.
    void stop();

    /// Stops looking, and begins with short pauses the next time.
    void forget();

private:
    void wait();
    void look();
    static void connected(GObject* client, GAsyncResult* result, gpointer self);

    std::string m_address;
    std::function<void()> m_onReached;
    int m_attempt = 0;
    Timeout m_pause;
    ObjectPtr<GCancellable> m_looking;
};

}  // namespace wrapio
