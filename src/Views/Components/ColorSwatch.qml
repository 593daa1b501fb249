// One colour to choose.
import QtQuick
import Wrapio.Design

PressableButtonStyle {
    id: root

    property color swatch
    property bool chosen: false
    property real edge: Metrics.compactHeight

    implicitWidth: edge
    implicitHeight: edge
    text: ColorTools.toHex(swatch)
    tip: text
    Accessible.checkable: true
    Accessible.checked: chosen

    contentItem: Rectangle {
        radius: width / 2
        color: root.swatch
        border.width: Metrics.hair
        border.color: Colors.hairlineStrong

        Symbol {
            anchors.centerIn: parent
            visible: root.chosen
            name: "checkmark"
            size: Math.round(parent.width * 0.6)
            color: ColorTools.labelOn(root.swatch)
        }
    }
    background: Item {
        FocusRing {
            shown: root.visualFocus
            around: root.edge / 2
        }
    }
}
