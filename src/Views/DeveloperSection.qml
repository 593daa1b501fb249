// Developer mode.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

SectionCard {
    id: root

    required property ConfigurationViewModel form
    readonly property bool isOn: form ? form.isDevMode : false

    SwitchRow {
        width: parent.width
        title: qsTr("Developer Mode")
        caption: qsTr("Enable to use localhost and private network URLs")
        checked: root.isOn
        onToggled: checked => root.form.isDevMode = checked
    }
    HintLine {
        width: parent.width
        visible: root.isOn
        symbol: "exclamationmark.shield.fill"
        ink: Colors.warning
        text: qsTr("Security checks for internal addresses are bypassed in dev mode")
    }
}
