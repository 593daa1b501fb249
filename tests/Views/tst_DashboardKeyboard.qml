import QtQuick
import QtTest
import Wrapio.Components
import Wrapio.Design
import Wrapio.Offline
import Wrapio.Views

Item {
    id: view

    width: 1024
    height: 768

    OfflineDashboard {
        id: recorded

        fixture: "dozen"
    }

    DashboardTestCase {
        name: "DashboardKeyboard"
        root: view
        offline: recorded

        function test_walks_the_cards_by_arrows_and_launches_with_enter() {
            open("dozen");
            focusGrid();
            const view = grid().view;
            view.currentIndex = 0;
            keyClick(Qt.Key_Right);
            compare(view.currentIndex, 1);
            keyClick(Qt.Key_Down);
            compare(view.currentIndex, 1 + grid().columns);
            keyClick(Qt.Key_Home);
            compare(view.currentIndex, 0);
            keyClick(Qt.Key_End);
            compare(view.currentIndex, 11);
            verify(view.currentItem.card.focused);
            keyClick(Qt.Key_Home);
            keyClick(Qt.Key_Return);
            offline.advance(1.1);
            compare(offline.running(), ["Mail"]);
        }

        function test_asks_to_delete_with_the_delete_key() {
            open("dozen");
            focusGrid();
            grid().view.currentIndex = 2;
            keyClick(Qt.Key_Delete);
            compare(offline.viewModel.pendingDeleteConfig.displayName, "News");
            offline.viewModel.cancelDelete();
        }

        function test_gives_the_keyboard_back_to_the_card_when_a_question_is_answered() {
            open("dozen");
            focusGrid();
            grid().view.currentIndex = 2;
            keyClick(Qt.Key_Delete);
            tryVerify(() => !grid().view.activeFocus);
            keyClick(Qt.Key_Escape);
            tryCompare(offline.viewModel, "pendingDeleteConfig", undefined);
            tryVerify(() => grid().view.activeFocus);
            verify(grid().view.currentItem.card.focused);
            compare(grid().view.currentIndex, 2);
        }

        function test_gives_the_keyboard_back_to_the_search_from_which_a_sheet_was_opened() {
            open("dozen");
            keyClick(Qt.Key_F, Qt.ControlModifier);
            const search = all(screen, each => each instanceof SearchField)[0];
            verify(search.activeFocus);
            keyClick(Qt.Key_N, Qt.ControlModifier);
            tryVerify(() => !search.activeFocus);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !offline.viewModel.editor);
            tryVerify(() => search.activeFocus);
        }

        function test_finds_and_creates_by_shortcut() {
            open("dozen");
            focusGrid();
            keyClick(Qt.Key_F, Qt.ControlModifier);
            verify(all(screen, each => each instanceof SearchField)[0].activeFocus);
            keyClick(Qt.Key_N, Qt.ControlModifier);
            verify(offline.viewModel.editor);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !offline.viewModel.editor);
            compare(offline.names().length, 12);
        }

        function test_moves_a_card_by_keyboard() {
            open("dozen");
            focusGrid();
            grid().view.currentIndex = 0;
            keyClick(Qt.Key_Right, Qt.AltModifier);
            compare(offline.names().slice(0, 3), ["Calendar", "Mail", "News"]);
        }

        function test_tells_assistive_programs_what_a_card_is() {
            open("running");
            const item = card("Mail");
            compare(item.Accessible.name, "Mail");
            compare(item.Accessible.role, Accessible.Button);
            compare(item.Accessible.description, "mail.example.com, running");
        }
    }
}
