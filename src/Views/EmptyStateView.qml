// What the dashboard shows before there is any app.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

FocusScope {
    id: root

    property var templates: []

    signal create
    signal createFromTemplate(string stableId)

    Flickable {
        anchors.fill: parent
        contentHeight: Math.max(height, column.height + 2 * Metrics.page)
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.max(Metrics.page, (parent.height - height) / 2 - Metrics.page)
            width: Math.min(root.width - 2 * Metrics.page, 620)
            spacing: Metrics.large

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "square.stack.3d.up.fill"
                size: Metrics.heroSymbol
                color: Colors.accent
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: qsTr("Turn Websites into Apps")
                font: Typography.display
                color: Colors.textPrimary
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(parent.width, Metrics.dialogWidth)
                horizontalAlignment: Text.AlignHCenter
                text: qsTr("Create standalone macOS apps for your favorite websites with their own Dock icons.")
                font: Typography.body
                color: Colors.textSecondary
                wrapMode: Text.Wrap
                lineHeight: 1.25
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Item {
                width: parent.width
                height: Metrics.tiny
            }
            ActionButton {
                anchors.horizontalCenter: parent.horizontalCenter
                kind: ActionButton.Main
                symbol: "plus.circle.fill"
                text: qsTr("Create Custom App")
                focus: true
                onClicked: root.create()
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("or")
                font: Typography.label
                color: Colors.textMuted
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Quick Start")
                font: Typography.headline
                color: Colors.textSecondary
            }
            Flow {
                id: row

                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(parent.width, root.templates.length * (Metrics.templateButton + spacing) - spacing)
                spacing: Metrics.medium

                Repeater {
                    model: root.templates

                    TemplateButton {
                        required property var modelData

                        width: Metrics.templateButton
                        template: modelData
                        onClicked: root.createFromTemplate(modelData.stableId)
                    }
                }
            }
        }
    }
}
