// A private socket by which a second start reaches the first one where there is no session bus.
//
// One request is one line: "activate", or "open " and an address. The answer is "ok".
#pragma once

#include "Shell/GObjects.h"

#include <gio/gio.h>

#include <functional>
#include <string>

namespace wrapio {

/// The first process's end. Lives on the main thread.
class ControlSocket {
public:
    using Handler = std::function<void(const std::string& line)>;

    /// Listens at `path`, in place of whatever a process that is gone has left there; the caller holds the profile's
    /// lock. Says on standard error when it cannot: the app works without.
    ControlSocket(std::string path, Handler handler);
    ~ControlSocket();
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;

private:
    static gboolean incoming(GSocketService*, GSocketConnection* connection, GObject*, gpointer self);

    std::string m_path;
    Handler m_handler;
    ObjectPtr<GSocketService> m_service;
};

/// Sends the request `line` to the process that listens at `path` and waits, two seconds at most, for its answer.
/// False when nobody answers.
[[nodiscard]] bool sendControlRequest(const std::string& path, const std::string& line);

}  // namespace wrapio
