// What an app can be asked to do from outside: by an argument, over the session bus, or by a second start.
#pragma once

#include <tl/expected.hpp>

#include <string>
#include <string_view>
#include <variant>

namespace wrapio {

/// Take over the session of a browser ("wrapio-<id>://import-session?source=NAME").
struct ImportSessionRequest {
    std::string source;  ///< the browser's name on one line; may be empty

    bool operator==(const ImportSessionRequest&) const = default;
};

/// Show a page of the site.
struct AddressRequest {
    std::string address;  ///< http or https; still to be judged by the navigation policy

    bool operator==(const AddressRequest&) const = default;
};

using AppRequest = std::variant<ImportSessionRequest, AddressRequest>;

/// Reads `text` for the app whose own URL scheme is `scheme`; the error says on one line why it is ignored.
[[nodiscard]] tl::expected<AppRequest, std::string> parseAppRequest(std::string_view text, std::string_view scheme);

}  // namespace wrapio
