"""What is left after an app is gone, and what takes it away."""
import plistlib
import re
import shutil
import unittest
import uuid

from support import DONE, FAILED, ProcessTestCase


class AfterDeleting(ProcessTestCase):
    def files_of(self, app):
        """The files in the home whose path or text names the app."""
        marks = (app["id"], app["id"].lower(), app["bundleIdentifier"], app["displayName"])
        named = set()
        for file in self.home.files():
            path = self.home.folder / file
            content = b"" if path.is_symlink() else path.read_bytes()
            if any(mark in file or mark.encode() in content for mark in marks):
                named.add(file)
        return named

    def visit(self, app):
        """Leaves what an app leaves when it has been used."""
        for folder, name, text in (
            (self.home.data / "Wrapio" / "Profiles" / app["id"], "cookies.sqlite", "cookies"),
            (self.home.cache / "Wrapio" / "Profiles" / app["id"], "entry", "cached page"),
            (self.home.cache / "Wrapio" / "previews", app["id"] + ".jpg", "picture"),
        ):
            folder.mkdir(parents=True, exist_ok=True)
            (folder / name).write_text(text)

    def test_only_the_saved_icon_and_the_data_of_the_site_are_left(self):
        app = self.create("Zanzibar", "--icon", str(self.icon))
        other = self.create("Other", "--icon", str(self.icon))
        self.visit(app)
        self.assertGreater(len(self.files_of(app)), 10)
        self.succeeds("delete", "Zanzibar")
        self.assertEqual(
            self.files_of(app),
            {
                f".local/share/Wrapio/{app['id']}.png",
                f".local/share/Wrapio/Profiles/{app['id']}/cookies.sqlite",
                f".cache/Wrapio/Profiles/{app['id']}/entry",
            },
        )
        self.assertEqual([r["id"] for r in self.home.records()], [other["id"]])

    def test_doctor_names_what_is_left_with_its_size_and_removes_it_after_a_yes(self):
        app = self.create("Zanzibar", "--icon", str(self.icon))
        other = self.create("Other", "--icon", str(self.icon))
        self.visit(app)
        self.visit(other)
        self.succeeds("delete", "Zanzibar")
        kept = self.home.files() - self.files_of(app)
        report = self.home.wrapio("doctor", "--json").json()
        self.assertEqual(
            sorted((found["kind"], found["path"].removeprefix(str(self.home.folder) + "/")) for found in report["leftovers"]),
            [
                ("saved icon", f".local/share/Wrapio/{app['id']}.png"),
                ("site cache", f".cache/Wrapio/Profiles/{app['id']}"),
                ("site data", f".local/share/Wrapio/Profiles/{app['id']}"),
            ],
        )
        self.assertEqual({f["bytes"] for f in report["leftovers"] if f["kind"] != "saved icon"}, {7, 11})
        before = self.home.files()
        self.assertEqual(self.home.wrapio("doctor", "--clean").status, DONE)
        self.assertEqual(self.home.files(), before)
        self.assertEqual(self.home.wrapio("doctor", "--clean", "--yes").status, DONE)
        self.assertEqual(self.files_of(app), set())
        self.assertEqual(self.home.files(), kept)
        self.assert_healthy()

    def test_nothing_of_an_app_that_was_renamed_before_is_left(self):
        app = self.create("Zanzibar", "--icon", str(self.icon))
        renamed = self.succeeds("rename", "Zanzibar", "Quelimane", "--json").json()
        self.succeeds("delete", "Quelimane")
        for state in (app, renamed):
            self.assertEqual(self.files_of(state), {f".local/share/Wrapio/{app['id']}.png"})


class TheDoctor(ProcessTestCase):
    def test_finds_strays_of_ours_and_leaves_those_of_others_alone(self):
        self.create("Harbour")
        stray = self.home.bundles / "Stray.app" / "Contents"
        stray.mkdir(parents=True)
        (stray / "Info.plist").write_bytes(plistlib.dumps({"CFBundleIdentifier": "com.wrapio.generated.stray"}))
        foreign = self.home.bundles / "Foreign.app" / "Contents"
        foreign.mkdir(parents=True)
        (foreign / "Info.plist").write_bytes(plistlib.dumps({"CFBundleIdentifier": "org.example.other"}))
        (self.home.bundles / "notes.txt").write_text("mine")
        entry = self.home.applications / "org.example.other.desktop"
        entry.write_text("[Desktop Entry]\nType=Application\nName=Other\nExec=true\n")
        orphan = self.home.data / "Wrapio" / (str(uuid.uuid4()).upper() + ".png")
        orphan.parent.mkdir(parents=True, exist_ok=True)
        orphan.write_bytes(b"x")
        (self.home.data / "Wrapio" / "notes.png").write_bytes(b"mine")
        report = self.home.wrapio("doctor", "--json").json()
        self.assertEqual(
            sorted((f["kind"], f["path"]) for f in report["leftovers"]),
            [("app bundle", str(stray.parent)), ("saved icon", str(orphan))],
        )
        self.assertEqual(self.home.wrapio("doctor", "--clean", "--yes").status, DONE)
        self.assertFalse(stray.parent.exists())
        self.assertFalse(orphan.exists())
        self.assertTrue(foreign.is_dir())
        self.assertTrue(entry.is_file())
        self.assertTrue((self.home.bundles / "notes.txt").is_file())
        self.assertTrue((self.home.data / "Wrapio" / "notes.png").is_file())

    def test_gives_status_1_and_a_remedy_for_every_kind_of_damage(self):
        damages = {
            "bundle is missing": lambda app: shutil.rmtree(self.bundle_of(app)),
            "has no seal": lambda app: shutil.rmtree(self.bundle_of(app) / "Contents" / "_CodeSignature"),
            "was changed": lambda app: (self.bundle_of(app) / "Contents" / "added").write_text("x"),
            "not registered": lambda app: self.entry_of(app).unlink(),
        }
        for text, damage in damages.items():
            with self.subTest(text):
                app = self.create("Harbour")
                damage(app)
                report = self.home.wrapio("doctor")
                self.assertEqual(report.status, FAILED)
                self.assertIn(text, report.out)
                remedy = re.search(r"→ wrapio (regenerate \S+)", report.out)
                self.succeeds(*remedy[1].split())
                self.assert_healthy()
                self.succeeds("delete", "Harbour")

    def test_follows_no_link_out_of_the_folders_that_it_cleans(self):
        outside = self.scratch / "outside"
        outside.mkdir()
        (outside / "precious").write_text("mine")
        profiles = self.home.data / "Wrapio" / "Profiles"
        profiles.mkdir(parents=True)
        link = profiles / str(uuid.uuid4()).upper()
        link.symlink_to(outside)
        self.home.wrapio("doctor", "--clean", "--yes")
        self.assertFalse(link.is_symlink())
        self.assertEqual((outside / "precious").read_text(), "mine")


if __name__ == "__main__":
    unittest.main()
