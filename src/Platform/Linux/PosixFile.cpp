#include "Platform/Linux/PosixFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace wrapio {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

TreeEntryKind kindOf(fs::file_type type) {
    if (type == fs::file_type::regular)
        return TreeEntryKind::file;
    if (type == fs::file_type::directory)
        return TreeEntryKind::folder;
    return type == fs::file_type::symlink ? TreeEntryKind::link : TreeEntryKind::other;
}

TreeEntry describe(const fs::directory_entry& entry, std::size_t rootLength, std::error_code& error) {
    TreeEntry described;
    described.path = entry.path().native().substr(rootLength);
    const fs::file_status status = entry.symlink_status(error);
    described.kind = kindOf(status.type());
    if (described.kind == TreeEntryKind::file)
        described.executable = (status.permissions() & fs::perms::owner_exec) != fs::perms::none;
    if (described.kind == TreeEntryKind::link)
        described.target = fs::read_symlink(entry.path(), error).native();
    return described;
}

FileResult<void> fill(const QString& temporary, const QByteArray& bytes) {
    const FileDescriptor file(
        ::open(QFile::encodeName(temporary).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.isOpen())
        return tl::unexpected(lastError("create", temporary));
    if (const int code = posix::writeAll(file.get(), bytes))
        return tl::unexpected(FileError{u"write"_s, temporary, code});
    return {};
}

}  // namespace

FileResult<FileDescriptor> openRegularFile(const QString& path) {
    FileDescriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        return tl::unexpected(lastError("read", path));
    if (!S_ISREG(status.st_mode))
        return tl::unexpected(FileError{u"read"_s, path, EINVAL});
    return file;
}

FileResult<QByteArray> readRegularFile(const QString& path, qint64 maximumBytes) {
    const auto file = openRegularFile(path);
    if (!file)
        return tl::unexpected(file.error());
    QByteArray bytes;
    if (const int code = posix::readAll(file->get(), maximumBytes, bytes))
        return tl::unexpected(FileError{u"read"_s, path, code});
    return bytes;
}

QString temporaryNameBeside(const QString& path) {
    const quint64 random = QRandomGenerator::system()->generate64();
    return u"%1/.wrapio-%2.tmp"_s.arg(QFileInfo(path).path()).arg(random, 16, 16, QLatin1Char('0'));
}

FileResult<void> writeAtomically(const QString& path, const QByteArray& bytes) {
    const QString temporary = temporaryNameBeside(path);
    const QByteArray from = QFile::encodeName(temporary);
    FileResult<void> result = fill(temporary, bytes);
    if (result && ::rename(from.constData(), QFile::encodeName(path).constData()) != 0)
        result = tl::unexpected(lastError("write", path));
    if (!result)
        ::unlink(from.constData());
    return result;
}

FileResult<std::vector<TreeEntry>> listTree(const QString& root) {
    const fs::path base(QFile::encodeName(root).toStdString());
    const std::size_t rootLength = base.native().size() + (base.has_filename() ? 1 : 0);
    std::vector<TreeEntry> entries;
    std::error_code error;
    fs::recursive_directory_iterator i(base, error);
    for (; !error && i != fs::recursive_directory_iterator(); i.increment(error)) {
        entries.push_back(describe(*i, rootLength, error));
        if (error)
            break;
    }
    if (error)
        return tl::unexpected(FileError{u"list"_s, root, error.value()});
    std::sort(entries.begin(), entries.end(), [](const TreeEntry& a, const TreeEntry& b) { return a.path < b.path; });
    return entries;
}

}  // namespace wrapio
