// Something that is on or off.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.Switch {
    id: root

    readonly property real trackHeight: Math.round(22 * Appearance.textScale)

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    implicitWidth: Math.round(trackHeight * 1.75)
    implicitHeight: trackHeight
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Keys.onReturnPressed: root.click()

    function click() {
        toggle();
        toggled();
    }

    indicator: Rectangle {
        width: root.width
        height: root.trackHeight
        radius: height / 2
        color: root.checked ? Colors.accent : root.hovered ? Colors.hairlineStrong : Colors.track

        Behavior on color {
            ColorAnimation {
                duration: Animations.fade
            }
        }

        Rectangle {
            readonly property int rim: 2

            y: rim
            width: parent.height - 2 * rim
            height: width
            radius: width / 2
            color: Colors.textOnError
            x: root.checked ? parent.width - width - rim : rim

            Behavior on x {
                SpringAnimator {}
            }
        }
        FocusRing {
            shown: root.visualFocus
            around: parent.radius
        }
    }
}
