// What registration needs to know about a bundle. A plain value; any thread.
#pragma once

#include "Platform/Linux/ToolFailure.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace wrapio {

struct BundleInfo {
    QString path;                     ///< normalised and absolute
    QString desktopId;                ///< made from the bundle identifier, and valid
    QString name;                     ///< for people; never empty
    QString executable;               ///< absolute path
    std::vector<QString> schemes;     ///< the app's own URL schemes; others are not taken over
    std::optional<QString> recordId;  ///< of the record that the bundle was made from, by its scheme
    QByteArray icns;                  ///< of the icon; empty when there is none

    /// Fails when the bundle has no readable Info.plist with an identifier that the desktop can use, or no executable.
    [[nodiscard]] static ToolOutcome<BundleInfo> read(const QString& bundlePath);
};

/// `path` made absolute, without "." and ".." and without a slash at its end.
[[nodiscard]] QString normalisedPath(const QString& path);

}  // namespace wrapio
