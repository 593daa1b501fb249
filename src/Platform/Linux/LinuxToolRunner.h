// Answers in process the tools that the services call by path. Any thread.
#pragma once

#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/ZipArchive.h"
#include "Platform/ToolRunner.h"

namespace wrapio {

/// Knows exactly these command lines:
///
///     codesign --force --deep --sign - BUNDLE     seals a bundle
///     iconutil -c icns SET -o FILE                makes an icon file
///     lsregister -f BUNDLE | -u BUNDLE            registers a bundle with the desktop, or takes that back
///     ditto -c -k --sequesterRsrc FOLDER ZIP      packs the contents of a folder
///     ditto -x -k ZIP FOLDER                      unpacks an archive into a folder
///
/// Failures have status 1 and one line on standard error; other arguments have status 64 and the usage.
class LinuxToolRunner : public ToolRunner {
public:
    /// `registration` must outlive this.
    explicit LinuxToolRunner(DesktopRegistration& registration, const ZipLimits& limits = {});

    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] tl::expected<ToolResult, LaunchError> run(const QString& path, const QStringList& arguments) override;

private:
    [[nodiscard]] ToolResult runLsregister(const QStringList& arguments);
    [[nodiscard]] ToolResult runDitto(const QStringList& arguments) const;

    DesktopRegistration& m_registration;
    ZipLimits m_limits;
};

}  // namespace wrapio
