// The breathing light around the card of a running app.
import QtQuick
import Wrapio.Design

Item {
    id: root

    property bool isRunning: false
    /// Drives the breathing.
    property bool pulse: isRunning && visible && !Appearance.reducedMotion
    property real light: 1

    anchors.fill: parent
    opacity: isRunning ? 1 : 0
    visible: opacity > 0
    Accessible.ignored: true

    Behavior on opacity {
        FadeAnimator {}
    }

    ElevationShadow {
        blur: 18
        color: Colors.success
        // Text on the card must stay legible.
        opacity: 0.05 + 0.09 * root.light
    }
    Rectangle {
        anchors.fill: parent
        radius: Metrics.cardRadius
        color: Colors.clear
        border.width: 1.5
        border.color: Colors.success
        opacity: 0.4 + 0.4 * root.light
    }

    SequentialAnimation {
        running: root.pulse
        loops: Animation.Infinite
        onStopped: root.light = 1

        NumberAnimation {
            target: root
            property: "light"
            to: 0.25
            duration: Animations.pulse
            easing.type: Easing.InOutSine
        }
        NumberAnimation {
            target: root
            property: "light"
            to: 1
            duration: Animations.pulse
            easing.type: Easing.InOutSine
        }
    }
}
