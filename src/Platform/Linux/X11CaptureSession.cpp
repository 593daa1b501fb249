#include "Platform/Linux/X11CaptureSession.h"

#include "Platform/Linux/X11Pixels.h"
#include "Platform/Linux/X11Reply.h"

#include <QMargins>
#include <QRect>

#include <xcb/composite.h>

#include <algorithm>
#include <cstring>
#include <optional>

namespace wrapio {

using namespace Qt::StringLiterals;
using x11::owned;

namespace {

constexpr int largestEdge = 16384;
constexpr std::uint8_t alphaDepth = 32;

tl::unexpected<ScreenCaptureError> failure(const QString& reason) {
    return tl::unexpected(ScreenCaptureError{reason});
}

QMargins marginsOf(const std::vector<std::uint32_t>& values) {
    constexpr std::uint32_t widest = 1024;
    const bool isSane = values.size() == 4 &&
                        std::all_of(values.begin(), values.end(), [](std::uint32_t value) { return value <= widest; });
    // On the wire: left, right, top, bottom.
    return isSane ? QMargins(int(values[0]), int(values[2]), int(values[1]), int(values[3])) : QMargins();
}

std::vector<std::uint32_t> numbersOf(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 32)
        return {};
    const auto* const first = static_cast<const std::uint32_t*>(::xcb_get_property_value(reply));
    return {first, first + ::xcb_get_property_value_length(reply) / 4};
}

QRect rectangleOf(const xcb_get_geometry_reply_t& geometry) {
    return {geometry.x, geometry.y, geometry.width, geometry.height};
}

}  // namespace

/// What is asked about one window; all questions are sent before the first answer is waited for.
struct X11CaptureSession::Look {
    Look(const X11CaptureSession& session, xcb_window_t lookedAt)
        : connection(session.m_connection)
        , window(lookedAt)
        , process(::xcb_get_property(connection, 0, window, session.m_process, XCB_GET_PROPERTY_TYPE_ANY, 0, 1))
        , margins(::xcb_get_property(connection, 0, window, session.m_margins, XCB_GET_PROPERTY_TYPE_ANY, 0, 4))
        , attributes(::xcb_get_window_attributes(connection, window))
        , geometry(::xcb_get_geometry(connection, window))
        , place(::xcb_translate_coordinates(connection, window, session.root(), 0, 0)) {}

    [[nodiscard]] std::optional<ScreenWindow> result() const {
        const auto owner = numbersOf(owned(::xcb_get_property_reply(connection, process, nullptr)).get());
        const auto edges = numbersOf(owned(::xcb_get_property_reply(connection, margins, nullptr)).get());
        const auto state = owned(::xcb_get_window_attributes_reply(connection, attributes, nullptr));
        const auto size = owned(::xcb_get_geometry_reply(connection, geometry, nullptr));
        const auto origin = owned(::xcb_translate_coordinates_reply(connection, place, nullptr));
        if (owner.empty() || !state || !size || !origin || state->map_state != XCB_MAP_STATE_VIEWABLE)
            return std::nullopt;
        const QRect frame = QRect(origin->dst_x, origin->dst_y, size->width, size->height) - marginsOf(edges);
        return ScreenWindow{window, qint64(owner.front()), frame};
    }

    xcb_connection_t* connection;
    xcb_window_t window;
    xcb_get_property_cookie_t process;
    xcb_get_property_cookie_t margins;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t place;
};

X11CaptureSession::X11CaptureSession()
    : m_connection(std::getenv("DISPLAY") ? ::xcb_connect(nullptr, &m_screenNumber) : nullptr) {
    if (!isOpen())
        return;
    m_clientsStacked = atom("_NET_CLIENT_LIST_STACKING");
    m_clients = atom("_NET_CLIENT_LIST");
    m_process = atom("_NET_WM_PID");
    m_margins = atom("_GTK_FRAME_EXTENTS");
}

X11CaptureSession::~X11CaptureSession() {
    // The server takes back with the connection what was prepared.
    if (m_connection)
        ::xcb_disconnect(m_connection);
}

bool X11CaptureSession::isOpen() const {
    return m_connection && ::xcb_connection_has_error(m_connection) == 0;
}

bool X11CaptureSession::canCapture() const {
    if (!isOpen())
        return false;
    const auto* const extension = ::xcb_get_extension_data(m_connection, &::xcb_composite_id);
    if (!extension || !extension->present)
        return false;
    // Windows have pixmaps of their own from version 0.2 on.
    const auto cookie = ::xcb_composite_query_version(m_connection, 0, 4);
    const auto version = owned(::xcb_composite_query_version_reply(m_connection, cookie, nullptr));
    return version && (version->major_version > 0 || version->minor_version >= 2);
}

xcb_window_t X11CaptureSession::root() const {
    auto screens = ::xcb_setup_roots_iterator(::xcb_get_setup(m_connection));
    for (int i = 0; i < m_screenNumber && screens.rem > 1; ++i)
        ::xcb_screen_next(&screens);
    return screens.data->root;
}

