"""The one process that holds the catalogue, and the commands that go through it."""
import os
import pathlib
import pty
import signal
import subprocess
import unittest

from managers import ManagerTestCase
from support import DONE, NO_SUCH_APP, wait_until


def environment_of(process):
    entries = pathlib.Path(f"/proc/{process}/environ").read_bytes().split(b"\0")
    return dict(entry.split(b"=", 1) for entry in entries if b"=" in entry)


class ARunningManager(ManagerTestCase):
    def test_is_the_only_one_without_a_session_bus(self):
        manager = self.start_manager()
        for arguments in ((), ("--background",), ("open",)):
            second = self.home.wrapio(*arguments)
            self.assertEqual((second.status, second.out, second.err), (DONE, "", ""), arguments)
        self.assertIsNone(manager.process.poll())
        self.assertEqual(self.manager_process(), manager.process.pid)

    def test_is_the_only_one_on_a_session_bus(self):
        self.start_bus()
        manager = self.start_manager()
        self.assertEqual(self.home.wrapio().status, DONE)
        owner = self.home.tool("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/",
                               "--method", "org.freedesktop.DBus.GetConnectionUnixProcessID", "com.wrapio.Wrapio")
        self.assertEqual(owner.out, f"(uint32 {manager.process.pid},)\n", str(owner))

    def test_of_many_that_are_started_at_once_there_is_one(self):
        self.start_bus()
        processes = [self.home.start("--background") for _ in range(12)]
        self.addCleanup(lambda: [process.kill() or process.communicate() for process in processes])
        running = wait_until(lambda: sum(p.poll() is None for p in processes) == 1)
        self.assertTrue(running)
        self.assertEqual([p.returncode for p in processes if p.poll() is not None], [DONE] * 11)
        self.create("Harbour")

    def test_carries_out_every_command(self):
        manager = self.start_manager()
        app = self.create("Harbour", "--icon", str(self.icon))
        self.assertIn("Generating app for Harbour", manager.text())
        self.assertEqual(self.succeeds("list", "--json").json()[0]["id"], app["id"])
        self.succeeds("rename", "Harbour", "Lighthouse")
        self.succeeds("move", "Lighthouse", "1")
        self.succeeds("launch", "Lighthouse")
        self.assertEqual(len(wait_until(self.home.running_apps)), 1)
        self.succeeds("regenerate", "Lighthouse")
        self.assertEqual(self.home.running_apps(), [])
        self.succeeds("export", str(self.scratch / "a.wrapio"))
        self.succeeds("rename", "Lighthouse", "Pier")
        self.assertEqual(self.succeeds("import", str(self.scratch / "a.wrapio")).out, "Imported 1 apps\n")
        self.installation.make_template("2.0.0")
        self.assertEqual(self.succeeds("update-all").out, "Updated 2 of 2 apps\n")
        self.fails(NO_SUCH_APP, "show", "Harbour")
        self.assert_healthy()

    def test_resolves_files_from_the_folder_of_the_caller(self):
        self.start_manager()
        folder = self.scratch / "folder"
        folder.mkdir()
        (folder / "a.css").write_text("p {}")
        result = self.home.wrapio("create", "example.com", "--name", "Harbour", "--no-icon", "--css", "a.css", cwd=folder)
        self.assertEqual(result.status, DONE, str(result))
        self.assertEqual(self.home.records()[0]["customCSS"], "p {}")

    def test_tells_what_it_does_only_to_the_caller_who_asks(self):
        self.start_manager()
        quiet = self.home.wrapio("create", "example.com", "--name", "Quiet", "--no-icon")
        self.assertEqual(quiet.err, "")
        loud = self.home.wrapio("create", "example.com", "--name", "Loud", "--no-icon", "--verbose")
        self.assertIn("[AppLifecycle] Generating app for Loud\n", loud.err)
        self.assertNotIn("[AppLifecycle]", loud.out)

    def test_launches_apps_on_the_display_of_the_caller(self):
        self.home.environment.update(WAYLAND_DISPLAY="wayland-of-the-manager", QT_QPA_PLATFORM="offscreen")
        self.start_manager()
        del self.home.environment["WAYLAND_DISPLAY"]
        self.home.environment.update(DISPLAY=":77", XDG_ACTIVATION_TOKEN="token-7")
        self.create("Harbour")
        self.succeeds("launch", "Harbour")
        found = environment_of(wait_until(self.home.running_apps)[0])
        self.assertEqual((found[b"DISPLAY"], found[b"XDG_ACTIVATION_TOKEN"]), (b":77", b"token-7"))
        self.assertNotIn(b"WAYLAND_DISPLAY", found)
        self.assertEqual(found[b"HOME"], str(self.home.folder).encode())

    def test_asks_the_question_of_a_command_at_its_terminal(self):
        self.start_manager()
        (self.home.bundles / "Stray.app/Contents/Linux").mkdir(parents=True)
        (self.home.bundles / "Stray.app/Contents/Linux/WrapioRunner").write_text("x")
        for answer, stays in ((b"n\n", True), (b"y\n", False)):
            terminal, end = pty.openpty()
            self.addCleanup(os.close, terminal)
            process = subprocess.Popen(self.home.command("doctor", "--clean"), env=self.home.environment, stdin=end,
                                       stdout=subprocess.PIPE, stderr=end)
            os.close(end)
            shown = b""
            while b"[y/N]" not in shown:
                shown += os.read(terminal, 4096)
            os.write(terminal, answer)
            process.communicate(timeout=30)
            self.assertEqual((self.home.bundles / "Stray.app").exists(), stays)

    def test_watches_which_apps_run(self):
        self.start_manager()
        self.create("Harbour")
        self.succeeds("launch", "Harbour")
        os.kill(wait_until(self.home.running_apps)[0], signal.SIGKILL)
        self.assertTrue(wait_until(lambda: not self.succeeds("list", "--json").json()[0]["isRunning"]))

    def test_works_beside_the_manager_of_another_home_on_the_same_bus(self):
        self.start_bus()
        self.start_manager()
        other = self.new_home("other")
        other.environment["DBUS_SESSION_BUS_ADDRESS"] = self.home.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.start_manager(home=other)
        self.create("Here")
        self.create("There", home=other)
        self.assertEqual((self.names(), self.names(other)), (["Here"], ["There"]))


