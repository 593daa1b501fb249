// A part of a form that can be folded away.
import QtQuick
import Wrapio.Design

Column {
    id: root

    property string title
    property string note
    property bool expanded: false
    default property alias content: column.data

    /// The person wants it open, or shut.
    signal toggled(bool expanded)

    PressableButtonStyle {
        id: header

        width: parent.width
        text: root.title
        height: Metrics.controlHeight
        Accessible.checkable: true
        Accessible.checked: root.expanded
        onClicked: root.toggled(!root.expanded)

        contentItem: Item {
            Symbol {
                id: arrow

                x: Metrics.small
                anchors.verticalCenter: parent.verticalCenter
                name: "chevron.right"
                size: Metrics.smallSymbol
                color: Colors.textSecondary
                rotation: root.expanded ? 90 : 0

                Behavior on rotation {
                    SpringAnimator {}
                }
            }
            Text {
                anchors.left: arrow.right
                anchors.leftMargin: Metrics.small
                anchors.verticalCenter: parent.verticalCenter
                text: root.title
                font: Typography.label
                color: Colors.textPrimary
            }
            Text {
                anchors.right: parent.right
                anchors.rightMargin: Metrics.small
                anchors.verticalCenter: parent.verticalCenter
                text: root.note
                font: Typography.caption
                color: Colors.textMuted
            }
        }
        background: Rectangle {
            radius: Metrics.controlRadius
            color: header.hovered ? Colors.controlHover : Colors.field

            FocusRing {
                shown: header.visualFocus
            }
        }
    }
    Item {
        width: parent.width
        height: root.expanded ? column.implicitHeight + Metrics.medium : 0
        clip: true
        visible: height > 0
        enabled: root.expanded

        Behavior on height {
            SpringAnimator {
                motion: Animations.slowSpring
            }
        }

        Column {
            id: column

            y: Metrics.medium
            width: parent.width
            spacing: Metrics.medium
        }
    }
}
