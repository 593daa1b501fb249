// The card under the pointer while it is dragged. The cells below are told, and the list scrolls at its ends.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

AppCard {
    id: root

    required property GridView view
    property bool isDragging: false
    property string appId
    property point grip
    property point pointer

    /// A drag has begun; the one before is forgotten.
    signal dragBegun(string appId)

    /// How near to an end of the list the pointer makes it scroll, and how fast at the very end, in points per second.
    readonly property real scrollZone: 72
    readonly property real scrollSpeed: 900
    readonly property real towardsEnd: {
        if (!isDragging)
            return 0;
        if (pointer.y < scrollZone)
            return pointer.y / scrollZone - 1;
        return Math.max(0, 1 - (view.height - pointer.y) / scrollZone);
    }

    visible: isDragging
    lifted: true
    x: pointer.x - grip.x
    y: pointer.y - grip.y
    Drag.active: isDragging
    Drag.keys: ["app"]
    Drag.hotSpot: grip
    Drag.supportedActions: Qt.MoveAction

    function begin(item: AppGridItem, scenePosition: point) {
        const corner = item.card.mapToItem(parent, 0, 0);
        pointer = parent.mapFromItem(null, scenePosition.x, scenePosition.y);
        grip = Qt.point(pointer.x - corner.x, pointer.y - corner.y);
        width = item.card.width;
        height = item.card.height;
        appId = item.appId;
        isRunning = item.isRunning;
        face.displayName = item.displayName;
        face.host = item.host;
        face.iconUrl = item.iconUrl;
        root.dragBegun(appId);
        isDragging = true;
    }

    function carry(scenePosition: point) {
        pointer = parent.mapFromItem(null, scenePosition.x, scenePosition.y);
    }

    function letGo() {
        if (!isDragging)
            return;
        Drag.drop();
        isDragging = false;
    }

    AppFace {
        id: face

        width: root.width
        height: root.height
    }
    FrameAnimation {
        running: root.towardsEnd !== 0
        onTriggered: {
            const highest = root.view.originY - root.view.topMargin;
            const lowest = Math.max(highest, root.view.originY + root.view.contentHeight + root.view.bottomMargin - root.view.height);
            root.view.contentY = Math.min(lowest, Math.max(highest, root.view.contentY + root.towardsEnd * root.scrollSpeed * frameTime));
            // Cells pass below a pointer that rests: a hair's breadth makes the drag look again at what is there.
            root.Drag.hotSpot = Qt.point(root.grip.x + (currentFrame % 2) / 100, root.grip.y);
        }
    }
}
