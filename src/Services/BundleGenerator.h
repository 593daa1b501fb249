// Turns one configuration into a real application bundle.
#pragma once

#include "Models/ConfigurationCoding.h"
#include "Platform/AnyError.h"
#include "Platform/FileSystem.h"
#include "Platform/Resources.h"
#include "Platform/ToolRunner.h"
#include "Services/FaviconService.h"
#include "Services/IconService.h"
#include "Services/LaunchServicesManager.h"
#include "Services/VersionManager.h"

#include <tl/expected.hpp>

#include <variant>

namespace wrapio {

class GeneratorError {
public:
    struct DirectoryCreationFailed {
        QString underlying;
        bool operator==(const DirectoryCreationFailed&) const = default;
    };
    struct CopyFailed {
        QString underlying;
        bool operator==(const CopyFailed&) const = default;
    };
    struct DestinationExists {
        bool operator==(const DestinationExists&) const = default;
    };
    struct InvalidAppName {
        bool operator==(const InvalidAppName&) const = default;
    };
    struct TemplateNotFound {
        bool operator==(const TemplateNotFound&) const = default;
    };
    struct ConfigurationError {
        bool operator==(const ConfigurationError&) const = default;
    };
    using Case = std::variant<DirectoryCreationFailed, CopyFailed, DestinationExists, InvalidAppName, TemplateNotFound,
                              ConfigurationError>;

    static GeneratorError directoryCreationFailed(const QString& e) {
        return GeneratorError(DirectoryCreationFailed{e});
    }
    static GeneratorError copyFailed(const QString& e) { return GeneratorError(CopyFailed{e}); }
    static GeneratorError destinationExists() { return GeneratorError(DestinationExists{}); }
    static GeneratorError invalidAppName() { return GeneratorError(InvalidAppName{}); }
    static GeneratorError templateNotFound() { return GeneratorError(TemplateNotFound{}); }
    static GeneratorError configurationError() { return GeneratorError(ConfigurationError{}); }

    [[nodiscard]] const Case& value() const { return m_value; }
    /// The generic description: these errors have no text of their own for people.
    [[nodiscard]] QString description() const;
    bool operator==(const GeneratorError&) const = default;

private:
    explicit GeneratorError(Case value)
        : m_value(std::move(value)) {}
    Case m_value;
};

/// The signing tool ended with a status other than 0.
struct CodeSigningError {
    QString domain;  ///< "BundleGenerator"
    int code = 0;    ///< the tool's exit status
    QString localizedDescription;
    QString failureReason;

    [[nodiscard]] const QString& description() const { return localizedDescription; }
    bool operator==(const CodeSigningError&) const = default;
};

/// A value that has no form in the file into which it belongs.
struct SerializationError {
    QString reason;

    [[nodiscard]] const QString& description() const { return reason; }
    bool operator==(const SerializationError&) const = default;
};

/// What the runner of `app` reads: the object in its bundle's config.json. `runnerVersion` is that of the template the
/// bundle is made from, never the record's own. Nothing when the app has no address or a number has no JSON form.
[[nodiscard]] std::optional<Json> runnerConfiguration(const AppConfiguration& app, const QString& runnerVersion);

/// Two generations into one destination at once are not guarded against.
class BundleGenerator {
public:
    BundleGenerator(ToolRunner& tools, FileSystem& files, const Resources& resources, FaviconService& favicons,
                    IconService& icons, LaunchServicesManager& launchServices, const VersionManager& versions);

    /// Makes the bundle of `app` in the folder `directory`, over one that is there, and answers its path. Blocks until
    /// it is copied, personalised, signed and registered. Fails with a GeneratorError, CodeSigningError,
    /// SerializationError, IconServiceError, FileError or LaunchError; a half-made bundle is removed then.
    [[nodiscard]] tl::expected<QString, AnyError> generate(const AppConfiguration& app, const QString& directory);
    /// Starts what is slow about an app that is generated next, on another thread: the pictures of its icon.
    void prepare(const AppConfiguration& app);

private:
    [[nodiscard]] tl::expected<void, AnyError> personalise(const AppConfiguration& app, const QString& bundleURL);
    [[nodiscard]] tl::expected<void, AnyError> writeInfoPlist(const AppConfiguration& app, const QString& bundleURL);
    [[nodiscard]] tl::expected<void, AnyError> writeConfig(const AppConfiguration& app, const QString& bundleURL);
    [[nodiscard]] tl::expected<void, AnyError> writeIcon(const AppConfiguration& app, const QString& bundleURL);
    [[nodiscard]] tl::expected<void, AnyError> adHocSign(const QString& bundleURL);

    ToolRunner& m_tools;
    FileSystem& m_files;
    const Resources& m_resources;
    FaviconService& m_favicons;
    IconService& m_icons;
    LaunchServicesManager& m_launchServices;
    const VersionManager& m_versions;
};

}  // namespace wrapio
