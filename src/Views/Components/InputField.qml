// A field for one line of text.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Design

T.TextField {
    id: root

    property bool faulty: false
    property string label: placeholderText

    implicitWidth: 200
    implicitHeight: Metrics.controlHeight
    leftPadding: Metrics.medium
    rightPadding: Metrics.medium
    verticalAlignment: Text.AlignVCenter
    font: Typography.body
    color: Colors.textPrimary
    placeholderTextColor: Colors.textMuted
    selectionColor: Colors.selection
    selectedTextColor: Colors.textPrimary
    selectByMouse: true
    hoverEnabled: true
    Accessible.role: Accessible.EditableText
    Accessible.name: label

    background: Rectangle {
        radius: Metrics.controlRadius
        color: root.hovered || root.activeFocus ? Colors.control : Colors.field
        border.width: Metrics.hair
        border.color: root.faulty ? Colors.error : Colors.hairlineStrong

        FocusRing {
            shown: root.activeFocus
            gap: -Metrics.focusRing
            border.color: root.faulty ? Colors.error : Colors.focusRing
        }
    }

    Text {
        anchors.fill: parent
        leftPadding: root.leftPadding
        rightPadding: root.rightPadding
        verticalAlignment: Text.AlignVCenter
        visible: root.text === "" && root.preeditText === ""
        text: root.placeholderText
        font: root.font
        color: root.placeholderTextColor
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
