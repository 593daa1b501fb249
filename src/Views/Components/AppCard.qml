// The look of a cell: a rounded surface that rises a little under the pointer and glows while its app runs.
import QtQuick
import Wrapio.Design

Item {
    id: root

    default property alias content: place.data
    property bool isRunning: false
    property bool isHovering: false
    property bool focused: false
    /// What the card floats above the others for, as while it is dragged.
    property bool lifted: false

    readonly property real shadowOpacity: isHovering || lifted ? 0.2 : 0.08
    readonly property int shadowRadius: isHovering || lifted ? 20 : 10
    readonly property int shadowOffset: isHovering || lifted ? 10 : 5
    property real rise: isHovering || lifted ? 1 : 0

    scale: 1 + 0.01 * rise

    Behavior on rise {
        SpringAnimator {
            motion: Animations.snappy
        }
    }

    // Two shadows that take turns: a picture cannot be blurred more by and by.
    ElevationShadow {
        blur: 10
        drop: 5
        opacity: 0.08 * Math.max(0, 1 - root.rise)
    }
    ElevationShadow {
        blur: 20
        drop: 10
        opacity: 0.2 * Math.min(1, root.rise)
        visible: opacity > 0
    }
    RunningGlowModifier {
        isRunning: root.isRunning
    }
    Rectangle {
        anchors.fill: parent
        radius: Metrics.cardRadius
        color: root.lifted ? Colors.raised : root.isHovering ? Colors.cardBackgroundHover : Colors.cardBackground
        border.width: Metrics.hair
        border.color: root.isRunning ? Colors.clear : root.isHovering || root.lifted ? Colors.hairlineStrong : Colors.hairline

        Behavior on color {
            ColorAnimation {
                duration: Animations.fade
            }
        }
    }
    FocusRing {
        shown: root.focused
        around: Metrics.cardRadius
        gap: 1
    }
    Item {
        id: place

        anchors.fill: parent
    }
}
