// A socket in the person's runtime folder by which other programs of the same person ask the app for something.
//
// One request is one line. Who asks must be the same user; the socket and its folder are closed to others anyway.
#pragma once

#include "Shell/GObjects.h"

#include <gio/gio.h>

#include <functional>
#include <string>

namespace wrapio {

/// The way back to who has asked. Movable; when it goes without an answer, the connection is closed.
class SocketReply {
public:
    explicit SocketReply(ObjectPtr<GSocketConnection> connection)
        : m_connection(std::move(connection)) {}

    /// Sends `bytes` without blocking and closes the connection.
    void send(std::string bytes);

private:
    ObjectPtr<GSocketConnection> m_connection;
};

/// The listening end. Lives on the main thread.
class PrivateSocket {
public:
    using Handler = std::function<void(const std::string& line, SocketReply reply)>;

    /// Listens at `path`, in place of whatever a process that is gone has left there; the caller holds the profile's
    /// lock. Says on standard error when it cannot: the app works without.
    PrivateSocket(std::string path, Handler handler);
    ~PrivateSocket();
    PrivateSocket(const PrivateSocket&) = delete;
    PrivateSocket& operator=(const PrivateSocket&) = delete;

private:
    static gboolean incoming(GSocketService*, GSocketConnection* connection, GObject*, gpointer self);

    std::string m_path;
    Handler m_handler;
    ObjectPtr<GSocketService> m_service;
};

/// Sends the request `line` to the process that listens at `path` and waits, two seconds at most, for "ok". False when
/// nobody answers.
[[nodiscard]] bool sendPrivateRequest(const std::string& path, const std::string& line);

}  // namespace wrapio
