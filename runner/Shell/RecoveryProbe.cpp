#include "Shell/RecoveryProbe.h"

#include "RunnerCore/LoadTrouble.h"

namespace wrapio {

namespace {

constexpr guint connectTimeout = 10;
constexpr guint16 httpPort = 80;
constexpr guint16 httpsPort = 443;

}  // namespace

RecoveryProbe::RecoveryProbe() {
    connect(
        g_network_monitor_get_default(), "network-changed",
        [](GNetworkMonitor*, gboolean isAvailable, RecoveryProbe* self) {
            if (isAvailable && self->m_pause.isWaiting())
                self->look();
        },
        this);
}

RecoveryProbe::~RecoveryProbe() {
    g_signal_handlers_disconnect_by_data(g_network_monitor_get_default(), this);
    stop();
}

void RecoveryProbe::watch(const std::string& address, std::function<void()> onReached) {
    stop();
    m_address = address;
    m_onReached = std::move(onReached);
    wait();
}

void RecoveryProbe::stop() {
    m_pause.cancel();
    if (m_looking)
        g_cancellable_cancel(m_looking.get());
    m_looking.reset();
}

void RecoveryProbe::forget() {
    stop();
    m_attempt = 0;
}

void RecoveryProbe::wait() {
    m_pause.start(static_cast<unsigned>(pauseBeforeAttempt(m_attempt++).count()), [this] { look(); });
}

void RecoveryProbe::look() {
    stop();
    m_looking.reset(g_cancellable_new());
    const ObjectPtr<GSocketClient> client(g_socket_client_new());
    g_socket_client_set_timeout(client.get(), connectTimeout);
    g_socket_client_connect_to_uri_async(client.get(), m_address.c_str(),
                                         m_address.starts_with("https") ? httpsPort : httpPort, m_looking.get(),
                                         &RecoveryProbe::connected, this);
}

void RecoveryProbe::connected(GObject* client, GAsyncResult* result, gpointer self) {
    GError* error = nullptr;
    const ObjectPtr<GSocketConnection> connection(
        g_socket_client_connect_to_uri_finish(G_SOCKET_CLIENT(client), result, &error));
    const bool isGivenUp = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    g_clear_error(&error);
    // The owner may be gone when the look was given up.
    if (isGivenUp)
        return;
    auto* probe = static_cast<RecoveryProbe*>(self);
    probe->m_looking.reset();
    if (!connection)
        return probe->wait();
    const std::function<void()> onReached = probe->m_onReached;
    onReached();
}

}  // namespace wrapio
