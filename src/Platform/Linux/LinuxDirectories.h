// Where this user's files live, by the rules of the desktop.
#pragma once

#include "Platform/Directories.h"

#include <functional>
#include <optional>

namespace wrapio {

/// What the folders are worked out from.
struct UserSurroundings {
    std::function<std::optional<QString>(const char*)> variable;  ///< of the environment; nothing when it is not set
    std::optional<QString> accountHome;                           ///< the home folder by the user database
};

/// This process's own surroundings.
[[nodiscard]] UserSurroundings currentSurroundings();

/// HOME (or the account's home folder), XDG_DATA_HOME, XDG_CACHE_HOME, XDG_CONFIG_HOME and TMPDIR; a variable that is
/// unset or not absolute gives way to its default. Nothing when there is no home folder at all. Makes no folder.
[[nodiscard]] std::optional<Directories> linuxDirectories(const UserSurroundings& surroundings = currentSurroundings());

}  // namespace wrapio
