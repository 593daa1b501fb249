#include "Platform/Linux/X11Windows.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace wrapio {

namespace {

template <typename Reply>
using Owned = std::unique_ptr<Reply, void (*)(void*)>;

template <typename Reply>
Owned<Reply> owned(Reply* reply) {
    return Owned<Reply>(reply, &std::free);
}

class Display {
public:
    Display()
        : m_connection(std::getenv("DISPLAY") ? ::xcb_connect(nullptr, &m_screenNumber) : nullptr) {}
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() {
        if (m_connection)
            ::xcb_disconnect(m_connection);
    }

    [[nodiscard]] bool isOpen() const { return m_connection && ::xcb_connection_has_error(m_connection) == 0; }

    [[nodiscard]] xcb_window_t root() const {
        auto screens = ::xcb_setup_roots_iterator(::xcb_get_setup(m_connection));
        for (int i = 0; i < m_screenNumber && screens.rem > 1; ++i)
            ::xcb_screen_next(&screens);
        return screens.data->root;
    }

    /// XCB_ATOM_NONE when nobody has ever used that name.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
        const auto cookie = ::xcb_intern_atom(m_connection, 1, static_cast<std::uint16_t>(name.size()), name.data());
        const auto reply = owned(::xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    [[nodiscard]] xcb_window_t selectionOwner(std::string_view name) const {
        const xcb_atom_t selection = atom(name);
        if (selection == XCB_ATOM_NONE)
            return XCB_WINDOW_NONE;
        const auto cookie = ::xcb_get_selection_owner(m_connection, selection);
        const auto reply = owned(::xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
        return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }

    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, std::string_view property) const {
        constexpr std::uint32_t longest = 65536;
        const auto cookie =
            ::xcb_get_property(m_connection, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
        const auto reply = owned(::xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->format != 32)
            return {};
        const auto* const first = static_cast<const std::uint32_t*>(::xcb_get_property_value(reply.get()));
        return {first, first + ::xcb_get_property_value_length(reply.get()) / 4};
    }

    /// A request to the window manager, which listens at the root window.
    bool tellWindowManager(xcb_window_t window, std::string_view message, std::uint32_t source) const {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom(message);
        event.data.data32[0] = source;
        constexpr std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        const auto cookie =
            ::xcb_send_event_checked(m_connection, 0, root(), mask, reinterpret_cast<const char*>(&event));
        return !owned(::xcb_request_check(m_connection, cookie));
    }

private:
    int m_screenNumber = 0;
    xcb_connection_t* m_connection;
};

std::optional<xcb_window_t> topmostWindow(const Display& display, qint64 process) {
    auto windows = display.numbers(display.root(), "_NET_CLIENT_LIST_STACKING");
    if (windows.empty())
        windows = display.numbers(display.root(), "_NET_CLIENT_LIST");
    const auto found = std::find_if(windows.rbegin(), windows.rend(), [&](xcb_window_t window) {
        const auto owner = display.numbers(window, "_NET_WM_PID");
        return owner.size() == 1 && owner.front() == static_cast<std::uint64_t>(process);
    });
    return found == windows.rend() ? std::nullopt : std::optional(*found);
}

}  // namespace

bool isX11Reachable() {
    return Display().isOpen();
}

bool activateX11Window(qint64 processIdentifier) {
    const Display display;
    if (!display.isOpen())
        return false;
    const auto window = topmostWindow(display, processIdentifier);
    // The source "pager" says that a person asked for this; as an application's own request it may be refused.
    constexpr std::uint32_t pager = 2;
    return window && display.tellWindowManager(*window, "_NET_ACTIVE_WINDOW", pager);
}

bool hasX11Compositor() {
    const Display display;
    return !display.isOpen() || display.selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE;
}

bool hasX11Tray() {
    const Display display;
    return display.isOpen() && display.selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_WINDOW_NONE;
}

}  // namespace wrapio
