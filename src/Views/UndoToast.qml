// The offer to put a deleted app back, while it stands.
import QtQuick
import Wrapio.Components

ToastBubble {
    id: root

    /// The deletion; undefined when there is none to be undone.
    property var deleted
    /// Kept while the toast leaves.
    property string name

    signal undo

    onDeletedChanged: if (deleted) name = deleted.displayName
    shown: deleted !== undefined && deleted !== null
    message: "\"" + name + qsTr("\" deleted")
    actionText: qsTr("Undo")
    onActionChosen: root.undo()
}
