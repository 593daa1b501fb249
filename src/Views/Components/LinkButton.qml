// An action that stands in a line of text.
import QtQuick
import Wrapio.Design

PressableButtonStyle {
    id: root

    property string symbol
    property color ink: Colors.accentText

    padding: Metrics.tiny
    leftPadding: Metrics.small
    rightPadding: Metrics.small
    opacity: enabled ? 1 : 0.45

    contentItem: Row {
        spacing: Metrics.tiny

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.symbol !== ""
            name: root.symbol
            size: Metrics.smallSymbol
            color: root.ink
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: Typography.smallLabel
            color: root.ink
        }
    }
    background: Rectangle {
        radius: Metrics.smallRadius
        color: root.hovered ? Colors.control : Colors.clear

        FocusRing {
            shown: root.visualFocus
            around: Metrics.smallRadius
            gap: 0
        }
    }
}
