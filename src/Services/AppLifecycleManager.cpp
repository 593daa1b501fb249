#include "Services/AppLifecycleManager.h"

#include "Platform/Diagnostics.h"
#include "Utilities/ApplicationIdentity.h"
#include "Utilities/BundleNames.h"

#include <QUrl>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double pollInterval = 1.0;
constexpr double pauseAfterQuit = 0.5;

QString lastPathComponent(const QString& path) {
    return path.section(u'/', -1);
}

QString importSessionURL(const AppConfiguration& config, const std::optional<QString>& source) {
    const QString scheme = QString::fromStdString(appUrlScheme(canonicalText(config.id).toStdString()));
    const QString bare = scheme + u"://import-session"_s;
    if (!source || source->isEmpty())
        return bare;
    return bare + u"?source="_s + QString::fromLatin1(QUrl::toPercentEncoding(*source));
}

}  // namespace

AppLifecycleManager::AppLifecycleManager(ConfigurationManager& store, BundleGenerator& generator,
                                         const VersionManager& versions, Workspace& workspace, FileSystem& files,
                                         Scheduler& scheduler, Directories directories)
    : m_store(store)
    , m_generator(generator)
    , m_versions(versions)
    , m_workspace(workspace)
    , m_files(files)
    , m_scheduler(scheduler)
    , m_directories(std::move(directories))
    , m_runningAppIds(std::make_shared<ObservableProperty<Ids>>()) {
    startMonitoring();
}

void AppLifecycleManager::startMonitoring() {
    timer = m_scheduler.every(pollInterval, [this] { checkRunningApps(); });
    checkRunningApps();
}

QSet<QString> AppLifecycleManager::runningBundles() const {
    QSet<QString> running;
    for (const RunningApplication& application : m_workspace.runningApplications()) {
        if (application.bundleURL)
            running.insert(*application.bundleURL);
    }
    return running;
}

void AppLifecycleManager::checkRunningApps() {
    const QSet<QString> running = runningBundles();
    Ids ids;
    if (!running.isEmpty()) {
        for (const AppConfiguration& config : m_store.configurations()) {
            if (running.contains(getBundleURL(config)))
                ids.insert(config.id);
        }
    }
    if (ids == runningAppIds())
        return;
    m_scheduler.async([weak = std::weak_ptr(m_runningAppIds), ids = std::move(ids)] {
        if (const auto property = weak.lock())
            property->set(ids);
    });
}

QString AppLifecycleManager::getBundleURL(const AppConfiguration& config) const {
    return m_directories.generatedApps() + u'/' +
           QString::fromStdString(launchedBundleName(config.displayName().toStdString()));
}

std::optional<RunningApplication> AppLifecycleManager::runningApplication(const AppConfiguration& config) const {
    const QString bundleURL = getBundleURL(config);
    for (const RunningApplication& application : m_workspace.runningApplications()) {
        if (application.bundleURL == bundleURL)
            return application;
    }
    return std::nullopt;
}

tl::expected<void, AppLifecycleError> AppLifecycleManager::launch(const AppConfiguration& config) {
    const QString bundleURL = getBundleURL(config);
    if (!m_files.exists(bundleURL))
        return tl::unexpected(AppLifecycleError::appNotFound(bundleURL));
    const QString name = lastPathComponent(bundleURL);
    m_workspace.openApplication(bundleURL, {.activates = true}, [name](const std::optional<LaunchError>& failure) {
        if (failure)
            printDiagnostics(u"❌ [AppLifecycle] Failed to launch "_s + name + u": "_s + failure->description());
        else
            printDiagnostics(u"✅ [AppLifecycle] Launched "_s + name);
    });
    return {};
}

void AppLifecycleManager::focus(const AppConfiguration& config) {
    const auto application = runningApplication(config);
    if (!application) {
        printDiagnostics(u"⚠️ [AppLifecycle] Could not find running app to focus: "_s + config.displayName());
        return;
    }
    m_workspace.activate(*application, ActivationOptions::activateIgnoringOtherApps);
    printDiagnostics(u"✅ [AppLifecycle] Focused app: "_s + config.displayName());
}

void AppLifecycleManager::quit(const AppConfiguration& config) {
    const auto application = runningApplication(config);
    if (application && !m_workspace.terminate(*application))
        m_workspace.forceTerminate(*application);
}

tl::expected<void, AnyError> AppLifecycleManager::generate(const AppConfiguration& config) {
    printDiagnostics(u"[AppLifecycle] Generating app for "_s + config.displayName());
    const QString folder = m_directories.generatedApps();
    if (const auto created = m_files.createDirectories(folder); !created)
        return tl::unexpected(AnyError(created.error()));
    if (auto removed = removeOldBundle(config); !removed)
        return removed;
    const auto bundleURL = m_generator.generate(config, folder);
    if (!bundleURL)
        return tl::unexpected(bundleURL.error());
    const QString version = m_versions.runnerTemplateVersion();
    AppConfiguration updated = config;
    updated.runnerVersion = version;
    m_store.updateConfiguration(updated);
    printDiagnostics(u"[AppLifecycle] Generated successfully at "_s + *bundleURL + u" (Version "_s + version + u")"_s);
    checkRunningApps();
    return {};
}

void AppLifecycleManager::prepareGeneration(const AppConfiguration& config) {
    m_generator.prepare(config);
}

tl::expected<void, AnyError> AppLifecycleManager::removeOldBundle(const AppConfiguration& config) {
    const QString bundleURL = getBundleURL(config);
    if (!m_files.exists(bundleURL))
        return {};
    if (runningAppIds().contains(config.id)) {
        quit(config);
        m_scheduler.sleep(pauseAfterQuit);  // a fixed pause: whether the app really ended is not looked at
    }
    if (const auto removed = m_files.remove(bundleURL); !removed)
        return tl::unexpected(AnyError(removed.error()));
    return {};
}

tl::expected<void, AnyError> AppLifecycleManager::openImportSession(const AppConfiguration& config,
                                                                    const std::optional<QString>& source) {
    if (!m_files.exists(getBundleURL(config))) {
        if (auto generated = generate(config); !generated)
            return generated;
    }
    const QString url = importSessionURL(config, source);
    if (!QUrl(url, QUrl::StrictMode).isValid())
        return launchInstead(config);
    if (m_workspace.open(url))
        return {};
    if (auto generated = generate(config); !generated)
        return generated;
    if (m_workspace.open(url))
        return {};
    return launchInstead(config);
}

tl::expected<void, AnyError> AppLifecycleManager::launchInstead(const AppConfiguration& config) {
    if (const auto launched = launch(config); !launched)
        return tl::unexpected(AnyError(launched.error()));
    return {};
}

}  // namespace wrapio
