// Takes the place of a page that could not be shown.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Rectangle {
    id: root

    property string message
    property string address

    signal retryRequested

    color: Colors.background
    Accessible.role: Accessible.AlertMessage
    Accessible.name: message
    onVisibleChanged: if (visible) again.forceActiveFocus(Qt.OtherFocusReason)

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Metrics.page, Metrics.dialogWidth)
        spacing: Metrics.medium

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "exclamationmark.triangle.fill"
            size: Metrics.largeSymbol * 1.6
            color: Colors.warning
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("This page could not be loaded")
            font: Typography.title
            color: Colors.textPrimary
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.message
            textFormat: Text.PlainText
            font: Typography.body
            color: Colors.textSecondary
            wrapMode: Text.Wrap
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.address
            textFormat: Text.PlainText
            font: Typography.caption
            color: Colors.textMuted
            elide: Text.ElideMiddle
        }
        Item {
            width: 1
            height: Metrics.tiny
        }
        ActionButton {
            id: again

            anchors.horizontalCenter: parent.horizontalCenter
            kind: ActionButton.Main
            symbol: "arrow.clockwise"
            text: qsTr("Try Again")
            onClicked: root.retryRequested()
        }
    }
}
