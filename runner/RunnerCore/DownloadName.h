// Names of downloaded files, which pages and servers suggest and nobody trusts.
#pragma once

#include <string>
#include <string_view>

namespace wrapio {

/// A file name on one line, without a path, a leading dot, controls or characters that other systems refuse, and no
/// longer than a file system takes with some room for a number. Never empty.
[[nodiscard]] std::string safeFileName(std::string_view suggested);

/// `name` for the `number`th file of that name: "letter.txt", "letter (2).txt", "archive (3).tar.gz".
[[nodiscard]] std::string numberedName(std::string_view name, int number);

}  // namespace wrapio
