// Ownership of GLib objects and texts, and signal handlers that are members.
#pragma once

#include <glib-object.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace wrapio {

struct UnrefObject {
    void operator()(void* object) const { g_object_unref(object); }
};
/// Owns one reference.
template <typename Type>
using ObjectPtr = std::unique_ptr<Type, UnrefObject>;

struct FreeText {
    void operator()(char* text) const { g_free(text); }
};
using TextPtr = std::unique_ptr<char, FreeText>;

/// The text of an error that GLib filled in; frees and clears it.
inline std::string takeMessage(GError*& error) {
    std::string message = error != nullptr ? error->message : "unknown error";
    g_clear_error(&error);
    return message;
}

/// `text`, or an empty text for null.
inline std::string orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

/// Connects a capture-less lambda; `data` must outlive `object` or be disconnected by its owner.
template <typename Handler>
gulong connect(gpointer object, const char* signal, Handler handler, gpointer data) {
    return g_signal_connect_data(object, signal, reinterpret_cast<GCallback>(+handler), data, nullptr,
                                 static_cast<GConnectFlags>(0));
}

/// Calls `action` at each `signal` that has no result; the connection owns it, so it may be used after the caller is
/// gone. What it captures must outlive `object`.
inline void connectAction(gpointer object, const char* signal, std::function<void()> action) {
    using Action = std::function<void()>;
    g_signal_connect_data(
        object, signal, G_CALLBACK(+[](Action* called) { (*called)(); }), new Action(std::move(action)),
        [](gpointer data, GClosure*) { delete static_cast<Action*>(data); }, G_CONNECT_SWAPPED);
}

/// A timer of the main loop that is gone with its owner.
class Timeout {
public:
    Timeout() = default;
    ~Timeout() { cancel(); }
    Timeout(const Timeout&) = delete;
    Timeout& operator=(const Timeout&) = delete;

    /// Calls `action` once, `milliseconds` from now, in place of what was waited for before.
    void start(unsigned milliseconds, std::function<void()> action) {
        cancel();
        m_action = std::move(action);
        m_source = g_timeout_add(milliseconds, &Timeout::fire, this);
    }

    void cancel() {
        if (m_source != 0)
            g_source_remove(std::exchange(m_source, 0));
    }

    [[nodiscard]] bool isWaiting() const { return m_source != 0; }

private:
    static gboolean fire(gpointer self) {
        auto* timeout = static_cast<Timeout*>(self);
        timeout->m_source = 0;
        // The action may start the timer again, or end its owner.
        const std::function<void()> action = std::move(timeout->m_action);
        action();
        return G_SOURCE_REMOVE;
    }

    guint m_source = 0;
    std::function<void()> m_action;
};

}  // namespace wrapio
