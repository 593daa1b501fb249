// The items of an address's query.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wrapio {

struct QueryItem {
    std::string name;
    std::optional<std::string> value;  ///< absent without a "=", and when it does not decode

    bool operator==(const QueryItem&) const = default;
};

/// Splits `query`, an address's part after the question mark, at "&" and every item at its first "=". Names and values
/// are percent-decoded into UTF-8; a "+" stays a "+". An item whose name does not decode is left out.
[[nodiscard]] std::vector<QueryItem> queryItems(std::string_view query);

/// The value of the first item of exactly that name; nothing when there is none, or it has no value.
[[nodiscard]] std::optional<std::string> firstValue(const std::vector<QueryItem>& items, std::string_view name);

/// Replaces every "%" and two hexadecimal digits by the byte they stand for. Nothing when a "%" is followed by anything
/// else, or the result is not UTF-8.
[[nodiscard]] std::optional<std::string> percentDecoded(std::string_view text);

}  // namespace wrapio
