// Packing a folder into a ZIP file, and unpacking one that may come from anywhere. Contents are streamed: no file is
// ever whole in memory. Stateless; any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"

#include <QString>

namespace wrapio {

/// How much an archive may hold. What goes beyond is refused.
struct ZipLimits {
    qint64 entries = 100'000;
    qint64 fileBytes = 256LL * 1024 * 1024;
    qint64 totalBytes = 2048LL * 1024 * 1024;
    qint64 ratio = 1000;                          ///< unpacked bytes to bytes of the archive
    qint64 ratioFloorBytes = 16LL * 1024 * 1024;  ///< the ratio does not matter below this
};

/// Packs what is in `folder` (not the folder itself) into the file `zip`, over an older one, in the order of the paths.
/// Fails, leaving an older file as it was, when the folder holds what is neither file nor folder, or a name that is no
/// UTF-8, or cannot be read, or the file cannot be written.
[[nodiscard]] ToolOutcome<void> packZip(const QString& folder, const QString& zip);

/// Unpacks the file `zip` into `folder`, which is created when it is missing; its parent must exist. Entries of
/// "__MACOSX" and "._" files are left out. Refuses what could harm: names that lead out of the folder, that are no
/// UTF-8, too long, or equal to another's when case does not count; links and devices; encryption; more than `limits`;
/// wrong checksums; files that exist already. On any failure what was unpacked is removed again.
[[nodiscard]] ToolOutcome<void> unpackZip(const QString& zip, const QString& folder, const ZipLimits& limits);

}  // namespace wrapio
