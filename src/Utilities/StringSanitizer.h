// Turns a display name into a file name.
#pragma once

#include <string>
#include <string_view>

namespace wrapio {

class StringSanitizer {
public:
    /// Deletes from `name` (UTF-8) the characters that file names must not hold (: / \ ? % * | " < >, newlines and
    /// controls, and "." when `preventPathTraversal`), then trims white space from both ends. Bytes that are no UTF-8
    /// are deleted too. The result may be empty and has no length limit.
    [[nodiscard]] static std::string sanitizeForFilename(std::string_view name, bool preventPathTraversal);
};

}  // namespace wrapio
