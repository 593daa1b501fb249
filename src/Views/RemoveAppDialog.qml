// What is asked before "Remove App", which empties the whole catalogue.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Sheet {
    id: root

    property bool takesOtherApps: false

    signal removeOnlyThis
    signal removeAll

    title: qsTr("Remove App")
    onCloseRequested: root.close()
    onOpened: (takesOtherApps ? onlyThis : cancel).forceActiveFocus(Qt.PopupFocusReason)

    function choose(action: var) {
        close();
        action();
    }

    Column {
        width: parent.width
        spacing: Metrics.small

        Text {
            width: parent.width
            text: root.takesOtherApps ? qsTr("Remove every app?") : qsTr("Remove this app?")
            font: Typography.title
            color: Colors.textPrimary
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            text: root.takesOtherApps ? qsTr("“Remove App” takes all apps out of the inventory, not only this one, and cannot be undone. You can delete only this app instead and undo that for a few seconds.") : qsTr("The app and its bundle are removed. This cannot be undone.")
            font: Typography.body
            color: Colors.textSecondary
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    footer: Flow {
        width: parent.width
        spacing: Metrics.small
        layoutDirection: Qt.RightToLeft

        ActionButton {
            id: onlyThis

            visible: root.takesOtherApps
            kind: ActionButton.Main
            text: qsTr("Delete Only This App")
            onClicked: root.choose(root.removeOnlyThis)
        }
        ActionButton {
            kind: ActionButton.Destructive
            text: root.takesOtherApps ? qsTr("Remove All") : qsTr("Remove")
            onClicked: root.choose(root.removeAll)
        }
        ActionButton {
            id: cancel

            text: qsTr("Cancel")
            onClicked: root.close()
        }
    }
}
