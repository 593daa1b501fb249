// What stands above a page: where one is, and how to get elsewhere.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Pages

Item {
    id: root

    required property BrowserModel model

    implicitHeight: Metrics.controlHeight + 2 * Metrics.medium

    function focusAddress() {
        address.forceActiveFocus(Qt.ShortcutFocusReason);
        address.selectAll();
    }

    Row {
        id: moves

        x: Metrics.medium
        anchors.verticalCenter: parent.verticalCenter
        spacing: Metrics.tiny

        IconButton {
            symbol: "chevron.left"
            text: qsTr("Back")
            filled: false
            enabled: root.model.canGoBack
            onClicked: root.model.goBack()
        }
        IconButton {
            symbol: "chevron.right"
            text: qsTr("Forward")
            filled: false
            enabled: root.model.canGoForward
            onClicked: root.model.goForward()
        }
        IconButton {
            symbol: root.model.isLoading ? "xmark" : "arrow.clockwise"
            text: root.model.isLoading ? qsTr("Stop") : qsTr("Reload")
            filled: false
            onClicked: root.model.isLoading ? root.model.stop() : root.model.reload()
        }
    }
    InputField {
        id: address

        anchors.left: moves.right
        anchors.leftMargin: Metrics.medium
        anchors.right: outside.left
        anchors.rightMargin: Metrics.medium
        anchors.verticalCenter: parent.verticalCenter
        label: qsTr("Address")
        text: root.model.address
        inputMethodHints: Qt.ImhUrlCharactersOnly
        onTextEdited: faulty = false
        onAccepted: faulty = !root.model.open(text)
        Keys.onEscapePressed: restore()
        onActiveFocusChanged: activeFocus ? selectAll() : restore()

        /// What was typed and not gone to is forgotten.
        function restore() {
            faulty = false;
            text = Qt.binding(() => root.model.address);
        }
    }
    IconButton {
        id: outside

        anchors.right: parent.right
        anchors.rightMargin: Metrics.medium
        anchors.verticalCenter: parent.verticalCenter
        symbol: "square.and.arrow.up"
        text: qsTr("Open in Default Browser")
        filled: false
        onClicked: root.model.openInDefaultBrowser()
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: Metrics.hair
        color: Colors.hairline
    }
    ProgressLine {
        anchors.bottom: parent.bottom
        width: parent.width
        height: Metrics.focusRing
        radius: 0
        visible: root.model.isLoading
        color: Colors.clear
        label: qsTr("Loading")
        total: 100
        current: Math.round(root.model.loadProgress * 100)
    }
}
