// Host names as settings and addresses hold them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

/// `text` with A to Z in lower case.
[[nodiscard]] std::string lowerCased(std::string_view text);

/// The host that a person meant by `text`: a bare name, one with a port, "*.name" or a whole address. Lower-cased;
/// nothing when there is none.
[[nodiscard]] std::optional<std::string> hostOfEntry(std::string_view text);

/// True when `host` is an IPv4 or IPv6 address rather than a name.
[[nodiscard]] bool isNumericHost(std::string_view host);

/// True when `host` is `name` or lies under it ("mail.example.com" under "example.com"). Nothing lies under a name of
/// one label or under a number.
[[nodiscard]] bool isHostWithin(std::string_view host, std::string_view name);

}  // namespace wrapio
