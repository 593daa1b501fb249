#include "Platform/Linux/DesktopRegistry.h"

#include "Platform/Linux/DesktopEntry.h"
#include "Platform/Linux/PosixFile.h"
#include "Utilities/ApplicationIdentity.h"

#include <QDir>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestEntry = 256LL * 1024;
constexpr auto entryEnding = ".desktop";

}  // namespace

QString DesktopRegistry::entryPath(const QString& desktopId) const {
    return m_applications + u'/' + desktopId + QLatin1StringView(entryEnding);
}

std::vector<Registration> DesktopRegistry::registrations() const {
    std::vector<Registration> found;
    const QLatin1StringView ending(entryEnding);
    const QStringList names = QDir(m_applications).entryList({u"*"_s + ending}, QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString& name : names) {
        const QString id = name.chopped(ending.size());
        if (const auto path = bundlePathOfEntry(id))
            found.push_back({id, *path});
    }
    return found;
}

std::optional<QString> DesktopRegistry::bundlePathOfEntry(const QString& desktopId) const {
    // Anything else could lead out of the folder.
    if (!isValidDesktopId(desktopId.toStdString()))
        return std::nullopt;
    const auto bytes = readRegularFile(entryPath(desktopId), largestEntry);
    return bytes ? bundlePathOfDesktopEntry(*bytes) : std::nullopt;
}

std::optional<QString> DesktopRegistry::bundlePath(const QString& bundleIdentifier) const {
    return bundlePathOfEntry(QString::fromStdString(desktopId(bundleIdentifier.toStdString())));
}

}  // namespace wrapio
