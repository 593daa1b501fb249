// Applications and addresses, as a Linux desktop knows them.
#pragma once

#include "Platform/Directories.h"
#include "Platform/Linux/ApplicationActivator.h"
#include "Platform/Linux/ChildReaper.h"
#include "Platform/Scheduler.h"
#include "Platform/Workspace.h"

#include <QByteArray>

namespace wrapio {

/// An application is a process of this user that runs a program inside a bundle's Contents/Linux. What is started for
/// another process's command finds that process's display. Main thread.
class LinuxWorkspace final : public Workspace {
public:
    /// Answers the bundle that the desktop has registered for a bundle identifier.
    using RegisteredBundle = std::function<std::optional<QString>(const QString& bundleIdentifier)>;

    /// `scheduler` must outlive this.
    LinuxWorkspace(Directories directories, Scheduler& scheduler, RegisteredBundle registeredBundle);

    /// Sets what the desktop gave this program so that the next application that it opens or activates may come to the
    /// front. Used once.
    void setActivationToken(const QByteArray& token) { m_activationToken = token; }

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    /// Starts the executable that the bundle's Info.plist names, in a session of its own and in the home folder.
    void openApplication(const QString& bundleURL, const OpenConfiguration& configuration,
                         std::function<void(std::optional<LaunchError>)> completion) override;
    /// By the session bus, and on X11 through the window manager too, since that may hold back what raises itself.
    void activate(const RunningApplication& application, ActivationOptions options) override;
    /// False also when the process is not, or not any more, the application of that bundle.
    [[nodiscard]] bool terminate(const RunningApplication& application) override;
    bool forceTerminate(const RunningApplication& application) override;
    /// Waits for the desktop's answer, 10 seconds at most. `url` must be an address with a scheme.
    [[nodiscard]] bool open(const QString& url) override;
    [[nodiscard]] std::optional<QString> urlForApplication(const QString& bundleIdentifier) const override;

private:
    [[nodiscard]] QString asConfigured(const QString& bundlePath, const QString& resolvedApps) const;
    [[nodiscard]] QString resolvedApps() const;
    [[nodiscard]] bool deliver(const RunningApplication& application, int signal) const;
    [[nodiscard]] QByteArray takeToken();
    [[nodiscard]] std::optional<LaunchError> start(const QString& bundlePath, bool activates);

    Directories m_directories;
    Scheduler& m_scheduler;
    RegisteredBundle m_registeredBundle;
    ChildReaper m_children;
    ApplicationActivator m_activator;
    QByteArray m_activationToken;
};

}  // namespace wrapio
