#include "Services/Doctor.h"

#include "Platform/PropertyList.h"
#include "Utilities/ApplicationIdentity.h"
#include "Utilities/BundleNames.h"

#include <QDirIterator>
#include <QFileInfo>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPropertyList = 1024 * 1024;
constexpr qint64 largestRunnerConfiguration = 4LL * 1024 * 1024;
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

QString regenerateRemedy(const AppConfiguration& config) {
    return u"wrapio regenerate "_s + canonicalText(config.id);
}

std::vector<QString> namesIn(const FileSystem& files, const QString& folder) {
    return files.list(folder).value_or(std::vector<QString>());
}

}  // namespace

QString description(LeftoverKind kind) {
    switch (kind) {
    case LeftoverKind::icon:
        return u"saved icon"_s;
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

bool DoctorReport::hasProblems() const {
    return std::any_of(examinations.begin(), examinations.end(),
                       [](const Examination& e) { return e.severity == Severity::problem; });
}

Doctor::Doctor(const ConfigurationManager& store, const AppLifecycleManager& lifecycle, const VersionManager& versions,
               FileSystem& files, Workspace& workspace, LaunchServicesManager& launchServices, SystemHealth& health,
               Directories directories)
    : m_store(store)
    , m_lifecycle(lifecycle)
    , m_versions(versions)
    , m_files(files)
    , m_workspace(workspace)
    , m_launchServices(launchServices)
    , m_health(health)
    , m_directories(std::move(directories)) {}

DoctorReport Doctor::examine() const {
    DoctorReport report;
    examineCatalogue(report.examinations);
    for (const AppConfiguration& config : m_store.configurations())
        examineApp(config, report.examinations);
    examineSurroundings(report.examinations);
    if (m_directories.applicationSupport) {
        const QString support = *m_directories.applicationSupport + u"/Wrapio"_s;
        findFilesByApp(LeftoverKind::icon, support, u".png"_s, report.leftovers);
        findFilesByApp(LeftoverKind::siteData, support + u"/Profiles"_s, u""_s, report.leftovers);
    }
    if (m_directories.caches) {
        const QString caches = *m_directories.caches + u"/Wrapio"_s;
        findFilesByApp(LeftoverKind::preview, caches + u"/previews"_s, u".jpg"_s, report.leftovers);
        findFilesByApp(LeftoverKind::siteCache, caches + u"/Profiles"_s, u""_s, report.leftovers);
    }
    findStrayBundles(report.leftovers);
    findStrayRegistrations(report.leftovers);
    findUnfinishedWrites(report.leftovers);
    return report;
}

void Doctor::examineCatalogue(std::vector<Examination>& into) const {
    const auto count = m_store.configurations().size();
    into.push_back({Severity::fine, u"catalogue"_s, u"%1 apps"_s.arg(count), u""_s, std::nullopt});
    for (const QString& name : namesIn(m_files, m_directories.configuration)) {
        if (name.contains(u".damaged-"_s))
            into.push_back(
                {Severity::warning, u"catalogue"_s,
                 u"a catalogue that could not be read was kept as %1/%2"_s.arg(m_directories.configuration, name),
                 u"Look into it for apps you miss, then delete it."_s, std::nullopt});
    }
}

void Doctor::examineApp(const AppConfiguration& config, std::vector<Examination>& into) const {
    const std::size_t before = into.size();
    if (!config.configuredURL)
        into.push_back({Severity::problem, config.displayName(), u"has no address"_s,
                        u"wrapio edit %1 --address ADDRESS"_s.arg(canonicalText(config.id)), config.id});
    examineName(config, into);
    const QString bundleURL = m_lifecycle.getBundleURL(config);
    if (m_files.exists(bundleURL)) {
        examineBundle(config, bundleURL, into);
        examineRegistration(config, bundleURL, into);
    } else {
        into.push_back({Severity::problem, config.displayName(), u"its bundle is missing: "_s + bundleURL,
                        regenerateRemedy(config), config.id});
    }
    if (into.size() == before)
        into.push_back(
            {Severity::fine, config.displayName(), u"bundle, seal and registration are in order"_s, u""_s, config.id});
}

void Doctor::examineName(const AppConfiguration& config, std::vector<Examination>& into) const {
    const std::string name = config.displayName().toStdString();
    if (!bundleNamesAgree(name))
        into.push_back(
            {Severity::problem, config.displayName(),
             u"its name gives three different places for its bundle: \"%1\", \"%2\" and \"%3\""_s.arg(
                 QString::fromStdString(launchedBundleName(name)), QString::fromStdString(cataloguedBundleName(name)),
                 QString::fromStdString(generatedBundleName(name))),
             u"wrapio rename %1 NAME"_s.arg(canonicalText(config.id)), config.id});
    const auto sharing =
        std::count_if(m_store.configurations().begin(), m_store.configurations().end(),
                      [&config](const AppConfiguration& other) { return other.displayName() == config.displayName(); });
    if (sharing > 1)
        into.push_back({Severity::warning, config.displayName(),
                        u"%1 apps have this name and share one bundle"_s.arg(sharing),
                        u"wrapio rename %1 NAME"_s.arg(canonicalText(config.id)), config.id});
}

void Doctor::examineBundle(const AppConfiguration& config, const QString& bundleURL,
                           std::vector<Examination>& into) const {
    const SealReport seal = m_health.verifySeal(bundleURL);
    if (seal.finding == Finding::missing)
        into.push_back({Severity::problem, config.displayName(), u"its bundle is unfinished: it has no seal"_s,
                        regenerateRemedy(config), config.id});
    if (seal.finding == Finding::fine && !isMadeFromSettings(config, bundleURL))
        into.push_back({Severity::problem, config.displayName(), u"its bundle was made from other settings"_s,
                        regenerateRemedy(config), config.id});
    if (seal.finding == Finding::damaged)
        into.push_back({Severity::problem, config.displayName(), u"its bundle was changed: "_s + seal.detail,
                        regenerateRemedy(config), config.id});
    if (config.runnerVersion && VersionManager::isVersion(m_versions.runnerTemplateVersion(), *config.runnerVersion))
        into.push_back({Severity::warning, config.displayName(),
                        u"was made by the older template %1"_s.arg(*config.runnerVersion), u"wrapio update-all"_s,
                        config.id});
}

/// A change that was interrupted is in the catalogue, but not in the bundle.
bool Doctor::isMadeFromSettings(const AppConfiguration& config, const QString& bundleURL) const {
    const auto bytes = m_files.read(bundleURL + u"/Contents/Resources/config.json"_s, largestRunnerConfiguration);
    auto found = bytes ? Json::parse(bytes->begin(), bytes->end(), nullptr, false) : Json();
    auto wanted = runnerConfiguration(config, QString());
    if (!found.is_object() || !wanted)
        return true;  // there is nothing to compare; what is missing is told elsewhere
    found.erase("runnerVersion");
    wanted->erase("runnerVersion");
    return found == *wanted;
}

void Doctor::examineRegistration(const AppConfiguration& config, const QString& bundleURL,
                                 std::vector<Examination>& into) const {
    const auto registered = m_workspace.urlForApplication(config.bundleIdentifier());
    if (!registered)
        into.push_back({Severity::problem, config.displayName(), u"is not registered with the desktop"_s,
                        regenerateRemedy(config), config.id});
    else if (*registered != bundleURL)
        into.push_back({Severity::problem, config.displayName(),
                        u"its registration points to another bundle: "_s + *registered, regenerateRemedy(config),
                        config.id});
}

void Doctor::examineSurroundings(std::vector<Examination>& into) const {
    for (const SurroundingsCheck& check : m_health.surroundings()) {
        into.push_back({check.usable ? Severity::fine : Severity::warning, check.name, check.detail,
                        check.usable ? u""_s : check.remedy, std::nullopt});
    }
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
        const auto& apps = m_store.configurations();
        const bool known = std::any_of(apps.begin(), apps.end(), [&registration](const AppConfiguration& config) {
            return desktopIdOf(config) == registration.identifier;
        });
        if (!known)
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
    for (const QString& size : namesIn(m_files, theme))
        findHiddenFiles(theme + u'/' + size + u"/apps"_s, u".wrapio-"_s, u".tmp"_s, into);
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
