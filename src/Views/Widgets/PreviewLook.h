// Colours and measures of the preview panel.
#pragma once

#include <QColor>

namespace wrapio::previewlook {

inline constexpr QColor background(24, 24, 29);
inline constexpr QColor rim(255, 255, 255, 36);
inline constexpr QColor footer(34, 34, 41);
inline constexpr QColor primaryText(245, 245, 247);
inline constexpr QColor secondaryText(245, 245, 247, 153);
inline constexpr QColor accent(80, 146, 230);
inline constexpr QColor accentHovered(98, 161, 240);
inline constexpr QColor accentPressed(62, 122, 200);
inline constexpr QColor orange(255, 149, 0);
inline constexpr QColor green(52, 199, 89);
inline constexpr QColor badge(0, 0, 0, 153);

inline constexpr int cornerRadius = 14;
inline constexpr int footerHeight = 80;
inline constexpr int footerInset = 20;
inline constexpr int iconEdge = 80;

// Sizes of text, in pixels of a screen of ordinary density.
inline constexpr int headline = 17;
inline constexpr int body = 14;
inline constexpr int subheadline = 13;
inline constexpr int caption = 12;

}  // namespace wrapio::previewlook
