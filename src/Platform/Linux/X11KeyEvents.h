// Notices every key on an X11 display, whoever has the keyboard.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

struct xcb_connection_t;

namespace wrapio {

/// For as long as it lives, by events alone. Which keys they are is not looked at. Main thread.
class X11KeyEvents {
public:
    /// Calls `happened` after keys went down or up. Nothing ever happens without a display.
    explicit X11KeyEvents(std::function<void()> happened);
    X11KeyEvents(const X11KeyEvents&) = delete;
    X11KeyEvents& operator=(const X11KeyEvents&) = delete;
    ~X11KeyEvents();

private:
    [[nodiscard]] bool listen() const;
    void drain();

    std::function<void()> m_happened;
    int m_screenNumber = 0;
    xcb_connection_t* m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace wrapio
