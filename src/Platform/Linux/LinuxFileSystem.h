// The files of this machine.
#pragma once

#include "Platform/FileSystem.h"

namespace wrapio {

/// Holds no state; any thread. Failures name the entry where they happened, which may lie inside the one asked for.
/// Paths that are not absolute or contain NUL fail with EINVAL.
class LinuxFileSystem final : public FileSystem {
public:
    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] FileResult<void> createDirectories(const QString& path) override;
    [[nodiscard]] FileResult<void> remove(const QString& path) override;
    /// What was made before a failure stays for the caller to remove. Refuses special files with EOPNOTSUPP.
    [[nodiscard]] FileResult<void> copyTree(const QString& from, const QString& to) override;
    /// A failed move to another file system takes back what it has made; the source is then complete.
    [[nodiscard]] FileResult<void> move(const QString& from, const QString& to) override;
    /// Follows links. Fails with EISDIR for folders and EOPNOTSUPP for devices, sockets and pipes.
    [[nodiscard]] FileResult<QByteArray> read(const QString& path, qint64 maximumBytes) const override;
    [[nodiscard]] FileResult<void> write(const QString& path, const QByteArray& bytes) override;
    [[nodiscard]] FileResult<void> replace(const QString& path, const QByteArray& bytes) override;
    [[nodiscard]] FileResult<std::vector<QString>> list(const QString& path) const override;
};

}  // namespace wrapio
