#include "Platform/Linux/LinuxWorkspace.h"

#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/ProcessHandle.h"
#include "Platform/Linux/ProcessList.h"
#include "Platform/Linux/ProcessStart.h"
#include "Platform/PropertyList.h"
#include "Utilities/ApplicationIdentity.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>
#include <csignal>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestPropertyList = 1024LL * 1024;
constexpr double openWithinSeconds = 10;

std::optional<PropertyList> infoOf(const QString& bundlePath) {
    const auto bytes = LinuxFileSystem().read(bundlePath + u"/Contents/Info.plist"_s, largestPropertyList);
    return bytes ? PropertyList::parse(*bytes) : std::nullopt;
}

tl::expected<QString, LaunchError> executableOf(const QString& bundlePath) {
    const auto info = infoOf(bundlePath);
    if (!info)
        return tl::unexpected(LaunchError{bundlePath, u"it has no readable Contents/Info.plist"_s});
    const QString name = info->text("CFBundleExecutable").value_or(QString());
    if (name.isEmpty() || name.contains(u'/') || name == u"." || name == u"..")
        return tl::unexpected(LaunchError{bundlePath, u"its Info.plist names no executable"_s});
    return bundlePath + u"/Contents/Linux/"_s + name;
}

QString busNameOf(const QString& bundlePath) {
    const auto info = infoOf(bundlePath);
    const auto identifier = info ? info->text("CFBundleIdentifier") : std::nullopt;
    return identifier ? QString::fromStdString(desktopId(identifier->toStdString())) : QString();
}

/// What a new process finds: the caller's display, and a token only when it is meant for that process.
EnvironmentChanges environmentWith(const QByteArray& token) {
    const CallerPointer caller = CallerScope::current();
    EnvironmentChanges changes = caller ? caller->environment : EnvironmentChanges();
    const auto value = token.isEmpty() ? std::nullopt : std::optional(token);
    changes.emplace_back("XDG_ACTIVATION_TOKEN", value);
    changes.emplace_back("DESKTOP_STARTUP_ID", value);
    return changes;
}

/// What has no scheme would be taken for a file or for an option.
bool hasScheme(const QString& url) {
    static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]*:."_s);
    return scheme.match(url).hasMatch();
}

bool isOpened(const QString& opener, const QStringList& arguments, const EnvironmentChanges& changes) {
    return runProcess(opener, arguments, openWithinSeconds, changes) == 0;
}

}  // namespace

LinuxWorkspace::LinuxWorkspace(Directories directories, Scheduler& scheduler, RegisteredBundle registeredBundle)
    : m_directories(std::move(directories))
    , m_scheduler(scheduler)
    , m_registeredBundle(std::move(registeredBundle))
    , m_activationToken(qgetenv("XDG_ACTIVATION_TOKEN")) {
    if (m_activationToken.isEmpty())
        m_activationToken = qgetenv("DESKTOP_STARTUP_ID");
}

std::vector<RunningApplication> LinuxWorkspace::runningApplications() const {
    const QString resolved = resolvedApps();
    std::vector<RunningApplication> applications;
    for (const BundleProcess& process : bundleProcesses())
        applications.push_back({process.processIdentifier, asConfigured(process.bundlePath, resolved)});
    return applications;
}

void LinuxWorkspace::openApplication(const QString& bundleURL, const OpenConfiguration& configuration,
                                     std::function<void(std::optional<LaunchError>)> completion) {
    const QString bundlePath = QDir::cleanPath(bundleURL);
    const auto applications = runningApplications();
    const auto running =
        std::find_if(applications.begin(), applications.end(), [&bundlePath](const RunningApplication& application) {
            return application.bundleURL == bundlePath;
        });
    std::optional<LaunchError> failure;
    if (running == applications.end())
        failure = start(bundlePath, configuration.activates);
    else if (configuration.activates)
        activate(*running, ActivationOptions::activateIgnoringOtherApps);
    m_scheduler.async([completion = std::move(completion), failure = std::move(failure)] { completion(failure); });
}

void LinuxWorkspace::activate(const RunningApplication& application, ActivationOptions options) {
    Q_UNUSED(options)
    const QString name = application.bundleURL ? busNameOf(*application.bundleURL) : QString();
    m_activator.activate(name, application.processIdentifier, takeToken());
}

bool LinuxWorkspace::terminate(const RunningApplication& application) {
    return deliver(application, SIGTERM);
}

bool LinuxWorkspace::forceTerminate(const RunningApplication& application) {
    return deliver(application, SIGKILL);
}

bool LinuxWorkspace::open(const QString& url) {
    if (!hasScheme(url))
        return false;
    const EnvironmentChanges changes = environmentWith(takeToken());
    if (const QString gio = QStandardPaths::findExecutable(u"gio"_s); !gio.isEmpty())
        return isOpened(gio, {u"open"_s, url}, changes);
    // This one takes a browser for schemes that nobody has registered for, and reports success.
    const bool isWeb =
        url.startsWith(u"http://"_s, Qt::CaseInsensitive) || url.startsWith(u"https://"_s, Qt::CaseInsensitive);
    const QString xdgOpen = QStandardPaths::findExecutable(u"xdg-open"_s);
    return isWeb && !xdgOpen.isEmpty() && isOpened(xdgOpen, {url}, changes);
}

std::optional<QString> LinuxWorkspace::urlForApplication(const QString& bundleIdentifier) const {
    return m_registeredBundle(bundleIdentifier);
}

/// The kernel resolves the links in a program's path. Where the folder of the apps lies behind one, bundles are named
/// by the way that everybody else takes.
QString LinuxWorkspace::asConfigured(const QString& bundlePath, const QString& resolvedApps) const {
    if (resolvedApps.isEmpty() || !bundlePath.startsWith(resolvedApps + u'/'))
        return bundlePath;
    return m_directories.generatedApps() + bundlePath.mid(resolvedApps.size());
}

QString LinuxWorkspace::resolvedApps() const {
    return QFileInfo(m_directories.generatedApps()).canonicalFilePath();
}

bool LinuxWorkspace::deliver(const RunningApplication& application, int signal) const {
    // The handle stays with this process; its number may belong to another one soon.
    const auto handle = posix::openProcess(static_cast<pid_t>(application.processIdentifier));
    if (!application.bundleURL || !handle.isOpen())
        return false;
    const auto bundle = bundleOfProcess(application.processIdentifier);
    if (!bundle || asConfigured(*bundle, resolvedApps()) != QDir::cleanPath(*application.bundleURL))
        return false;
    return posix::sendSignal(handle, signal);
}

/// A caller's token is for the apps that the caller opens, ours for those that we do.
QByteArray LinuxWorkspace::takeToken() {
    const CallerPointer caller = CallerScope::current();
    return caller ? caller->activationToken : std::exchange(m_activationToken, {});
}

std::optional<LaunchError> LinuxWorkspace::start(const QString& bundlePath, bool activates) {
    const auto executable = executableOf(bundlePath);
    if (!executable)
        return executable.error();
    const QByteArray token = activates ? takeToken() : QByteArray();
    const auto process = startProcess(*executable, {}, m_directories.home, environmentWith(token));
    if (!process)
        return process.error();
    m_children.adopt(*process);
    return std::nullopt;
}

}  // namespace wrapio
