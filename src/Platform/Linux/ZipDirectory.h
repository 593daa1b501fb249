// The directory of a ZIP file, read before anything is unpacked. Stateless; any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"
#include "Platform/Linux/ZipArchive.h"

namespace wrapio {

/// Looks at the names as the bytes that the archive holds: a library that unpacks them may already have cut one at a
/// NUL. Answers the number of entries. Fails when the directory is damaged or has more entries than `limits`, or when
/// an entry is encrypted, has a name that is refused, or has another name in its own header. The descriptor's position
/// does not change.
[[nodiscard]] ToolOutcome<quint64> checkZipDirectory(int descriptor, qint64 fileSize, const ZipLimits& limits);

}  // namespace wrapio
