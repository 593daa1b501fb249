"""Takes an app through its life in the dashboard, and looks at what assistive programs see of it."""
import icon_site
import manager
from icon_site import IconSite
from manager import ManagerCase, wait_for


class DashboardTest(ManagerCase):
    def setUp(self):
        super().setUp()
        self.site = IconSite()
        self.addCleanup(self.site.close)

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

    def test_is_all_there_for_assistive_programs(self):
        self.create_from(self.site.address, "Desk")
        self.start_manager()
        things = {(thing["role"], thing["name"]): thing for thing in self.things() if "showing" in thing["states"]}
        for role, name in (("heading", "App Inventory"), ("text", "Filter apps..."), ("push button", "More actions"),
                           ("push button", "Create App"), ("list", "Apps"), ("push button", "Desk")):
            self.assertIn((role, name), things)
        self.assertIn(icon_site.HOST, things["push button", "Desk"]["description"])
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
    manager.main()
