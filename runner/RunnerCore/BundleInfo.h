// The identity of one app, as its Info.plist holds it.
#pragma once

#include "RunnerCore/BundleError.h"

#include <tl/expected.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace wrapio {

struct BundleInfo {
    std::string desktopId;  ///< by which the desktop knows the app; valid as an application id
    std::string urlScheme;  ///< "wrapio-" and the record's id, lower-cased
    std::string recordId;   ///< the record's id in its canonical, upper-case form; keys the site data
    std::string version;    ///< of the template that the app was made from; may be empty
};

/// The most bytes that an Info.plist may have.
constexpr std::size_t largestInfoPlist = std::size_t{256} * 1024;

/// Reads the property list `bytes` (XML or binary). Fails when it is none, when the identifier cannot serve as an
/// application id, or when there is no URL scheme that names a record.
[[nodiscard]] tl::expected<BundleInfo, BundleError> decodeInfoPlist(std::string_view bytes);

/// The record id that the URL scheme `scheme` ("wrapio-" and a UUID) carries, in upper case; or nothing.
[[nodiscard]] std::optional<std::string> recordIdOfScheme(std::string_view scheme);

}  // namespace wrapio
