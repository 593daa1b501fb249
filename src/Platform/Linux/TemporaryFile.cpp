#include "Platform/Linux/TemporaryFile.h"

#include <QFile>

#include <sys/file.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace wrapio::posix {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* operation = "write";

QString prefixOf(const QString& name) {
    return u'.' + name + u'.';
}

/// A file of another process's crash can be removed between its creation and its locking; it is then made anew.
bool wasRemoved(const FileDescriptor& file) {
    struct stat status {};
    return ::fstat(file.get(), &status) == 0 && status.st_nlink == 0;
}

int syncFolder(const QString& folder) {
    const FileDescriptor opened = openAt(AT_FDCWD, QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (!opened.isOpen())
        return errno;
    // Some file systems do not sync folders, and say so with EINVAL.
    return ::fsync(opened.get()) == 0 || errno == EINVAL ? 0 : errno;
}

}  // namespace

TemporaryFile::TemporaryFile(QString folder, QByteArray path, FileDescriptor file)
    : m_folder(std::move(folder))
    , m_path(std::move(path))
    , m_file(std::move(file)) {}

TemporaryFile::~TemporaryFile() {
    if (!m_path.isEmpty())
        ::unlink(m_path.constData());
}

FileResult<TemporaryFile> TemporaryFile::create(const QString& folder, const QString& name) {
    const auto pattern = nativePath(operation, folder + u'/' + prefixOf(name) + u"XXXXXX.new"_s);
    if (!pattern)
        return tl::unexpected(pattern.error());
    for (;;) {
        QByteArray path = *pattern;
        FileDescriptor file(::mkostemps(path.data(), 4, O_CLOEXEC));
        if (!file.isOpen())
            return tl::unexpected(FileError{QString::fromLatin1(operation), folder + u'/' + name, errno});
        // Where the file system has no locks, nothing is ever taken for abandoned either.
        static_cast<void>(::flock(file.get(), LOCK_EX | LOCK_NB));
        if (!wasRemoved(file))
            return TemporaryFile(folder, std::move(path), std::move(file));
    }
}

void TemporaryFile::removeAbandoned(const QString& folder, const QString& name) {
    const QByteArray native = QFile::encodeName(folder);
    const FileDescriptor opened = openAt(AT_FDCWD, native.constData(), O_RDONLY | O_DIRECTORY);
    std::vector<QByteArray> names;
    if (!opened.isOpen() || listNames(opened.get(), names) != 0)
        return;
    const QByteArray prefix = QFile::encodeName(prefixOf(name));
    for (const QByteArray& found : names) {
        if (!found.startsWith(prefix) || !found.endsWith(".new"))
            continue;
        const FileDescriptor file = openAt(opened.get(), found.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
        if (file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            ::unlinkat(opened.get(), found.constData(), 0);
    }
}

FileResult<void> TemporaryFile::write(const QByteArray& bytes) {
    int code = writeAll(m_file.get(), bytes);
    if (code == 0 && ::fsync(m_file.get()) != 0)
        code = errno;
    if (code != 0)
        return tl::unexpected(FileError{QString::fromLatin1(operation), QFile::decodeName(m_path), code});
    return {};
}

FileResult<void> TemporaryFile::replace(const QString& target) {
    return rename(target, 0);
}

FileResult<void> TemporaryFile::placeAt(const QString& target) {
    return rename(target, RENAME_NOREPLACE);
}

FileResult<void> TemporaryFile::rename(const QString& target, unsigned flags) {
    const QByteArray native = QFile::encodeName(target);
    if (::renameat2(AT_FDCWD, m_path.constData(), AT_FDCWD, native.constData(), flags) != 0)
        return tl::unexpected(lastError(operation, target));
    m_path.clear();
    if (const int code = syncFolder(m_folder))
        return tl::unexpected(FileError{QString::fromLatin1(operation), target, code});
    return {};
}

}  // namespace wrapio::posix
