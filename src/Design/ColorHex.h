// Colours as hexadecimal text.
#pragma once

#include <QColor>
#include <QString>

#include <optional>

namespace wrapio {

/// The sRGB colour that `hex` stands for: six digits for red, green and blue, or eight with the opacity last. White
/// space at the ends and "#" anywhere play no part. Nothing for any other text.
[[nodiscard]] std::optional<QColor> colorFromHex(const QString& hex);

/// "#RRGGBB" in upper case. The opacity is not written. Nothing for a colour that sRGB cannot express.
[[nodiscard]] std::optional<QString> toHex(const QColor& color);

}  // namespace wrapio
