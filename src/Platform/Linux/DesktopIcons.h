// The pictures of a generated app in the user's icon theme. Stateless; any thread.
#pragma once

#include "Platform/FileSystem.h"

#include <QByteArray>
#include <QString>

namespace wrapio {

class DesktopIcons {
public:
    /// `dataHome` is the user's data folder ($XDG_DATA_HOME).
    explicit DesktopIcons(const QString& dataHome)
        : m_theme(dataHome + QStringLiteral("/icons/hicolor")) {}

    /// Writes the pictures of `icns` in the sizes that desktops look for, under the name of the desktop id; older ones
    /// go. A size that the container lacks is drawn from the next larger one, or from the largest. Bytes that are no
    /// container with PNG pictures leave no picture.
    [[nodiscard]] FileResult<void> install(const QString& desktopId, const QByteArray& icns);
    /// Takes the pictures away; none being there is fine.
    [[nodiscard]] FileResult<void> remove(const QString& desktopId);

private:
    [[nodiscard]] QString pathOf(const QString& desktopId, int edge) const;
    void touchTheme() const;

    QString m_theme;
};

}  // namespace wrapio
