// The templates that a new app can begin with.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

Column {
    id: root

    property var templates: []

    signal chosen(string stableId)

    spacing: Metrics.medium

    Text {
        text: qsTr("Quick Start")
        font: Typography.headline
        color: Colors.textPrimary
    }
    Flow {
        width: parent.width
        spacing: Metrics.small

        Repeater {
            model: root.templates

            QuickStartTemplateChip {
                required property var modelData

                template: modelData
                onClicked: root.chosen(modelData.stableId)
            }
        }
    }
}
