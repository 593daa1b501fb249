// How far something has come.
import QtQuick
import Wrapio.Design

Rectangle {
    id: root

    property int current: 0
    property int total: 0
    property string label

    implicitWidth: 160
    implicitHeight: 6
    radius: height / 2
    color: Colors.track
    clip: true
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label
    Accessible.description: qsTr("%1 of %2").arg(current).arg(total)

    GradientRectangle {
        height: parent.height
        radius: parent.radius
        from: Colors.accentGradient[0]
        to: Colors.accentGradient[1]
        visible: width > 0
        width: root.total > 0 ? parent.width * Math.min(1, root.current / root.total) : 0

        Behavior on width {
            SpringAnimator {
                motion: Animations.slowSpring
            }
        }
    }
}
