// Makes bundles known to the desktop: an entry among the applications, pictures in the icon theme, and the handler of
// the app's own URL scheme. Each file is replaced whole, so readers never meet a half-written one. Any thread.
#pragma once

#include "Platform/Linux/BundleInfo.h"
#include "Platform/Linux/DesktopIcons.h"
#include "Platform/Linux/DesktopRegistry.h"
#include "Platform/Linux/ToolFailure.h"
#include "Platform/ToolRunner.h"

#include <QString>

#include <optional>

namespace wrapio {

class DesktopRegistration {
public:
    /// `dataHome` is the user's data folder ($XDG_DATA_HOME); `managerPath` the program that edits an app, if known;
    /// `processes` starts the desktop's own tools and must outlive this.
    DesktopRegistration(const QString& dataHome, std::optional<QString> managerPath, ToolRunner& processes);

    /// Registers a bundle, over an older registration of its identifier or of its place. Fails when the bundle is not
    /// one (see BundleInfo), when a file cannot be written, or when the desktop's tool reports a failure.
    [[nodiscard]] ToolOutcome<void> registerBundle(const QString& bundlePath);
    /// Takes the registration of the bundle at this place away, whether or not it is still there. A place that is not
    /// registered is fine; an identifier that another bundle has taken over stays with that one.
    [[nodiscard]] ToolOutcome<void> unregisterBundle(const QString& bundlePath);
    /// Takes the entry of ours with this desktop id away, and its pictures; none being there is fine.
    [[nodiscard]] FileResult<void> removeRegistration(const QString& desktopId);

    [[nodiscard]] const DesktopRegistry& registry() const { return m_registry; }

private:
    [[nodiscard]] FileResult<void> write(const BundleInfo& info);
    [[nodiscard]] FileResult<void> removeFiles(const QString& desktopId);
    [[nodiscard]] FileResult<void> removeEntry(const QString& desktopId);
    [[nodiscard]] FileResult<void> removeEntriesOf(const QString& bundlePath, const QString& exceptId);
    [[nodiscard]] ToolOutcome<void> updateDatabase();

    DesktopRegistry m_registry;
    DesktopIcons m_icons;
    std::optional<QString> m_managerPath;
    ToolRunner& m_processes;
};

}  // namespace wrapio
