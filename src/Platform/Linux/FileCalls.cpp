#include "Platform/Linux/FileCalls.h"

#include <QFile>

#include <dirent.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>

namespace wrapio::posix {

namespace {

constexpr qint64 blockSize = 64LL * 1024;

int copyByReading(int from, int to) {
    std::array<char, blockSize> block;
    for (;;) {
        const ssize_t count = retrying([&] { return ::read(from, block.data(), block.size()); });
        if (count < 0)
            return errno;
        if (count == 0)
            return 0;
        if (const int code = writeAll(to, QByteArray::fromRawData(block.data(), count)))
            return code;
    }
}

/// True when copy_file_range cannot be used between these two files at all, though reading and writing may.
bool meansUnsupported(int code) {
    return code == EXDEV || code == EINVAL || code == ENOSYS || code == EOPNOTSUPP || code == EPERM;
}

}  // namespace

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        reset();
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

void FileDescriptor::reset() {
    if (isOpen())
        ::close(release());
}

int FileDescriptor::close() {
    // Never repeated: after EINTR the descriptor is gone all the same.
    return !isOpen() || ::close(release()) == 0 || errno == EINTR ? 0 : errno;
}

FileResult<QByteArray> nativePath(const char* operation, const QString& path) {
    if (!path.startsWith(u'/') || path.contains(QChar(u'\0')))
        return tl::unexpected(FileError{QString::fromLatin1(operation), path, EINVAL});
    return QFile::encodeName(path);
}

FileError lastError(const char* operation, const QString& path) {
    const int code = errno;
    return FileError{QString::fromLatin1(operation), path, code};
}

FileError lastError(const char* operation, const QByteArray& nativePath) {
    const int code = errno;
    return FileError{QString::fromLatin1(operation), QFile::decodeName(nativePath), code};
}

FileDescriptor openAt(int folder, const char* name, int flags, mode_t mode) {
    return FileDescriptor(retrying([&] { return ::openat(folder, name, flags | O_CLOEXEC, mode); }));
}

int writeAll(int descriptor, const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const auto rest = static_cast<std::size_t>(bytes.size() - done);
        const ssize_t count = retrying([&] { return ::write(descriptor, bytes.constData() + done, rest); });
        if (count < 0)
            return errno;
        if (count == 0)
            return EIO;
        done += count;
    }
    return 0;
}

int readAll(int descriptor, qint64 maximumBytes, QByteArray& bytes) {
    struct stat status {};
    const bool known = ::fstat(descriptor, &status) == 0 && status.st_size > 0 && status.st_size <= maximumBytes;
    qsizetype filled = 0;
    bytes.resize(known ? status.st_size + 1 : blockSize);
    for (;;) {
        const auto room = static_cast<std::size_t>(bytes.size() - filled);
        const ssize_t count = retrying([&] { return ::read(descriptor, bytes.data() + filled, room); });
        if (count < 0)
            return errno;
        filled += count;
        if (filled > maximumBytes)
            return EFBIG;
        if (count == 0)
            break;
        if (filled == bytes.size())
            bytes.resize(bytes.size() * 2);
    }
    bytes.resize(filled);
    return 0;
}

int listNames(int folder, std::vector<QByteArray>& names) {
    // A descriptor of its own: closedir() closes it, and reading moves its position.
    FileDescriptor own = openAt(folder, ".", O_RDONLY | O_DIRECTORY);
    if (!own.isOpen())
        return errno;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(own.get()), &::closedir);
    if (!stream)
        return errno;
    static_cast<void>(own.release());
    for (;;) {
        errno = 0;
        const dirent* const entry = ::readdir(stream.get());
        if (!entry)
            break;
        QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            names.push_back(std::move(name));
    }
    const int code = errno;
    std::sort(names.begin(), names.end());
    return code;
}

int copyContents(int from, int to) {
    if (::ioctl(to, FICLONE, from) == 0)
        return 0;
    bool copiedSome = false;
    for (;;) {
        constexpr std::size_t atOnce = std::size_t{1} << 30;
        const ssize_t count = retrying([&] { return ::copy_file_range(from, nullptr, to, nullptr, atOnce, 0); });
        if (count > 0)
            copiedSome = true;
        else if (count == 0)
            // Some file systems answer 0 at once for files whose size they do not know beforehand.
            return copiedSome ? 0 : copyByReading(from, to);
        else
            return meansUnsupported(errno) ? copyByReading(from, to) : errno;
    }
}

}  // namespace wrapio::posix
