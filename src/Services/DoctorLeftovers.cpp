// What belongs to no app any more: where it is found, and how it is taken away.
#include "Platform/PropertyList.h"
#include "Services/Doctor.h"
#include "Utilities/ApplicationIdentity.h"
#include "Utilities/BundleNames.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPropertyList = 1024 * 1024;
constexpr qsizetype canonicalIdLength = 36;

qint64 sizeOf(const QString& path) {
    const QFileInfo info(path);
    if (!info.isDir() || info.isSymLink())
        return info.size();
    qint64 total = 0;
    QDirIterator entries(path, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        entries.next();
        total += entries.fileInfo().isSymLink() ? 0 : entries.fileInfo().size();
    }
    return total;
}

std::optional<QUuid> idFromName(const QString& name) {
    if (name.size() != canonicalIdLength || name != name.toUpper())
        return std::nullopt;
    const QUuid id = QUuid::fromString(name);
    return canonicalText(id) == name ? std::optional(id) : std::nullopt;
}

QString desktopIdOf(const AppConfiguration& config) {
    return QString::fromStdString(desktopId(config.bundleIdentifier().toStdString()));
}

std::vector<QString> namesIn(const FileSystem& files, const QString& folder) {
    return files.list(folder).value_or(std::vector<QString>());
}

}  // namespace

QString description(LeftoverKind kind) {
    switch (kind) {
    case LeftoverKind::icon:
        return u"saved icon"_s;
    case LeftoverKind::desktopPicture:
        return u"desktop picture"_s;
    case LeftoverKind::preview:
        return u"preview"_s;
    case LeftoverKind::siteData:
        return u"site data"_s;
    case LeftoverKind::siteCache:
        return u"site cache"_s;
    case LeftoverKind::registration:
        return u"registration"_s;
    case LeftoverKind::bundle:
        return u"app bundle"_s;
    case LeftoverKind::unfinishedWrite:
        return u"unfinished write"_s;
    }
    Q_UNREACHABLE();
}

void Doctor::findLeftovers(std::vector<Leftover>& into) const {
    if (m_directories.applicationSupport) {
        const QString support = *m_directories.applicationSupport + u"/Wrapio"_s;
        findFilesByApp(LeftoverKind::icon, support, u".png"_s, into);
        findFilesByApp(LeftoverKind::siteData, support + u"/Profiles"_s, u""_s, into);
    }
    if (m_directories.caches) {
        const QString caches = *m_directories.caches + u"/Wrapio"_s;
        findFilesByApp(LeftoverKind::preview, caches + u"/previews"_s, u".jpg"_s, into);
        findFilesByApp(LeftoverKind::siteCache, caches + u"/Profiles"_s, u""_s, into);
    }
    findStrayBundles(into);
    findStrayRegistrations(into);
    findUnfinishedWrites(into);
}

void Doctor::findFilesByApp(LeftoverKind kind, const QString& folder, const QString& suffix,
                            std::vector<Leftover>& into) const {
    for (const QString& name : namesIn(m_files, folder)) {
        const auto id = name.endsWith(suffix) ? idFromName(name.chopped(suffix.size())) : std::nullopt;
        if (id && !m_store.find(*id))
            into.push_back({kind, folder + u'/' + name, sizeOf(folder + u'/' + name)});
    }
}

/// What an interrupted removal leaves: nothing but folders as our bundles have them, without the information.
bool Doctor::isRestOfBundle(const QString& bundleURL) const {
    static const QStringList ours = {u"Linux"_s, u"Resources"_s, u"_CodeSignature"_s};
    const auto top = m_files.list(bundleURL);
    const QString contents = bundleURL + u"/Contents"_s;
    const std::vector<QString> inside = namesIn(m_files, contents);
    return top && (top->empty() || (top->size() == 1 && top->front() == u"Contents" && m_files.list(contents))) &&
           std::all_of(inside.begin(), inside.end(), [](const QString& name) { return ours.contains(name); });
}

bool Doctor::isOurBundle(const QString& bundleURL) const {
    if (isRestOfBundle(bundleURL))
        return true;
    const auto bytes = m_files.read(bundleURL + u"/Contents/Info.plist"_s, largestPropertyList);
    const auto info = bytes ? PropertyList::parse(*bytes) : std::nullopt;
    const QString identifier = info ? info->text("CFBundleIdentifier").value_or(u""_s) : u""_s;
    return identifier.startsWith(u"com.wrapio."_s) || m_files.exists(bundleURL + u"/Contents/Linux/WrapioRunner"_s);
}

