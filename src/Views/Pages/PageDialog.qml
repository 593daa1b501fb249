// A dialog that a page has opened by script.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Sheet {
    id: root

    /// The alert; undefined when there is none.
    property var alert
    /// Kept while the sheet leaves.
    property var kept: ({ messageText: "", buttons: [], hasField: false, field: "" })

    signal answered(int button, string text)

    onAlertChanged: if (alert) kept = alert
    visible: alert !== undefined && alert !== null
    title: kept.messageText
    onCloseRequested: root.answered(root.kept.buttons.length - 1, field.text)
    onOpened: {
        field.text = kept.field;
        (kept.hasField ? field : buttons.itemAt(0)).forceActiveFocus(Qt.PopupFocusReason);
        field.selectAll();
    }

    Column {
        width: parent.width
        spacing: Metrics.large

        Text {
            width: parent.width
            text: root.kept.messageText
            textFormat: Text.PlainText
            font: Typography.body
            color: Colors.textPrimary
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            elide: Text.ElideRight
            maximumLineCount: 12
        }
        InputField {
            id: field

            visible: root.kept.hasField
            width: Math.max(200, parent.width)
            height: Math.max(24, implicitHeight)
            label: root.kept.messageText
            onAccepted: root.answered(0, text)
        }
    }
    footer: Row {
        anchors.right: parent.right
        layoutDirection: Qt.RightToLeft
        spacing: Metrics.small

        Repeater {
            id: buttons

            model: root.kept.buttons

            ActionButton {
                required property int index
                required property string modelData

                kind: index === 0 ? ActionButton.Main : ActionButton.Quiet
                text: modelData
                onClicked: root.answered(index, field.text)
            }
        }
    }
}
