// Colours of the title bar: reading them, mixing them, and keeping text on them legible.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

/// An sRGB colour.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    double opacity = 1.0;  ///< 0 to 1

    bool operator==(const Color&) const = default;
};

/// The colour of "#RRGGBB" or "#RRGGBBAA" (white space around it and "#" are ignored), or nothing.
[[nodiscard]] std::optional<Color> parseHexColor(std::string_view text);

/// `top`, drawn at `opacity` (0 to 1, times its own) over the opaque `base`; opaque.
[[nodiscard]] Color blend(const Color& top, const Color& base, double opacity);

/// The contrast of two opaque colours as accessibility guidelines define it, from 1 to 21.
[[nodiscard]] double contrastRatio(const Color& first, const Color& second);

/// The smallest contrast at which text counts as legible.
constexpr double legibleContrast = 4.5;

/// Black or white, softened as far as stays legible on the opaque `background`.
[[nodiscard]] Color legibleText(const Color& background);

/// `color` without its opacity as "#RRGGBB", which style sheets read alike in every locale.
[[nodiscard]] std::string hexText(const Color& color);

}  // namespace wrapio
