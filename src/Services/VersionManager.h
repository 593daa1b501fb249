// The version of the runner template, and how versions compare.
#pragma once

#include "Platform/FileSystem.h"
#include "Platform/Resources.h"

#include <QString>

#include <optional>

namespace wrapio {

/// Keeps no state: the version is read on every request.
class VersionManager {
public:
    VersionManager(const Resources& resources, const FileSystem& files)
        : m_resources(resources)
        , m_files(files) {}

    /// The version of the template among the program's resources; "1.0.0" when there is none to be read.
    [[nodiscard]] QString runnerTemplateVersion() const;

    /// True when an app that the template `runnerVersion` made would be made anew by now; of an app whose template is
    /// not known that is assumed.
    [[nodiscard]] bool isOutdated(const std::optional<QString>& runnerVersion) const {
        return isOutdated(runnerVersion, runnerTemplateVersion());
    }
    /// The same for many apps, with the template's version asked once.
    [[nodiscard]] static bool isOutdated(const std::optional<QString>& runnerVersion, const QString& templateVersion) {
        return !runnerVersion || isVersion(templateVersion, *runnerVersion);
    }

    /// True when `version` is strictly newer than `other`, compared number by number.
    [[nodiscard]] static bool isVersion(const QString& version, const QString& other);

private:
    const Resources& m_resources;
    const FileSystem& m_files;
};

}  // namespace wrapio
