// What is asked of an X11 display. Every call opens a connection of its own, so nothing here outlives a call. Any
// thread.
#pragma once

#include <QtGlobal>

namespace wrapio {

/// True when DISPLAY names a display that lets us in.
[[nodiscard]] bool isX11Reachable();

/// Asks the window manager to bring the topmost window of a process to the front, as a taskbar does. False when there
/// is no display, no window manager or no window of the process.
bool activateX11Window(qint64 processIdentifier);

/// True when windows of the display's first screen are blended with what is behind them; true as well where there is no
/// X11 display, since every other kind blends.
[[nodiscard]] bool hasX11Compositor();

/// True when somebody holds the tray of the display's first screen.
[[nodiscard]] bool hasX11Tray();

}  // namespace wrapio
