#include "Utilities/CharacterClasses.h"

#include <algorithm>
#include <array>

namespace wrapio {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// The category Cf of Unicode 15.
constexpr std::array formatCharacters = {
    Range{0x00AD, 0x00AD},   Range{0x0600, 0x0605},   Range{0x061C, 0x061C},   Range{0x06DD, 0x06DD},
    Range{0x070F, 0x070F},   Range{0x0890, 0x0891},   Range{0x08E2, 0x08E2},   Range{0x180E, 0x180E},
    Range{0x200B, 0x200F},   Range{0x202A, 0x202E},   Range{0x2060, 0x2064},   Range{0x2066, 0x206F},
    Range{0xFEFF, 0xFEFF},   Range{0xFFF9, 0xFFFB},   Range{0x110BD, 0x110BD}, Range{0x110CD, 0x110CD},
    Range{0x13430, 0x1343F}, Range{0x1BCA0, 0x1BCA3}, Range{0x1D173, 0x1D17A}, Range{0xE0001, 0xE0001},
    Range{0xE0020, 0xE007F},
};

}  // namespace

bool isNewline(char32_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isControl(char32_t c) {
    if (c < 0x20 || (c >= 0x7F && c <= 0x9F))
        return true;
    if (c < formatCharacters.front().first)
        return false;
    return std::any_of(formatCharacters.begin(), formatCharacters.end(),
                       [c](Range range) { return c >= range.first && c <= range.last; });
}

bool isWhitespace(char32_t c) {
    return c == 0x09 || c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

}  // namespace wrapio
