// The field that filters a list. Escape empties it first and then lets go of the keyboard.
import QtQuick
import Wrapio.Design

InputField {
    id: root

    /// The person is done with the field.
    signal leaveRequested

    implicitWidth: Metrics.searchField
    leftPadding: Metrics.medium + Metrics.symbol + Metrics.small
    rightPadding: clearButton.visible ? clearButton.width + Metrics.small : Metrics.medium
    Keys.onEscapePressed: text === "" ? root.leaveRequested() : root.clear()
    Keys.onDownPressed: root.leaveRequested()

    Symbol {
        x: Metrics.medium
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        color: root.activeFocus ? Colors.textSecondary : Colors.textMuted
    }
    IconButton {
        id: clearButton

        anchors.right: parent.right
        anchors.rightMargin: Metrics.tiny
        anchors.verticalCenter: parent.verticalCenter
        edge: Metrics.compactHeight - Metrics.tiny
        visible: root.text !== ""
        filled: false
        symbol: "xmark.circle.fill"
        text: qsTr("Clear filter")
        onClicked: {
            root.clear();
            root.forceActiveFocus();
        }
    }
}
