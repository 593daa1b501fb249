// A folder that is gone when the operation that needed it ends, however it ends.
#pragma once

#include "Platform/FileSystem.h"

#include <QString>

#include <optional>

namespace wrapio {

/// Owns the folder, not the file system, which must outlive it. Move-only.
class ScratchDirectory {
public:
    /// Creates `parent`/`prefix`UUID.
    [[nodiscard]] static FileResult<ScratchDirectory> create(FileSystem& files, const QString& parent,
                                                             const QString& prefix);
    ScratchDirectory(ScratchDirectory&& other) noexcept;
    ScratchDirectory& operator=(ScratchDirectory&&) = delete;
    /// Removes the folder with all it holds; a failure of that is ignored.
    ~ScratchDirectory();

    [[nodiscard]] const QString& path() const { return m_path; }

private:
    ScratchDirectory(FileSystem& files, QString path);

    FileSystem* m_files;  ///< null once moved from
    QString m_path;
};

}  // namespace wrapio
