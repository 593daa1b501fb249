// Makes any text fit to be shown on one line of a window.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace wrapio {

/// `text` as valid UTF-8 on one line: newlines and tabs become spaces, controls (direction overrides too) and bytes
/// that are no UTF-8 go, white space at the ends is cut off, and what is longer than `limit` characters ends in "…".
[[nodiscard]] std::string displayText(std::string_view text, std::size_t limit);

}  // namespace wrapio
