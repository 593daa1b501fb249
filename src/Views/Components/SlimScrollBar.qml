// A scroll bar that keeps out of the way until it is used.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.ScrollBar {
    id: root

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: 0.04
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Colors.scrollBar
        opacity: root.pressed || root.hovered ? 1 : root.active ? 0.8 : 0.35

        Behavior on opacity {
            FadeAnimator {}
        }
    }
}
