// Which names of an archive's entries may become files. Any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"

#include <QString>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wrapio {

/// A path below the folder that is unpacked into, element by element; empty for the folder itself.
using ZipPath = std::vector<std::string>;

/// The elements of an entry's name. Fails when it is empty, absolute, no UTF-8 or too long, or has a "..", an empty
/// element, a backslash or a control character. "." elements and a slash at the end are left out.
[[nodiscard]] ToolOutcome<ZipPath> zipPath(std::string_view name);

/// True for what an archiver of another platform adds beside the files.
[[nodiscard]] bool isPlatformExtra(const ZipPath& path);

/// Remembers the paths of an archive and refuses two that some file system would take for one.
class ZipPathGuard {
public:
    [[nodiscard]] ToolOutcome<void> admit(const ZipPath& path, bool isFolder);

private:
    struct Known {
        std::string spelling;
        bool isFolder = false;
        bool isEntry = false;  ///< named by an entry itself, not only by one below it
    };
    std::unordered_map<std::string, Known> m_known;  ///< by the spelling without case
};

}  // namespace wrapio
