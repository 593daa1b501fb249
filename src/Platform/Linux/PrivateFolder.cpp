#include "Platform/Linux/PrivateFolder.h"

#include "Platform/Linux/LinuxFileSystem.h"

namespace wrapio {

using namespace Qt::StringLiterals;

PrivateFolder::PrivateFolder(QString parent)
    : m_parent(std::move(parent)) {}

QString PrivateFolder::path() {
    if (!m_folder || !m_folder->isValid()) {
        static_cast<void>(LinuxFileSystem().createDirectories(m_parent));
        m_folder.emplace(m_parent + u"/wrapio-XXXXXX"_s);
    }
    return m_folder->isValid() ? m_folder->path() : m_parent + u"/wrapio"_s;
}

}  // namespace wrapio
