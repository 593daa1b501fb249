// The settings' window: the form of one app.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

Window {
    id: root

    required property EditorSheetViewModel editor

    width: Metrics.editorWidth
    height: Metrics.windowHeight
    minimumWidth: 480
    minimumHeight: 400
    title: qsTr("Settings")
    color: Colors.sheet

    ConfigurationView {
        id: form

        anchors.fill: parent
        focus: true
        editor: root.editor
        onCancel: root.close()
    }
    KeyboardReturn {
        content: form
    }
    Connections {
        target: root.editor

        function onDismissed() {
            root.close();
        }
    }
    Shortcut {
        sequences: [StandardKey.Cancel, StandardKey.Close]
        onActivated: root.close()
    }
}
