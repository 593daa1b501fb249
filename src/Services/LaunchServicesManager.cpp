#include "Services/LaunchServicesManager.h"

#include "Platform/Diagnostics.h"
#include "Services/ToolOutput.h"
#include "Utilities/BundleNames.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostProblemsOfAWarning = 2;

QString bundlePath(const QString& appsDirectory, const AppConfiguration& configuration) {
    const std::string name = cataloguedBundleName(configuration.displayName().toStdString());
    return appsDirectory + u'/' + QString::fromStdString(name);
}

QString lastPathComponent(const QString& path) {
    return path.section(u'/', -1, -1, QString::SectionSkipEmpty);
}

bool isBundlePath(const QString& path) {
    const QString name = lastPathComponent(path);
    const qsizetype dot = name.lastIndexOf(u'.');
    // A name that consists of nothing but the extension is a hidden file without one.
    return dot > 0 && name.mid(dot + 1) == u"app"_s;
}

}  // namespace

QString LaunchServicesError::description() const {
    return std::visit(
        [](const auto& error) -> QString {
            using Error = std::decay_t<decltype(error)>;
            if constexpr (std::is_same_v<Error, CommandFailed>)
                return u"lsregister failed: "_s + error.output;
            else if constexpr (std::is_same_v<Error, InvalidBundle>)
                return u"Invalid app bundle"_s;
            else if constexpr (std::is_same_v<Error, BundleNotFound>)
                return u"App bundle not found"_s;
            else if constexpr (std::is_same_v<Error, LsregisterNotFound>)
                return u"lsregister utility not found"_s;
            else {
                static_assert(std::is_same_v<Error, DirectoryNotFound>);
                return u"Apps directory not found"_s;
            }
        },
        m_value);
}

LaunchServicesManager::LaunchServicesManager(ToolRunner& tools, FileSystem& files, Workspace& workspace,
                                             Directories directories)
    : m_tools(tools)
    , m_files(files)
    , m_workspace(workspace)
    , m_directories(std::move(directories)) {}

tl::expected<void, AnyError> LaunchServicesManager::registerApp(const QString& bundleURL) {
    if (!isBundlePath(bundleURL))
        return tl::unexpected(AnyError(LaunchServicesError::invalidBundle()));
    if (!m_files.exists(bundleURL))
        return tl::unexpected(AnyError(LaunchServicesError::bundleNotFound()));
    return executeLSRegisterAsync({u"-f"_s, bundleURL});
}

tl::expected<void, AnyError> LaunchServicesManager::unregisterApp(const QString& bundleURL) {
    if (!isBundlePath(bundleURL))
        return tl::unexpected(AnyError(LaunchServicesError::invalidBundle()));
    const QString name = lastPathComponent(bundleURL);
    if (!m_files.exists(bundleURL)) {
        printDiagnostics(u"[LaunchServices] Bundle not found, skipping unregistration: "_s + name);
        return {};
    }
    printDiagnostics(u"[LaunchServices] Unregistering app: "_s + name);
    return executeLSRegisterAsync({u"-u"_s, bundleURL});
}

tl::expected<void, AnyError> LaunchServicesManager::unregisterAppByBundleID(const QString& bundleIdentifier) {
    const auto bundleURL = m_workspace.urlForApplication(bundleIdentifier);
    if (!bundleURL) {
        printDiagnostics(u"[LaunchServices] App not found for bundle ID: "_s + bundleIdentifier);
        return {};
    }
    return unregisterApp(*bundleURL);
}

HealthStatus LaunchServicesManager::checkHealth(const std::vector<AppConfiguration>& configurations) {
    const auto appsDirectory = getAppsDirectory();
    if (!appsDirectory)
        return HealthStatus::error(LaunchServicesError::directoryNotFound().description());
    QStringList problems;
    for (const AppConfiguration& configuration : configurations) {
        if (!m_files.exists(bundlePath(*appsDirectory, configuration)))
            problems << u"Missing bundle: "_s + configuration.displayName();
        else if (!m_workspace.urlForApplication(configuration.bundleIdentifier()))
            problems << u"Not registered: "_s + configuration.displayName();
    }
    if (problems.isEmpty())
        return HealthStatus::healthy();
    if (problems.size() <= mostProblemsOfAWarning)
        return HealthStatus::warning(problems.join(u", "_s));
    return HealthStatus::error(QString::number(problems.size()) + u" issues detected"_s);
}

std::vector<AppConfiguration>
LaunchServicesManager::findOrphanedConfigs(const std::vector<AppConfiguration>& configurations) {
    const auto appsDirectory = getAppsDirectory();
    if (!appsDirectory)
        return {};
    std::vector<AppConfiguration> orphans;
    std::copy_if(configurations.begin(), configurations.end(), std::back_inserter(orphans),
                 [this, &appsDirectory](const AppConfiguration& configuration) {
                     return !m_files.exists(bundlePath(*appsDirectory, configuration));
                 });
    return orphans;
}

void LaunchServicesManager::cleanupOrphanedRegistrations(const std::vector<AppConfiguration>& configurations) {
    for (const AppConfiguration& orphan : findOrphanedConfigs(configurations)) {
        printDiagnostics(u"[LaunchServices] Cleaning up orphaned registration: "_s + orphan.displayName());
        // A registration that cannot be taken away is tried again at the next clean-up.
        static_cast<void>(unregisterAppByBundleID(orphan.bundleIdentifier()));
    }
}

tl::expected<void, AnyError> LaunchServicesManager::executeLSRegisterAsync(const QStringList& arguments) {
    if (!m_tools.exists(lsregisterPath))
        return tl::unexpected(AnyError(LaunchServicesError::lsregisterNotFound()));
    const auto result = m_tools.run(lsregisterPath, arguments);
    if (!result)
        return tl::unexpected(AnyError(result.error()));
    if (result->status == 0)
        return {};
    const QString output = decodedUtf8(result->standardOutput + result->standardError).value_or(u"Unknown error"_s);
    printDiagnostics(u"❌ [LaunchServices] lsregister failed: "_s + output);
    return tl::unexpected(AnyError(LaunchServicesError::commandFailed(output)));
}

FileResult<QString> LaunchServicesManager::getAppsDirectory() {
    const QString path = m_directories.generatedApps();
    if (!m_files.exists(path)) {
        if (const auto created = m_files.createDirectories(path); !created)
            return tl::unexpected(created.error());
    }
    return path;
}

}  // namespace wrapio
