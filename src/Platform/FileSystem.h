// Files and folders, by absolute path.
#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <vector>

namespace wrapio {

/// A file operation that failed, and why.
struct FileError {
    QString operation;  ///< what was tried, as in "write"
    QString path;
    int code = 0;  ///< an errno value

    /// For example "Could not write /a/b: No space left on device".
    [[nodiscard]] QString description() const;
    bool operator==(const FileError&) const = default;
};

template <typename T>
using FileResult = tl::expected<T, FileError>;

/// Every operation is synchronous and may be called from any thread.
class FileSystem {
public:
    FileSystem() = default;
    virtual ~FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;

    /// True when there is an entry at `path`, a broken link included.
    [[nodiscard]] virtual bool exists(const QString& path) const = 0;
    /// Creates `path` and its parents; a folder that is there already is fine.
    [[nodiscard]] virtual FileResult<void> createDirectories(const QString& path) = 0;
    /// Removes the entry at `path`, a folder with all it holds. Never follows links.
    [[nodiscard]] virtual FileResult<void> remove(const QString& path) = 0;
    /// Copies a folder with all it holds, modes and links as they are. `to` must not exist.
    [[nodiscard]] virtual FileResult<void> copyTree(const QString& from, const QString& to) = 0;
    /// Moves an entry, to another file system too. `to` must not exist.
    [[nodiscard]] virtual FileResult<void> move(const QString& from, const QString& to) = 0;
    /// The bytes of a regular file. A file of more than `maximumBytes` fails with EFBIG, nothing of it having been
    /// read.
    [[nodiscard]] virtual FileResult<QByteArray> read(const QString& path, qint64 maximumBytes) const = 0;
    /// Writes a file, over one that is there. Not atomic.
    [[nodiscard]] virtual FileResult<void> write(const QString& path, const QByteArray& bytes) = 0;
    /// Writes a file in one step: there is the old one or none until this succeeds, and the new one from then on, also
    /// after a crash.
    [[nodiscard]] virtual FileResult<void> replace(const QString& path, const QByteArray& bytes) = 0;
    /// The names in a folder, sorted.
    [[nodiscard]] virtual FileResult<std::vector<QString>> list(const QString& path) const = 0;
};

}  // namespace wrapio
