#include "Platform/Linux/FileCatalogueLock.h"

#include "Platform/Linux/LinuxFileSystem.h"

#include <QFile>

#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

namespace wrapio {

using namespace Qt::StringLiterals;
using std::chrono::steady_clock;

namespace {

constexpr std::chrono::duration<double> firstPause{0.002};
constexpr std::chrono::duration<double> longestPause{0.1};

CatalogueBusy unusable(const FileError& error) {
    return {.reason = u"The catalogue cannot be locked: %1"_s.arg(error.description()), .isHopeless = true};
}

FileError lockError(const QByteArray& path, int code) {
    return FileError{u"lock"_s, QFile::decodeName(path), code};
}

/// Who says in the file that he holds it, if he is still there.
std::optional<pid_t> holder(int file) {
    std::array<char, 32> text{};
    if (::pread(file, text.data(), text.size() - 1, 0) <= 0)
        return std::nullopt;
    const auto process = static_cast<pid_t>(std::strtol(text.data(), nullptr, 10));
    const bool alive = process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
    return alive ? std::optional(process) : std::nullopt;
}

CatalogueBusy busy(int file) {
    const auto process = holder(file);
    const QString who = process ? u"Another Wrapio (process %1)"_s.arg(*process) : u"Another Wrapio"_s;
    return {who + u" is changing the catalogue; try again when it has finished"_s};
}

/// Only so that others can name us: the lock holds without it.
void sign(int file) {
    const QByteArray text = QByteArray::number(::getpid()) + '\n';
    if (::ftruncate(file, 0) == 0)
        static_cast<void>(::pwrite(file, text.constData(), static_cast<std::size_t>(text.size()), 0));
}

/// False when the file has been removed or replaced since it was opened, so that its lock keeps nobody out.
bool isStillAt(const QByteArray& path, int file) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file, &opened) == 0 && ::stat(path.constData(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

posix::FileDescriptor openLockFile(const QByteArray& path) {
    return posix::openAt(AT_FDCWD, path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK, 0600);
}

}  // namespace

tl::expected<void, CatalogueBusy> FileCatalogueLock::acquire(double seconds) {
    if (m_held.isOpen())
        return {};
    const auto end = steady_clock::now() + std::chrono::duration<double>(std::clamp(seconds, 0.0, 1e6));
    if (const auto created = LinuxFileSystem().createDirectories(m_folder); !created)
        return tl::unexpected(unusable(created.error()));
    const QByteArray path = QFile::encodeName(m_folder + u"/.lock"_s);
    auto pause = firstPause;
    for (;;) {
        posix::FileDescriptor file = openLockFile(path);
        if (!file.isOpen())
            return tl::unexpected(unusable(lockError(path, errno)));
        if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            if (!isStillAt(path, file.get()))
                continue;
            sign(file.get());
            m_held = std::move(file);
            return {};
        }
        if (errno != EWOULDBLOCK && errno != EINTR)
            return tl::unexpected(unusable(lockError(path, errno)));
        const std::chrono::duration<double> left = end - steady_clock::now();
        if (left.count() <= 0)
            return tl::unexpected(busy(file.get()));
        std::this_thread::sleep_for(std::min(pause, left));
        pause = std::min(pause * 2, longestPause);
    }
}

}  // namespace wrapio
