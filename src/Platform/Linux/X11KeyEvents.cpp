#include "Platform/Linux/X11KeyEvents.h"

#include "Platform/Linux/X11Reply.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace wrapio {

using x11::owned;

X11KeyEvents::X11KeyEvents(std::function<void()> happened)
    : m_happened(std::move(happened))
    , m_connection(std::getenv("DISPLAY") ? ::xcb_connect(nullptr, &m_screenNumber) : nullptr) {
    if (!m_connection || ::xcb_connection_has_error(m_connection) != 0 || !listen())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(::xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { drain(); });
}

X11KeyEvents::~X11KeyEvents() {
    m_notifier.reset();
    if (m_connection)
        ::xcb_disconnect(m_connection);
}

bool X11KeyEvents::listen() const {
    const auto version = owned(
        ::xcb_input_xi_query_version_reply(m_connection, ::xcb_input_xi_query_version(m_connection, 2, 2), nullptr));
    if (!version)
        return false;
    auto screens = ::xcb_setup_roots_iterator(::xcb_get_setup(m_connection));
    for (int i = 0; i < m_screenNumber && screens.rem > 1; ++i)
        ::xcb_screen_next(&screens);
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    } keys;
    const auto cookie = ::xcb_input_xi_select_events_checked(m_connection, screens.data->root, 1, &keys.head);
    return !owned(::xcb_request_check(m_connection, cookie));
}

void X11KeyEvents::drain() {
    bool happened = false;
    while (const auto event = owned(::xcb_poll_for_event(m_connection)))
        happened = true;
    if (::xcb_connection_has_error(m_connection) != 0)
        m_notifier->setEnabled(false);
    if (happened)
        m_happened();
}

}  // namespace wrapio
