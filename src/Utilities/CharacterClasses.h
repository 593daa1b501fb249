// Character classes of the platform, over Unicode code points.
#pragma once

namespace wrapio {

/// U+000A to U+000D, U+0085, U+2028 and U+2029.
[[nodiscard]] bool isNewline(char32_t c);

/// The categories Cc and Cf: control and format characters, so direction overrides and joiners too.
[[nodiscard]] bool isControl(char32_t c);

/// The category Zs, and the tab.
[[nodiscard]] bool isWhitespace(char32_t c);

}  // namespace wrapio
