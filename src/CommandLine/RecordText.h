// How the command line shows a record.
#pragma once

#include "CommandLine/CommandServices.h"
#include "Models/ConfigurationCoding.h"

namespace wrapio {

/// What runs and which template there is, found out once for any number of records.
struct Circumstances {
    Circumstances(const Catalogue& catalogue, const VersionManager& versions);

    const AppLifecycleManager& lifecycle;
    QSet<QString> runningBundles;
    QString templateVersion;
};

/// The catalogue's JSON form of the record, and displayName, bundleIdentifier, bundlePath, isRunning and isOutdated.
[[nodiscard]] Json recordJson(const AppConfiguration& config, const Circumstances& now);

/// The same for people, a line for each value that is set.
[[nodiscard]] QString recordText(const AppConfiguration& config, const Circumstances& now);

/// All of `apps` as a table.
[[nodiscard]] QString tableText(const std::vector<AppConfiguration>& apps, const Circumstances& now);

/// `text` fit to be one line of a terminal: control characters are left out.
[[nodiscard]] QString printable(const QString& text);

}  // namespace wrapio
