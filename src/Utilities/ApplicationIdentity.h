// The one string by which the desktop knows a generated app, and the app's own URL scheme.
#pragma once

#include <string>
#include <string_view>

namespace wrapio {

/// The desktop id of a bundle identifier: the same text, with "_" before every element that begins with a digit, since
/// bus names and application ids may not have such elements. The desktop file, the icon, the window class, the
/// application id and the bus name all use it, so that docks match windows to icons.
[[nodiscard]] std::string desktopId(std::string_view bundleIdentifier);

/// True when `id` can serve as a bus name, an application id and a file's base name: at most 255 characters, two or
/// more non-empty elements of ASCII letters, digits, "-" and "_", none of which begins with a digit.
[[nodiscard]] bool isValidDesktopId(std::string_view id);

/// The scheme of a generated app's own URLs: "wrapio-" and the record's id, lower-cased.
[[nodiscard]] std::string appUrlScheme(std::string_view canonicalId);

}  // namespace wrapio
