// Applications and addresses, as the desktop knows them.
#pragma once

#include "Platform/ToolRunner.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace wrapio {

struct RunningApplication {
    qint64 processIdentifier = 0;
    std::optional<QString> bundleURL;  ///< normalised absolute path of its bundle, when it runs from one

    bool operator==(const RunningApplication&) const = default;
};

struct OpenConfiguration {
    bool activates = false;  ///< bring the application to the front once it has started
};

/// Raw values are the platform's own.
enum class ActivationOptions { activateIgnoringOtherApps = 2 };

/// Used from the main thread.
class Workspace {
public:
    Workspace() = default;
    virtual ~Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    /// This user's running applications, oldest first.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;
    /// Starts the application of a bundle, or brings it to the front when it runs. Returns at once; `completion` comes
    /// later, on the main thread, with the failure if there was one.
    virtual void openApplication(const QString& bundleURL, const OpenConfiguration& configuration,
                                 std::function<void(std::optional<LaunchError>)> completion) = 0;
    /// Brings a running application to the front.
    virtual void activate(const RunningApplication& application, ActivationOptions options) = 0;
    /// Asks an application to end; false when the request could not be delivered.
    [[nodiscard]] virtual bool terminate(const RunningApplication& application) = 0;
    /// Ends an application; false when that could not be done.
    virtual bool forceTerminate(const RunningApplication& application) = 0;
    /// Hands an address to the program that is registered for it; false when there is none or it refused.
    [[nodiscard]] virtual bool open(const QString& url) = 0;
    /// The bundle of the registered application with this bundle identifier.
    [[nodiscard]] virtual std::optional<QString> urlForApplication(const QString& bundleIdentifier) const = 0;
};

}  // namespace wrapio
