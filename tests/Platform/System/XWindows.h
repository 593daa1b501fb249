// Windows on an X11 display, made and looked at by a test.
#pragma once

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace wrapio {

class XWindows {
public:
    XWindows()
        : m_connection(::xcb_connect(nullptr, nullptr)) {
        EXPECT_EQ(::xcb_connection_has_error(m_connection), 0);
        m_screen = ::xcb_setup_roots_iterator(::xcb_get_setup(m_connection)).data;
    }
    XWindows(const XWindows&) = delete;
    XWindows& operator=(const XWindows&) = delete;
    ~XWindows() { ::xcb_disconnect(m_connection); }

    /// Opens a window that says that it belongs to a process.
    xcb_window_t open(qint64 process) {
        const xcb_window_t window = create();
        const auto number = static_cast<std::uint32_t>(process);
        ::xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32,
                              1, &number);
        ::xcb_map_window(m_connection, window);
        ::xcb_flush(m_connection);
        return window;
    }
    /// Takes a selection, as a tray does.
    void hold(std::string_view selection) {
        ::xcb_set_selection_owner(m_connection, create(), atom(selection), XCB_CURRENT_TIME);
        // The answer to a question comes after what was asked before.
        static_cast<void>(atom("WM_NAME"));
    }

    /// To be asked again and again until it is.
    [[nodiscard]] bool isManaged(xcb_window_t window) {
        for (const std::uint32_t one : numbers("_NET_CLIENT_LIST")) {
            if (one == window)
                return true;
        }
        // Openbox may sleep over a request until something else happens.
        if (++m_looks % 50 == 0) {
            ::xcb_map_window(m_connection, window);
            ::xcb_flush(m_connection);
        }
        return false;
    }
    [[nodiscard]] xcb_window_t active() const {
        const auto window = numbers("_NET_ACTIVE_WINDOW");
        return window.empty() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : window.front();
    }

private:
    xcb_window_t create() const {
        const xcb_window_t window = ::xcb_generate_id(m_connection);
        ::xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_screen->root, 0, 0, 200, 100, 0,
                            XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual, 0, nullptr);
        return window;
    }
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
        const auto cookie = ::xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> reply(
            ::xcb_intern_atom_reply(m_connection, cookie, nullptr), &std::free);
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
    [[nodiscard]] std::vector<std::uint32_t> numbers(std::string_view property) const {
        const auto cookie =
            ::xcb_get_property(m_connection, 0, m_screen->root, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
        const std::unique_ptr<xcb_get_property_reply_t, void (*)(void*)> reply(
            ::xcb_get_property_reply(m_connection, cookie, nullptr), &std::free);
        if (!reply || reply->format != 32)
            return {};
        const auto* const first = static_cast<const std::uint32_t*>(::xcb_get_property_value(reply.get()));
        return {first, first + ::xcb_get_property_value_length(reply.get()) / 4};
    }

    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen = nullptr;
    int m_looks = 0;
};

}  // namespace wrapio
