// One cell of the grid: an app's card with its actions.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

Item {
    id: root

    required property int index
    required property string appId
    required property string displayName
    required property string host
    required property bool isRunning
    required property bool isOutdated
    required property string iconUrl
    required property string bundleHint

    property real cardWidth: Metrics.largestCard
    /// The id of the card that is dragged, or was; and whether it still is.
    property string draggedId
    property bool isDragging: false
    property bool listHasFocus: false

    readonly property bool isDragged: isDragging && draggedId === appId
    readonly property bool isCurrent: GridView.isCurrentItem && listHasFocus
    readonly property bool isHovering: (hover.hovered || controls.hovered) && !isDragging
    readonly property alias card: card

    signal launch
    signal restart
    signal quit
    signal renew
    signal edit
    signal askDelete
    signal menuRequested(real x, real y)
    signal moveRequested(string draggedId, string targetId)
    signal lifted(point scenePosition)
    signal carried(point scenePosition)
    signal letGo
    signal dropPerformed

    // Where the card still is on its way to its new place, while others are moved about.
    property real shiftX: 0
    property real shiftY: 0
    property real lastX: 0
    property real lastY: 0

    width: GridView.view ? GridView.view.cellWidth : 0
    height: GridView.view ? GridView.view.cellHeight : 0
    Accessible.role: Accessible.Button
    Accessible.name: displayName
    Accessible.description: [host, isRunning ? qsTr("running") : "", isOutdated ? qsTr("update available") : "", bundleHint].filter(part => part !== "").join(", ")
    Accessible.focusable: true
    Accessible.focused: isCurrent
    Accessible.onPressAction: root.launch()

    GridView.onReused: {
        opacity = 1;
        scale = 1;
    }
    onXChanged: {
        if (isDragging && !Appearance.reducedMotion)
            glide(lastX - x, 0);
        lastX = x;
    }
    onYChanged: {
        if (isDragging && !Appearance.reducedMotion)
            glide(0, lastY - y);
        lastY = y;
    }

    /// Lets the card set out from where it was drawn until now.
    function glide(fromX: real, fromY: real) {
        gliding.stop();
        shiftX += fromX;
        shiftY += fromY;
        gliding.start();
    }

    ParallelAnimation {
        id: gliding

        SpringAnimator {
            target: root
            property: "shiftX"
            to: 0
            motion: Animations.snappy
        }
        SpringAnimator {
            target: root
            property: "shiftY"
            to: 0
            motion: Animations.snappy
        }
    }

    GridDropDelegate {
        anchors.fill: parent
        targetIndex: root.index
        targetId: root.appId
        draggedId: root.draggedId
        onMoveRequested: (draggedId, targetId) => root.moveRequested(draggedId, targetId)
        onDropPerformed: root.dropPerformed()
    }
    Rectangle {
        width: card.width
        height: card.height
        visible: root.isDragged
        radius: Metrics.cardRadius
        color: Colors.clear
        border.width: Metrics.hair
        border.color: Colors.hairlineStrong
    }
    AppCard {
        id: card

        x: root.shiftX
        y: root.shiftY
        width: root.cardWidth
        height: Metrics.cardHeight
        isRunning: root.isRunning
        isHovering: root.isHovering
        focused: root.isCurrent
        opacity: root.isDragged ? 0 : 1

        HoverHandler {
            id: hover
        }
        TapHandler {
            acceptedButtons: Qt.LeftButton
            onTapped: root.launch()
            onLongPressed: root.menuRequested(point.position.x, point.position.y)
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            gesturePolicy: TapHandler.WithinBounds
            onPressedChanged: if (pressed) root.menuRequested(point.position.x, point.position.y)
        }
        DragHandler {
            target: null
            // Before the list takes the movement for scrolling.
            dragThreshold: 6
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
            onActiveChanged: {
                if (!active) {
                    root.letGo();
                    return;
                }
                root.lifted(centroid.scenePressPosition);
                // A quick hand is elsewhere by now, and may not move again.
                root.carried(centroid.scenePosition);
            }
            onCentroidChanged: if (active) root.carried(centroid.scenePosition)
        }

        AppFace {
            width: card.width
            height: card.height
            displayName: root.displayName
            host: root.host
            iconUrl: root.iconUrl
            isHostShown: !controls.shown
        }
        Symbol {
            x: Metrics.medium
            y: Metrics.medium
            visible: root.bundleHint !== ""
            name: "exclamationmark.triangle.fill"
            size: Metrics.smallSymbol
            color: Colors.warning
        }
        Symbol {
            x: parent.width - width - Metrics.medium
            y: Metrics.medium
            visible: root.isOutdated
            name: "arrow.clockwise"
            size: Metrics.smallSymbol
            color: Colors.warning
        }
        AppHoverControls {
            id: controls

            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - height - Metrics.medium
            shown: root.isHovering
            isRunning: root.isRunning
            isOutdated: root.isOutdated
            onLaunchRequested: root.launch()
            onRestartRequested: root.restart()
            onQuitRequested: root.quit()
            onUpdateRequested: root.renew()
            onConfigureRequested: root.edit()
            onDeleteRequested: root.askDelete()
        }
    }
}