bool Doctor::belongsToAnApp(const QString& bundleURL) const {
    const QString folder = m_directories.generatedApps() + u'/';
    const auto& apps = m_store.configurations();
    return std::any_of(apps.begin(), apps.end(), [&](const AppConfiguration& config) {
        const std::string name = config.displayName().toStdString();
        return bundleURL == m_lifecycle.getBundleURL(config) || bundleURL == m_store.getBundleURL(config) ||
               bundleURL == folder + QString::fromStdString(generatedBundleName(name));
    });
}

void Doctor::findStrayBundles(std::vector<Leftover>& into) const {
    const QString folder = m_directories.generatedApps();
    for (const QString& name : namesIn(m_files, folder)) {
        const QString bundleURL = folder + u'/' + name;
        if (name.endsWith(u".app"_s) && !belongsToAnApp(bundleURL) && isOurBundle(bundleURL))
            into.push_back({LeftoverKind::bundle, bundleURL, sizeOf(bundleURL)});
    }
}

void Doctor::findStrayRegistrations(std::vector<Leftover>& into) const {
    for (const Registration& registration : m_health.registrations()) {
        if (!isDesktopIdOfAnApp(registration.identifier))
            into.push_back({LeftoverKind::registration, registration.identifier, 0});
    }
}

void Doctor::findUnfinishedWrites(std::vector<Leftover>& into) const {
    findHiddenFiles(m_directories.configuration, u"."_s, u".new"_s, into);
    if (!m_directories.applicationSupport)
        return;
    findHiddenFiles(*m_directories.applicationSupport + u"/Wrapio"_s, u"."_s, u".new"_s, into);
    // The folders of the desktop hold hidden files of others too.
    findHiddenFiles(*m_directories.applicationSupport + u"/applications"_s, u".wrapio-"_s, u".tmp"_s, into);
    const QString theme = *m_directories.applicationSupport + u"/icons/hicolor"_s;
    for (const QString& size : namesIn(m_files, theme)) {
        findHiddenFiles(theme + u'/' + size + u"/apps"_s, u".wrapio-"_s, u".tmp"_s, into);
        findStrayPictures(theme + u'/' + size + u"/apps"_s, into);
    }
}

/// Pictures that a registration left which is gone; those of a registration that is there go with it.
void Doctor::findStrayPictures(const QString& folder, std::vector<Leftover>& into) const {
    const std::vector<Registration> registrations = m_health.registrations();
    for (const QString& name : namesIn(m_files, folder)) {
        const QString id = name.endsWith(u".png"_s) ? name.chopped(4) : QString();
        const bool isRegistered = std::any_of(registrations.begin(), registrations.end(),
                                              [&id](const Registration& r) { return r.identifier == id; });
        if (id.startsWith(u"com.wrapio.generated."_s) && !isRegistered && !isDesktopIdOfAnApp(id))
            into.push_back({LeftoverKind::desktopPicture, folder + u'/' + name, sizeOf(folder + u'/' + name)});
    }
}

bool Doctor::isDesktopIdOfAnApp(const QString& id) const {
    const auto& apps = m_store.configurations();
    return std::any_of(apps.begin(), apps.end(),
                       [&id](const AppConfiguration& config) { return desktopIdOf(config) == id; });
}

void Doctor::findHiddenFiles(const QString& folder, const QString& prefix, const QString& suffix,
                             std::vector<Leftover>& into) const {
    for (const QString& name : namesIn(m_files, folder)) {
        const QString path = folder + u'/' + name;
        if (name.startsWith(prefix) && name.endsWith(suffix))
            into.push_back({LeftoverKind::unfinishedWrite, path, sizeOf(path)});
    }
}

FileResult<void> Doctor::clean(const Leftover& leftover) {
    if (leftover.kind == LeftoverKind::registration)
        return m_health.removeRegistration(leftover.path);
    if (leftover.kind == LeftoverKind::bundle)
        static_cast<void>(m_launchServices.unregisterApp(leftover.path));  // a bundle without an entry is fine
    return m_files.remove(leftover.path);
}

}  // namespace wrapio
