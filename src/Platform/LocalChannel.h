// Talking to another process of this user.
#pragma once

#include "Platform/FileSystem.h"

#include <QByteArray>

#include <functional>
#include <memory>

namespace wrapio {

/// A stream of bytes in both directions. Main thread. May be destroyed from inside what it calls.
class LocalChannel {
public:
    struct Events {
        std::function<void(const QByteArray& bytes)> received;
        std::function<void()> closed;  ///< the other side is gone; nothing more is received
    };

    LocalChannel() = default;
    virtual ~LocalChannel() = default;
    LocalChannel(const LocalChannel&) = delete;
    LocalChannel& operator=(const LocalChannel&) = delete;

    /// Tells `events` from the next turn of the event loop on, also of what has come before.
    virtual void listen(Events events) = 0;
    /// Sends `bytes` after what was sent before. Never waits: what the other side has no room for is kept. Bytes for
    /// one that is gone are dropped.
    virtual void send(const QByteArray& bytes) = 0;
};

/// The place where other processes of this user reach this one. Main thread.
class LocalServer {
public:
    using Accepted = std::function<void(std::unique_ptr<LocalChannel>)>;

    LocalServer() = default;
    virtual ~LocalServer() = default;
    LocalServer(const LocalServer&) = delete;
    LocalServer& operator=(const LocalServer&) = delete;

    /// Takes calls from now on. Only for the one who holds the catalogue: a place that another process has left behind
    /// is taken over.
    [[nodiscard]] virtual FileResult<void> open(Accepted accepted) = 0;
    /// Takes no more calls. Channels that are there stay.
    virtual void close() = 0;
};

/// Calls the one who takes calls at a place; nothing when there is none, or when it belongs to another user.
using LocalCall = std::function<std::unique_ptr<LocalChannel>()>;

}  // namespace wrapio
