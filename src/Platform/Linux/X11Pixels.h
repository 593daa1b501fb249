// Reads what is drawn on an X11 display.
#pragma once

#include <QImage>

#include <xcb/xcb.h>

namespace wrapio::x11 {

/// The pixels of a drawable of 24 or 32 bits, through shared memory where the server shares some with us. A null image
/// when they cannot be read. The image has the alpha channel of a drawable of 32 bits.
[[nodiscard]] QImage readPixels(xcb_connection_t* connection, xcb_drawable_t drawable, QSize size, int depth);

}  // namespace wrapio::x11
