"""Exports all apps from the dashboard and imports them again, through the dialogs that ask for a file."""
import json
import zipfile

import manager
from manager import ManagerCase, wait_for


class ExchangeTest(ManagerCase):
    def choose_file(self, path):
        """Answers the dialog that asks for a file by typing its path."""
        dialog = wait_for(self.dialog, "the question for a file", manager.PATIENCE)
        wait_for(lambda: int(self.desktop.active_window() or "0", 16) == int(dialog, 16), "the keyboard in it",
                 manager.PATIENCE)
        self.key("ctrl+a")
        self.type(str(path))
        self.key("Return")
        wait_for(lambda: not self.dialog(), "the dialog to go", manager.PATIENCE)

    def dialog(self):
        others = [window for window in self.desktop.windows(self.manager.pid) if window != self.window()]
        return others[0] if others else None

    def test_exports_with_the_mouse_and_imports_with_the_keyboard(self):
        self.create("Desk", "Chair")
        before = self.apps()
        self.start_manager()
        target = self.desktop.root / "all.wrapio"

        self.click("push button", "More actions")
        self.click("menu item", "Export All Apps...")
        self.choose_file(target)
        wait_for(target.exists, "the archive", manager.PATIENCE)
        wait_for(lambda: zipfile.is_zipfile(target), "the archive to be whole", manager.PATIENCE)
        with zipfile.ZipFile(target) as archive:
            self.assertIsNone(archive.testzip())
            self.assertIn("manifest.json", archive.namelist())
            records = json.loads(archive.read("configs.json"))
        self.assertEqual([record["appName"] for record in records], ["Desk", "Chair"])
        self.assertEqual([record["id"] for record in records], [app["id"] for app in before])

        for name in ("Desk", "Chair"):
            self.wrapio("delete", name)
        self.find("heading", "Turn Websites into Apps")
        self.key("shift+Tab")
        self.wait_for_keyboard("push button", "Create App")
        self.key("shift+Tab")
        self.wait_for_keyboard("push button", "More actions")
        self.key("space")
        self.find("menu item", "Import Apps...")
        self.key("Down", "Return")
        self.choose_file(target)
        self.find("push button", "Desk")
        self.find("push button", "Chair")
        wait_for(lambda: self.names() == ["Desk", "Chair"], "the imported apps", manager.PATIENCE)
        self.assertFalse({app["id"] for app in self.apps()} & {app["id"] for app in before})
        for name in ("Desk", "Chair"):
            self.assertTrue((self.bundle(name) / "Contents/Resources/config.json").exists())
        self.picture("imported")

    def test_tells_of_a_file_that_is_no_archive_and_goes_on(self):
        self.create("Desk")
        self.start_manager()
        letter = self.desktop.root / "letter.wrapio"
        letter.write_text("Dear Sir or Madam")
        self.click("push button", "More actions")
        self.click("menu item", "Import Apps...")
        self.choose_file(letter)
        self.find("dialog", "Import Failed")
        self.find("label", "Could not import app collection.")
        self.picture("import-failed")
        self.click("push button", "Dismiss")
        self.wait_until_gone("dialog", "Import Failed")
        self.assertEqual(self.names(), ["Desk"])


if __name__ == "__main__":
    manager.main()
