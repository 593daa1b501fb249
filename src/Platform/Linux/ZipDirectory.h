// The directory of a ZIP file, read before anything is unpacked. Stateless; any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"
#include "Platform/Linux/ZipArchive.h"

namespace wrapio {

/// Looks at the names as the bytes that the archive holds: a library that unpacks them may already have cut one at a
/// NUL. Fails when the directory is damaged, has more entries than `limits`, or an entry is encrypted, has a name that
/// is refused, or another name in its own header. The descriptor's position does not change.
[[nodiscard]] ToolOutcome<void> checkZipDirectory(int descriptor, qint64 fileSize, const ZipLimits& limits);

}  // namespace wrapio
