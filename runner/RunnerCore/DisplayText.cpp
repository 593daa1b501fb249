#include "RunnerCore/DisplayText.h"

#include "Utilities/CharacterClasses.h"
#include "Utilities/Utf8.h"

namespace wrapio {

std::string displayText(std::string_view text, std::size_t limit) {
    text = trimmed(text);
    std::string clean;
    std::size_t length = 0;
    while (!text.empty()) {
        auto c = takeCodePoint(text);
        if (c && (isNewline(*c) || *c == U'\t'))
            c = U' ';
        if (!c || isControl(*c))
            continue;
        if (length == limit)
            return std::string(trimmed(clean)) + "…";
        appendCodePoint(clean, *c);
        ++length;
    }
    return std::string(trimmed(clean));
}

}  // namespace wrapio
