// One cell of the grid: an app's card with its actions.
import QtQuick
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

Item {
    id: root

    required property AppGrid grid
    required property int index
    required property string appId
    required property string displayName
    required property string host
    required property bool isRunning
    required property bool isOutdated
    required property string iconUrl
    required property string bundleHint

    readonly property bool isDragged: grid.isDragging && grid.draggedId === appId
    readonly property bool isCurrent: GridView.isCurrentItem && grid.view.activeFocus
    readonly property bool isHovering: (hover.hovered || controls.hovered) && !grid.isDragging
    readonly property alias card: card

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
        if (grid.isDragging && !Appearance.reducedMotion)
            glide(lastX - x, 0);
        lastX = x;
    }
    onYChanged: {
        if (grid.isDragging && !Appearance.reducedMotion)
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

    function launch() {
        grid.viewModel.launchApp(appId);
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
        draggedId: root.grid.draggedId
        onMoveRequested: (draggedId, targetId) => root.grid.move(draggedId, targetId)
        onDropPerformed: root.grid.draggedId = ""
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
        width: root.grid.cardWidth
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
            onTapped: {
                root.grid.view.currentIndex = root.index;
                root.launch();
            }
            onLongPressed: root.grid.openMenu(root, point.position.x, point.position.y)
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            gesturePolicy: TapHandler.WithinBounds
            onPressedChanged: if (pressed) root.grid.openMenu(root, point.position.x, point.position.y)
        }
        DragHandler {
            target: null
            // Before the list takes the movement for scrolling.
            dragThreshold: 6
            grabPermissions: PointerHandler.CanTakeOverFromAnything
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad | PointerDevice.Stylus
            onActiveChanged: active ? root.grid.lift(root, centroid.scenePressPosition) : root.grid.letGo()
            onCentroidChanged: if (active) root.grid.carry(centroid.scenePosition)
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
            onRestartRequested: root.grid.viewModel.restartApp(root.appId)
            onQuitRequested: root.grid.viewModel.quitApp(root.appId)
            onUpdateRequested: root.grid.viewModel.updateApp(root.appId)
            onConfigureRequested: root.grid.configureRequested(root.appId, "")
            onDeleteRequested: root.grid.viewModel.requestDelete(root.appId)
        }
    }
}
