// A folder that is gone when the operation that needed it ends, however it ends.
#pragma once

#include "Platform/FileSystem.h"

#include <QString>

#include <optional>

namespace wrapio {

/// Owns the folder, not the file system, which must outlive it. Move-only.
class ScratchFolder {
public:
    /// Creates `parent`/`prefix`UUID.
    [[nodiscard]] static FileResult<ScratchFolder> create(FileSystem& files, const QString& parent,
                                                          const QString& prefix);
    ScratchFolder(ScratchFolder&& other) noexcept;
    ScratchFolder& operator=(ScratchFolder&&) = delete;
    /// Removes the folder with all it holds; a failure of that is ignored.
    ~ScratchFolder();

    [[nodiscard]] const QString& path() const { return m_path; }

private:
    ScratchFolder(FileSystem& files, QString path);

    FileSystem* m_files;  ///< null once moved from
    QString m_path;
};

}  // namespace wrapio
