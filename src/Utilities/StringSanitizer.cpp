#include "Utilities/StringSanitizer.h"

#include "Utilities/CharacterClasses.h"
#include "Utilities/Utf8.h"

namespace wrapio {

namespace {

constexpr std::u32string_view forbiddenCharacters = U":/\\?%*|\"<>";

bool isForbidden(char32_t c, bool preventPathTraversal) {
    return forbiddenCharacters.find(c) != std::u32string_view::npos || (preventPathTraversal && c == U'.') ||
           isNewline(c) || isControl(c);
}

}  // namespace

std::string StringSanitizer::sanitizeForFilename(std::string_view name, bool preventPathTraversal) {
    std::string clean;
    clean.reserve(name.size());
    while (!name.empty()) {
        const auto c = takeCodePoint(name);
        if (c && !isForbidden(*c, preventPathTraversal))
            appendCodePoint(clean, *c);
    }
    return std::string(trimmed(clean));
}

}  // namespace wrapio
