"""Drives the dashboard as a person does: types, clicks, drags and looks."""
import argparse
import pathlib

import manager
from manager import IconSite, ManagerCase, wait_for


class DashboardTest(ManagerCase):
    def setUp(self):
        super().setUp()
        self.site = IconSite()
        self.addCleanup(self.site.close)

    def bundle(self, name):
        return self.desktop.root / "home/Applications/Wrapio Apps" / f"{name}.app"

    def create(self, name):
        self.wrapio("create", self.site.address, "--name", name, "--dev", "--no-icon")

    def test_takes_an_app_from_its_address_to_its_end(self):
        self.start_manager()
        self.click("push button", "Create Custom App")
        self.create_by_typing()
        self.launch_by_click()
        self.rename()
        self.delete_and_undo()

    def create_by_typing(self):
        self.fill("Website URL", self.site.address)
        self.click("check box", "Developer Mode")
        self.fill("App Name", "Desk")
        self.click("push button", "Fetch Icon")
        if self.site.has_usual_port:
            wait_for(lambda: "/apple-touch-icon.png" in self.site.paths, "the icon to be fetched")
        wait_for(lambda: "enabled" in self.find("push button", "Fetch Icon")["states"], "the fetch to end")
        self.picture("form")
        self.click("push button", "Create App")
        wait_for(lambda: (self.bundle("Desk") / "Contents/Resources/AppIcon.icns").exists(), "the bundle")
        self.find("push button", "Desk")
        self.assertEqual(self.names(), ["Desk"])
        icon = self.desktop.data / "Wrapio" / (self.apps()[0]["id"] + ".png")
        self.assertTrue(icon.exists() or not self.site.has_usual_port)

    def launch_by_click(self):
        self.wait_until_gone("push button", "Cancel")
        self.click("push button", "Desk")
        wait_for(lambda: self.desktop.process_of("Desk"), "the app to run", 60)
        wait_for(lambda: "running" in self.find("push button", "Desk")["description"], "the card to tell of it", 60)
        self.picture("running")
        self.wrapio("quit", "Desk")
        wait_for(lambda: not self.desktop.process_of("Desk"), "the app to end", 60)

    def rename(self):
        self.wrapio("edit", "Desk")
        self.fill("App Name", "Table")
        self.click("push button", "Save & Close")
        wait_for(lambda: self.bundle("Table").exists() and not self.bundle("Desk").exists(), "the bundle's new name")
        self.find("push button", "Table")

    def delete_and_undo(self):
        self.wait_until_gone("push button", "Cancel")
        self.choose("Table", "Delete")
        self.click("push button", "Delete")
        wait_for(lambda: not self.bundle("Table").exists(), "the bundle to go")
        self.click("push button", "Undo")
        wait_for(self.bundle("Table").exists, "the bundle to come back")
        self.assertEqual(self.names(), ["Table"])

    def test_filters_reorders_by_dragging_and_exports(self):
        for name in ("Desk", "Chair", "Table"):
            self.create(name)
        self.start_manager()
        self.find("push button", "Table")
        self.drag("Desk", "Table")
        wait_for(lambda: self.names() == ["Chair", "Table", "Desk"], "the new order")
        self.key("ctrl+f")
        self.type("tab")
        self.wait_until_gone("push button", "Chair")
        self.find("push button", "Table")
        self.key("Escape")
        self.find("push button", "Chair")
        self.export()

    def drag(self, card, onto):
        from_x, from_y = self.middle(self.find("push button", card))
        to_x, to_y = self.middle(self.find("push button", onto))
        run = self.desktop.run
        run("xdotool", "mousemove", "--sync", str(from_x), str(from_y), "mousedown", "1")
        for step in range(1, 13):
            run("xdotool", "mousemove", "--sync", str(from_x + (to_x - from_x) * step // 12),
                str(from_y + (to_y - from_y) * step // 12))
        wait_for(lambda: self.names() == ["Chair", "Table", "Desk"], "the move before the button is let go")
        run("xdotool", "mouseup", "1")

    def export(self):
        target = self.desktop.root / "all.wrapio"
        self.click("push button", "More actions")
        self.click("menu item", "Export All Apps...")
        wait_for(lambda: len(self.desktop.windows(self.manager.pid)) == 2, "the question for a file", 60)
        self.key("ctrl+a")
        self.type(str(target))
        self.key("Return")
        wait_for(lambda: target.exists() and target.stat().st_size > 0, "the archive", 60)

    def test_is_raised_by_a_second_start_and_ends_with_its_window(self):
        self.create("Desk")
        self.start_manager()
        window = self.window()
        self.desktop.run("xdotool", "windowminimize", window)
        wait_for(lambda: "IsViewable" not in self.desktop.run("xwininfo", "-id", window), "the window to be iconified")
        self.wrapio()
        wait_for(lambda: "IsViewable" in self.desktop.run("xwininfo", "-id", window), "the window to come back")
        self.assertNotIn("not found", self.desktop.run("xprop", "-id", window, "_NET_WM_ICON"))
        # Nobody shows status items here, so the program could not be reached without its window.
        self.key("ctrl+w")
        self.assertEqual(self.manager.wait(60), 0)

    def test_is_all_there_for_assistive_programs(self):
        self.create("Desk")
        self.start_manager()
        things = {(thing["role"], thing["name"]): thing for thing in self.things() if "showing" in thing["states"]}
        for role, name in (("heading", "App Inventory"), ("text", "Filter apps..."), ("push button", "More actions"),
                           ("push button", "Create App"), ("list", "Apps"), ("push button", "Desk")):
            self.assertIn((role, name), things)
        self.assertIn(manager.HOST, things["push button", "Desk"]["description"])
        self.wrapio("edit", "Desk")
        self.find("text", "Website URL")
        things = {(thing["role"], thing["name"]) for thing in self.things() if "showing" in thing["states"]}
        for role, name in (("text", "Website URL"), ("text", "App Name"), ("push button", "Fetch Icon"),
                           ("push button", "Upload"), ("check box", "Developer Mode"), ("push button", "Save & Close"),
                           ("push button", "Remove App"), ("push button", "Cancel")):
            self.assertIn((role, name), things)
        unnamed = [thing for thing in self.things() if "focusable" in thing["states"] and not thing["name"]
                   and thing["role"] in ("push button", "text", "check box", "slider", "radio button", "menu item")]
        self.assertEqual(unnamed, [])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--wrapio", required=True)
    parser.add_argument("--pictures", type=pathlib.Path, required=True)
    parser.add_argument("tests", nargs="*")
    manager.main(parser.parse_args())
