// What the doctor asks of the system.
#pragma once

#include "Platform/FileSystem.h"

#include <QString>

#include <vector>

namespace wrapio {

enum class Finding { fine, missing, damaged };

struct SealReport {
    Finding finding = Finding::fine;
    QString detail;  ///< what is wrong, in words
};

/// One of our entries among the desktop's applications.
struct Registration {
    QString identifier;  ///< the desktop id
    QString bundlePath;  ///< where it points
};

/// One thing of the surroundings, such as the display or the page engine.
struct SurroundingsCheck {
    QString name;
    bool usable = false;
    QString detail;
    QString remedy;  ///< what to do when it is not usable
};

class SystemHealth {
public:
    SystemHealth() = default;
    virtual ~SystemHealth() = default;
    SystemHealth(const SystemHealth&) = delete;
    SystemHealth& operator=(const SystemHealth&) = delete;

    /// Compares a bundle with its seal.
    [[nodiscard]] virtual SealReport verifySeal(const QString& bundlePath) const = 0;
    /// All of our entries, those of bundles that are gone included.
    [[nodiscard]] virtual std::vector<Registration> registrations() const = 0;
    /// Takes an entry and its icons away.
    [[nodiscard]] virtual FileResult<void> removeRegistration(const QString& identifier) = 0;
    /// Display, session bus, tray, page engine, and the tools that registration needs.
    [[nodiscard]] virtual std::vector<SurroundingsCheck> surroundings() const = 0;
};

}  // namespace wrapio
