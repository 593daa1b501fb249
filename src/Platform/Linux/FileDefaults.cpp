#include "Platform/Linux/FileDefaults.h"

#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/TemporaryFile.h"

#include <QFile>

#include <unistd.h>

#include <limits>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 unlimited = std::numeric_limits<qint64>::max();

/// Makes the folder, open to nobody else.
FileResult<void> preparePrivateFolder(const QString& folder) {
    LinuxFileSystem files;
    if (auto created = files.createDirectories(folder); !created)
        return created;
    const QByteArray native = QFile::encodeName(folder);
    struct stat status {};
    if (::stat(native.constData(), &status) != 0)
        return tl::unexpected(posix::lastError("write", folder));
    const bool open = (status.st_mode & 07777U) != S_IRWXU;
    if (open && status.st_uid == ::geteuid() && ::chmod(native.constData(), S_IRWXU) != 0)
        return tl::unexpected(posix::lastError("write", folder));
    return {};
}

/// What is there but cannot be read, for lack of a permission, say, was never seen by whoever writes now. It must not be
/// lost.
FileResult<void> checkReplaceable(const QString& path) {
    const QByteArray native = QFile::encodeName(path);
    const posix::FileDescriptor file = posix::openAt(AT_FDCWD, native.constData(), O_RDONLY | O_NONBLOCK);
    if (file.isOpen() || errno == ENOENT)
        return {};
    return tl::unexpected(posix::lastError("read", path));
}

FileResult<void> placeCopy(const QByteArray& bytes, const QString& folder, const QString& name) {
    auto file = posix::TemporaryFile::create(folder, name);
    if (!file)
        return tl::unexpected(file.error());
    if (auto written = file->write(bytes); !written)
        return written;
    return file->placeAt(folder + u'/' + name);
}

}  // namespace

FileResult<QString> FileDefaults::pathOf(const char* operation, const QString& key) const {
    const QString path = m_folder + u'/' + key;
    if (key.isEmpty() || key.startsWith(u'.') || key.contains(u'/') || key.contains(QChar(u'\0')))
        return tl::unexpected(FileError{QString::fromLatin1(operation), path, EINVAL});
    return path;
}

std::optional<QByteArray> FileDefaults::data(const QString& key) const {
    const auto path = pathOf("read", key);
    if (!path)
        return std::nullopt;
    auto bytes = LinuxFileSystem().read(*path, unlimited);
    return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
}

FileResult<void> FileDefaults::setData(const QByteArray& bytes, const QString& key) {
    const auto path = pathOf("write", key);
    if (!path)
        return tl::unexpected(path.error());
    if (auto prepared = preparePrivateFolder(m_folder); !prepared)
        return prepared;
    if (auto replaceable = checkReplaceable(*path); !replaceable)
        return replaceable;
    auto file = posix::TemporaryFile::create(m_folder, key);
    if (!file)
        return tl::unexpected(file.error());
    if (auto written = file->write(bytes); !written)
        return written;
    auto replaced = file->replace(*path);
    posix::TemporaryFile::removeAbandoned(m_folder, key);
    return replaced;
}

FileResult<QString> FileDefaults::preserveCopy(const QString& key) {
    const auto path = pathOf("preserve", key);
    if (!path)
        return tl::unexpected(path.error());
    LinuxFileSystem files;
    const auto bytes = files.read(*path, unlimited);
    if (!bytes)
        return tl::unexpected(bytes.error());
    for (int number = 1;; ++number) {
        const QString name = u"%1.damaged-%2"_s.arg(key).arg(number);
        const QString copy = m_folder + u'/' + name;
        if (files.exists(copy)) {
            // A longer file is refused without being read.
            const auto preserved = files.read(copy, bytes->size());
            if (preserved && *preserved == *bytes)
                return copy;
            continue;
        }
        const auto placed = placeCopy(*bytes, m_folder, name);
        if (placed)
            return copy;
        if (placed.error().code != EEXIST)
            return tl::unexpected(placed.error());
    }
}

}  // namespace wrapio
