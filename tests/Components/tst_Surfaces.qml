import QtQuick
import QtTest
import Wrapio.Components
import Wrapio.Design

Item {
    id: root

    width: 600
    height: 500

    AppCard {
        id: card

        width: 190
        height: 180
    }
    AppTile {
        id: tile

        x: 220
        name: "mail"
    }
    HintLine {
        id: hint

        x: 320
        width: 120
        symbol: "info.circle.fill"
        text: "A line that is long enough to be broken"
    }
    ProgressLine {
        id: progress

        x: 460
        current: 3
        total: 9
        label: "Updating"
    }
    ToastBubble {
        id: toast

        message: "\"Mail\" deleted"
        actionText: "Undo"
    }
    Sheet {
        id: sheet

        title: "Question"

        Rectangle {
            width: parent.width
            height: 60
        }
        footer: ActionButton {
            id: inSheet

            text: "Fine"
        }
    }
    ContextMenu {
        id: menu

        ContextMenuItem {
            id: first

            text: "Launch App"
        }
        ContextMenuItem {
            text: "Quit App"
            enabled: false
        }
    }
    SwitchRow {
        id: row

        y: 300
        width: 300
        title: "Window Border"
        caption: "Adds a thin outline"
    }
    SignalSpy {
        id: closing

        target: sheet
        signalName: "closeRequested"
    }
    SignalSpy {
        id: chosen

        target: first
        signalName: "triggered"
    }
    SignalSpy {
        id: undone

        target: toast
        signalName: "actionChosen"
    }
    SignalSpy {
        id: switched

        target: row
        signalName: "toggled"
    }

    // As a card does under the pointer.
    Item {
        id: risen

        y: 300
        width: 200
        height: 176
        scale: 1.01

        AppTile {
            id: risenTile

            x: 64
            y: 24
        }
        IconButton {
            id: risenButton

            x: 4
            y: 120
            symbol: "trash.fill"
            text: "Delete"
        }
    }

    TestCase {
        name: "Surfaces"
        when: windowShown

        function test_shows_no_seams_in_what_rises_with_a_card_data() {
            return [{ tag: "tile", item: risenTile }, { tag: "button", item: risenButton }];
        }

        function test_shows_no_seams_in_what_rises_with_a_card(data) {
            waitForRendering(root, 1000);
            const picture = grabImage(root);
            // Down along the left side: off the symbol or the letter, and past where the corners are rounded.
            const top = data.item.mapToItem(root, 6, 0);
            const bottom = data.item.mapToItem(root, 6, data.item.height);
            const shown = [];
            for (let y = Math.round(top.y) + 6; y < Math.round(bottom.y) - 6; ++y)
                shown.push(picture.pixel(Math.round(top.x), y).toString());
            verify(shown.length > 8, shown.length);
            for (const each of shown)
                compare(each, shown[0]);
        }

        function init() {
            Appearance.reducedMotion = true;
        }

        function test_cards_rise_under_the_pointer() {
            compare([card.shadowOpacity, card.shadowRadius, card.shadowOffset, card.scale], [0.08, 10, 5, 1]);
            card.isHovering = true;
            compare([card.shadowOpacity, card.shadowRadius, card.shadowOffset], [0.2, 20, 10]);
            fuzzyCompare(card.scale, 1.01, 1e-9);
            card.isHovering = false;
            fuzzyCompare(card.scale, 1, 1e-9);
        }

        function test_cards_rise_by_the_snappy_spring() {
            Appearance.reducedMotion = false;
            let highest = 0;
            const watch = () => highest = Math.max(highest, card.rise);
            card.riseChanged.connect(watch);
            card.isHovering = true;
            tryCompare(card, "rise", 1);
            verify(highest > 1.01, highest);
            card.riseChanged.disconnect(watch);
            card.isHovering = false;
            tryCompare(card, "rise", 0);
        }

        function test_glows_breathe_only_while_an_app_runs_and_motion_is_wanted() {
            const glow = Array.from(card.children).find(child => child instanceof RunningGlowModifier);
            verify(!glow.pulse);
            card.isRunning = true;
            verify(!glow.pulse);
            tryCompare(glow, "opacity", 1);
            Appearance.reducedMotion = false;
            verify(glow.pulse);
            card.isRunning = false;
            tryCompare(glow, "visible", false);
            verify(!glow.pulse);
        }

        function test_tiles_show_the_first_letter_data() {
            return [
                { tag: "mail", letter: "M" },
                { tag: "  (news)", letter: "N" },
                { tag: "éclair", letter: "É" },
                { tag: "דואר", letter: "ד" },
                { tag: "7 days", letter: "7" },
                { tag: "!?", letter: "•" },
                { tag: "no name", name: "", letter: "•" }
            ];
        }

        function test_tiles_show_the_first_letter(row) {
            compare(ColorTools.initial(row.name ?? row.tag), row.letter);
        }

        function test_tiles_are_drawn_when_there_is_no_picture() {
            verify(tile.isDrawn);
        }

        function test_hints_break_within_their_width() {
            verify(hint.height > 20);
            verify(hint.childrenRect.width <= 120);
            compare(hint.Accessible.name, hint.text);
        }

        function test_progress_tells_how_far_it_is() {
            compare(progress.Accessible.role, Accessible.ProgressBar);
            compare(progress.Accessible.description, "3 of 9");
        }

        function test_sheets_ask_to_be_closed_with_escape() {
            sheet.open();
            tryCompare(sheet, "opened", true);
            keyClick(Qt.Key_Escape);
            compare(closing.count, 1);
            verify(sheet.visible);
            sheet.close();
            tryCompare(sheet, "visible", false);
        }

        function test_sheets_keep_the_keyboard_to_themselves() {
            sheet.open();
            tryCompare(sheet, "opened", true);
            for (let step = 0; step < 4; ++step)
                keyClick(Qt.Key_Tab);
            verify(inSheet.activeFocus);
            sheet.close();
            tryCompare(sheet, "visible", false);
        }

        function test_menus_take_arrows_and_enter() {
            chosen.clear();
            menu.popup(root, 100, 100);
            tryCompare(menu, "opened", true);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(chosen.count, 1);
            tryCompare(menu, "visible", false);
        }

        function test_toasts_come_and_go_and_offer_their_action() {
            verify(!toast.visible);
            toast.shown = true;
            tryCompare(toast, "opacity", 1);
            tryVerify(() => toast.y + toast.height <= root.height);
            mouseClick(toast, toast.width - 30, toast.height / 2);
            compare(undone.count, 1);
            compare(toast.Accessible.name, "\"Mail\" deleted");
            toast.shown = false;
            tryCompare(toast, "visible", false);
        }

        function test_rows_of_switches_turn_wherever_they_are_clicked_but_show_what_their_owner_says() {
            switched.clear();
            mouseClick(row, 10, row.height / 2);
            compare(switched.count, 1);
            compare(switched.signalArguments[0][0], true);
            mouseClick(row, 10, row.height / 2);
            compare(switched.signalArguments[1][0], true);
        }
    }
}
