// Tells of something that went wrong, and offers what may help.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Sheet {
    id: root

    /// The error; undefined when there is none.
    property var errorData
    /// The error that is shown; kept while the sheet leaves.
    property var kept: ({ title: "", message: "", details: "", isRecoverable: false })

    signal recoveryRequested
    signal dismissed

    onErrorDataChanged: if (errorData) kept = errorData
    visible: errorData !== undefined && errorData !== null
    title: kept.title
    onCloseRequested: root.dismissed()
    onOpened: (kept.isRecoverable ? tryAgain : dismiss).forceActiveFocus(Qt.PopupFocusReason)

    Column {
        width: parent.width
        spacing: Metrics.medium

        Symbol {
            name: "exclamationmark.triangle.fill"
            size: Metrics.largeSymbol * 1.6
            color: Colors.warning
        }
        Text {
            width: parent.width
            text: root.kept.title
            textFormat: Text.PlainText
            font: Typography.title
            color: Colors.textPrimary
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            text: root.kept.message
            textFormat: Text.PlainText
            font: Typography.body
            color: Colors.textSecondary
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            width: parent.width
            visible: text !== ""
            text: root.kept.details
            textFormat: Text.PlainText
            font: Typography.caption
            color: Colors.textMuted
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            elide: Text.ElideRight
            maximumLineCount: 4
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    footer: Row {
        anchors.right: parent.right
        spacing: Metrics.small

        ActionButton {
            id: dismiss

            text: qsTr("Dismiss")
            onClicked: root.dismissed()
        }
        ActionButton {
            id: tryAgain

            kind: ActionButton.Main
            visible: root.kept.isRecoverable
            text: qsTr("Try Again")
            onClicked: root.recoveryRequested()
        }
    }
}
