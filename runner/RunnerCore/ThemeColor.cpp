#include "RunnerCore/ThemeColor.h"

#include "Utilities/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace wrapio {

namespace {

std::uint8_t mixed(std::uint8_t top, std::uint8_t base, double opacity) {
    return static_cast<std::uint8_t>(std::lround(opacity * top + (1.0 - opacity) * base));
}

double linear(std::uint8_t component) {
    const double value = component / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const Color& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

}  // namespace

std::optional<Color> parseHexColor(std::string_view text) {
    std::string digits(trimmed(text.substr(0, std::min<std::size_t>(text.size(), 64))));
    std::erase(digits, '#');
    if (digits.size() != 6 && digits.size() != 8)
        return std::nullopt;
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    const double opacity = digits.size() == 8 ? (value & 0xFF) / 255.0 : 1.0;
    if (digits.size() == 8)
        value >>= 8;
    const auto byte = [value](int shift) { return static_cast<std::uint8_t>(value >> shift & 0xFF); };
    return Color{byte(16), byte(8), byte(0), opacity};
}

Color blend(const Color& top, const Color& base, double opacity) {
    const double share = std::clamp(opacity * top.opacity, 0.0, 1.0);
    return {mixed(top.red, base.red, share), mixed(top.green, base.green, share), mixed(top.blue, base.blue, share),
            1.0};
}

double contrastRatio(const Color& first, const Color& second) {
    const double one = luminance(first);
    const double other = luminance(second);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

Color legibleText(const Color& background) {
    constexpr Color black{0, 0, 0, 1.0};
    constexpr Color white{255, 255, 255, 1.0};
    const bool isLight = contrastRatio(background, black) > contrastRatio(background, white);
    const Color plain = isLight ? black : white;
    // Never below 4.58 for the better of the two, so the plain colour is always legible.
    const Color soft = blend(plain, background, 0.85);
    return contrastRatio(soft, background) >= 7.0 ? soft : plain;
}

std::string hexText(const Color& color) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (const std::uint8_t component : std::array{color.red, color.green, color.blue}) {
        text += digits[component >> 4];
        text += digits[component & 15];
    }
    return text;
}

}  // namespace wrapio
