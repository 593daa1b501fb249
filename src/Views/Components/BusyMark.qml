// Turns while something is under way whose end is not known.
import QtQuick
import Wrapio.Design

Item {
    id: root

    property real size: Metrics.largeSymbol

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Busy")

    Repeater {
        model: 8

        Rectangle {
            required property int index
            readonly property real turn: 2 * Math.PI * index / 8

            x: root.width / 2 + Math.sin(turn) * root.size * 0.4 - width / 2
            y: root.height / 2 - Math.cos(turn) * root.size * 0.4 - height / 2
            width: root.size / 7
            height: width
            radius: width / 2
            color: Colors.textPrimary
            opacity: 0.12 + 0.88 * index / 8
        }
    }

    NumberAnimation on rotation {
        running: root.visible && !Appearance.reducedMotion
        from: 0
        to: 360
        duration: Animations.spin
        loops: Animation.Infinite
    }
}
