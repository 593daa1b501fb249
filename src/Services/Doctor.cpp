#include "Services/Doctor.h"

#include "Utilities/BundleNames.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestRunnerConfiguration = 4LL * 1024 * 1024;

QString regenerateRemedy(const AppConfiguration& config) {
    return u"wrapio regenerate "_s + canonicalText(config.id);
}

std::vector<QString> namesIn(const FileSystem& files, const QString& folder) {
    return files.list(folder).value_or(std::vector<QString>());
}

}  // namespace

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
    findLeftovers(report.leftovers);
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

}  // namespace wrapio
