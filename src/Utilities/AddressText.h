// A lenient reading of a web address that leaves its text as it was typed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

/// The pieces of an address, as they stand in its text: neither lower-cased nor decoded.
struct AddressParts {
    std::optional<std::string> scheme;
    std::optional<std::string> host;  ///< without brackets; absent when there is no authority or it is empty
    std::optional<int> port;
    std::string path;
    std::optional<std::string> query;
    std::optional<std::string> fragment;

    bool operator==(const AddressParts&) const = default;
};

/// Splits `text` (UTF-8) at the delimiters of a generic URI. Nothing when the text is empty, or holds white space,
/// controls or bytes that are no UTF-8 before the path, a broken bracket, or a port that is no number up to 65535.
/// International names and unescaped characters in path and query are accepted.
[[nodiscard]] std::optional<AddressParts> parseAddress(std::string_view text);

}  // namespace wrapio
