// Removing an entry with all that it holds.
#pragma once

#include "Platform/FileSystem.h"

namespace wrapio::posix {

/// Removes the entry at `path`. Walks by open folders, so that a link put in the way while it works is removed and not
/// followed. Folders of this user that are closed to him are opened up first. Any thread.
[[nodiscard]] FileResult<void> removeTree(const QString& path);

}  // namespace wrapio::posix
