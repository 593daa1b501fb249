// How the app's window looks.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

SectionCard {
    id: root

    required property ConfigurationViewModel form
    /// What is shown while nothing is chosen: an opaque toolbar.
    readonly property real defaultOpacity: 1
    readonly property real opacityShown: form && form.themeOpacity !== undefined ? form.themeOpacity : defaultOpacity

    heading: qsTr("Appearance")

    Column {
        width: parent.width
        spacing: Metrics.small

        Text {
            text: qsTr("Toolbar Color")
            font: Typography.label
            color: Colors.textSecondary
        }
        ColorField {
            width: parent.width
            label: qsTr("Toolbar Color")
            hex: root.form && root.form.themeColor !== undefined ? root.form.themeColor : ""
            onEdited: hex => root.form.themeColor = hex === "" ? undefined : hex
        }
    }
    Column {
        width: parent.width
        spacing: Metrics.tiny

        Text {
            text: qsTr("Toolbar Opacity")
            font: Typography.label
            color: Colors.textSecondary
        }
        Row {
            width: parent.width
            spacing: Metrics.medium

            ValueSlider {
                id: slider

                width: parent.width - percent.width - parent.spacing
                label: qsTr("Toolbar Opacity")
                from: 0.1
                to: 1.0
                stepSize: 0
                value: root.opacityShown
                onMoved: root.form.themeOpacity = value
            }
            Text {
                id: percent

                width: Math.round(44 * Appearance.textScale)
                anchors.verticalCenter: parent.verticalCenter
                horizontalAlignment: Text.AlignRight
                text: Math.round(root.opacityShown * 100) + "%"
                font: Typography.label
                color: Colors.textPrimary
            }
        }
    }
    SwitchRow {
        width: parent.width
        title: qsTr("Window Border")
        caption: qsTr("Adds a thin outline matching toolbar color")
        checked: root.form ? root.form.themeBorderEnabled : false
        onToggled: checked => root.form.themeBorderEnabled = checked
    }
    // The text, not the edge that appears under the pointer, stands below the others.
    Row {
        leftPadding: -Metrics.small

        LinkButton {
            text: qsTr("Reset to Default")
            onClicked: root.form.resetAppearance()
        }
    }
}
