// Whether a drawing (SVG) from elsewhere may be rendered.
#pragma once

#include <QByteArray>

namespace wrapio {

/// A drawing longer than this is refused.
inline constexpr qsizetype largestDrawingBytes = 4LL * 1024 * 1024;

struct DrawingRules {
    /// Fonts exist only where there is a graphical application object; drawing a text without one ends the program.
    bool textsAllowed = true;
};

/// True when `svg` is a well-formed drawing that defines no entities, refers to nothing outside itself, embeds no
/// pictures, and does not multiply itself by references. Any thread.
[[nodiscard]] bool isHarmlessDrawing(const QByteArray& svg, const DrawingRules& rules);

}  // namespace wrapio
