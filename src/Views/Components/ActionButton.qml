// A button with a text and perhaps a symbol. One action of a screen is its main one.
import QtQuick
import Wrapio.Design

PressableButtonStyle {
    id: root

    enum Kind {
        Quiet,
        Main,
        Destructive
    }

    property int kind: ActionButton.Quiet
    property string symbol
    readonly property color ink: {
        if (kind === ActionButton.Main)
            return Colors.textOnAccent;
        return kind === ActionButton.Destructive ? Colors.textOnError : Colors.textPrimary;
    }

    leftPadding: Metrics.large
    rightPadding: Metrics.large
    implicitHeight: Metrics.controlHeight
    opacity: enabled ? 1 : 0.45

    contentItem: Item {
        implicitWidth: content.implicitWidth
        implicitHeight: content.implicitHeight

        Row {
            id: content

            anchors.centerIn: parent
            spacing: Metrics.small

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol !== ""
                name: root.symbol
                color: root.ink
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                font: Typography.label
                color: root.ink
            }
        }
    }
    background: Rectangle {
        radius: Metrics.controlRadius
        color: {
            if (root.kind === ActionButton.Destructive)
                return Colors.destructive;
            if (root.kind === ActionButton.Main)
                return Colors.clear;
            return root.down ? Colors.controlPressed : root.hovered ? Colors.controlHover : Colors.control;
        }
        border.width: root.kind === ActionButton.Quiet ? Metrics.hair : 0
        border.color: Colors.hairline

        GradientRectangle {
            anchors.fill: parent
            visible: root.kind === ActionButton.Main
            from: Colors.accentGradient[0]
            to: Colors.accentGradient[1]
            radius: Metrics.controlRadius
        }
        Rectangle {
            anchors.fill: parent
            visible: root.kind !== ActionButton.Quiet && root.hovered && !root.down
            radius: Metrics.controlRadius
            color: Colors.controlHover
        }
        FocusRing {
            shown: root.visualFocus
        }
    }
}
