// Small pieces of POSIX file handling that the Linux file services share.
#pragma once

#include "Platform/FileSystem.h"

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace wrapio::posix {

/// Owns an open file. Move-only.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { reset(); }

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }
    /// Gives the file up without closing it.
    [[nodiscard]] int release() { return std::exchange(m_descriptor, -1); }
    /// Closes it now, without a word about failures.
    void reset();
    /// Closes it now; 0 or an errno value. Some file systems report a failed write only here.
    [[nodiscard]] int close();

private:
    int m_descriptor = -1;
};

/// Repeats a system call that a signal interrupted.
template <typename Call>
auto retrying(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// The path for system calls. Fails with EINVAL when it is not absolute or contains NUL, which would cut it short.
[[nodiscard]] FileResult<QByteArray> nativePath(const char* operation, const QString& path);

/// A failure with the present errno.
[[nodiscard]] FileError lastError(const char* operation, const QString& path);
[[nodiscard]] FileError lastError(const char* operation, const QByteArray& nativePath);

/// openat(2) with O_CLOEXEC, repeated when interrupted.
[[nodiscard]] FileDescriptor openAt(int folder, const char* name, int flags, mode_t mode = 0);

/// Writes all bytes; 0 or an errno value.
[[nodiscard]] int writeAll(int descriptor, const QByteArray& bytes);

/// Reads to the end; 0 or an errno value, EFBIG when there are more than `maximumBytes`.
[[nodiscard]] int readAll(int descriptor, qint64 maximumBytes, QByteArray& bytes);

/// The names in an open folder, sorted as bytes; 0 or an errno value.
[[nodiscard]] int listNames(int folder, std::vector<QByteArray>& names);

/// Copies the rest of one regular file into another, sharing its blocks where the file system can; 0 or an errno value.
[[nodiscard]] int copyContents(int from, int to);

}  // namespace wrapio::posix
