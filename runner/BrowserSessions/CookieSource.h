// The browsers on this machine whose cookies can be read.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace wrapio {

enum class BrowserKind { Firefox, Chromium };

/// One profile of a browser.
struct CookieSource {
    BrowserKind kind = BrowserKind::Firefox;
    std::string name;                ///< for people: the browser, and its profile where that is not the usual one
    std::filesystem::path database;  ///< its store of cookies
    std::string keyOwner;            ///< under which name the keyring holds its key; Chromium only

    bool operator==(const CookieSource&) const = default;
};

/// The profiles that hold cookies, of browsers that keep theirs below `home` and `configFolder`. Usual profiles first.
[[nodiscard]] std::vector<CookieSource> findCookieSources(const std::filesystem::path& home,
                                                          const std::filesystem::path& configFolder);

/// Those of `sources` that `wanted` names, in any case: all for an empty text.
[[nodiscard]] std::vector<CookieSource> matchingSources(const std::vector<CookieSource>& sources,
                                                        std::string_view wanted);

}  // namespace wrapio
