#include "Utilities/Utf8.h"

#include "Utilities/CharacterClasses.h"

#include <cstddef>

namespace wrapio {

namespace {

struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t smallest;
};

std::optional<Lead> leadOf(unsigned char byte) {
    if (byte < 0x80)
        return Lead{1, byte, 0};
    if ((byte & 0xE0) == 0xC0)
        return Lead{2, byte & 0x1FU, 0x80};
    if ((byte & 0xF0) == 0xE0)
        return Lead{3, byte & 0x0FU, 0x800};
    if ((byte & 0xF8) == 0xF0)
        return Lead{4, byte & 0x07U, 0x10000};
    return std::nullopt;
}

std::optional<char32_t> decode(std::string_view text, const Lead& lead) {
    if (text.size() < lead.length)
        return std::nullopt;
    char32_t c = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80)
            return std::nullopt;
        c = (c << 6) | (byte & 0x3FU);
    }
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    if (c < lead.smallest || c > 0x10FFFF || surrogate)
        return std::nullopt;
    return c;
}

bool isTrimmed(char32_t c) {
    return isWhitespace(c) || isNewline(c);
}

}  // namespace

std::optional<char32_t> takeCodePoint(std::string_view& text) {
    const auto lead = leadOf(static_cast<unsigned char>(text.front()));
    const auto c = lead ? decode(text, *lead) : std::nullopt;
    text.remove_prefix(c ? lead->length : 1);
    return c;
}

void appendCodePoint(std::string& text, char32_t c) {
    const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (c < 0x80) {
        text += byte(c);
        return;
    }
    if (c < 0x800) {
        text += byte(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            text += byte(0xE0 | (c >> 12));
        } else {
            text += byte(0xF0 | (c >> 18));
            text += byte(0x80 | ((c >> 12) & 0x3F));
        }
        text += byte(0x80 | ((c >> 6) & 0x3F));
    }
    text += byte(0x80 | (c & 0x3F));
}

std::string_view trimmed(std::string_view text) {
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view before = rest;
        const auto c = takeCodePoint(rest);
        if (!c || !isTrimmed(*c)) {
            rest = before;
            break;
        }
    }
    std::size_t end = 0;
    for (std::string_view tail = rest; !tail.empty();) {
        const auto c = takeCodePoint(tail);
        if (!c || !isTrimmed(*c))
            end = rest.size() - tail.size();
    }
    return rest.substr(0, end);
}

}  // namespace wrapio
