// How things move, and for how long.
#pragma once

#include "Design/Spring.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace wrapio {

/// Durations are in milliseconds.
class Animations : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(wrapio::Spring snappy READ snappy CONSTANT)
    Q_PROPERTY(wrapio::Spring slowSpring READ slowSpring CONSTANT)
    Q_PROPERTY(int press MEMBER press CONSTANT)
    Q_PROPERTY(int fade MEMBER fade CONSTANT)
    Q_PROPERTY(int pulse MEMBER pulse CONSTANT)
    Q_PROPERTY(int spin MEMBER spin CONSTANT)
    Q_PROPERTY(int toolTipDelay MEMBER toolTipDelay CONSTANT)

public:
    using QObject::QObject;

    /// Cards that make room, hover, sheets that come: short, with a touch of overshoot.
    [[nodiscard]] static const Spring& snappy();
    /// Large things that change their place without haste.
    [[nodiscard]] static const Spring& slowSpring();

    int press = 100;         ///< a button that yields
    int fade = 150;          ///< something that comes or goes, and changes of colour
    int pulse = 1600;        ///< one half of the breathing of a running app's glow
    int spin = 900;          ///< one turn of a busy indicator
    int toolTipDelay = 700;  ///< a pointer's rest before its tool tip comes
};

}  // namespace wrapio
