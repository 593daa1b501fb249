// A quick-start template as a button of the empty dashboard.
import QtQuick
import Wrapio.Components
import Wrapio.Design

PressableButtonStyle {
    id: root

    /// A map: name, iconAssetName, fallbackIcon and color.
    property var template
    readonly property bool isHovering: hovered

    implicitHeight: content.implicitHeight + 2 * Metrics.large
    text: template ? template.name : ""

    contentItem: Item {
        implicitHeight: content.implicitHeight

        Column {
            id: content

            anchors.centerIn: parent
            width: parent.width
            spacing: Metrics.small + 2

            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Metrics.templateIcon
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
                    size: parent.width * 0.7
                    color: root.template ? root.template.color : Colors.accent
                }
            }
            Text {
                width: parent.width
                leftPadding: Metrics.small
                rightPadding: Metrics.small
                horizontalAlignment: Text.AlignHCenter
                text: root.text
                font: Typography.label
                color: Colors.textPrimary
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                height: Math.ceil(2 * font.pixelSize * 1.25)
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
    background: Rectangle {
        radius: Metrics.menuRadius
        color: root.isHovering ? Colors.cardBackgroundHover : Colors.cardBackground
        border.width: Metrics.hair
        border.color: root.isHovering ? Colors.hairlineStrong : Colors.hairline

        FocusRing {
            shown: root.visualFocus
            around: Metrics.menuRadius
        }
    }
}
