// How bindings name an app's saved icon.
#pragma once

#include "Models/AppConfiguration.h"

#include <QString>

namespace wrapio {

/// The address under which the image provider gives an app's saved icon. Another `revision` is another address, so that
/// a changed icon is drawn anew.
[[nodiscard]] inline QString appIconUrl(const QUuid& id, quint64 revision) {
    return QStringLiteral("image://appicon/%1?%2").arg(canonicalText(id)).arg(revision);
}

}  // namespace wrapio
