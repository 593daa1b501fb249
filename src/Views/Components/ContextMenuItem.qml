// One entry of a menu: a symbol and a text.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.MenuItem {
    id: root

    property string symbol
    property bool destructive: false
    readonly property color ink: destructive ? Colors.errorText : Colors.textPrimary

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Metrics.compactHeight + Metrics.tiny
    leftPadding: Metrics.small + 2
    rightPadding: Metrics.large
    opacity: enabled ? 1 : 0.4
    Accessible.role: Accessible.MenuItem
    Accessible.name: text

    contentItem: Row {
        spacing: Metrics.small + 2

        Item {
            width: Metrics.symbol
            height: parent.height

            Symbol {
                anchors.centerIn: parent
                visible: root.symbol !== ""
                name: root.symbol
                color: root.destructive ? root.ink : Colors.textSecondary
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: Typography.label
            color: root.ink
        }
    }
    background: Rectangle {
        radius: Metrics.smallRadius + 1
        color: root.highlighted && root.enabled ? Colors.controlHover : Colors.clear
    }
}
