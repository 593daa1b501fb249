// Whole files and folders, as the tools read and write them. Stateless; any thread.
#pragma once

#include "Platform/FileSystem.h"
#include "Platform/Linux/FileCalls.h"

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

namespace wrapio {

using posix::FileDescriptor;
using posix::lastError;

/// Opens a regular file for reading, without following a link at its end and without waiting for the other side of a
/// pipe. Anything else there fails with ELOOP or EINVAL.
[[nodiscard]] FileResult<FileDescriptor> openRegularFile(const QString& path);

/// The bytes of a regular file; EFBIG when there are more than `maximumBytes`.
[[nodiscard]] FileResult<QByteArray> readRegularFile(const QString& path, qint64 maximumBytes);

/// Puts a file with `bytes` at `path`: whoever reads it finds the old file or the whole new one. Not synced to the
/// disk. The folder must exist.
[[nodiscard]] FileResult<void> writeAtomically(const QString& path, const QByteArray& bytes);

/// A name next to `path` that no file has, short enough for every file system.
[[nodiscard]] QString temporaryNameBeside(const QString& path);

enum class TreeEntryKind { file, folder, link, other };

struct TreeEntry {
    std::string path;  ///< below the root, elements separated by "/", as the file system spells it
    TreeEntryKind kind = TreeEntryKind::other;
    bool executable = false;  ///< by its owner; files only
    std::string target;       ///< links only

    [[nodiscard]] QString displayPath() const { return QString::fromStdString(path); }
};

/// Everything below the folder `root`, sorted by the bytes of the paths. Links are not followed.
[[nodiscard]] FileResult<std::vector<TreeEntry>> listTree(const QString& root);

}  // namespace wrapio
