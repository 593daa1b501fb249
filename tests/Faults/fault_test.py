"""Full disks, folders that may not be written, missing templates and failing tools.

Runs in a mount namespace of its own, so that disks of any size can be made without being the machine's administrator.
"""
import os
import shutil
import subprocess
import sys
import unittest

from support import DONE, FAILED, Home, ProcessTestCase, png

PAGE = 4096


def mount(*arguments):
    subprocess.run(["mount", *arguments], check=True, capture_output=True)


class FaultTestCase(ProcessTestCase):
    def mounted(self, *arguments):
        mount(*(str(a) for a in arguments))
        self.addCleanup(lambda: subprocess.run(["umount", "-l", str(arguments[-1])], check=False, capture_output=True))

    def read_only(self, folder):
        self.mounted("--bind", folder, folder)
        mount("-o", "remount,bind,ro", str(folder))

    def writable_again(self, folder):
        subprocess.run(["umount", "-l", str(folder)], check=True, capture_output=True)

    def assert_complete(self, records, home=None):
        """The catalogue holds exactly `records`, and what lists it says so."""
        listed = self.succeeds("list", "--json", home=home).json()
        self.assertEqual([a["id"] for a in listed], [r["id"] for r in records])
        self.assertEqual((home or self.home).records(), records)

    def repair(self):
        report = self.home.wrapio("doctor", "--clean", "--yes", "--json").json()
        for check in report["checks"]:
            if check["severity"] == "problem":
                self.succeeds(*check["remedy"].split()[1:])


