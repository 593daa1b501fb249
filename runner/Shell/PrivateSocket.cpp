#include "Shell/PrivateSocket.h"

#include "Shell/Diagnostics.h"

#include <gio/gunixsocketaddress.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string_view>

namespace wrapio {

namespace {

constexpr std::size_t longestRequest = 16 * 1024;
constexpr guint answerTimeout = 2;
constexpr mode_t privateMode = 0600;
constexpr std::string_view answer = "ok\n";

/// One conversation; deletes itself when it is over. It outlives the socket object only between two turns of the main
/// loop that no longer runs then.
struct Conversation {
    ObjectPtr<GSocketConnection> connection;
    PrivateSocket::Handler handler;
    std::string line;
    std::array<char, 1024> buffer{};

    void readOn() {
        GInputStream* stream = g_io_stream_get_input_stream(G_IO_STREAM(connection.get()));
        g_input_stream_read_async(stream, buffer.data(), buffer.size(), G_PRIORITY_DEFAULT, nullptr, &received, this);
    }

    static void received(GObject* stream, GAsyncResult* result, gpointer self) {
        std::unique_ptr<Conversation> talk(static_cast<Conversation*>(self));
        const gssize count = g_input_stream_read_finish(G_INPUT_STREAM(stream), result, nullptr);
        if (count <= 0)
            return;
        talk->line.append(talk->buffer.data(), static_cast<std::size_t>(count));
        const std::size_t end = talk->line.find('\n');
        if (end == std::string::npos && talk->line.size() < longestRequest)
            return talk.release()->readOn();
        if (end != std::string::npos)
            talk->handler(talk->line.substr(0, end), SocketReply(std::move(talk->connection)));
    }
};

/// Bytes on their way; deletes itself when they have arrived or nobody takes them.
struct Sending {
    ObjectPtr<GSocketConnection> connection;
    std::string bytes;

    static void sent(GObject* stream, GAsyncResult* result, gpointer self) {
        const std::unique_ptr<Sending> sending(static_cast<Sending*>(self));
        g_output_stream_write_all_finish(G_OUTPUT_STREAM(stream), result, nullptr, nullptr);
        g_io_stream_close(G_IO_STREAM(sending->connection.get()), nullptr, nullptr);
    }
};

bool isOwnUser(GSocketConnection* connection) {
    const ObjectPtr<GCredentials> peer(g_socket_get_credentials(g_socket_connection_get_socket(connection), nullptr));
    return peer && g_credentials_get_unix_user(peer.get(), nullptr) == ::getuid();
}

}  // namespace

void SocketReply::send(std::string bytes) {
    auto sending = std::make_unique<Sending>(Sending{std::move(m_connection), std::move(bytes)});
    GOutputStream* out = g_io_stream_get_output_stream(G_IO_STREAM(sending->connection.get()));
    Sending* raw = sending.release();
    g_output_stream_write_all_async(out, raw->bytes.data(), raw->bytes.size(), G_PRIORITY_DEFAULT, nullptr,
                                    &Sending::sent, raw);
}

PrivateSocket::PrivateSocket(std::string path, Handler handler)
    : m_path(std::move(path))
    , m_handler(std::move(handler))
    , m_service(g_socket_service_new()) {
    ::unlink(m_path.c_str());
    const ObjectPtr<GSocketAddress> address(g_unix_socket_address_new(m_path.c_str()));
    GError* error = nullptr;
    if (!g_socket_listener_add_address(G_SOCKET_LISTENER(m_service.get()), address.get(), G_SOCKET_TYPE_STREAM,
                                       G_SOCKET_PROTOCOL_DEFAULT, nullptr, nullptr, &error))
        reportLine("no socket for requests: " + takeMessage(error));
    ::chmod(m_path.c_str(), privateMode);
    g_signal_connect(m_service.get(), "incoming", G_CALLBACK(&PrivateSocket::incoming), this);
}

PrivateSocket::~PrivateSocket() {
    g_signal_handlers_disconnect_by_data(m_service.get(), this);
    g_socket_service_stop(m_service.get());
    g_socket_listener_close(G_SOCKET_LISTENER(m_service.get()));
    ::unlink(m_path.c_str());
}

gboolean PrivateSocket::incoming(GSocketService*, GSocketConnection* connection, GObject*, gpointer self) {
    if (!isOwnUser(connection))
        return TRUE;
    g_object_ref(connection);
    auto talk = std::make_unique<Conversation>();
    talk->connection.reset(connection);
    talk->handler = static_cast<PrivateSocket*>(self)->m_handler;
    talk.release()->readOn();
    return TRUE;
}

bool sendPrivateRequest(const std::string& path, const std::string& line) {
    const ObjectPtr<GSocketClient> client(g_socket_client_new());
    g_socket_client_set_timeout(client.get(), answerTimeout);
    const ObjectPtr<GSocketAddress> address(g_unix_socket_address_new(path.c_str()));
    const ObjectPtr<GSocketConnection> connection(
        g_socket_client_connect(client.get(), G_SOCKET_CONNECTABLE(address.get()), nullptr, nullptr));
    if (!connection)
        return false;
    GOutputStream* out = g_io_stream_get_output_stream(G_IO_STREAM(connection.get()));
    GInputStream* in = g_io_stream_get_input_stream(G_IO_STREAM(connection.get()));
    const std::string request = line + "\n";
    std::array<char, 3> received{};
    gsize count = 0;
    return g_output_stream_write_all(out, request.data(), request.size(), nullptr, nullptr, nullptr) &&
           g_input_stream_read_all(in, received.data(), received.size(), &count, nullptr, nullptr) &&
           std::string_view(received.data(), count) == answer;
}

}  // namespace wrapio
