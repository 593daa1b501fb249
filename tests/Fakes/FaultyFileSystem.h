// The real files, with failures where a test wants them.
#pragma once

#include "Platform/FileSystem.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace wrapio {

/// Passes everything on to another file system, unless the test's rule says that it fails.
class FaultyFileSystem final : public FileSystem {
public:
    explicit FaultyFileSystem(FileSystem& real)
        : m_real(real) {}

    bool exists(const QString& path) const override { return m_real.exists(path); }
    FileResult<void> createDirectories(const QString& path) override;
    FileResult<void> remove(const QString& path) override;
    FileResult<void> copyTree(const QString& from, const QString& to) override;
    FileResult<void> move(const QString& from, const QString& to) override;
    FileResult<QByteArray> read(const QString& path, qint64 maximumBytes) const override;
    FileResult<void> write(const QString& path, const QByteArray& bytes) override;
    FileResult<void> replace(const QString& path, const QByteArray& bytes) override;
    FileResult<std::vector<QString>> list(const QString& path) const override;

    /// Called with an operation ("createDirectories", "remove", "copyTree", "move", "read", "write", "replace", "list")
    /// and its (target) path before it is done; an errno value makes it fail with that.
    std::function<std::optional<int>(const QString& operation, const QString& path)> fault;

    /// What was asked: "OPERATION PATH".
    mutable QStringList log;

private:
    std::optional<FileError> faultOf(const QString& operation, const QString& path) const;
    FileSystem& m_real;
};

}  // namespace wrapio
