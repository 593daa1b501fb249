// Copying an entry with all that it holds.
#pragma once

#include "Platform/FileSystem.h"

namespace wrapio::posix {

/// Copies the folder `from` (or what the link `from` points to) to `to`, which must not exist. Modes and inner links
/// stay as they are, set-user and set-group bits of files are dropped. Devices, sockets and pipes are refused with
/// EOPNOTSUPP, a copy into itself with EINVAL. What was made before a failure stays for the caller to remove. Any
/// thread.
[[nodiscard]] FileResult<void> copyTree(const QString& from, const QString& to);

/// Copies one file, link or folder, of whatever kind it is, without following it. As above otherwise.
[[nodiscard]] FileResult<void> copyEntry(const QString& from, const QString& to);

}  // namespace wrapio::posix
