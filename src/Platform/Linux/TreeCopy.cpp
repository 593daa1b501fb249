#include "Platform/Linux/TreeCopy.h"

#include "Platform/Linux/FileCalls.h"

#include <QFile>

#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace wrapio::posix {

namespace {

constexpr const char* operation = "copy";
constexpr mode_t permissions = 0777;

/// One entry in an open folder; the path is for messages.
struct Place {
    int folder;
    QByteArray name;
    QByteArray path;

    [[nodiscard]] Place child(int opened, const QByteArray& childName) const {
        return {opened, childName, path + '/' + childName};
    }
};

tl::unexpected<FileError> failure(const Place& place, int code = errno) {
    errno = code;
    return tl::unexpected(lastError(operation, place.path));
}

FileResult<void> copyAny(const Place& from, const Place& to);

FileResult<void> copyLink(const Place& from, const Place& to) {
    QByteArray target(4096, '\0');
    const ssize_t length =
        ::readlinkat(from.folder, from.name.constData(), target.data(), static_cast<std::size_t>(target.size()));
    if (length < 0)
        return failure(from);
    if (length == target.size())
        return failure(from, ENAMETOOLONG);
    target.truncate(length);
    if (::symlinkat(target.constData(), to.folder, to.name.constData()) != 0)
        return failure(to);
    return {};
}

FileResult<void> copyFile(const Place& from, const Place& to) {
    // Without O_NONBLOCK a pipe that has taken the file's place would hold us up for good.
    const FileDescriptor source = openAt(from.folder, from.name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    struct stat status {};
    if (!source.isOpen() || ::fstat(source.get(), &status) != 0)
        return failure(from);
    if (!S_ISREG(status.st_mode))
        return failure(from, EOPNOTSUPP);
    FileDescriptor target = openAt(to.folder, to.name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    if (!target.isOpen())
        return failure(to);
    if (const int code = copyContents(source.get(), target.get()))
        return failure(to, code);
    if (::fchmod(target.get(), status.st_mode & permissions) != 0)
        return failure(to);
    if (const int code = target.close())
        return failure(to, code);
    return {};
}

FileResult<void> copyFolder(const Place& from, const Place& to, int followFlag) {
    const FileDescriptor source = openAt(from.folder, from.name.constData(), O_RDONLY | O_DIRECTORY | followFlag);
    struct stat status {};
    if (!source.isOpen() || ::fstat(source.get(), &status) != 0)
        return failure(from);
    // Listed before the copy is made.
    std::vector<QByteArray> names;
    if (const int code = listNames(source.get(), names))
        return failure(from, code);
    if (::mkdirat(to.folder, to.name.constData(), 0700) != 0)
        return failure(to);
    const FileDescriptor target = openAt(to.folder, to.name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!target.isOpen())
        return failure(to);
    for (const QByteArray& name : names) {
        if (auto copied = copyAny(from.child(source.get(), name), to.child(target.get(), name)); !copied)
            return copied;
    }
    // Last, since a folder may be closed to its owner.
    if (::fchmod(target.get(), status.st_mode & 07777U) != 0)
        return failure(to);
    return {};
}

FileResult<void> copyAny(const Place& from, const Place& to) {
    struct stat status {};
    if (::fstatat(from.folder, from.name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return failure(from);
    switch (status.st_mode & S_IFMT) {
    case S_IFDIR:
        return copyFolder(from, to, O_NOFOLLOW);
    case S_IFREG:
        return copyFile(from, to);
    case S_IFLNK:
        return copyLink(from, to);
    }
    return failure(from, EOPNOTSUPP);
}

QByteArray resolved(const QByteArray& path) {
    const std::unique_ptr<char, void (*)(void*)> text(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(text.get());
}

bool isWithin(const QByteArray& path, const QByteArray& folder) {
    const QByteArray place = resolved(path.left(path.lastIndexOf('/') + 1));
    const QByteArray root = resolved(folder);
    return !root.isEmpty() && (place == root || place.startsWith(root + '/'));
}

QByteArray trimmed(QByteArray path) {
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

template <typename Copy>
FileResult<void> between(const QString& from, const QString& to, Copy copy) {
    const auto source = nativePath(operation, from);
    const auto target = nativePath(operation, to);
    if (!source || !target)
        return tl::unexpected(source ? target.error() : source.error());
    const QByteArray targetPath = trimmed(*target);
    if (isWithin(targetPath, *source))
        return tl::unexpected(FileError{QString::fromLatin1(operation), to, EINVAL});
    const QByteArray sourcePath = trimmed(*source);
    return copy(Place{AT_FDCWD, sourcePath, sourcePath}, Place{AT_FDCWD, targetPath, targetPath});
}

}  // namespace

FileResult<void> copyTree(const QString& from, const QString& to) {
    return between(from, to, [](const Place& source, const Place& target) { return copyFolder(source, target, 0); });
}

FileResult<void> copyEntry(const QString& from, const QString& to) {
    return between(from, to, [](const Place& source, const Place& target) { return copyAny(source, target); });
}

}  // namespace wrapio::posix
