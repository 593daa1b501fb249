// Gives the keyboard back to the content of a plain window once the last sheet or menu over it has gone; by themselves
// they leave it with nobody.
import QtQuick
import QtQuick.Templates as T

Item {
    id: root

    required property Item content

    readonly property Item overlay: T.Overlay.overlay

    function giveBack() {
        const holder = content.Window.activeFocusItem;
        if (!overlay.visible && (!holder || holder === content.Window.contentItem))
            content.forceActiveFocus(Qt.PopupFocusReason);
    }

    Connections {
        target: root.overlay

        function onVisibleChanged() {
            // The last one to go is still at it.
            Qt.callLater(root.giveBack);
        }
    }
}
