// A quick-start template in the form.
import QtQuick
import Wrapio.Components
import Wrapio.Design

PressableButtonStyle {
    id: root

    /// A map: name, iconAssetName, fallbackIcon and color.
    property var template
    readonly property bool isHovering: hovered

    implicitHeight: Metrics.controlHeight
    leftPadding: Metrics.small
    rightPadding: Metrics.medium
    text: template ? template.name : ""

    contentItem: Row {
        spacing: Metrics.small

        Item {
            anchors.verticalCenter: parent.verticalCenter
            width: Metrics.largeSymbol
            height: width

            Image {
                id: picture

                anchors.fill: parent
                source: root.template ? "image://template/" + root.template.iconAssetName : ""
                sourceSize: Qt.size(width, height)
            }
            Symbol {
                anchors.centerIn: parent
                visible: picture.status !== Image.Ready
                name: root.template ? root.template.fallbackIcon : ""
                color: root.template ? root.template.color : Colors.accent
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: Typography.smallLabel
            color: Colors.textPrimary
        }
    }
    background: Rectangle {
        radius: height / 2
        color: root.isHovering ? Colors.controlHover : Colors.control
        border.width: Metrics.hair
        border.color: root.isHovering ? Colors.hairlineStrong : Colors.hairline

        FocusRing {
            shown: root.visualFocus
            around: root.height / 2
        }
    }
}
