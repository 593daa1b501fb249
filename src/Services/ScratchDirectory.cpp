#include "Services/ScratchDirectory.h"

#include "Models/AppConfiguration.h"

#include <QUuid>

#include <utility>

namespace wrapio {

ScratchDirectory::ScratchDirectory(FileSystem& files, QString path)
    : m_files(&files)
    , m_path(std::move(path)) {}

ScratchDirectory::ScratchDirectory(ScratchDirectory&& other) noexcept
    : m_files(std::exchange(other.m_files, nullptr))
    , m_path(other.m_path) {}

ScratchDirectory::~ScratchDirectory() {
    if (m_files)
        static_cast<void>(m_files->remove(m_path));
}

FileResult<ScratchDirectory> ScratchDirectory::create(FileSystem& files, const QString& parent, const QString& prefix) {
    ScratchDirectory folder(files, parent + u'/' + prefix + canonicalText(QUuid::createUuid()));
    if (const auto created = files.createDirectories(folder.path()); !created)
        return tl::unexpected(created.error());
    return folder;
}

}  // namespace wrapio
