// Packing and unpacking of archives by the system's tool.
#pragma once

#include "Platform/AnyError.h"
#include "Platform/ToolRunner.h"

#include <QString>

#include <tl/expected.hpp>

namespace wrapio {

/// Packs what is in `folder` into the new file `archive`. Blocks. Fails with CollectionExportError::archiveFailed or a
/// LaunchError.
[[nodiscard]] tl::expected<void, AnyError> packArchive(ToolRunner& tools, const QString& folder,
                                                       const QString& archive);

/// Unpacks `archive` into `folder`. Blocks. Fails with CollectionExportError::extractFailed or a LaunchError.
[[nodiscard]] tl::expected<void, AnyError> unpackArchive(ToolRunner& tools, const QString& archive,
                                                         const QString& folder);

}  // namespace wrapio
