// A desktop of made-up processes and registrations.
#pragma once

#include "Platform/Workspace.h"

#include <QStringList>

#include <map>
#include <set>

namespace wrapio {

class FakeWorkspace final : public Workspace {
public:
    std::vector<RunningApplication> runningApplications() const override { return running; }
    void openApplication(const QString& bundleURL, const OpenConfiguration& configuration,
                         std::function<void(std::optional<LaunchError>)> completion) override;
    void activate(const RunningApplication& application, ActivationOptions options) override;
    bool terminate(const RunningApplication& application) override;
    bool forceTerminate(const RunningApplication& application) override;
    bool open(const QString& url) override;
    std::optional<QString> urlForApplication(const QString& bundleIdentifier) const override;

    /// Adds a running application and answers it.
    RunningApplication start(const QString& bundleURL);

    std::vector<RunningApplication> running;
    std::map<QString, QString> registered;       ///< bundle identifier → bundle
    std::set<qint64> deafProcesses;              ///< those that cannot be asked to end
    std::set<qint64> slowProcesses;              ///< those that agree to end, and do not do so
    std::vector<bool> openAnswers;               ///< taken one by one by open(); true when used up
    std::optional<LaunchError> launchFailure;    ///< how openApplication() ends

    /// What was asked, in order: "open-application PATH", "activate PID OPTIONS", "terminate PID",
    /// "force-terminate PID", "open URL".
    QStringList log;

private:
    void end(const RunningApplication& application);
    qint64 m_lastProcess = 1000;
};

}  // namespace wrapio
