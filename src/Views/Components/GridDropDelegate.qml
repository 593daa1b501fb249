// The drop handler of one cell: as soon as a dragged card comes over it, it asks for the card to move here.
import QtQuick

DropArea {
    id: root

    /// The cell's place in the list, and the id of what is there.
    property int targetIndex: -1
    property string targetId
    /// What is dragged; empty when nothing is.
    property string draggedId

    /// The dragged card is to get the place of this cell.
    signal moveRequested(string draggedId, string targetId)
    /// The card was let go here.
    signal dropPerformed

    keys: ["app"]
    onEntered: drag => root.dropEntered(drag)
    onPositionChanged: drag => root.dropUpdated(drag)
    onExited: root.dropExited()
    onDropped: drop => root.performDrop(drop)

    function dropEntered(drag: var) {
        root.dropUpdated(drag);
        if (draggedId !== "" && draggedId !== targetId)
            root.moveRequested(draggedId, targetId);
    }

    function dropUpdated(drag: var) {
        drag.accept(Qt.MoveAction);
    }

    function dropExited() {
    }

    function performDrop(drop: var) {
        drop.accept(Qt.MoveAction);
        root.dropPerformed();
    }
}
