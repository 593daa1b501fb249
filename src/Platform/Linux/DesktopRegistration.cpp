#include "Platform/Linux/DesktopRegistration.h"

#include "Platform/Linux/DesktopEntry.h"
#include "Platform/Linux/PosixFile.h"
#include "Utilities/ApplicationIdentity.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

DesktopRegistration::DesktopRegistration(const QString& dataHome, std::optional<QString> managerPath,
                                         ToolRunner& processes)
    : m_registry(dataHome)
    , m_icons(dataHome)
    , m_managerPath(std::move(managerPath))
    , m_processes(processes) {}

ToolOutcome<void> DesktopRegistration::registerBundle(const QString& bundlePath) {
    const auto info = BundleInfo::read(bundlePath);
    if (!info)
        return tl::unexpected(info.error());
    if (const auto removed = removeEntriesOf(info->path, info->desktopId); !removed)
        return toolFailure(removed.error());
    if (const auto written = write(*info); !written)
        return toolFailure(written.error());
    return updateDatabase();
}

ToolOutcome<void> DesktopRegistration::unregisterBundle(const QString& bundlePath) {
    if (const auto removed = removeEntriesOf(normalisedPath(bundlePath), QString()); !removed)
        return toolFailure(removed.error());
    return updateDatabase();
}

FileResult<void> DesktopRegistration::removeRegistration(const QString& desktopId) {
    if (!m_registry.bundlePathOfEntry(desktopId))
        return {};
    if (const auto removed = removeFiles(desktopId); !removed)
        return removed;
    if (!updateDatabase())
        return tl::unexpected(FileError{u"update"_s, m_registry.applicationsFolder(), EIO});
    return {};
}

/// The pictures come first: a desktop looks for them as soon as it sees the entry. An old entry goes before them, so
/// that an interrupted registration shows as a missing one.
FileResult<void> DesktopRegistration::write(const BundleInfo& info) {
    if (!QDir().mkpath(m_registry.applicationsFolder()))
        return tl::unexpected(lastError("create", m_registry.applicationsFolder()));
    if (const auto removed = removeEntry(info.desktopId); !removed)
        return removed;
    if (const auto installed = m_icons.install(info.desktopId, info.icns); !installed)
        return installed;
    DesktopEntry entry;
    entry.id = info.desktopId;
    entry.name = info.name;
    entry.executable = info.executable;
    entry.bundlePath = info.path;
    entry.schemes = info.schemes;
    entry.editProgram = m_managerPath;
    entry.editArgument = info.recordId;
    return writeAtomically(m_registry.entryPath(info.desktopId), entry.toBytes());
}

/// The entry goes first: what is interrupted shows as a missing registration and not as an app without pictures.
FileResult<void> DesktopRegistration::removeFiles(const QString& desktopId) {
    if (const auto removed = removeEntry(desktopId); !removed)
        return removed;
    return m_icons.remove(desktopId);
}

FileResult<void> DesktopRegistration::removeEntry(const QString& desktopId) {
    const QString path = m_registry.entryPath(desktopId);
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT)
        return tl::unexpected(lastError("remove", path));
    return {};
}

/// One place holds one app: a bundle that was made anew under another identifier leaves no entry behind.
FileResult<void> DesktopRegistration::removeEntriesOf(const QString& bundlePath, const QString& exceptId) {
    for (const Registration& registration : m_registry.registrations()) {
        if (registration.identifier == exceptId || registration.bundlePath != bundlePath)
            continue;
        if (const auto removed = removeFiles(registration.identifier); !removed)
            return removed;
    }
    return {};
}

/// Tells the desktop which program opens which scheme. A system without the tool reads the entries themselves.
ToolOutcome<void> DesktopRegistration::updateDatabase() {
    if (!QFileInfo(m_registry.applicationsFolder()).isDir())
        return {};
    const auto result = m_processes.run(u"/usr/bin/update-desktop-database"_s, {m_registry.applicationsFolder()});
    if (result && result->status != 0)
        return toolFailure(u"update-desktop-database failed with status %1: %2"_s.arg(result->status)
                               .arg(QString::fromUtf8(result->standardError).simplified()));
    return {};
}

}  // namespace wrapio
