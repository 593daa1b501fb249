"""A collection that moves from one home to another."""
import os
import pty
import subprocess
import unittest
import zipfile

from support import DONE, FAILED, ProcessTestCase, png, wait_until

NAMES = ("Plain {}", "Größe {} 🎈", "日本語 {}", "a'b {}", "$HOME `{}`", "Ω≈ç√ {}", "(100) {}", "{} & co")


class ACollection(ProcessTestCase):
    def make(self, count):
        """Makes `count` varied apps, one of every kind that the options allow."""
        css, js = self.scratch / "a.css", self.scratch / "a.js"
        css.write_text("body { content: '🎈\\2028' }")
        js.write_text("alert(1) // \u2028 ü")
        for number in range(count):
            options = ["--name", NAMES[number % len(NAMES)].format(number)]
            if number % 2:
                icon = self.scratch / "icon.png"
                icon.write_bytes(png(16 + number, (number, 255 - number, number * 2)))
                options += ["--icon", str(icon)]
            if number % 3 == 0:
                options += ["--css", str(css), "--js", str(js), "--js-at", "documentStart"]
            if number % 5 == 0:
                options += ["--theme-color", f"#10{number:02x}30", "--theme-opacity", "0.35", "--border"]
            if number % 7 == 0:
                options += ["--user-agent", f"Agent/{number} (ü)", "--allow-host", "a.example", "--no-badge"]
            address = f"localhost:{3000 + number}/ü?q={number}" if number % 4 == 0 else f"site{number}.example/a%20b#c"
            self.create(options[1], *options[2:], *(["--dev"] if number % 4 == 0 else []), address=address)

    def comparable(self, home):
        """The records without what an import gives anew."""
        own = ("id", "sortOrder", "lastUpdated")
        return [{key: value for key, value in record.items() if key not in own} for record in home.records()]

    def pixels(self, home, record):
        path = home.data / "Wrapio" / (record["id"] + ".png")
        if not path.exists():
            return None
        shown = subprocess.run(["convert", str(path), "rgba:-"], capture_output=True, check=True)
        return shown.stdout

    def test_of_a_hundred_apps_arrives_whole_in_another_home(self):
        self.make(100)
        archive = self.scratch / "All apps.wrapio"
        exported = self.succeeds("export", str(archive))
        self.assertEqual(exported.out, f"Exported 100 apps to {archive}\n")
        other = self.new_home("other")
        self.addCleanup(other.end_started_apps)
        self.assertEqual(self.succeeds("import", str(archive), home=other).out, "Imported 100 apps\n")
        self.assertEqual(self.comparable(other), self.comparable(self.home))
        before, after = self.home.records(), other.records()
        self.assertEqual([r["sortOrder"] for r in after], list(range(100)))
        self.assertFalse({r["id"] for r in before} & {r["id"] for r in after})
        pictures = [self.pixels(self.home, record) for record in before]
        self.assertEqual(sum(picture is not None for picture in pictures), 50)
        self.assertTrue(all(self.pixels(other, r) == p for r, p in zip(after, pictures)))
        self.assertEqual(len(list(other.bundles.iterdir())), 100)
        self.assert_healthy(other)
        self.assert_all_start(other)

    def assert_all_start(self, home):
        """Every bundle's program starts, as the desktop starts it."""
        for app in self.succeeds("list", "--json", home=home).json():
            self.assertTrue(self.entry_of(app, home).exists(), app["displayName"])
            program = self.bundle_of(app) / "Contents" / "Linux" / "WrapioRunner"
            started = subprocess.Popen([program], env=home.environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL)
            self.addCleanup(started.wait)
            self.addCleanup(started.kill)
            found = wait_until(lambda: started.pid in [s["process"] for s in home.started_apps()])
            self.assertTrue(found, app["displayName"])

    def test_is_named_from_the_folder_that_the_command_is_given_in(self):
        self.create("Harbour", "--icon", str(self.icon))
        folder = self.scratch / "folder"
        folder.mkdir()
        result = self.home.wrapio("export", "mine.wrapio", "--json", cwd=folder)
        self.assertEqual(result.status, DONE, str(result))
        self.assertEqual(result.json(), {"exported": 1, "path": str(folder / "mine.wrapio")})
        with zipfile.ZipFile(folder / "mine.wrapio") as archive:
            self.assertIsNone(archive.testzip())
        self.assertEqual(self.home.wrapio("import", "mine.wrapio", cwd=folder).status, DONE)

    def test_leaves_nothing_in_the_temporary_folder(self):
        self.create("Harbour")
        archive = self.scratch / "a.wrapio"
        self.succeeds("export", str(archive))
        self.succeeds("import", str(archive))
        self.fails(FAILED, "import", str(self.icon))
        self.fails(FAILED, "export", str(self.scratch / "no" / "folder" / "a.wrapio"))
        self.assertEqual(list(self.home.temporary.iterdir()), [])

    def test_with_apps_that_cannot_be_made_is_imported_with_a_word_about_each(self):
        self.create("Harbour")
        self.create("Lighthouse")
        archive = self.scratch / "a.wrapio"
        self.succeeds("export", str(archive))
        other = self.new_home("other")
        other.bundles.parent.mkdir()
        other.bundles.write_text("a file where the folder should be")
        result = other.wrapio("import", str(archive))
        self.assertEqual((result.status, result.out), (FAILED, "Imported 2 apps\n"), str(result))
        self.assertRegex(result.err, r"\Awrapio: 2 of them [^\n]*Harbour: [^\n]*Lighthouse: [^\n]*\n\Z")
        self.assertEqual([r["appName"] for r in other.records()], ["Harbour", "Lighthouse"])

    def test_shows_progress_on_a_terminal_and_none_in_a_pipe(self):
        self.create("Harbour")
        archive = self.scratch / "a.wrapio"
        self.assertEqual(self.succeeds("export", str(archive)).err, "")
        terminal, end = pty.openpty()
        self.addCleanup(os.close, terminal)
        command = self.home.command("import", str(archive))
        done = subprocess.run(command, env=self.home.environment, stdin=end, stdout=subprocess.PIPE, stderr=end)
        os.close(end)
        self.assertEqual((done.returncode, done.stdout), (DONE, b"Imported 1 apps\n"))
        shown = os.read(terminal, 65536).decode()
        self.assertIn("[1/1] Making apps", shown)
        self.assertTrue(shown.endswith("\r\x1b[K"), shown)


if __name__ == "__main__":
    unittest.main()
