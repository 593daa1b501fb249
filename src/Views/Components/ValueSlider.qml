// A value between two ends, without steps for the pointer. The keyboard moves it by hundredths.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.Slider {
    id: root

    property string label
    readonly property real knob: Math.round(18 * Appearance.textScale)

    implicitWidth: 200
    implicitHeight: knob + Metrics.small
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Slider
    Accessible.name: label
    Keys.onLeftPressed: root.nudge(-0.01)
    Keys.onRightPressed: root.nudge(0.01)
    Keys.onDownPressed: root.nudge(-0.1)
    Keys.onUpPressed: root.nudge(0.1)

    function nudge(by: real) {
        const before = value;
        value = Math.min(Math.max(value + by, from), to);
        if (value !== before)
            moved();
    }

    background: Rectangle {
        x: root.leftPadding
        y: (root.height - height) / 2
        width: root.availableWidth
        height: 4
        radius: 2
        color: Colors.track

        Rectangle {
            width: root.visualPosition * parent.width
            height: parent.height
            radius: parent.radius
            color: Colors.accent
        }
    }
    handle: Rectangle {
        x: root.leftPadding + root.visualPosition * (root.availableWidth - width)
        y: (root.height - height) / 2
        width: root.knob
        height: root.knob
        radius: width / 2
        color: Colors.textOnError
        scale: root.pressed ? 1.1 : 1

        Behavior on scale {
            SpringAnimator {}
        }

        FocusRing {
            shown: root.visualFocus
            around: parent.radius
        }
    }
}
