import QtQuick
import QtTest
import Wrapio.Components
import Wrapio.Design
import Wrapio.Offline
import Wrapio.Views

Item {
    id: root

    width: 1024
    height: 768

    OfflineDashboard {
        id: offline

        fixture: "dozen"
    }
    AppGrid {
        id: grid

        anchors.fill: parent
        viewModel: offline.viewModel
    }

    TestCase {
        name: "Dragging"
        when: windowShown

        function init() {
            Appearance.reducedMotion = true;
            offline.fixture = "dozen";
            grid.draggedId = "";
            grid.view.contentY = -grid.view.topMargin;
            tryVerify(() => grid.view.itemAtIndex(5) !== null);
            waitForRendering(grid);
        }

        function place(index) {
            const item = grid.view.itemAtIndex(index);
            return item.mapToItem(root, grid.cardWidth / 2, 60);
        }

        function drag(from, to) {
            const start = place(from);
            mousePress(root, start.x, start.y);
            mouseMove(root, start.x + 4, start.y);
            mouseMove(root, start.x + 12, start.y);
            tryVerify(() => grid.isDragging);
            moveTo(to);
        }

        function moveTo(index) {
            const end = place(index);
            mouseMove(root, end.x - 3, end.y);
            mouseMove(root, end.x, end.y);
        }

        function release(index) {
            const end = place(index);
            mouseRelease(root, end.x, end.y);
        }

        function test_follows_a_hand_that_is_elsewhere_by_the_time_the_drag_begins() {
            const start = place(0);
            const end = place(2);
            mousePress(root, start.x, start.y);
            mouseMove(root, end.x, end.y);
            tryCompare(grid, "isDragging", true);
            tryVerify(() => offline.names().indexOf("Mail") === 2);
            release(2);
        }

        function test_reorders_as_soon_as_the_card_comes_over_another() {
            drag(0, 2);
            tryVerify(() => offline.names()[2] === "Mail");
            compare(offline.names().slice(0, 4), ["Calendar", "News", "Mail", "Chat"]);
            verify(grid.isDragging);
            release(2);
            tryVerify(() => !grid.isDragging);
            compare(grid.draggedId, "");
            compare(offline.names().slice(0, 4), ["Calendar", "News", "Mail", "Chat"]);
        }

        function test_changes_nothing_over_the_cards_own_cell() {
            const before = offline.names();
            drag(1, 1);
            release(1);
            compare(offline.names(), before);
            compare(grid.draggedId, "");
        }

        function test_does_not_launch_what_is_dragged() {
            drag(0, 1);
            release(1);
            offline.advance(1.1);
            compare(offline.running(), []);
        }

        function test_moves_nothing_when_the_dragged_app_is_gone() {
            drag(0, 0);
            offline.remove("Mail");
            const before = offline.names();
            grid.move(grid.draggedId, offline.idOf("Wiki"));
            compare(offline.names(), before);
            mouseRelease(root, 5, 5);
        }

        function test_goes_to_the_targets_place_in_the_catalogue_while_a_filter_is_on() {
            offline.viewModel.searchText = "n";
            tryVerify(() => grid.view.count < 12 && grid.view.count > 2 && grid.view.itemAtIndex(2) !== null);
            waitForRendering(grid);
            const target = grid.view.itemAtIndex(2).displayName;
            const dragged = grid.view.itemAtIndex(0).displayName;
            const place = offline.names().indexOf(target);
            drag(0, 2);
            tryVerify(() => offline.names()[place] === dragged);
            release(2);
            offline.viewModel.searchText = "";
        }

        function test_keeps_the_id_of_a_card_that_was_let_go_outside_until_the_next_drag() {
            drag(0, 0);
            const id = grid.draggedId;
            mouseMove(root, 1015, 4);
            mouseRelease(root, 1015, 4);
            tryVerify(() => !grid.isDragging);
            compare(grid.draggedId, id);
            drag(1, 1);
            verify(grid.draggedId !== id);
            release(1);
        }
    }

    GridDropDelegate {
        id: handler

        targetIndex: 2
        targetId: "third"
        onMoveRequested: (draggedId, targetId) => root.asked = [draggedId, targetId]
    }

    property var asked: []

    TestCase {
        name: "GridDropDelegate"
        // As the other case of this file: one that begins at once would end the run before the other has begun.
        when: windowShown

        QtObject {
            id: event

            property var answer

            function accept(action) {
                answer = action;
            }
        }

        function init() {
            root.asked = [];
            event.answer = undefined;
        }

        function test_asks_for_nothing_when_nothing_is_dragged() {
            handler.draggedId = "";
            handler.dropEntered(event);
            compare(root.asked, []);
        }

        function test_asks_for_nothing_over_the_own_cell() {
            handler.draggedId = "third";
            handler.dropEntered(event);
            compare(root.asked, []);
        }

        function test_asks_for_the_move_when_a_drag_enters() {
            handler.draggedId = "first";
            handler.dropEntered(event);
            compare(root.asked, ["first", "third"]);
        }

        function test_proposes_to_move() {
            handler.dropUpdated(event);
            compare(event.answer, Qt.MoveAction);
        }

        function test_does_nothing_when_a_drag_leaves() {
            handler.draggedId = "first";
            handler.dropExited();
            compare(handler.draggedId, "first");
            compare(root.asked, []);
        }
    }
}