class FullDisks(FaultTestCase):
    def setUp(self):
        super().setUp()
        self.disk = self.scratch / "disk"
        self.disk.mkdir()
        self.mounted("-t", "tmpfs", "-o", "size=8m", "tmpfs", self.disk)
        self.home = Home(self.installation, self.disk / "home")
        self.icon.write_bytes(png(256, (9, 99, 199)))

    def fill(self, free):
        """Leaves `free` bytes."""
        filler = self.disk / "filler"
        with open(filler, "wb", buffering=0) as file:
            try:
                while True:
                    file.write(b"\0" * PAGE)
            except OSError:
                pass
            file.truncate(max(0, file.tell() // PAGE * PAGE - free))
        return filler

    def test_during_a_creation_leave_what_was_and_nothing_of_the_new_app(self):
        self.create("Alpha", "--icon", str(self.icon))
        before = self.home.records()
        outcomes = set()
        for pages in (0, 1, 2, 3, 4, 6, 8, 10, 12, 16, 20, 24, 32, 40, 48, 64, 80, 100, 128, 160, 200, 256, 400):
            with self.subTest(f"{pages} pages"):
                files = self.home.files()
                filler = self.fill(pages * PAGE)
                result = self.home.wrapio("create", "example.com", "--name", "New", "--icon", str(self.icon), "--json")
                filler.unlink()
                outcomes.add(result.status)
                if result.status == DONE:
                    self.assertEqual([r["appName"] for r in self.home.records()], ["Alpha", "New"])
                    self.repair()
                    self.assert_healthy()
                    self.succeeds("delete", "New")
                    self.home.wrapio("doctor", "--clean", "--yes")
                else:
                    self.assertEqual(result.status, FAILED, str(result))
                    self.assert_one_line_of_error(result, pages)
                    self.assertRegex(result.err, "No space left on device|icon could not be saved")
                    self.assert_complete(before)
                    self.assertEqual(self.home.files() - files - {".config/Wrapio/.lock"}, set())
                self.assert_healthy()
        self.assertEqual(outcomes, {DONE, FAILED})

    def another_position_of(self, app):
        """Moving an app to where it is changes nothing, and so cannot fail."""
        return "2" if self.home.records()[0]["id"] == app else "1"

    def test_during_a_change_keep_every_app_and_can_be_repaired(self):
        for name in ("Alpha", "Beta", "Gamma"):
            self.create(name, "--icon", str(self.icon))
        ids = sorted(r["id"] for r in self.home.records())
        outcomes = set()
        for pages in (0, 1, 2, 4, 8, 16, 24, 48, 96, 150, 256):
            for number, command in enumerate((
                ("edit", ids[0], "--user-agent", f"Agent/{pages}", "--icon", str(self.icon)),
                ("rename", ids[1], f"Renamed {pages}"),
                ("move", ids[2], self.another_position_of(ids[2])),
                ("regenerate", ids[0]),
            )):
                with self.subTest(f"{pages} pages, {command[0]}"):
                    filler = self.fill(pages * PAGE)
                    result = self.home.wrapio(*command)
                    filler.unlink()
                    outcomes.add((number, result.status))
                    if result.status != DONE:
                        self.assertEqual(result.status, FAILED, str(result))
                        self.assert_one_line_of_error(result, command)
                    self.assertEqual(sorted(r["id"] for r in self.home.records()), ids)
                    self.repair()
                    self.assert_healthy()
                    for record in self.home.records():
                        icon = self.home.data / "Wrapio" / (record["id"] + ".png")
                        self.assertTrue(icon.read_bytes().endswith(b"IEND\xaeB`\x82"))
        self.assertEqual({number for number, status in outcomes if status == FAILED}, {0, 1, 2, 3})

    def test_still_allow_to_list_examine_and_delete(self):
        self.create("Alpha", "--icon", str(self.icon))
        self.create("Beta")
        filler = self.fill(0)
        self.assertEqual(len(self.succeeds("list", "--json").json()), 2)
        self.home.wrapio("doctor", "--json").json()
        deleted = self.home.wrapio("delete", "Alpha")
        filler.unlink()
        if deleted.status == DONE:
            self.assertEqual([r["appName"] for r in self.home.records()], ["Beta"])
        else:
            self.assert_one_line_of_error(deleted, "delete")
            self.assertEqual([r["appName"] for r in self.home.records()], ["Alpha", "Beta"])
        self.repair()
        self.assert_healthy()

    def test_of_the_temporary_folder_do_not_matter(self):
        small = self.scratch / "small"
        small.mkdir()
        self.mounted("-t", "tmpfs", "-o", "size=4k", "tmpfs", small)
        (small / "filler").write_bytes(b"\0" * PAGE)
        self.home.environment["TMPDIR"] = str(small)
        self.create("Alpha", "--icon", str(self.icon))
        self.assert_healthy()


class ReadOnlyFolders(FaultTestCase):
    def test_refuse_new_apps_with_the_reason_and_keep_everything(self):
        self.create("Alpha", "--icon", str(self.icon))
        records = self.home.records()
        for folder in (self.home.configuration, self.home.bundles, self.home.data / "Wrapio", self.home.folder):
            with self.subTest(str(folder)):
                files = self.home.files()
                self.read_only(folder)
                refused = self.fails(FAILED, "create", "example.com", "--name", "New", "--icon", str(self.icon))
                self.assertRegex(refused.err, "Read-only file system|icon could not be saved")
                self.succeeds("list")
                self.succeeds("show", "Alpha")
                self.home.wrapio("doctor", "--json").json()
                self.writable_again(folder)
                self.assert_complete(records)
                self.assertEqual(self.home.files(), files)
                self.assert_healthy()

    def test_refuse_changes_with_the_reason_and_lose_no_app(self):
        commands = (("rename", "Alpha", "Omega"), ("edit", "Alpha", "--border"), ("delete", "Alpha"), ("regenerate", "Alpha"))
        for number, command in enumerate(commands):
            for folder in ("configuration", "bundles", "folder"):
                with self.subTest(f"{folder}: {command[0]}"):
                    self.home = self.new_home(f"home-{number}-{folder}")
                    self.create("Alpha")
                    self.create("Beta")
                    place = getattr(self.home, folder)
                    self.read_only(place)
                    refused = self.fails(FAILED, *command)
                    self.assertRegex(refused.err, "Read-only file system|its bundle could not be deleted")
                    self.writable_again(place)
                    names = {r["appName"] for r in self.home.records()}
                    self.assertIn("Beta", names)
                    self.assertTrue(command[0] == "delete" or names & {"Alpha", "Omega"})
                    self.repair()
                    self.assert_healthy()

    def test_of_desktop_entries_do_not_stop_an_app_and_are_told_by_the_doctor(self):
        self.home.applications.mkdir(parents=True)
        self.read_only(self.home.applications)
        self.create("Alpha")
        report = self.home.wrapio("doctor", "--json")
        self.assertEqual(report.status, FAILED)
        self.assertIn("not registered", report.out)
        self.writable_again(self.home.applications)
        self.succeeds("regenerate", "Alpha")
        self.assert_healthy()


class DamagedTemplates(FaultTestCase):
    def test_that_are_missing_are_named_and_nothing_is_left(self):
        self.create("Alpha")
        before = self.home.files(), self.home.records()
        shutil.rmtree(self.installation.template)
        for make in (lambda: None, lambda: self.installation.template.write_text("no folder")):
            make()
            refused = self.fails(FAILED, "create", "example.com", "--name", "New", "--icon", str(self.icon))
            self.assertIn("WrapioRunner.app is missing", refused.err)
            self.assertEqual((self.home.files(), self.home.records()), before)
            self.assertEqual(len(self.succeeds("list", "--json").json()), 1)
            self.assertEqual(self.succeeds("update-all", "--json").json()["failed"], [])

    def test_that_are_missing_keep_the_bundles_that_are_there(self):
        app = self.create("Alpha")
        shutil.rmtree(self.installation.template)
        self.fails(FAILED, "regenerate", "Alpha")
        self.assertEqual([r["id"] for r in self.home.records()], [app["id"]])
        self.installation.make_template("1.0.0")
        self.succeeds("regenerate", "Alpha")
        self.assert_healthy()

    def test_without_information_give_an_app_whose_launch_says_what_is_wrong(self):
        (self.installation.template / "Contents" / "Info.plist").unlink()
        created = self.home.wrapio("create", "example.com", "--name", "Alpha", "--no-icon")
        if created.status == DONE:
            self.fails(FAILED, "launch", "Alpha")
            self.assertEqual(self.home.wrapio("doctor").status, FAILED)
        else:
            self.assert_one_line_of_error(created, "create")
            self.assertEqual(self.home.records(), [])

    def test_whose_program_may_not_be_run_give_an_app_whose_launch_says_so(self):
        (self.installation.template / "Contents" / "Linux" / "WrapioRunner").chmod(0o644)
        self.home.wrapio("create", "example.com", "--name", "Alpha", "--no-icon")
        if self.home.records():
            failed = self.fails(FAILED, "launch", "Alpha")
            self.assertIn("Alpha", failed.err)
        self.assertEqual(self.home.started_apps(), [])

    def test_of_odd_things_are_copied_or_refused(self):
        template = self.installation.template / "Contents"
        for description, make in {
            "a pipe": lambda: os.mkfifo(template / "odd"),
            "a link to itself": lambda: (template / "odd").symlink_to("odd"),
            "a link out of the bundle": lambda: (template / "odd").symlink_to("/etc/passwd"),
            "a folder that is closed": lambda: (template / "odd").mkdir(0o000),
        }.items():
            with self.subTest(description):
                make()
                result = self.home.wrapio("create", "example.com", "--name", "Alpha", "--no-icon")
                if result.status == DONE:
                    self.assert_healthy()
                    self.succeeds("delete", "Alpha")
                else:
                    self.assert_one_line_of_error(result, description)
                self.assertEqual(self.home.records(), [])
                self.assertEqual([p for p in self.home.bundles.iterdir()], [])
                self.installation.make_template("1.0.0")


class FailingTools(FaultTestCase):
    TOOL = "/usr/bin/update-desktop-database"

    def replace_tool(self, text):
        tool = self.scratch / "tool"
        tool.write_text(text)
        tool.chmod(0o755)
        self.mounted("--bind", tool, self.TOOL)

    def test_do_not_stop_an_app_from_being_made_renamed_and_deleted(self):
        for text in ("#!/bin/sh\necho broken >&2\nexit 1\n", "#!/bin/sh\nkill -9 $$\n", "not a program\n", "#!/nowhere\n",
                     "#!/bin/sh\nhead -c 3000000 /dev/zero\nhead -c 3000000 /dev/zero >&2\nexit 3\n"):
            with self.subTest(text):
                self.replace_tool(text)
                app = self.create("Alpha", "--icon", str(self.icon))
                self.assertTrue(self.entry_of(app).is_file())
                self.succeeds("rename", "Alpha", "Beta")
                self.succeeds("delete", "Beta")
                self.assertFalse(self.entry_of(app).exists())
                self.assertEqual([p for p in self.home.bundles.iterdir()], [])
                self.assertEqual(list((self.home.data / "icons").rglob("*.png")), [])
                subprocess.run(["umount", "-l", self.TOOL], check=True)
                self.home.wrapio("doctor", "--clean", "--yes")


if __name__ == "__main__":
    if os.environ.get("WRAPIO_OWN_MOUNTS") != "1":
        users = [] if os.getuid() == 0 else ["--user", "--map-root-user"]
        environment = dict(os.environ, WRAPIO_OWN_MOUNTS="1")
        command = ["unshare", *users, "--mount", sys.executable, "-B", *sys.argv]
        sys.exit(subprocess.run(command, env=environment).returncode)
    unittest.main()
