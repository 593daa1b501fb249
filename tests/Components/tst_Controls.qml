import QtQuick
import QtTest
import Wrapio.Components
import Wrapio.Design

Item {
    id: root

    width: 600
    height: 400

    ActionButton {
        id: button

        text: "Save"
        tip: "Saves"
    }
    IconButton {
        id: icon

        y: 60
        symbol: "pencil"
        text: "Configure..."
    }
    SearchField {
        id: search

        y: 120
        placeholderText: "Filter apps..."
    }
    ToggleSwitch {
        id: toggle

        y: 170
        text: "Developer Mode"
    }
    ValueSlider {
        id: slider

        y: 210
        width: 200
        from: 0.1
        to: 1
        value: 0.5
        label: "Toolbar Opacity"
    }
    SegmentedPicker {
        id: picker

        y: 250
        choices: ["Document Start", "Document End"]
        current: 1
        label: "Inject at:"
    }
    DisclosureGroup {
        id: group

        y: 300
        width: 300
        title: "Custom CSS"

        Rectangle {
            width: 10
            height: 40
        }
    }
    ColorField {
        id: color

        x: 320
        width: 260
        label: "Toolbar Color"
    }
    CodeEditor {
        id: code

        x: 320
        y: 250
        label: "Custom CSS"
        placeholderText: "/* Custom CSS styles */"
        byteLimit: 10
    }

    SignalSpy {
        id: clicks

        target: button
        signalName: "clicked"
    }
    SignalSpy {
        id: toggles

        target: toggle
        signalName: "toggled"
    }
    SignalSpy {
        id: moves

        target: slider
        signalName: "moved"
    }
    SignalSpy {
        id: choices

        target: picker
        signalName: "chosen"
    }
    SignalSpy {
        id: foldings

        target: group
        signalName: "toggled"
    }
    SignalSpy {
        id: colors

        target: color
        signalName: "edited"
    }
    SignalSpy {
        id: codes

        target: code
        signalName: "edited"
    }

    TestCase {
        name: "Controls"
        when: windowShown

        function init() {
            Appearance.reducedMotion = true;
            root.Window.window.requestActivate();
            for (const spy of [clicks, toggles, moves, choices, foldings, colors, codes])
                spy.clear();
        }

        function test_buttons_yield_while_they_are_pressed() {
            mousePress(button);
            compare(button.contentItem.scale, 0.95);
            compare(button.contentItem.opacity, 0.9);
            compare(button.contentItem.transformOrigin, Item.Center);
            mouseRelease(button);
            compare(button.contentItem.scale, 1);
            compare(button.contentItem.opacity, 1);
            compare(clicks.count, 1);
        }

        function test_buttons_yield_within_a_tenth_of_a_second() {
            Appearance.reducedMotion = false;
            compare(Animations.press, 100);
            mousePress(button);
            verify(button.contentItem.scale > 0.95);
            tryCompare(button.contentItem, "scale", 0.95);
            mouseRelease(button);
            tryCompare(button.contentItem, "scale", 1);
        }

        function test_buttons_work_by_keyboard_data() {
            return [{ tag: "Enter", key: Qt.Key_Return }, { tag: "Space", key: Qt.Key_Space }];
        }

        function test_buttons_work_by_keyboard(row) {
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.visualFocus);
            keyClick(row.key);
            compare(clicks.count, 1);
        }

        function test_buttons_that_are_disabled_do_nothing() {
            button.enabled = false;
            mouseClick(button);
            compare(clicks.count, 0);
            button.enabled = true;
        }

        function test_everything_has_a_name_and_a_role_data() {
            return [
                { tag: "button", item: button, name: "Save", role: Accessible.Button },
                { tag: "symbol", item: icon, name: "Configure...", role: Accessible.Button },
                { tag: "search", item: search, name: "Filter apps...", role: Accessible.EditableText },
                { tag: "switch", item: toggle, name: "Developer Mode", role: Accessible.CheckBox },
                { tag: "slider", item: slider, name: "Toolbar Opacity", role: Accessible.Slider },
                { tag: "picker", item: picker, name: "Inject at:", role: Accessible.PageTabList }
            ];
        }

        function test_everything_has_a_name_and_a_role(row) {
            compare(row.item.Accessible.name, row.name);
            compare(row.item.Accessible.role, row.role);
        }

        function test_search_takes_escape_to_empty_and_then_to_leave() {
            const leaving = createTemporaryQmlObject("import QtTest; SignalSpy { signalName: 'leaveRequested' }", root);
            leaving.target = search;
            search.forceActiveFocus();
            search.text = "mail";
            keyClick(Qt.Key_Escape);
            compare(search.text, "");
            compare(leaving.count, 0);
            keyClick(Qt.Key_Escape);
            compare(leaving.count, 1);
        }

        function test_switches_turn_by_click_and_by_key() {
            const before = toggle.checked;
            mouseClick(toggle);
            compare(toggle.checked, !before);
            toggle.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(toggle.checked, before);
            compare(toggles.count, 2);
        }

        function test_sliders_stay_between_their_ends() {
            slider.forceActiveFocus(Qt.TabFocusReason);
            for (let step = 0; step < 12; ++step)
                keyClick(Qt.Key_Down);
            fuzzyCompare(slider.value, 0.1, 1e-9);
            for (let step = 0; step < 12; ++step)
                keyClick(Qt.Key_Up);
            fuzzyCompare(slider.value, 1, 1e-9);
            verify(moves.count > 0);
            mouseClick(slider, 1, slider.height / 2);
            fuzzyCompare(slider.value, 0.1, 1e-9);
        }

        function test_pickers_ask_for_another_choice_by_click_and_by_key() {
            mouseClick(picker, 10, picker.height / 2);
            compare(choices.signalArguments[0][0], 0);
            picker.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Left);
            compare(choices.count, 2);
            keyClick(Qt.Key_Right);
            compare(choices.count, 2);
        }

        function test_groups_ask_to_be_opened_and_show_what_is_in_them_then() {
            compare(group.height, Metrics.controlHeight);
            mouseClick(group, 20, 10);
            compare(foldings.signalArguments[0][0], true);
            group.expanded = true;
            tryVerify(() => group.height >= Metrics.controlHeight + 40);
            group.expanded = false;
        }

        function test_colours_are_shown_as_they_are_typed_and_faulty_ones_marked() {
            color.hex = "#1E90FF";
            compare(color.shown, Qt.rgba(0x1E / 255, 0x90 / 255, 1, 1));
            verify(!color.isFaulty);
            color.hex = "FFF";
            verify(color.isFaulty);
            compare(color.shown, color.fallback);
            color.hex = "";
            verify(!color.isFaulty);
        }

        function test_colours_are_mixed_into_text() {
            color.mix(0, 1, 1);
            compare(colors.signalArguments[0][0], "#FF0000");
        }

        function test_code_counts_its_bytes_against_the_limit() {
            code.byteCount = 10;
            verify(!code.tooLong);
            code.byteCount = 11;
            verify(code.tooLong);
        }

        function test_code_tells_what_the_person_types_only() {
            code.text = "a";
            compare(codes.count, 0);
            code.forceActiveFocus();
            keyClick("b");
            compare(codes.count, 1);
            verify(codes.signalArguments[0][0].includes("b"));
        }
    }
}
