#include "Platform/Linux/TreeRemoval.h"

#include "Platform/Linux/FileCalls.h"

#include <unistd.h>

namespace wrapio::posix {

namespace {

constexpr const char* operation = "remove";
/// How often a folder that is being filled by somebody else is emptied again.
constexpr int maximumRounds = 3;

FileResult<void> removeEntry(int folder, const QByteArray& name, const QByteArray& path);

/// Gives the owner all rights to the folder `name`, when it is ours and lacks one. Whether it helped shows later.
void openUp(int folder, const char* name) {
    const FileDescriptor handle = openAt(folder, name, O_PATH | O_NOFOLLOW | O_DIRECTORY);
    struct stat status {};
    if (!handle.isOpen() || ::fstat(handle.get(), &status) != 0)
        return;
    if (status.st_uid == ::geteuid() && (status.st_mode & S_IRWXU) != S_IRWXU) {
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(handle.get());
        static_cast<void>(::chmod(self.constData(), (status.st_mode & 07777U) | S_IRWXU));
    }
}

FileResult<void> emptyFolder(int folder, const QByteArray& path) {
    std::vector<QByteArray> names;
    if (const int code = listNames(folder, names)) {
        errno = code;
        return tl::unexpected(lastError(operation, path));
    }
    for (const QByteArray& name : names) {
        if (auto removed = removeEntry(folder, name, path + '/' + name); !removed)
            return removed;
    }
    return {};
}

FileResult<void> removeFolder(int folder, const QByteArray& name, const QByteArray& path) {
    openUp(folder, name.constData());
    const FileDescriptor inner = openAt(folder, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!inner.isOpen())
        return tl::unexpected(lastError(operation, path));
    for (int round = 1;; ++round) {
        if (auto emptied = emptyFolder(inner.get(), path); !emptied)
            return emptied;
        if (::unlinkat(folder, name.constData(), AT_REMOVEDIR) == 0 || errno == ENOENT)
            return {};
        if (errno != ENOTEMPTY || round == maximumRounds)
            return tl::unexpected(lastError(operation, path));
    }
}

FileResult<void> removeEntry(int folder, const QByteArray& name, const QByteArray& path) {
    struct stat status {};
    if (::fstatat(folder, name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        // Somebody else was faster.
        if (errno == ENOENT)
            return {};
        return tl::unexpected(lastError(operation, path));
    }
    if (S_ISDIR(status.st_mode))
        return removeFolder(folder, name, path);
    if (::unlinkat(folder, name.constData(), 0) != 0 && errno != ENOENT)
        return tl::unexpected(lastError(operation, path));
    return {};
}

}  // namespace

FileResult<void> removeTree(const QString& path) {
    const auto native = nativePath(operation, path);
    if (!native)
        return tl::unexpected(native.error());
    QByteArray trimmed = *native;
    // A slash at the end would make the system follow a link.
    while (trimmed.size() > 1 && trimmed.endsWith('/'))
        trimmed.chop(1);
    struct stat status {};
    if (::lstat(trimmed.constData(), &status) != 0)
        return tl::unexpected(lastError(operation, path));
    return removeEntry(AT_FDCWD, trimmed, trimmed);
}

}  // namespace wrapio::posix
