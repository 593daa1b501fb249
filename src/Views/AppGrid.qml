// The cards, as many in a row as fit, with what the keyboard does in them and the dragging of one to another place.
import QtQuick
import QtQuick.Templates as T
import Wrapio.Components
import Wrapio.Design
import Wrapio.Views

FocusScope {
    id: root

    required property DashboardViewModel viewModel
    property real roomForRows: width
    property string draggedId
    readonly property bool isDragging: proxy.isDragging

    readonly property int columns: Math.max(1, Math.floor((roomForRows + Metrics.gridGap) / (Metrics.smallestCard + Metrics.gridGap)))
    readonly property real cardWidth: Math.floor(Math.min(Metrics.largestCard, (roomForRows - (columns - 1) * Metrics.gridGap) / columns))
    readonly property real rowWidth: columns * (cardWidth + Metrics.gridGap) - Metrics.gridGap
    readonly property alias view: view
    readonly property alias menu: menu

    signal configureRequested(string appId, string section)
    signal websiteRequested(string appId)

    clip: true

    function move(draggedId: string, targetId: string) {
        viewModel.moveApp(draggedId, targetId);
    }

    /// Moves the card that has the keyboard by `step` places among those that are shown.
    function moveCurrent(step: int) {
        const target = view.itemAtIndex(view.currentIndex + step) as AppGridItem;
        const current = view.currentItem as AppGridItem;
        if (target && current)
            move(current.appId, target.appId);
    }

    GridView {
        id: view

        x: Math.round((parent.width - root.rowWidth) / 2)
        width: root.columns * cellWidth
        height: parent.height
        topMargin: Metrics.large
        bottomMargin: Metrics.page * 2
        cellWidth: root.cardWidth + Metrics.gridGap
        cellHeight: Metrics.cardHeight + Metrics.gridGap
        model: root.viewModel.filteredConfigurations
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: true
        reuseItems: true
        cacheBuffer: Math.round(2 * cellHeight)
        boundsBehavior: Flickable.StopAtBounds
        highlight: null
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Apps")
        onCountChanged: if (currentIndex < 0 && count > 0) currentIndex = 0
        onActiveFocusChanged: if (activeFocus && currentIndex < 0 && count > 0) currentIndex = 0

        Keys.onPressed: event => root.handleKey(event)

        delegate: AppGridItem {
            id: cell

            cardWidth: root.cardWidth
            draggedId: root.draggedId
            isDragging: root.isDragging
            listHasFocus: view.activeFocus
            onLaunch: {
                view.currentIndex = index;
                root.viewModel.launchApp(appId);
            }
            onRestart: root.viewModel.restartApp(appId)
            onQuit: root.viewModel.quitApp(appId)
            onRenew: root.viewModel.updateApp(appId)
            onEdit: root.configureRequested(appId, "")
            onAskDelete: root.viewModel.requestDelete(appId)
            onMenuRequested: (x, y) => root.openMenu(cell, x, y)
            onMoveRequested: (draggedId, targetId) => root.move(draggedId, targetId)
            onLifted: scenePosition => proxy.begin(cell, scenePosition)
            onCarried: scenePosition => proxy.carry(scenePosition)
            onLetGo: proxy.letGo()
            onDropPerformed: root.draggedId = ""
        }

        T.ScrollBar.vertical: SlimScrollBar {
            parent: root
            x: root.width - width
            height: root.height
        }

        remove: Transition {
            enabled: !Appearance.reducedMotion

            FadeAnimator {
                property: "opacity"
                to: 0
            }
            SpringAnimator {
                property: "scale"
                to: 0.9
            }
        }
        add: Transition {
            enabled: !Appearance.reducedMotion

            FadeAnimator {
                property: "opacity"
                from: 0
                to: 1
            }
            // A card that had gone comes back as it went.
            SpringAnimator {
                property: "scale"
                from: 0.9
                to: 1
            }
        }
        displaced: Transition {
            enabled: !root.isDragging && !Appearance.reducedMotion

            SpringAnimator {
                properties: "x,y"
                motion: Animations.snappy
            }
            // A card that was still appearing when it was moved.
            FadeAnimator {
                property: "opacity"
                to: 1
            }
            SpringAnimator {
                property: "scale"
                to: 1
            }
        }
    }
    DragProxy {
        id: proxy

        view: view
        onDragBegun: appId => root.draggedId = appId
    }
    AppMenu {
        id: menu

        onLaunchRequested: appId => root.viewModel.launchApp(appId)
        onRestartRequested: appId => root.viewModel.restartApp(appId)
        onQuitRequested: appId => root.viewModel.quitApp(appId)
        onUpdateRequested: appId => root.viewModel.updateApp(appId)
        onConfigureRequested: appId => root.configureRequested(appId, "")
        onWebsiteRequested: appId => root.websiteRequested(appId)
        onSettingsRequested: appId => root.configureRequested(appId, "options")
        onDeleteRequested: appId => root.viewModel.requestDelete(appId)
    }

    function openMenu(item: AppGridItem, x: real, y: real) {
        view.currentIndex = item.index;
        menu.openFor(item, x, y);
    }

    function handleKey(event: var) {
        const item = view.currentItem as AppGridItem;
        event.accepted = item !== null;
        if (!item)
            return;
        const isMove = event.modifiers & Qt.AltModifier;
        if (isMove && event.key === Qt.Key_Left)
            moveCurrent(-1);
        else if (isMove && event.key === Qt.Key_Right)
            moveCurrent(1);
        else if (isMove && event.key === Qt.Key_Up)
            moveCurrent(-columns);
        else if (isMove && event.key === Qt.Key_Down)
            moveCurrent(columns);
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter || event.key === Qt.Key_Space)
            viewModel.launchApp(item.appId);
        else if (event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace)
            viewModel.requestDelete(item.appId);
        else if (event.key === Qt.Key_F2)
            configureRequested(item.appId, "");
        else if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier))
            openMenu(item, cardWidth / 2, Metrics.cardHeight / 2);
        else if (event.key === Qt.Key_Home)
            view.currentIndex = 0;
        else if (event.key === Qt.Key_End)
            view.currentIndex = view.count - 1;
        else if (event.key === Qt.Key_PageDown)
            view.currentIndex = Math.min(view.count - 1, view.currentIndex + page());
        else if (event.key === Qt.Key_PageUp)
            view.currentIndex = Math.max(0, view.currentIndex - page());
        else if (event.key === Qt.Key_Escape && viewModel.searchText !== "")
            viewModel.searchText = "";
        else
            event.accepted = false;
    }

    function page(): int {
        return columns * Math.max(1, Math.floor(view.height / view.cellHeight));
    }
}
