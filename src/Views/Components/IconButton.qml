// A button that shows a symbol only. Its text is its name for assistive programs, and its tool tip.
import QtQuick
import Wrapio.Design

PressableButtonStyle {
    id: root

    property string symbol
    property color ink: Colors.textSecondary
    property color inkHover: Colors.textPrimary
    property real edge: Metrics.controlHeight
    property real symbolSize: Metrics.symbol
    property bool filled: true

    implicitWidth: edge
    implicitHeight: edge
    opacity: enabled ? 1 : 0.45
    tip: text

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            size: root.symbolSize
            color: root.hovered || root.visualFocus ? root.inkHover : root.ink
        }
    }
    // It is scaled with the card that it lies on.
    background: GradientRectangle {
        readonly property color fill: root.hovered ? Colors.controlHover : root.filled ? Colors.control : Colors.clear

        radius: Math.min(Metrics.controlRadius, root.edge / 2)
        from: fill
        to: fill
        borderWidth: root.filled ? Metrics.hair : 0
        borderColor: Colors.hairline

        FocusRing {
            shown: root.visualFocus
            around: parent.radius
        }
    }
}
