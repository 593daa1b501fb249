// The dashboard over a recorded catalogue, and ways to find things in it.
import QtQuick
import QtTest
import Wrapio.Components
import Wrapio.Design
import Wrapio.Offline
import Wrapio.Views

TestCase {
    id: test

    /// Where the dashboard is shown.
    required property Item root
    required property OfflineDashboard offline
    property AppGridDashboard screen

    readonly property Component dashboard: AppGridDashboard {
        anchors.fill: parent
        viewModel: test.offline.viewModel
        focus: true
    }

    when: windowShown

    function init() {
        Appearance.reducedMotion = true;
    }

    function cleanup() {
        if (screen)
            screen.destroy();
        screen = null;
        Appearance.textScale = 1;
        wait(0);
    }

    function open(fixture) {
        offline.fixture = fixture;
        screen = dashboard.createObject(root);
        waitForRendering(root);
        return screen;
    }

    /// Every visible item below `item` for which `holds` is true.
    function all(item, holds) {
        let found = [];
        for (let index = 0; index < item.children.length; ++index) {
            const child = item.children[index];
            if (!child.visible)
                continue;
            if (holds(child))
                found.push(child);
            found = found.concat(all(child, holds));
        }
        return found;
    }

    function texts(item) {
        return all(item, each => each instanceof Text).map(each => each.text);
    }

    function control(text) {
        const found = all(root.Window.contentItem, each => each instanceof PressableButtonStyle && each.text === text);
        verify(found.length > 0, "a control called " + text);
        return found[found.length - 1];
    }

    function grid() {
        return all(screen, each => each instanceof AppGrid)[0];
    }

    function cardOrNull(name) {
        const view = grid().view;
        for (let index = 0; index < view.count; ++index) {
            const item = view.itemAtIndex(index);
            if (item && item.displayName === name)
                return item;
        }
        return null;
    }

    function card(name) {
        tryVerify(() => cardOrNull(name) !== null, 5000, "a card of " + name);
        return cardOrNull(name);
    }

    function centerOf(item) {
        return item.card.mapToItem(root, item.card.width / 2, item.card.height / 2);
    }

    function focusGrid() {
        screen.Window.window.requestActivate();
        tryVerify(() => screen.Window.window.active);
        grid().view.forceActiveFocus(Qt.TabFocusReason);
    }
}
