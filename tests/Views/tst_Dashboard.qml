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
        name: "Dashboard"
        root: view
        offline: recorded

        function test_counts_the_apps_in_its_header_data() {
            return [
                { tag: "0", fixture: "empty", line: "0 standalone apps configured" },
                { tag: "1", fixture: "one", line: "1 standalone apps configured" },
                { tag: "1000", fixture: "thousand", line: "1000 standalone apps configured" }
            ];
        }

        function test_counts_the_apps_in_its_header(row) {
            open(row.fixture);
            verify(texts(screen).includes("App Inventory"));
            verify(texts(screen).includes(row.line));
        }

        function test_offers_to_update_what_is_outdated_and_shows_how_far_that_is() {
            open("outdated");
            verify(texts(screen).includes("9 updates available"));
            control("Update All").clicked();
            verify(texts(screen).includes("Updating 0 of 9"));
            verify(!texts(screen).includes("9 updates available"));
            offline.runPending();
            verify(!texts(screen).includes("9 updates available"));
        }

        function test_makes_cards_between_180_and_200_wide_with_24_between_data() {
            return [{ tag: "800", width: 800 }, { tag: "1024", width: 1024 }, { tag: "1500", width: 1500 }, { tag: "3840", width: 3840 }];
        }

        function test_makes_cards_between_180_and_200_wide_with_24_between(row) {
            open("dozen");
            screen.anchors.fill = undefined;
            screen.width = row.width;
            const cells = grid();
            verify(cells.cardWidth >= 180 && cells.cardWidth <= 200, cells.cardWidth);
            compare(cells.view.cellWidth - cells.cardWidth, 24);
            verify(cells.rowWidth <= row.width);
            // One more would not have fitted.
            verify((cells.columns + 1) * 204 - 24 > cells.roomForRows);
        }

        function test_filters_while_the_header_still_counts_all() {
            open("dozen");
            offline.viewModel.searchText = "mail";
            tryCompare(grid().view, "count", 1);
            verify(texts(screen).includes("12 standalone apps configured"));
            verify(!texts(screen).includes("No matching apps"));
            offline.viewModel.searchText = "nothing is called that";
            verify(texts(screen).includes("No matching apps"));
            verify(texts(screen).includes("12 standalone apps configured"));
        }

        function test_clears_the_filter_with_its_button_and_with_escape() {
            open("dozen");
            const field = all(screen, each => each instanceof SearchField)[0];
            compare(field.placeholderText, "Filter apps...");
            offline.viewModel.searchText = "mail";
            compare(field.text, "mail");
            control("Clear filter").clicked();
            compare(offline.viewModel.searchText, "");
            field.forceActiveFocus();
            field.text = "wiki";
            compare(offline.viewModel.searchText, "wiki");
            keyClick(Qt.Key_Escape);
            compare(offline.viewModel.searchText, "");
        }

        function test_launches_the_app_whose_card_is_clicked() {
            open("dozen");
            const item = card("News");
            mouseClick(item.card, 20, 20);
            offline.advance(1.1);
            compare(offline.running(), ["News"]);
            tryCompare(item, "isRunning", true);
            verify(item.card.isRunning);
        }

        function test_shows_the_glow_of_running_apps_only() {
            open("running");
            compare(card("Mail").card.isRunning, true);
            compare(card("Calendar").card.isRunning, false);
        }

        function test_offers_every_action_in_the_menu_of_a_card() {
            open("running");
            const item = card("Mail");
            mouseClick(item.card, 60, 60, Qt.RightButton);
            const menu = findMenu();
            tryCompare(menu, "opened", true);
            let labels = [];
            for (let index = 0; index < menu.count; ++index)
                if (menu.itemAt(index) instanceof ContextMenuItem)
                    labels.push(menu.itemAt(index).text);
            compare(labels, ["Launch App", "Restart App", "Quit App", "Update App", "Configure...", "Website", "Settings", "Delete"]);
            verify(menu.itemAt(1).enabled);
            verify(!menu.itemAt(3).enabled);
            menu.close();
        }

        function findMenu() {
            return grid().menu;
        }

        function test_acts_on_the_app_of_the_menu() {
            open("running");
            const menu = findMenu();
            menu.openFor(card("Mail"), 10, 10);
            let sites = [];
            screen.websiteRequested.connect(appId => sites.push(appId));
            menu.websiteRequested(menu.appId);
            compare(sites, [offline.idOf("Mail")]);
            menu.quitRequested(menu.appId);
            offline.advance(1.1);
            verify(!offline.running().includes("Mail"));
            menu.settingsRequested(menu.appId);
            compare(screen.editorSection, "options");
            verify(offline.viewModel.editor);
            offline.viewModel.closeEditor();
            menu.close();
        }

        function test_shows_controls_under_the_pointer() {
            open("dozen");
            const item = card("Mail");
            const at = centerOf(item);
            mouseMove(root, at.x, at.y);
            tryVerify(() => item.isHovering);
            compare(item.card.shadowOpacity, 0.2);
            compare(item.card.shadowRadius, 20);
            compare(item.card.shadowOffset, 10);
            fuzzyCompare(item.card.scale, 1.01, 0.0001);
            control("Launch App");
            control("Configure...").clicked();
            verify(offline.viewModel.editor);
            offline.viewModel.closeEditor();
            mouseMove(root, 2, 2);
            tryVerify(() => !item.isHovering);
            compare(item.card.shadowOpacity, 0.08);
            compare(item.card.shadowRadius, 10);
            compare(item.card.shadowOffset, 5);
            fuzzyCompare(item.card.scale, 1, 0.0001);
        }

        function test_asks_before_it_deletes_and_offers_undo() {
            open("dozen");
            offline.viewModel.requestDelete(offline.idOf("Mail"));
            tryVerify(() => texts(screen.Window.window.contentItem).includes("The app bundle will be removed from disk. You can undo this for a few seconds after deletion."));
            compare(offline.names().length, 12);
            control("Delete").clicked();
            compare(offline.names().length, 11);
            tryVerify(() => texts(screen).includes("\"Mail\" deleted"));
            control("Undo").clicked();
            compare(offline.names().indexOf("Mail"), 0);
            card("Mail");
        }

        function test_lets_the_offer_to_undo_end_after_five_seconds() {
            open("dozen");
            offline.viewModel.requestDelete(offline.idOf("Mail"));
            offline.viewModel.confirmDelete();
            tryVerify(() => all(screen, each => each instanceof UndoToast).length > 0);
            const toast = all(screen, each => each instanceof UndoToast)[0];
            verify(toast.shown);
            offline.advance(4.9);
            verify(toast.shown);
            offline.advance(0.2);
            verify(!toast.shown);
        }

        function test_keeps_the_app_when_the_question_is_cancelled() {
            open("dozen");
            offline.viewModel.requestDelete(offline.idOf("Mail"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => !offline.viewModel.pendingDeleteConfig);
            compare(offline.names().length, 12);
        }

        function test_shows_errors_with_what_may_help() {
            open("failing");
            offline.viewModel.launchApp(offline.idOf("Mail"));
            tryVerify(() => texts(screen.Window.window.contentItem).includes("Launch Failed"));
            verify(texts(screen.Window.window.contentItem).includes("Could not launch 'Mail'. This usually happens if the app bundle was moved or deleted."));
            control("Try Again");
            control("Dismiss").clicked();
            compare(offline.viewModel.errorData, undefined);
        }

        function test_greets_with_templates_before_there_is_any_app() {
            open("empty");
            const shown = texts(screen);
            for (const text of ["Turn Websites into Apps", "Create standalone macOS apps for your favorite websites with their own Dock icons.", "or", "Quick Start", "Create Custom App"])
                verify(shown.includes(text), text);
            for (const name of ["Gmail", "Google Calendar", "YouTube", "Localhost Dev Server"])
                verify(control(name));
            control("Gmail").clicked();
            verify(offline.viewModel.editor);
            compare(offline.viewModel.editor.configuration.appNameInput, "Gmail");
            offline.viewModel.closeEditor();
            compare(offline.names(), []);
            control("Create Custom App").clicked();
            verify(offline.viewModel.editor.isNew);
            offline.viewModel.closeEditor();
        }

        function test_imports_and_exports_and_shows_how_far_that_is() {
            open("dozen");
            offline.viewModel.exportApps();
            compare(offline.exports(), 1);
            offline.tellProgress(3, 12);
            verify(texts(screen).includes("3 of 12 apps"));
        }

        function test_draws_a_tile_for_an_app_without_an_icon() {
            open("thousand");
            const tile = all(card("App 0013"), each => each instanceof AppTile)[0];
            tryCompare(tile, "isDrawn", true);
            const other = all(card("Mail"), each => each instanceof AppTile)[0];
            tryCompare(other, "isDrawn", false);
        }

        function test_makes_delegates_only_for_what_is_near() {
            open("thousand");
            const made = grid().view.contentItem.children.length;
            verify(made > 8 && made < 80, made);
        }

        function test_keeps_long_and_right_to_left_names_within_their_card_data() {
            return [{ tag: "long", name: "A name that goes on and on and would not fit into any card" }, { tag: "Hebrew", name: "דואר אלקטרוני ויומן פגישות משותף" }];
        }

        function test_keeps_long_and_right_to_left_names_within_their_card(row) {
            open("one");
            offline.rename("Mail", row.name);
            const item = card(row.name);
            for (const text of all(item, each => each instanceof Text)) {
                const left = text.mapToItem(item, 0, 0).x;
                verify(left >= 0 && left + text.width <= item.card.width);
            }
        }

        function test_fits_a_small_window_with_text_at_twice_its_size() {
            Appearance.textScale = 2;
            open("outdated");
            screen.anchors.fill = undefined;
            screen.width = 800;
            screen.height = 600;
            waitForRendering(screen);
            for (const button of all(screen, each => each instanceof PressableButtonStyle)) {
                const at = button.mapToItem(screen, 0, 0);
                if (all(grid(), each => each === button).length === 0)
                    verify(at.x >= 0 && at.x + button.width <= 800, button.text + " reaches to " + (at.x + button.width));
            }
        }
    }
}
