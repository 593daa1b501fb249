#include "Platform/Linux/BundleInfo.h"

#include "Platform/Linux/DesktopEntry.h"
#include "Platform/Linux/PosixFile.h"
#include "Platform/PropertyList.h"
#include "Utilities/ApplicationIdentity.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPropertyList = 4LL * 1024 * 1024;
constexpr qint64 largestIcon = 64LL * 1024 * 1024;

ToolOutcome<PropertyList> readInfoPlist(const QString& bundlePath) {
    const QString path = bundlePath + u"/Contents/Info.plist"_s;
    const auto bytes = readRegularFile(path, largestPropertyList);
    if (!bytes)
        return toolFailure(bytes.error());
    auto list = PropertyList::parse(*bytes);
    if (!list)
        return toolFailure(u"%1: not a property list"_s.arg(path));
    return std::move(*list);
}

ToolOutcome<QString> readDesktopId(const PropertyList& list, const QString& bundlePath) {
    const QString identifier = list.text("CFBundleIdentifier").value_or(QString());
    const std::string id = desktopId(identifier.toStdString());
    if (!isValidDesktopId(id))
        return toolFailure(u"%1: the bundle identifier “%2” is not usable"_s.arg(bundlePath, identifier));
    return QString::fromStdString(id);
}

ToolOutcome<QString> readExecutable(const PropertyList& list, const QString& bundlePath) {
    const QString name = list.text("CFBundleExecutable").value_or(QString());
    if (name.isEmpty() || name == u"."_s || name == u".."_s || name.contains(u'/'))
        return toolFailure(u"%1: the bundle names no executable"_s.arg(bundlePath));
    const QString path = u"%1/Contents/Linux/%2"_s.arg(bundlePath, name);
    const QFileInfo file(path);
    if (!file.isFile() || !file.isExecutable())
        return toolFailure(u"%1: not an executable file"_s.arg(path));
    return path;
}

QString readName(const PropertyList& list, const QString& bundlePath, const QString& desktopId) {
    const QString displayed = withoutControls(list.text("CFBundleDisplayName").value_or(QString()));
    if (!displayed.isEmpty())
        return displayed;
    const QString file = withoutControls(QFileInfo(bundlePath).completeBaseName());
    return file.isEmpty() ? desktopId : file;
}

/// A scheme such as "https" is not for a bundle to take, whatever its property list says.
std::vector<QString> ownSchemes(const PropertyList& list) {
    static const QRegularExpression own(u"\\Awrapio-[a-z0-9-]{1,64}\\z"_s);
    std::vector<QString> schemes = list.urlSchemes();
    std::erase_if(schemes, [](const QString& scheme) { return !own.match(scheme).hasMatch(); });
    return schemes;
}

std::optional<QString> recordIdOf(const std::vector<QString>& schemes) {
    static const QRegularExpression withId(u"\\Awrapio-([0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12})\\z"_s);
    for (const QString& scheme : schemes) {
        if (const auto match = withId.match(scheme); match.hasMatch())
            return match.captured(1);
    }
    return std::nullopt;
}

}  // namespace

QString normalisedPath(const QString& path) {
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

ToolOutcome<BundleInfo> BundleInfo::read(const QString& bundlePath) {
    BundleInfo info;
    info.path = normalisedPath(bundlePath);
    const auto list = readInfoPlist(info.path);
    if (!list)
        return tl::unexpected(list.error());
    const auto id = readDesktopId(*list, info.path);
    if (!id)
        return tl::unexpected(id.error());
    const auto executable = readExecutable(*list, info.path);
    if (!executable)
        return tl::unexpected(executable.error());
    info.desktopId = *id;
    info.executable = *executable;
    info.name = readName(*list, info.path, *id);
    info.schemes = ownSchemes(*list);
    info.recordId = recordIdOf(info.schemes);
    info.icns = readRegularFile(info.path + u"/Contents/Resources/AppIcon.icns"_s, largestIcon).value_or(QByteArray());
    return info;
}

}  // namespace wrapio