xcb_atom_t X11CaptureSession::atom(const char* name) const {
    const auto cookie = ::xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const auto reply = owned(::xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::uint32_t> X11CaptureSession::numbers(xcb_window_t window, xcb_atom_t property) const {
    constexpr std::uint32_t longest = 65536;
    const auto cookie = ::xcb_get_property(m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longest);
    return numbersOf(owned(::xcb_get_property_reply(m_connection, cookie, nullptr)).get());
}

std::vector<xcb_window_t> X11CaptureSession::frontToBack() const {
    auto windows = numbers(root(), m_clientsStacked);
    if (windows.empty())
        windows = numbers(root(), m_clients);
    if (windows.empty()) {
        // Nobody manages windows here: all of them lie directly on the root.
        const auto cookie = ::xcb_query_tree(m_connection, root());
        if (const auto tree = owned(::xcb_query_tree_reply(m_connection, cookie, nullptr))) {
            const xcb_window_t* const first = ::xcb_query_tree_children(tree.get());
            windows.assign(first, first + ::xcb_query_tree_children_length(tree.get()));
        }
    }
    std::reverse(windows.begin(), windows.end());
    return windows;
}

ScreenCapture::Windows X11CaptureSession::windows() const {
    if (!isOpen())
        return failure(u"the display cannot be reached"_s);
    std::vector<Look> looks;
    for (const xcb_window_t window : frontToBack())
        looks.emplace_back(*this, window);
    std::vector<ScreenWindow> found;
    for (const Look& look : looks) {
        if (const auto window = look.result())
            found.push_back(*window);
    }
    if (!isOpen())
        return failure(u"the display has gone away"_s);
    return found;
}

tl::expected<bool, ScreenCaptureError> X11CaptureSession::prepare(const ScreenWindow& window) {
    if (!canCapture())
        return failure(u"the display cannot draw windows off the screen"_s);
    const auto id = static_cast<xcb_window_t>(window.identifier);
    if (m_prepared.contains(id))
        return false;
    const bool covered = isCovered(id);
    const auto cookie = ::xcb_composite_redirect_window_checked(m_connection, id, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    if (owned(::xcb_request_check(m_connection, cookie)))
        return failure(u"the window is gone"_s);
    m_prepared.insert(id);
    return covered;
}

/// Whether a part of the window exists nowhere until its application draws it: what lies under other windows or beyond
/// the screen. Windows with an alpha channel are always drawn whole, since the server must blend them.
bool X11CaptureSession::isCovered(xcb_window_t window) const {
    const auto own = owned(::xcb_get_geometry_reply(m_connection, ::xcb_get_geometry(m_connection, window), nullptr));
    if (!own || own->depth == alphaDepth)
        return false;
    const auto place = owned(::xcb_translate_coordinates_reply(
        m_connection, ::xcb_translate_coordinates(m_connection, window, root(), 0, 0), nullptr));
    const auto screen =
        owned(::xcb_get_geometry_reply(m_connection, ::xcb_get_geometry(m_connection, root()), nullptr));
    if (!place || !screen)
        return false;
    const QRect area(place->dst_x, place->dst_y, own->width, own->height);
    if (!rectangleOf(*screen).contains(area))
        return true;
    const auto tree = owned(::xcb_query_tree_reply(m_connection, ::xcb_query_tree(m_connection, root()), nullptr));
    if (!tree)
        return false;
    // Whatever else touches the area may lie above: to tell would take as long as to draw once more.
    const xcb_window_t* const first = ::xcb_query_tree_children(tree.get());
    int touching = 0;
    for (int i = 0; i < ::xcb_query_tree_children_length(tree.get()); ++i) {
        const auto state = owned(::xcb_get_window_attributes_reply(
            m_connection, ::xcb_get_window_attributes(m_connection, first[i]), nullptr));
        const auto other =
            owned(::xcb_get_geometry_reply(m_connection, ::xcb_get_geometry(m_connection, first[i]), nullptr));
        if (state && other && state->map_state == XCB_MAP_STATE_VIEWABLE && rectangleOf(*other).intersects(area))
            ++touching;
    }
    return touching > 1;  // its own frame is one of them
}

ScreenCapture::Picture X11CaptureSession::picture(const ScreenWindow& window, QSize pixels) const {
    if (pixels.isEmpty() || pixels.width() > largestEdge || pixels.height() > largestEdge)
        return failure(u"%1 × %2 pixels are no size for a picture"_s.arg(pixels.width()).arg(pixels.height()));
    const auto id = static_cast<xcb_window_t>(window.identifier);
    const auto look = Look(*this, id).result();
    const auto size = owned(::xcb_get_geometry_reply(m_connection, ::xcb_get_geometry(m_connection, id), nullptr));
    if (!look || !size)
        return failure(u"the window is not on the screen any more"_s);
    const xcb_pixmap_t pixmap = ::xcb_generate_id(m_connection);
    if (owned(::xcb_request_check(m_connection, ::xcb_composite_name_window_pixmap_checked(m_connection, id, pixmap))))
        return failure(u"the window could not be read"_s);
    const int border = size->border_width;
    const QImage whole =
        x11::readPixels(m_connection, pixmap, {size->width + 2 * border, size->height + 2 * border}, size->depth);
    ::xcb_free_pixmap(m_connection, pixmap);
    ::xcb_flush(m_connection);
    const QRect inner = QRect(border, border, size->width, size->height) - marginsOf(numbers(id, m_margins));
    const QImage visible = inner == whole.rect() ? whole : whole.copy(inner);
    if (visible.isNull())
        return failure(u"the window's pixels could not be read"_s);
    // Whole multiples stay as sharp as they are.
    const bool grows = pixels.width() >= visible.width() && pixels.height() >= visible.height();
    QImage scaled =
        visible.scaled(pixels, Qt::IgnoreAspectRatio, grows ? Qt::FastTransformation : Qt::SmoothTransformation);
    if (scaled.isNull())
        return failure(u"there is not enough memory for the picture"_s);
    return scaled;
}

}  // namespace wrapio
