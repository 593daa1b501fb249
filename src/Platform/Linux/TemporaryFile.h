// A file that is written beside the place where it is to be, and appears there whole or not at all.
#pragma once

#include "Platform/Linux/FileCalls.h"

namespace wrapio::posix {

/// Locked while it exists, so that other processes can tell one that is being written from one that a crash has left
/// behind. Removed when it goes away without having been put into place. Move-only.
class TemporaryFile {
public:
    /// Makes a file named ".NAME.XXXXXX.new" in `folder`, for this user only.
    [[nodiscard]] static FileResult<TemporaryFile> create(const QString& folder, const QString& name);
    /// Removes the files that other processes began for `name` and never finished.
    static void removeAbandoned(const QString& folder, const QString& name);

    TemporaryFile(TemporaryFile&& other) noexcept = default;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    /// Writes all bytes and waits until they are on the disk.
    [[nodiscard]] FileResult<void> write(const QByteArray& bytes);
    /// Renames it to `target` in the same folder, over what is there, and waits until the folder is on the disk.
    [[nodiscard]] FileResult<void> replace(const QString& target);
    /// The same, but fails with EEXIST when there is something.
    [[nodiscard]] FileResult<void> placeAt(const QString& target);

private:
    TemporaryFile(QString folder, QByteArray path, FileDescriptor file);
    [[nodiscard]] FileResult<void> rename(const QString& target, unsigned flags);
    QString m_folder;
    QByteArray m_path;  ///< empty once it is in place
    FileDescriptor m_file;
};

}  // namespace wrapio::posix
