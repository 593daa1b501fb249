// What the doctor asks of a Linux desktop.
#pragma once

#include "Platform/SystemHealth.h"

#include <QStringList>

#include <functional>

namespace wrapio {

/// Who answers for bundles and registrations.
struct BundleHealth {
    std::function<SealReport(const QString& bundlePath)> verifySeal;
    std::function<std::vector<Registration>()> registrations;
    std::function<FileResult<void>(const QString& identifier)> removeRegistration;
};

/// Main thread. surroundings() starts a few short programs, each of which has a limit of a few seconds.
class LinuxSystemHealth final : public SystemHealth {
public:
    /// Where programs and libraries are looked for.
    struct Places {
        QStringList programs;   ///< folders; those of PATH when empty
        QStringList libraries;  ///< folders; those of the system when empty
    };

    explicit LinuxSystemHealth(BundleHealth bundles)
        : LinuxSystemHealth(std::move(bundles), Places()) {}
    LinuxSystemHealth(BundleHealth bundles, Places places)
        : m_bundles(std::move(bundles))
        , m_places(std::move(places)) {}

    [[nodiscard]] SealReport verifySeal(const QString& bundlePath) const override;
    [[nodiscard]] std::vector<Registration> registrations() const override;
    [[nodiscard]] FileResult<void> removeRegistration(const QString& identifier) override;
    /// "Display", "Session bus", "Status items", "Page engine", "Page engine sandbox", "Page engine bus proxy",
    /// "Registration of apps" and "Opening of addresses", in this order.
    [[nodiscard]] std::vector<SurroundingsCheck> surroundings() const override;

private:
    [[nodiscard]] SurroundingsCheck checkPageEngine() const;
    [[nodiscard]] SurroundingsCheck checkSandbox() const;
    [[nodiscard]] SurroundingsCheck checkProgram(const QString& name, const QString& program,
                                                 const QString& package) const;
    [[nodiscard]] QString findProgram(const QString& program) const;

    BundleHealth m_bundles;
    Places m_places;
};

}  // namespace wrapio