class AStart(ManagerTestCase):
    def test_waits_for_a_command_that_holds_the_catalogue(self):
        self.create("Harbour")
        # As a command does it: the file is locked, and names its process.
        with open(self.home.configuration / ".lock", "r+") as lock:
            subprocess.run(["flock", "--nonblock", str(lock.fileno())], pass_fds=[lock.fileno()], check=True)
            process = self.home.start("--background")
            self.addCleanup(lambda: process.kill() or process.communicate())
            with self.assertRaises(subprocess.TimeoutExpired):
                process.wait(1)
            self.assertFalse((self.home.configuration / ".socket").exists())
        self.assertTrue(wait_until((self.home.configuration / ".socket").exists))
        self.assertIsNone(process.poll())


class ManyProcesses(ManagerTestCase):
    """50 at a time: half of them make an app, half of them take one away that another may take away, too."""

    def make_and_take_away(self, meanwhile=lambda: None):
        doomed = {name: self.create(name)["id"] for name in (f"Doomed {n:02}" for n in range(13))}
        processes = []
        for number in range(25):
            name = f"New {number:02}"
            processes.append(("create", name, self.home.start("create", "example.com", "--name", name, "--no-icon")))
            target = f"Doomed {number % 13:02}"
            processes.append(("delete", target, self.home.start("delete", doomed[target])))
        meanwhile()
        made, gone, statuses = set(), {}, []
        for kind, name, process in processes:
            out, err = process.communicate(timeout=240)
            statuses.append(process.returncode)
            if kind == "create" and process.returncode == DONE:
                made.add(name)
            elif kind == "delete":
                gone.setdefault(name, []).append(process.returncode)
            if process.returncode != DONE:
                self.assertRegex(err.decode(), r"\Awrapio: [^\n]+\n\Z")
        self.assertEqual(len(processes), 50)
        self.assertEqual(len(made), 25, statuses)
        # Whoever came second was told that there is no such app any more.
        self.assertTrue(all(sorted(s) in ([DONE], [DONE, NO_SUCH_APP]) for s in gone.values()), gone)
        self.assertEqual(self.names(), sorted(made))
        self.assertEqual(sorted(p.name for p in self.home.bundles.iterdir()), sorted(f"{name}.app" for name in made))
        self.assert_healthy()

    def test_without_a_manager_end_in_what_their_statuses_say(self):
        self.make_and_take_away()

    def test_with_a_manager_end_in_what_their_statuses_say(self):
        self.start_manager()
        self.make_and_take_away()

    def test_during_the_start_of_a_manager_end_in_what_their_statuses_say(self):
        self.make_and_take_away(self.start_manager)

    def test_during_the_end_of_a_manager_end_in_what_their_statuses_say(self):
        manager = self.start_manager()
        self.make_and_take_away(manager.end)


if __name__ == "__main__":
    unittest.main()
