// Where this user's files live.
#pragma once

#include <QString>

#include <optional>

namespace wrapio {

/// Absolute paths without a slash at the end.
struct Directories {
    QString home;
    std::optional<QString> applicationSupport;  ///< site icons and other lasting data of all programs
    std::optional<QString> caches;
    QString configuration;  ///< the defaults of this program
    QString temporary;

    /// The folder of the generated apps.
    [[nodiscard]] QString generatedApps() const { return home + QStringLiteral("/Applications/Wrapio Apps"); }
};

}  // namespace wrapio
