// Asks whether an app is to be deleted.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Sheet {
    id: root

    /// The app; undefined when nothing is asked.
    property var pending
    property string name

    signal confirmed
    signal cancelled

    onPendingChanged: if (pending) name = pending.displayName
    visible: pending !== undefined && pending !== null
    title: qsTr("Delete “%1”?").arg(name)
    onCloseRequested: root.cancelled()
    onOpened: cancelButton.forceActiveFocus(Qt.PopupFocusReason)

    Column {
        width: parent.width
        spacing: Metrics.small

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            font: Typography.title
            color: Colors.textPrimary
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 3
        }
        Text {
            width: parent.width
            text: qsTr("The app bundle will be removed from disk. You can undo this for a few seconds after deletion.")
            font: Typography.body
            color: Colors.textSecondary
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    footer: Row {
        anchors.right: parent.right
        spacing: Metrics.small

        ActionButton {
            id: cancelButton

            text: qsTr("Cancel")
            onClicked: root.cancelled()
        }
        ActionButton {
            kind: ActionButton.Destructive
            text: qsTr("Delete")
            symbol: "trash.fill"
            onClicked: root.confirmed()
        }
    }
}
