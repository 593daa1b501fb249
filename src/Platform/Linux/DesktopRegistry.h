// Reads which generated apps the desktop knows. Keeps no state, so that it always tells what the disk says; any thread.
#pragma once

#include "Platform/SystemHealth.h"

#include <QString>

#include <optional>
#include <vector>

namespace wrapio {

class DesktopRegistry {
public:
    /// `dataHome` is the user's data folder ($XDG_DATA_HOME).
    explicit DesktopRegistry(const QString& dataHome)
        : m_applications(dataHome + QStringLiteral("/applications")) {}

    /// The folder of the entries.
    [[nodiscard]] const QString& applicationsFolder() const { return m_applications; }
    /// Where the entry of a desktop id is, or would be.
    [[nodiscard]] QString entryPath(const QString& desktopId) const;

    /// All entries of ours, sorted by desktop id. Those whose bundle is gone are among them.
    [[nodiscard]] std::vector<Registration> registrations() const;
    /// Where the entry of this desktop id points, when there is one of ours. The bundle may be gone.
    [[nodiscard]] std::optional<QString> bundlePathOfEntry(const QString& desktopId) const;
    /// The same for the desktop id of a bundle identifier.
    [[nodiscard]] std::optional<QString> bundlePath(const QString& bundleIdentifier) const;

private:
    QString m_applications;
};

}  // namespace wrapio
