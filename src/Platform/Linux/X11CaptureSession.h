// One connection to an X11 display over which windows are listed and captured.
#pragma once

#include "Platform/ScreenCapture.h"

#include <xcb/xcb.h>

#include <set>

namespace wrapio {

/// Waits for the server at every call. One thread at a time. Windows that were prepared are drawn off the screen, so
/// that they can be read whole, until this goes away.
class X11CaptureSession {
public:
    /// Connects to the display that DISPLAY names.
    X11CaptureSession();
    X11CaptureSession(const X11CaptureSession&) = delete;
    X11CaptureSession& operator=(const X11CaptureSession&) = delete;
    ~X11CaptureSession();

    [[nodiscard]] bool isOpen() const;
    /// True when the server can draw windows off the screen.
    [[nodiscard]] bool canCapture() const;

    /// The windows that are managed and on the screen, the frontmost first. Frames are without invisible margins.
    [[nodiscard]] ScreenCapture::Windows windows() const;
    /// Makes a window ready to be read. True when its application must draw it first, which takes a moment.
    [[nodiscard]] tl::expected<bool, ScreenCaptureError> prepare(const ScreenWindow& window);
    /// The picture of a window that was prepared, scaled to `pixels`.
    [[nodiscard]] ScreenCapture::Picture picture(const ScreenWindow& window, QSize pixels) const;

private:
    struct Look;
    [[nodiscard]] xcb_window_t root() const;
    [[nodiscard]] xcb_atom_t atom(const char* name) const;
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, xcb_atom_t property) const;
    [[nodiscard]] std::vector<xcb_window_t> frontToBack() const;
    [[nodiscard]] bool isCovered(xcb_window_t window) const;

    int m_screenNumber = 0;
    xcb_connection_t* m_connection;
    std::set<xcb_window_t> m_prepared;
    xcb_atom_t m_clientsStacked = XCB_ATOM_NONE;
    xcb_atom_t m_clients = XCB_ATOM_NONE;
    xcb_atom_t m_process = XCB_ATOM_NONE;
    xcb_atom_t m_margins = XCB_ATOM_NONE;
};

}  // namespace wrapio
