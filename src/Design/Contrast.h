// How well colours can be told apart.
#pragma once

#include <QColor>

namespace wrapio {

/// What text must reach against its background to be read by people with moderately low vision.
inline constexpr double legibleContrast = 4.5;

/// The window's fixed near-black.
[[nodiscard]] QColor windowBackground();

/// `top` drawn over the opaque `bottom`.
[[nodiscard]] QColor blended(const QColor& top, const QColor& bottom);
/// The luminance of an opaque colour, from 0 for black to 1 for white.
[[nodiscard]] double relativeLuminance(const QColor& color);
/// The contrast of two opaque colours, from 1 to 21.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// The system's label colour `systemLabel` at `opacity`, for text on `background`. A dark label, as desktops with a
/// light appearance have it, gives way to its counterpart of the dark appearance; and where that is not enough, the
/// colour and then the opacity rise until the text can be read.
[[nodiscard]] QColor legibleLabel(const QColor& systemLabel, double opacity, const QColor& background);

}  // namespace wrapio
