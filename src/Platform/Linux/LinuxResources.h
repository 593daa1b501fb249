// What is installed beside the program.
#pragma once

#include "Platform/Resources.h"

namespace wrapio {

/// The template bundle lies in the share folder itself, pictures in its folders "templates", "icons" and "symbols" as
/// SVG or PNG.
/// Holds no state; any thread for path(), a QGuiApplication for image().
class LinuxResources final : public Resources {
public:
    /// `shareFolder` is an absolute path.
    explicit LinuxResources(QString shareFolder)
        : m_shareFolder(std::move(shareFolder)) {}

    /// The share folder of the program at `executable`: PREFIX/bin/NAME has PREFIX/share/wrapio.
    [[nodiscard]] static QString shareFolderOf(const QString& executable);
    /// The absolute path of this program, links resolved.
    [[nodiscard]] static QString thisExecutable();

    [[nodiscard]] std::optional<QString> path(const QString& name, const QString& extension) const override;
    /// Drawings come as large as fits into 512 × 512 pixels, other pictures as they are. Nothing when the file is
    /// damaged.
    [[nodiscard]] std::optional<QImage> image(const QString& name) const override;

private:
    QString m_shareFolder;
};

}  // namespace wrapio
