// Reads the JSON object of config.json into plain values, without building a document.
#pragma once

#include <tl/expected.hpp>

#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace wrapio {

/// A value that config.json may hold; anything else reads as `Unusable`.
struct Unusable {};
using ConfigValue = std::variant<Unusable, bool, double, std::string, std::vector<std::string>>;
using ConfigValues = std::map<std::string, ConfigValue, std::less<>>;

/// The members of the JSON object `text` (UTF-8). A null counts as absent, the last of equal keys wins, and in lists
/// everything but texts is left out. Fails with a reason on anything that is no object or nests too deeply.
[[nodiscard]] tl::expected<ConfigValues, std::string> readConfigValues(std::string_view text);

}  // namespace wrapio
