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
    AppConfigurationEditor {
        id: sheet

        editor: offline.viewModel ? offline.viewModel.editor : null
        templates: offline.viewModel ? offline.viewModel.templates : []
    }

    TestCase {
        name: "Editor"
        when: windowShown

        function init() {
            Appearance.reducedMotion = true;
            sheet.section = "";
            offline.fixture = "dozen";
        }

        function cleanup() {
            offline.viewModel.closeEditor();
            offline.runPending();
            tryCompare(sheet, "visible", false);
        }

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

        function texts() {
            return all(root.Window.contentItem, each => each instanceof Text && each.text !== "").map(each => each.text);
        }

        function control(text) {
            const found = all(root.Window.contentItem, each => each instanceof PressableButtonStyle && each.text === text);
            return found.length > 0 ? found[found.length - 1] : null;
        }

        function field(label) {
            return all(root.Window.contentItem, each => each instanceof InputField && each.label === label)[0];
        }

        function create() {
            offline.viewModel.createNewApp();
            tryCompare(sheet, "opened", true);
            return offline.viewModel.editor.configuration;
        }

        function edit(name) {
            offline.viewModel.editApp(offline.idOf(name));
            tryCompare(sheet, "opened", true);
            return offline.viewModel.editor.configuration;
        }

        function type(text) {
            for (const letter of text)
                keyClick(letter);
        }

        function test_begins_empty_for_a_new_app() {
            const form = create();
            compare(form.urlInput, "");
            compare(field("Website URL").text, "");
            for (const text of ["Quick Start", "Website URL", "App Name", "Icon", "Icon for your standalone app bundle", "Fetch Icon", "Upload", "Developer Mode", "Enable to use localhost and private network URLs", "Custom CSS", "Custom JavaScript", "Appearance", "Toolbar Color", "Toolbar Opacity", "100%", "Window Border", "Adds a thin outline matching toolbar color", "Reset to Default", "Cancel", "Create App"])
                verify(texts().includes(text), text);
            verify(!texts().includes("Remove App"));
            verify(!texts().includes("Save & Close"));
        }

        function test_begins_with_the_record_when_it_is_edited() {
            edit("Mail");
            compare(field("Website URL").text, "https://mail.example.com/");
            compare(field("App Name").text, "Mail");
            verify(texts().includes("Save & Close"));
            verify(texts().includes("Remove App"));
        }

        function test_begins_with_the_template_that_was_chosen() {
            offline.viewModel.createFromTemplate("localhost-dev");
            tryCompare(sheet, "opened", true);
            compare(field("Website URL").text, "localhost:3000");
            verify(texts().includes("Security checks for internal addresses are bypassed in dev mode"));
            verify(texts().includes("URL examples: localhost:3000, 127.0.0.1:8080, myapp.local"));
            verify(control("Create App").enabled);
        }

        function test_makes_an_app_of_what_is_typed() {
            create();
            tryVerify(() => field("Website URL").activeFocus);
            verify(!control("Create App").enabled);
            type("typed.example.com");
            verify(control("Create App").enabled);
            field("App Name").forceActiveFocus();
            type("Typed");
            control("Create App").clicked();
            tryCompare(sheet, "visible", false);
            compare(offline.names().length, 13);
            compare(offline.saved("Typed", "address"), "https://typed.example.com");
        }

        function test_tells_of_an_address_that_cannot_be_used_and_stays_open() {
            create();
            tryVerify(() => field("Website URL").activeFocus);
            type("localhost:3000");
            verify(texts().includes("Please enter a valid URL"));
            verify(field("Website URL").faulty);
            keyClick(Qt.Key_Return);
            verify(sheet.visible);
            verify(offline.viewModel.editor);
        }

        function test_accepts_a_local_address_as_soon_as_developer_mode_is_on() {
            const form = create();
            tryVerify(() => field("Website URL").activeFocus);
            type("localhost:3000");
            const row = all(root.Window.contentItem, each => each instanceof SwitchRow && each.title === "Developer Mode")[0];
            row.toggled(true);
            verify(form.isDevMode);
            verify(!texts().includes("Please enter a valid URL"));
            verify(control("Create App").enabled);
        }

        function test_fills_the_form_from_a_quick_start_chip() {
            const form = create();
            control("YouTube").clicked();
            compare(form.appNameInput, "YouTube");
            compare(field("App Name").text, "YouTube");
        }

        function test_opens_the_groups_of_code_and_inserts_the_dark_mode() {
            const form = edit("Mail");
            verify(!form.isCSSExpanded);
            control("Custom CSS").clicked();
            verify(form.isCSSExpanded);
            tryVerify(() => control("Dark Mode (Invert)") !== null);
            verify(texts().includes("Insert Template"));
            verify(texts().includes("/* Custom CSS styles */"));
            verify(texts().includes("0 of 102400 bytes"));
            control("Dark Mode (Invert)").clicked();
            compare(form.customCSS.length, 286);
            tryVerify(() => texts().includes("286 of 102400 bytes"));
            control("Custom JavaScript").clicked();
            tryVerify(() => texts().includes("// Custom JavaScript"));
            for (const text of ["Inject at:", "Document Start", "Document End", "Scripts run automatically when the app loads"])
                verify(texts().includes(text), text);
            control("Save & Close").clicked();
            compare(offline.saved("Mail", "css").length, 286);
        }

        function test_tells_of_code_that_is_too_long_and_stays_open() {
            const form = edit("Mail");
            form.customCSS = "x".repeat(102401);
            control("Save & Close").clicked();
            verify(texts().includes("Custom CSS exceeds 100KB limit"));
            verify(sheet.visible);
        }

        function test_keeps_the_opacity_from_falling_below_a_tenth() {
            const form = edit("Mail");
            const slider = all(root.Window.contentItem, each => each instanceof ValueSlider && each.label === "Toolbar Opacity")[0];
            slider.forceActiveFocus();
            for (let step = 0; step < 20; ++step)
                keyClick(Qt.Key_Down);
            fuzzyCompare(form.themeOpacity, 0.1, 1e-9);
            verify(texts().includes("10%"));
        }

        function test_takes_colour_and_opacity_back_but_not_the_border() {
            const form = edit("Mail");
            form.themeColor = "#1E90FF";
            form.themeOpacity = 0.5;
            form.themeBorderEnabled = true;
            compare(field("Toolbar Color").text, "#1E90FF");
            control("Reset to Default").clicked();
            compare(form.themeColor, undefined);
            compare(form.themeOpacity, undefined);
            compare(form.themeBorderEnabled, true);
            compare(field("Toolbar Color").text, "");
        }

        function test_asks_for_a_file_to_upload() {
            create();
            control("Upload").clicked();
            compare(offline.openDialogs(), 1);
        }

        function test_shows_that_an_icon_is_being_fetched() {
            const form = edit("Mail");
            verify(control("Fetch Icon").enabled);
            control("Fetch Icon").clicked();
            verify(form.isFetchingIcon);
            verify(!control("Fetch Icon").enabled);
            verify(all(root.Window.contentItem, each => each instanceof BusyMark).length > 0);
        }

        function test_guards_the_removal_of_every_app() {
            edit("Mail");
            control("Remove App").clicked();
            tryVerify(() => control("Delete Only This App") !== null);
            verify(control("Remove All"));
            tryVerify(() => control("Delete Only This App").activeFocus);
            control("Delete Only This App").clicked();
            tryCompare(sheet, "visible", false);
            compare(offline.names().length, 11);
            verify(offline.viewModel.undoableDelete);
        }

        function test_says_that_an_app_is_gone() {
            edit("Mail");
            offline.remove("Mail");
            tryVerify(() => texts().includes("Error: App not found"));
            control("Close").clicked();
            tryCompare(sheet, "visible", false);
        }

        function test_leaves_no_trace_of_a_new_app_that_is_cancelled() {
            create();
            compare(offline.names().length, 13);
            control("Cancel").clicked();
            compare(offline.names().length, 12);
        }

        function test_hints_at_a_name_that_another_app_has() {
            const form = create();
            form.urlInput = "other.example.com";
            form.appNameInput = "Mail";
            tryVerify(() => texts().some(text => text.startsWith("“Mail” has the same bundle")));
        }

        function test_offers_a_name_that_can_be_a_file() {
            const form = create();
            form.urlInput = "other.example.com";
            form.appNameInput = "A/B";
            tryVerify(() => offline.viewModel.editor.safeName !== "");
            const safe = offline.viewModel.editor.safeName;
            control("Use “" + safe + "” instead").clicked();
            compare(form.appNameInput, safe);
        }

        function test_says_when_no_bundle_could_be_made() {
            offline.fixture = "failing";
            edit("Mail");
            control("Save & Close").clicked();
            tryVerify(() => texts().includes("Generation Failed"));
            verify(texts().includes("Could not create the app bundle. Check if you have enough disk space."));
            verify(control("Try Again") === null);
            control("Dismiss").clicked();
            verify(sheet.visible);
        }

        function test_opens_at_the_options_for_settings() {
            sheet.section = "options";
            edit("Mail");
            const view = all(root.Window.contentItem, each => each instanceof ConfigurationView)[0];
            tryVerify(() => view.scrolling.contentY > 50);
        }

        function test_scrolls_to_what_has_the_keyboard() {
            const form = edit("Mail");
            const view = all(root.Window.contentItem, each => each instanceof ConfigurationView)[0];
            const reset = control("Reset to Default");
            reset.forceActiveFocus(Qt.TabFocusReason);
            const y = reset.mapToItem(view.scrolling, 0, 0).y;
            verify(y >= 0 && y + reset.height <= view.scrolling.height, y);
            verify(form);
        }
    }
}
