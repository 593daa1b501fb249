#include "Platform/Linux/ExtractionFolder.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

}  // namespace

FileResult<ExtractionFolder> ExtractionFolder::open(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    const bool made = ::mkdir(name.constData(), 0777) == 0;
    if (!made && errno != EEXIST)
        return tl::unexpected(lastError("create", path));
    FileDescriptor root(::open(name.constData(), folderFlags));
    if (!root.isOpen())
        return tl::unexpected(lastError("open", path));
    ExtractionFolder folder(path, std::move(root));
    if (made)
        folder.m_made.push_back({{}, true});
    return folder;
}

ExtractionFolder::~ExtractionFolder() {
    for (auto made = m_made.rbegin(); made != m_made.rend(); ++made)
        takeOut(*made);
}

FileResult<void> ExtractionFolder::makeFolder(const ZipPath& path) {
    const auto folder = openFolder(path, path.size(), true);
    return folder ? FileResult<void>() : tl::unexpected(folder.error());
}

FileResult<FileDescriptor> ExtractionFolder::makeFile(const ZipPath& path, bool executable) {
    const auto parent = openFolder(path, path.size() - 1, true);
    if (!parent)
        return tl::unexpected(parent.error());
    FileDescriptor file(::openat(parent->get(), path.back().c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, executable ? 0777 : 0666));
    if (!file.isOpen())
        return tl::unexpected(failure(u"create"_s, path));
    m_made.push_back({path, false});
    return file;
}

/// Opens the folder that the first `depth` elements of `path` name, step by step.
FileResult<FileDescriptor> ExtractionFolder::openFolder(const ZipPath& path, std::size_t depth, bool create) {
    FileDescriptor folder(::fcntl(m_root.get(), F_DUPFD_CLOEXEC, 0));
    for (std::size_t i = 0; folder.isOpen() && i < depth; ++i) {
        const char* const name = path[i].c_str();
        if (create && ::mkdirat(folder.get(), name, 0777) == 0)
            m_made.push_back({ZipPath(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(i) + 1), true});
        folder = FileDescriptor(::openat(folder.get(), name, folderFlags | O_NOFOLLOW));
    }
    if (!folder.isOpen())
        return tl::unexpected(failure(u"open"_s, path));
    return folder;
}

FileError ExtractionFolder::failure(const QString& operation, const ZipPath& path) const {
    const int code = errno;
    QString whole = m_path;
    for (const std::string& element : path)
        whole += u'/' + QString::fromStdString(element);
    return {operation, whole, code};
}

void ExtractionFolder::takeOut(const Made& made) {
    if (made.path.empty()) {
        ::rmdir(QFile::encodeName(m_path).constData());
        return;
    }
    if (const auto parent = openFolder(made.path, made.path.size() - 1, false))
        ::unlinkat(parent->get(), made.path.back().c_str(), made.isFolder ? AT_REMOVEDIR : 0);
}

}  // namespace wrapio
