// The form's actions, always in sight below it.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Item {
    id: root

    property bool isEdit: false
    property bool canSave: false

    signal saveRequested
    signal cancelRequested
    signal removeRequested

    implicitHeight: Metrics.controlHeight + 2 * Metrics.large

    Rectangle {
        width: parent.width
        height: Metrics.hair
        color: Colors.hairline
    }
    LinkButton {
        x: Metrics.huge - leftPadding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.isEdit
        height: Metrics.controlHeight
        symbol: "trash"
        ink: Colors.errorText
        text: qsTr("Remove App")
        onClicked: root.removeRequested()
    }
    Row {
        anchors.right: parent.right
        anchors.rightMargin: Metrics.huge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.small

        ActionButton {
            text: qsTr("Cancel")
            onClicked: root.cancelRequested()
        }
        ActionButton {
            kind: ActionButton.Main
            enabled: root.canSave
            text: root.isEdit ? qsTr("Save & Close") : qsTr("Create App")
            onClicked: root.saveRequested()
        }
    }
}
