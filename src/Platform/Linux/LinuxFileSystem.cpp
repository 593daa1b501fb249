#include "Platform/Linux/LinuxFileSystem.h"

#include "Platform/Linux/FileCalls.h"
#include "Platform/Linux/TemporaryFile.h"
#include "Platform/Linux/TreeCopy.h"
#include "Platform/Linux/TreeRemoval.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace wrapio {

using posix::FileDescriptor;
using posix::lastError;
using posix::nativePath;

namespace {

FileError failure(const char* operation, const QString& path, int code) {
    return FileError{QString::fromLatin1(operation), path, code};
}

bool isFolder(const QByteArray& path) {
    struct stat status {};
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// 0 for a regular file, or why it is not read or written.
int kindError(int descriptor, struct stat& status) {
    if (::fstat(descriptor, &status) != 0)
        return errno;
    if (S_ISDIR(status.st_mode))
        return EISDIR;
    return S_ISREG(status.st_mode) ? 0 : EOPNOTSUPP;
}

FileResult<void> createFolder(const QByteArray& path) {
    if (::mkdir(path.constData(), 0777) == 0)
        return {};
    const int code = errno;
    // An existing folder counts however mkdir refuses it: EEXIST, EROFS or EACCES.
    if (isFolder(path))
        return {};
    return tl::unexpected(failure("create the folder", QFile::decodeName(path), code == EEXIST ? ENOTDIR : code));
}

/// rename(2) that never replaces, also where the file system cannot promise it.
int renameToNew(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    struct stat status {};
    if (::lstat(to.constData(), &status) == 0)
        return EEXIST;
    return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

FileResult<void> moveAcross(const QString& from, const QString& to) {
    struct stat status {};
    if (::lstat(QFile::encodeName(to).constData(), &status) == 0)
        return tl::unexpected(failure("move", to, EEXIST));
    if (auto copied = posix::copyEntry(from, to); !copied) {
        // EEXIST: somebody else has made it in the meantime, and it is not ours to remove.
        if (copied.error() != FileError{copied.error().operation, to, EEXIST})
            static_cast<void>(posix::removeTree(to));
        return copied;
    }
    return posix::removeTree(from);
}

}  // namespace

bool LinuxFileSystem::exists(const QString& path) const {
    const auto native = nativePath("find", path);
    struct stat status {};
    return native && ::lstat(native->constData(), &status) == 0;
}

FileResult<void> LinuxFileSystem::createDirectories(const QString& path) {
    const auto native = nativePath("create the folder", path);
    if (!native)
        return tl::unexpected(native.error());
    if (isFolder(*native))
        return {};
    const QByteArray clean = QFile::encodeName(QDir::cleanPath(path));
    for (qsizetype end = clean.indexOf('/', 1);; end = clean.indexOf('/', end + 1)) {
        if (auto created = createFolder(end < 0 ? clean : clean.left(end)); !created || end < 0)
            return created;
    }
}

FileResult<void> LinuxFileSystem::remove(const QString& path) {
    return posix::removeTree(path);
}

FileResult<void> LinuxFileSystem::copyTree(const QString& from, const QString& to) {
    return posix::copyTree(from, to);
}

FileResult<void> LinuxFileSystem::move(const QString& from, const QString& to) {
    const auto source = nativePath("move", from);
    const auto target = nativePath("move", to);
    if (!source || !target)
        return tl::unexpected(source ? target.error() : source.error());
    const int code = renameToNew(*source, *target);
    if (code == EXDEV)
        return moveAcross(from, to);
    if (code != 0)
        return tl::unexpected(failure("move", code == EEXIST ? to : from, code));
    return {};
}

FileResult<QByteArray> LinuxFileSystem::read(const QString& path, qint64 maximumBytes) const {
    const auto native = nativePath("read", path);
    if (!native)
        return tl::unexpected(native.error());
    // Opening a pipe would wait for a writer without O_NONBLOCK.
    const FileDescriptor file = posix::openAt(AT_FDCWD, native->constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.isOpen())
        return tl::unexpected(lastError("read", path));
    struct stat status {};
    if (const int code = kindError(file.get(), status))
        return tl::unexpected(failure("read", path, code));
    if (status.st_size > maximumBytes)
        return tl::unexpected(failure("read", path, EFBIG));
    QByteArray bytes;
    if (const int code = posix::readAll(file.get(), maximumBytes, bytes))
        return tl::unexpected(failure("read", path, code));
    return bytes;
}

FileResult<void> LinuxFileSystem::write(const QString& path, const QByteArray& bytes) {
    const auto native = nativePath("write", path);
    if (!native)
        return tl::unexpected(native.error());
    // Truncated only once it is known to be a regular file.
    FileDescriptor file =
        posix::openAt(AT_FDCWD, native->constData(), O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY, 0666);
    if (!file.isOpen())
        return tl::unexpected(lastError("write", path));
    struct stat status {};
    int code = kindError(file.get(), status);
    if (code == 0 && status.st_size > 0 && ::ftruncate(file.get(), 0) != 0)
        code = errno;
    if (code == 0)
        code = posix::writeAll(file.get(), bytes);
    if (code == 0)
        code = file.close();
    if (code != 0)
        return tl::unexpected(failure("write", path, code));
    return {};
}

FileResult<void> LinuxFileSystem::replace(const QString& path, const QByteArray& bytes) {
    if (const auto native = nativePath("write", path); !native)
        return tl::unexpected(native.error());
    const QString folder = path.section(u'/', 0, -2);
    const QString name = path.section(u'/', -1);
    auto file = posix::TemporaryFile::create(folder, name);
    if (!file)
        return tl::unexpected(file.error());
    if (auto written = file->write(bytes); !written)
        return tl::unexpected(failure("write", path, written.error().code));
    auto replaced = file->replace(path);
    posix::TemporaryFile::removeAbandoned(folder, name);
    return replaced;
}

FileResult<std::vector<QString>> LinuxFileSystem::list(const QString& path) const {
    const auto native = nativePath("list", path);
    if (!native)
        return tl::unexpected(native.error());
    const FileDescriptor folder = posix::openAt(AT_FDCWD, native->constData(), O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen())
        return tl::unexpected(lastError("list", path));
    std::vector<QByteArray> names;
    if (const int code = posix::listNames(folder.get(), names))
        return tl::unexpected(failure("list", path, code));
    std::vector<QString> decoded;
    decoded.reserve(names.size());
    for (const QByteArray& name : names)
        decoded.push_back(QFile::decodeName(name));
    std::sort(decoded.begin(), decoded.end());
    return decoded;
}

}  // namespace wrapio
