// A cookie outside of the engine: kept over a restart, or taken over from another browser.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wrapio {

enum class SameSite { Unset, None, Lax, Strict };

struct StoredCookie {
    std::string domain;  ///< with a leading dot when hosts below it get the cookie too
    std::string path;
    std::string name;
    std::string value;
    std::int64_t expires = 0;  ///< seconds since 1970; 0 for the end of the session
    bool isSecure = false;
    bool isHttpOnly = false;
    SameSite sameSite = SameSite::Unset;

    bool operator==(const StoredCookie&) const = default;
};

/// The text of `cookies`, one a line.
[[nodiscard]] std::string cookiesText(const std::vector<StoredCookie>& cookies);

/// The cookies that `text` holds; lines that are not understood are left out.
[[nodiscard]] std::vector<StoredCookie> parseCookies(std::string_view text);

/// True when cookies of `domain` (with or without a leading dot) belong to the site `site`, a host name: they are of it
/// or of a host below it.
[[nodiscard]] bool cookieBelongsTo(std::string_view domain, std::string_view site);

}  // namespace wrapio
