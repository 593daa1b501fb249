"""What the desktop's own tools see of an app."""
import unittest

from support import ProcessTestCase, wait_until


class AnAppOnTheDesktop(ProcessTestCase):
    def scheme_of(self, app):
        return "wrapio-" + app["id"].lower()

    def handlers(self, app):
        return self.home.tool("gio", "mime", "x-scheme-handler/" + self.scheme_of(app)).out

    def icons_of(self, app):
        theme = self.home.data / "icons" / "hicolor"
        return sorted(p.parts[-3] for p in theme.glob(f"*/apps/{self.desktop_id(app)}.png"))

    def test_has_a_valid_entry_that_names_its_bundle(self):
        app = self.create("Harbour & Sons", "--icon", str(self.icon))
        entry = self.entry_of(app)
        self.assert_valid_entry(entry)
        lines = entry.read_text("utf-8").split("\n")
        self.assertIn("Name=Harbour & Sons", lines)
        self.assertIn("Icon=" + self.desktop_id(app), lines)
        self.assertIn("StartupWMClass=" + self.desktop_id(app), lines)
        self.assertIn("X-Wrapio-Bundle=" + app["bundlePath"], lines)
        self.assertEqual(self.icons_of(app), ["128x128", "256x256", "48x48", "512x512", "64x64"])

    def test_handles_its_own_scheme_until_it_is_deleted(self):
        app = self.create("Harbour")
        self.assertIn(self.entry_of(app).name, self.handlers(app))
        self.succeeds("delete", "Harbour")
        self.assertNotIn(self.entry_of(app).name, self.handlers(app))

    def test_is_started_by_the_desktop_with_the_address_as_one_argument(self):
        app = self.create("Harbour 100 € (ü)")
        address = self.scheme_of(app) + "://import-session?source=x%20y&z='$HOME'"
        opened = self.home.tool("gio", "open", address)
        self.assertEqual(opened.status, 0, str(opened))
        (started,) = wait_until(self.home.started_apps)
        program = str(self.bundle_of(app) / "Contents" / "Linux" / "WrapioRunner")
        self.assertEqual(started["arguments"][0], program)
        self.assertEqual(len(started["arguments"]), 2)
        self.assertTrue(started["arguments"][1].startswith(self.scheme_of(app) + "://import-session"))
        self.assertTrue(self.succeeds("show", app["id"], "--json").json()["isRunning"])

    def test_is_found_by_the_desktop_in_a_home_with_blanks_and_quotes(self):
        home = self.new_home("Bob's \"home\" $HOME `x` ü\\")
        self.addCleanup(home.end_started_apps)
        app = self.create("Harbour", home=home)
        self.assert_valid_entry(self.entry_of(app, home))
        opened = home.tool("gio", "open", self.scheme_of(app) + "://import-session?source=x")
        self.assertEqual(opened.status, 0, str(opened))
        (started,) = wait_until(home.started_apps)
        self.assertEqual(started["arguments"], [
            str(self.bundle_of(app) / "Contents" / "Linux" / "WrapioRunner"),
            self.scheme_of(app) + "://import-session?source=x",
        ])
        self.assert_healthy(home)

    def test_is_not_found_any_more_once_it_was_renamed_under_its_old_entry(self):
        before = self.create("Harbour", "--icon", str(self.icon))
        after = self.succeeds("rename", "Harbour", "Pier", "--json").json()
        self.assertEqual(self.icons_of(before), [])
        self.assertEqual(len(self.icons_of(after)), 5)
        handlers = self.handlers(after)
        self.assertIn(self.entry_of(after).name, handlers)
        self.assertNotIn(self.entry_of(before).name, handlers)

    def test_offers_to_be_edited_by_the_program_that_made_it(self):
        app = self.create("Harbour")
        text = self.entry_of(app).read_text("utf-8")
        action = text.split("[Desktop Action edit]\n", 1)[1]
        self.assertIn(str(self.installation.binary), action)
        self.assertIn(app["id"].lower(), action)


if __name__ == "__main__":
    unittest.main()
