// Which site, and what the app is called.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

SectionCard {
    id: root

    required property EditorSheetViewModel editor
    readonly property ConfigurationViewModel form: editor ? editor.configuration : null

    signal accepted

    function focusUrl() {
        url.field.forceActiveFocus(Qt.OtherFocusReason);
    }

    LabeledField {
        id: url

        width: parent.width
        label: qsTr("Website URL")
        placeholderText: "https://example.com"
        text: root.form ? root.form.urlInput : ""
        faulty: root.form ? root.form.urlError !== undefined : false
        onEdited: text => root.form.urlInput = text
        field.onAccepted: root.accepted()
        field.inputMethodHints: Qt.ImhUrlCharactersOnly
    }
    HintLine {
        width: parent.width
        visible: text !== ""
        symbol: "exclamationmark.triangle.fill"
        ink: Colors.errorText
        text: root.form && root.form.urlError !== undefined ? root.form.urlError : ""
    }
    HintLine {
        width: parent.width
        visible: root.form ? root.form.isDevMode : false
        symbol: "info.circle.fill"
        text: qsTr("URL examples: localhost:3000, 127.0.0.1:8080, myapp.local")
    }
    LabeledField {
        width: parent.width
        label: qsTr("App Name")
        placeholderText: qsTr("Taken from the site when left empty")
        text: root.form ? root.form.appNameInput : ""
        onEdited: text => root.form.appNameInput = text
        field.onAccepted: root.accepted()
    }
    HintLine {
        width: parent.width
        visible: text !== ""
        symbol: "exclamationmark.triangle.fill"
        ink: Colors.warning
        text: root.editor ? root.editor.nameHint : ""
    }
    Row {
        leftPadding: -Metrics.small
        visible: root.editor ? root.editor.safeName !== "" : false

        LinkButton {
            text: qsTr("Use “%1” instead").arg(root.editor ? root.editor.safeName : "")
            onClicked: root.editor.takeSafeName()
        }
    }
    HintLine {
        width: parent.width
        visible: text !== ""
        symbol: "info.circle.fill"
        ink: Colors.warning
        text: root.editor ? root.editor.bundleHint : ""
    }
}
