// One of a few choices, all in sight.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

FocusScope {
    id: root

    property var choices: []
    property int current: 0
    property string label

    /// The person has chosen another one.
    signal chosen(int index)

    implicitWidth: row.implicitWidth + 2 * row.x
    implicitHeight: Metrics.compactHeight + Metrics.tiny
    activeFocusOnTab: true
    Accessible.role: Accessible.PageTabList
    Accessible.name: label
    Keys.onLeftPressed: if (current > 0) chosen(current - 1)
    Keys.onRightPressed: if (current < choices.length - 1) chosen(current + 1)

    Rectangle {
        anchors.fill: parent
        radius: Metrics.controlRadius
        color: Colors.field
        border.width: Metrics.hair
        border.color: Colors.hairline

        FocusRing {
            shown: root.activeFocus
        }
    }
    Rectangle {
        readonly property Item target: repeater.count > root.current ? repeater.itemAt(root.current) as Item : null

        x: target ? row.x + target.x : 0
        y: row.y
        width: target ? target.width : 0
        height: row.height
        radius: Metrics.controlRadius - row.y
        color: Colors.track

        Behavior on x {
            SpringAnimator {}
        }
        Behavior on width {
            SpringAnimator {}
        }
    }
    Row {
        id: row

        x: 2
        y: 2
        height: parent.height - 2 * y

        Repeater {
            id: repeater

            model: root.choices

            T.AbstractButton {
                id: segment

                required property int index
                required property string modelData

                text: modelData
                height: row.height
                leftPadding: Metrics.medium
                rightPadding: Metrics.medium
                implicitWidth: implicitContentWidth + leftPadding + rightPadding
                hoverEnabled: true
                focusPolicy: Qt.NoFocus
                Accessible.role: Accessible.RadioButton
                Accessible.name: text
                Accessible.checked: index === root.current
                onClicked: if (index !== root.current) root.chosen(index)

                contentItem: Text {
                    text: segment.text
                    font: Typography.smallLabel
                    verticalAlignment: Text.AlignVCenter
                    color: segment.index === root.current || segment.hovered ? Colors.textPrimary : Colors.textSecondary
                }
            }
        }
    }
}
