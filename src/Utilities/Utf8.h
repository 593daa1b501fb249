// Reading and writing UTF-8 one code point at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

/// Takes the next code point off the front of `text`. Nothing when the front is not UTF-8 (overlong forms, surrogates
/// and values past U+10FFFF included); one byte is taken off then. `text` must not be empty.
[[nodiscard]] std::optional<char32_t> takeCodePoint(std::string_view& text);

/// Appends `c`, a Unicode scalar value, to `text`.
void appendCodePoint(std::string& text, char32_t c);

/// `text` without the white space and newlines at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

}  // namespace wrapio
