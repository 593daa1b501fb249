// Reads the cookies of one site, and of no other, from a browser's store.
#pragma once

#include "BrowserSessions/CookieSource.h"
#include "BrowserSessions/ImportError.h"
#include "RunnerCore/StoredCookie.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace wrapio {

struct ImportedCookies {
    std::vector<StoredCookie> cookies;
    std::size_t unreadable = 0;  ///< of the site too, but encrypted with a key that is not here
};

struct ImportOptions {
    std::string site;                            ///< a host name; cookies of it and of hosts below it are taken
    std::filesystem::path scratch;               ///< an existing private folder for the copy, which is gone afterwards
    std::optional<std::string> keyringPassword;  ///< of the browser's key in the keyring, if there is one
    std::int64_t now = 0;                        ///< seconds since 1970; what has ended by then is left
};

/// Reads from `source`. Blocks for as long as copying the file takes.
[[nodiscard]] tl::expected<ImportedCookies, ImportError> importCookies(const CookieSource& source,
                                                                       const ImportOptions& options);

}  // namespace wrapio
