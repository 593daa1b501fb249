// Keeps the system's registry of applications in step with the generated apps.
#pragma once

#include "Models/AppConfiguration.h"
#include "Platform/AnyError.h"
#include "Platform/Directories.h"
#include "Platform/FileSystem.h"
#include "Platform/ToolRunner.h"
#include "Platform/Workspace.h"
#include "Utilities/SharedInstance.h"

#include <variant>
#include <vector>

#include <tl/expected.hpp>

namespace wrapio {

/// Whether every configured app has a registered bundle.
class HealthStatus {
public:
    struct Warning {
        QString text;  ///< the problems, one or two
        bool operator==(const Warning&) const = default;
    };
    struct Error {
        QString text;
        bool operator==(const Error&) const = default;
    };
    struct Healthy {
        bool operator==(const Healthy&) const = default;
    };

    static HealthStatus warning(const QString& text) { return HealthStatus(Warning{text}); }
    static HealthStatus error(const QString& text) { return HealthStatus(Error{text}); }
    static HealthStatus healthy() { return HealthStatus(Healthy{}); }

    [[nodiscard]] const std::variant<Warning, Error, Healthy>& value() const { return m_value; }
    bool operator==(const HealthStatus&) const = default;

private:
    explicit HealthStatus(std::variant<Warning, Error, Healthy> value) : m_value(std::move(value)) {}
    std::variant<Warning, Error, Healthy> m_value;
};

class LaunchServicesError {
public:
    struct CommandFailed {
        QString output;
        bool operator==(const CommandFailed&) const = default;
    };
    struct InvalidBundle {
        bool operator==(const InvalidBundle&) const = default;
    };
    struct BundleNotFound {
        bool operator==(const BundleNotFound&) const = default;
    };
    struct LsregisterNotFound {
        bool operator==(const LsregisterNotFound&) const = default;
    };
    struct DirectoryNotFound {
        bool operator==(const DirectoryNotFound&) const = default;
    };
    using Case = std::variant<CommandFailed, InvalidBundle, BundleNotFound, LsregisterNotFound, DirectoryNotFound>;

    static LaunchServicesError commandFailed(const QString& output) { return LaunchServicesError(CommandFailed{output}); }
    static LaunchServicesError invalidBundle() { return LaunchServicesError(InvalidBundle{}); }
    static LaunchServicesError bundleNotFound() { return LaunchServicesError(BundleNotFound{}); }
    static LaunchServicesError lsregisterNotFound() { return LaunchServicesError(LsregisterNotFound{}); }
    static LaunchServicesError directoryNotFound() { return LaunchServicesError(DirectoryNotFound{}); }

    [[nodiscard]] const Case& value() const { return m_value; }
    [[nodiscard]] QString description() const;
    bool operator==(const LaunchServicesError&) const = default;

private:
    explicit LaunchServicesError(Case value) : m_value(std::move(value)) {}
    Case m_value;
};

/// Synchronous; operations that run the tool block their caller until it ends. Keeps no state.
class LaunchServicesManager : public SharedInstance<LaunchServicesManager> {
public:
    LaunchServicesManager(ToolRunner& tools, FileSystem& files, Workspace& workspace, Directories directories);

    /// Registers a bundle anew. Fails with a LaunchServicesError or a LaunchError.
    [[nodiscard]] tl::expected<void, AnyError> registerApp(const QString& bundleURL);
    /// Takes a bundle's registration away; a bundle that is gone is skipped. Fails as registerApp() does.
    [[nodiscard]] tl::expected<void, AnyError> unregisterApp(const QString& bundleURL);
    /// Takes the registration of a bundle identifier away, wherever its bundle is. Fails as registerApp() does.
    [[nodiscard]] tl::expected<void, AnyError> unregisterAppByBundleID(const QString& bundleIdentifier);

    /// Whether each of `configurations` has a bundle and is registered.
    [[nodiscard]] HealthStatus checkHealth(const std::vector<AppConfiguration>& configurations);
    /// Those of `configurations` whose bundles are missing, in the given order.
    [[nodiscard]] std::vector<AppConfiguration>
    findOrphanedConfigs(const std::vector<AppConfiguration>& configurations);
    /// Takes the registrations of those away.
    void cleanupOrphanedRegistrations(const std::vector<AppConfiguration>& configurations);

    const QString lsregisterPath = QStringLiteral("/System/Library/Frameworks/CoreServices.framework/Frameworks/"
                                                  "LaunchServices.framework/Support/lsregister");

private:
    [[nodiscard]] tl::expected<void, AnyError> executeLSRegisterAsync(const QStringList& arguments);
    [[nodiscard]] FileResult<QString> getAppsDirectory();

    ToolRunner& m_tools;
    FileSystem& m_files;
    Workspace& m_workspace;
    Directories m_directories;
};

}  // namespace wrapio
