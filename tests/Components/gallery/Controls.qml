// Buttons, fields and other controls in their states.
import QtQuick
import Wrapio.Components
import Wrapio.Design

Rectangle {
    id: root

    property real textScale: 1

    width: 900 * (1 + (textScale - 1) * 0.6)
    height: 900 * textScale
    color: Colors.background
    Component.onCompleted: {
        Appearance.textScale = textScale;
        Appearance.reducedMotion = true;
    }

    Column {
        x: 40
        y: 40
        width: parent.width - 80
        spacing: 24

        Text {
            text: "Controls"
            font: Typography.display
            color: Colors.textPrimary
        }
        Flow {
            width: parent.width
            spacing: 16

            ActionButton { kind: ActionButton.Main; symbol: "plus"; text: "Create App" }
            ActionButton { text: "Cancel" }
            ActionButton { kind: ActionButton.Destructive; symbol: "trash.fill"; text: "Delete" }
            ActionButton { kind: ActionButton.Main; text: "Disabled"; enabled: false }
            ActionButton { text: "Focused"; Component.onCompleted: forceActiveFocus(Qt.TabFocusReason) }
            IconButton { symbol: "ellipsis"; text: "More" }
            IconButton { symbol: "pencil"; text: "Edit"; filled: false }
            LinkButton { text: "Reset to Default" }
            LinkButton { text: "Update All"; symbol: "arrow.clockwise" }
        }
        Flow {
            width: parent.width
            spacing: 16

            SearchField { placeholderText: "Filter apps..." }
            SearchField { placeholderText: "Filter apps..."; text: "mail" }
            InputField { placeholderText: "example.com"; width: 240 * root.textScale }
            InputField { text: "htp:/wrong"; faulty: true; width: 240 * root.textScale }
        }
        Row {
            spacing: 24

            ToggleSwitch {}
            ToggleSwitch { checked: true }
            ValueSlider { value: 0.4; width: 220 }
            SegmentedPicker { choices: ["Document Start", "Document End"]; current: 1 }
        }
        Row {
            spacing: 24

            ProgressLine { width: 220; current: 3; total: 9; anchors.verticalCenter: parent.verticalCenter }
            BusyMark {}
        }
        HintLine {
            width: 420 * root.textScale
            symbol: "exclamationmark.triangle.fill"
            ink: Colors.errorText
            text: "Please enter a valid URL (e.g. localhost:3000)"
        }
        HintLine {
            width: 420 * root.textScale
            symbol: "exclamationmark.shield.fill"
            ink: Colors.warning
            text: "Security checks for internal addresses are bypassed in dev mode, and this line is long enough to be broken into two"
        }
        DisclosureGroup {
            width: 560 * Math.min(root.textScale, 1.5)
            title: "Custom CSS"
            note: "on"
            expanded: true

            CodeEditor {
                width: parent.width
                text: "html {\n  filter: invert(1);\n}"
                byteCount: 29
                byteLimit: 102400
            }
        }
        ColorField {
            width: 480
            label: "Toolbar Color"
            hex: "#1E6FD9"
        }
    }
}
