// The names of the notifications that the program's parts send each other.
#pragma once

#include <string_view>

namespace wrapio::notifications {

/// A create request waits in the bridge's slot.
inline constexpr std::string_view createAppFromURL = "createAppFromURL";
/// An import-session request waits in the bridge's slot.
inline constexpr std::string_view importSessionFromURL = "importSessionFromURL";
/// The Reload command was chosen. Nobody listens.
inline constexpr std::string_view reloadPage = "reloadPage";

}  // namespace wrapio::notifications
