// Windows of one colour on an X11 display.
#pragma once

#include "Platform/Linux/X11Reply.h"

#include <QColor>
#include <QRect>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstring>
#include <string_view>
#include <thread>
#include <vector>

namespace wrapio {

/// The server itself fills the windows whenever a part of them becomes visible. They go with this object.
class PaintedWindows {
public:
    PaintedWindows()
        : m_connection(sharedConnection()) {
        m_screen = ::xcb_setup_roots_iterator(::xcb_get_setup(m_connection)).data;
    }
    PaintedWindows(const PaintedWindows&) = delete;
    PaintedWindows& operator=(const PaintedWindows&) = delete;
    ~PaintedWindows() { closeAll(); }

    /// Opens a window of a process.
    xcb_window_t open(qint64 process, QRect frame, QColor color) {
        const xcb_window_t window = ::xcb_generate_id(m_connection);
        const std::uint32_t pixel = color.rgb() & 0xFFFFFF;
        ::xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_screen->root, std::int16_t(frame.x()),
                            std::int16_t(frame.y()), std::uint16_t(frame.width()), std::uint16_t(frame.height()), 0,
                            XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual, XCB_CW_BACK_PIXEL, &pixel);
        show(window, process);
        return window;
    }
    /// Opens a window with an alpha channel, filled with `color`.
    xcb_window_t openTranslucent(qint64 process, QRect frame, QColor color) {
        const xcb_colormap_t colors = ::xcb_generate_id(m_connection);
        ::xcb_create_colormap(m_connection, XCB_COLORMAP_ALLOC_NONE, colors, m_screen->root, alphaVisual());
        const std::uint32_t values[] = {qPremultiply(color.rgba()), 0, colors};
        const xcb_window_t window = ::xcb_generate_id(m_connection);
        ::xcb_create_window(m_connection, 32, window, m_screen->root, std::int16_t(frame.x()), std::int16_t(frame.y()),
                            std::uint16_t(frame.width()), std::uint16_t(frame.height()), 0,
                            XCB_WINDOW_CLASS_INPUT_OUTPUT, alphaVisual(),
                            XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP, values);
        show(window, process);
        return window;
    }
    /// Puts a smaller window of another colour into one.
    void fill(xcb_window_t parent, QRect area, QColor color) {
        const xcb_window_t window = ::xcb_generate_id(m_connection);
        const std::uint32_t pixel = color.rgb() & 0xFFFFFF;
        ::xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, parent, std::int16_t(area.x()),
                            std::int16_t(area.y()), std::uint16_t(area.width()), std::uint16_t(area.height()), 0,
                            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &pixel);
        ::xcb_map_window(m_connection, window);
        finish();
    }
    void repaint(xcb_window_t window, QColor color) {
        const std::uint32_t pixel = color.rgb() & 0xFFFFFF;
        ::xcb_change_window_attributes(m_connection, window, XCB_CW_BACK_PIXEL, &pixel);
        ::xcb_clear_area(m_connection, 0, window, 0, 0, 0, 0);
        finish();
    }
    /// Says that the outermost pixels are no part of what people see.
    void setMargins(xcb_window_t window, const std::vector<std::uint32_t>& leftRightTopBottom) {
        ::xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom("_GTK_FRAME_EXTENTS"),
                              XCB_ATOM_CARDINAL, 32, std::uint32_t(leftRightTopBottom.size()),
                              leftRightTopBottom.data());
        finish();
    }
    void minimise(xcb_window_t window) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_CHANGE_STATE");
        event.data.data32[0] = 3;  // iconic
        ::xcb_send_event(m_connection, 0, m_screen->root,
                         XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                         reinterpret_cast<const char*>(&event));
        finish();
    }
    void close(xcb_window_t window) {
        ::xcb_destroy_window(m_connection, window);
        finish();
    }
    void closeAll() {
        for (const xcb_window_t window : std::exchange(m_open, {}))
            ::xcb_destroy_window(m_connection, window);
        finish();
    }

private:
    /// The numbers of windows begin anew with every connection, and a window manager that is late would take a new
    /// window for the old one of that number.
    static xcb_connection_t* sharedConnection() {
        static xcb_connection_t* const connection = ::xcb_connect(nullptr, nullptr);
        EXPECT_EQ(::xcb_connection_has_error(connection), 0);
        return connection;
    }
    void show(xcb_window_t window, qint64 process) {
        const auto number = static_cast<std::uint32_t>(process);
        ::xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32,
                              1, &number);
        // No decorations, so that the window manager leaves places and sizes alone.
        const std::uint32_t plain[] = {2, 0, 0, 0, 0};
        ::xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom("_MOTIF_WM_HINTS"),
                              atom("_MOTIF_WM_HINTS"), 32, 5, plain);
        // Placed by its user.
        std::uint32_t hints[18] = {1};
        ::xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                              XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
        ::xcb_map_window(m_connection, window);
        m_open.push_back(window);
        finish();
        // A window manager that has only just started may overlook a window; then it is shown again.
        constexpr int looks = 6000;
        for (int look = 1; look <= looks; ++look) {
            if (isManaged(window))
                return;
            if (look % 100 == 0) {
                ::xcb_unmap_window(m_connection, window);
                ::xcb_map_window(m_connection, window);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        ADD_FAILURE() << "no window manager takes the window";
    }
    [[nodiscard]] bool isManaged(xcb_window_t window) const {
        const xcb_atom_t state = atom("WM_STATE");
        const auto cookie = ::xcb_get_property(m_connection, 0, window, state, state, 0, 1);
        const auto reply = x11::owned(::xcb_get_property_reply(m_connection, cookie, nullptr));
        return reply && reply->length > 0;
    }
    [[nodiscard]] xcb_visualid_t alphaVisual() const {
        for (auto depths = ::xcb_screen_allowed_depths_iterator(m_screen); depths.rem > 0; ::xcb_depth_next(&depths)) {
            if (depths.data->depth == 32)
                return ::xcb_depth_visuals(depths.data)->visual_id;
        }
        ADD_FAILURE() << "the display has no visual with an alpha channel";
        return 0;
    }
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
        const auto cookie = ::xcb_intern_atom(m_connection, 0, std::uint16_t(name.size()), name.data());
        const auto reply = x11::owned(::xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
    /// The answer to a question comes after what was asked before.
    void finish() { static_cast<void>(atom("WM_NAME")); }

    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen = nullptr;
    std::vector<xcb_window_t> m_open;
};

}  // namespace wrapio
