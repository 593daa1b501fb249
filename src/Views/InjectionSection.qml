// A style sheet and a script for the site.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

SectionCard {
    id: root

    required property ConfigurationViewModel form

    heading: qsTr("Injection")

    DisclosureGroup {
        width: parent.width
        title: qsTr("Custom CSS")
        note: root.form && root.form.customCSS !== "" ? qsTr("On") : ""
        expanded: root.form ? root.form.isCSSExpanded : false
        onToggled: expanded => root.form.isCSSExpanded = expanded

        CodeEditor {
            width: parent.width
            label: qsTr("Custom CSS")
            placeholderText: "/* Custom CSS styles */"
            text: root.form ? root.form.customCSS : ""
            byteCount: root.form ? root.form.cssByteCount : 0
            byteLimit: root.form ? root.form.maxInjectionSize : 0
            onEdited: text => root.form.customCSS = text
        }
        Row {
            spacing: Metrics.small

            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Insert Template")
                font: Typography.caption
                color: Colors.textMuted
            }
            LinkButton {
                symbol: "paintbrush"
                text: qsTr("Dark Mode (Invert)")
                Accessible.description: qsTr("Insert Template")
                onClicked: root.form.insertDarkModeTemplate()
            }
        }
    }
    DisclosureGroup {
        width: parent.width
        title: qsTr("Custom JavaScript")
        note: root.form && root.form.customJS !== "" ? qsTr("On") : ""
        expanded: root.form ? root.form.isJSExpanded : false
        onToggled: expanded => root.form.isJSExpanded = expanded

        CodeEditor {
            width: parent.width
            label: qsTr("Custom JavaScript")
            placeholderText: "// Custom JavaScript"
            text: root.form ? root.form.customJS : ""
            byteCount: root.form ? root.form.jsByteCount : 0
            byteLimit: root.form ? root.form.maxInjectionSize : 0
            onEdited: text => root.form.customJS = text
        }
        Flow {
            width: parent.width
            spacing: Metrics.medium

            Text {
                height: picker.height
                verticalAlignment: Text.AlignVCenter
                text: qsTr("Inject at:")
                font: Typography.label
                color: Colors.textSecondary
            }
            SegmentedPicker {
                id: picker

                label: qsTr("Inject at:")
                choices: [qsTr("Document Start"), qsTr("Document End")]
                current: root.form && root.form.jsInjectionTime === ConfigurationViewModel.DocumentStart ? 0 : 1
                onChosen: index => root.form.jsInjectionTime = index === 0 ? ConfigurationViewModel.DocumentStart : ConfigurationViewModel.DocumentEnd
            }
        }
        HintLine {
            width: parent.width
            text: qsTr("Scripts run automatically when the app loads")
        }
    }
    HintLine {
        width: parent.width
        visible: text !== ""
        symbol: "exclamationmark.triangle.fill"
        ink: Colors.errorText
        text: root.form && root.form.injectionError !== undefined ? root.form.injectionError : ""
    }
}
