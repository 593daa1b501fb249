// The sheet in which one app is made or changed.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

Sheet {
    id: root

    /// Null while the sheet is shut.
    property EditorSheetViewModel editor
    property var templates: []
    /// The section that is to be in sight first: "options", or empty for the top.
    property string section
    readonly property real room: parent ? parent.height - 2 * Metrics.page : 0

    visible: editor !== null
    padding: 0
    contentWidth: Math.min(Metrics.editorWidth, parent ? parent.width - 2 * Metrics.page : Metrics.editorWidth)
    title: form.item ? form.item.title : ""
    // What is shown goes with the view model: there is nothing left to fade.
    exit: null
    onCloseRequested: if (editor) editor.cancel()

    Loader {
        id: form

        width: parent.width
        height: item ? Math.min(item.implicitHeight, root.room) : 0
        focus: true
        active: root.editor !== null
        sourceComponent: root.editor && root.editor.isAppMissing ? missing : view
    }

    Component {
        id: view

        ConfigurationView {
            editor: root.editor
            templates: root.templates
            section: root.section
            onCancel: root.editor.cancel()
        }
    }
    Component {
        id: missing

        Column {
            readonly property string title: qsTr("Error: App not found")

            padding: Metrics.huge
            spacing: Metrics.huge

            HintLine {
                width: parent.width - 2 * Metrics.huge
                symbol: "exclamationmark.triangle.fill"
                ink: Colors.errorText
                text: parent.title
            }
            ActionButton {
                text: qsTr("Close")
                focus: true
                onClicked: root.editor.cancel()
            }
        }
    }
    ErrorSheet {
        errorData: root.editor ? root.editor.errorData : undefined
        onDismissed: root.editor.dismissError()
    }
}
