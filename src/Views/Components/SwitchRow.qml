// A switch with what it is for.
import QtQuick
import Wrapio.Design

Item {
    id: root

    property alias title: toggle.text
    property string caption
    property bool checked: false

    signal toggled(bool checked)

    implicitHeight: Math.max(texts.height, toggle.height)

    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - toggle.width - Metrics.large
        spacing: 2

        Text {
            width: parent.width
            text: root.title
            font: Typography.label
            color: Colors.textPrimary
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            visible: text !== ""
            text: root.caption
            font: Typography.caption
            color: Colors.textMuted
            wrapMode: Text.Wrap
        }
    }
    TapHandler {
        onTapped: toggle.click()
    }
    ToggleSwitch {
        id: toggle

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        checked: root.checked
        Accessible.description: root.caption
        onToggled: {
            root.toggled(checked);
            // The switch has changed itself: what it shows is the owner's to say.
            checked = Qt.binding(() => root.checked);
        }
    }
}
