"""The manager and an app on a Wayland compositor that draws nothing."""
import argparse
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Runner"))
from desktop import PATIENCE, Site, wait_for

GREEN = (0, 160, 0)


class WaylandTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="wrapio-wayland-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        runtime = self.home / "run"
        (runtime / "bus").mkdir(parents=True)
        runtime.chmod(0o700)
        kept = {name: value for name, value in os.environ.items() if name in ("PATH", "LANG")}
        self.environment = {**kept, "HOME": str(self.home), "XDG_RUNTIME_DIR": str(runtime), "LC_ALL": "C.UTF-8",
                            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={runtime / 'bus' / 'socket'}"}
        self.start("dbus-daemon", "--session", "--nofork", "--address=" + self.environment["DBUS_SESSION_BUS_ADDRESS"])
        wait_for((runtime / "bus/socket").exists, "the session bus")
        self.start("weston", "--backend=headless-backend.so", "--socket=wayland-test", "--width=1280", "--height=800")
        wait_for((runtime / "wayland-test").exists, "the compositor")
        # The compositor has no keyboard, which the toolkit's usual way to enter text does not expect.
        self.environment.update(WAYLAND_DISPLAY="wayland-test", QT_IM_MODULE="compose")

    def start(self, *command):
        process = subprocess.Popen([str(part) for part in command], env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.end, process)
        return process

    @staticmethod
    def end(process):
        process.terminate()
        try:
            process.wait(timeout=30)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def wrapio(self, *arguments):
        return subprocess.run([OPTIONS.wrapio, *arguments], env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=PATIENCE, check=False)

    def succeeds(self, *arguments):
        done = self.wrapio(*arguments)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return done.stdout

    @staticmethod
    def uses_wayland(process):
        maps = pathlib.Path(f"/proc/{process}/maps").read_text()
        return "libwayland-client" in maps

    def is_running(self):
        return json.loads(self.succeeds("list", "--json"))[0]["isRunning"]

    def test_manager_and_app_start_and_the_apps_picture_comes_from_itself(self):
        site = Site()
        self.addCleanup(site.close)
        site.page("/", f"<title>Way</title><body style='background:rgb{GREEN}'>")
        manager = self.start(OPTIONS.wrapio)
        wait_for((self.home / ".config/Wrapio/.socket").exists, "the manager")
        wait_for(lambda: self.uses_wayland(manager.pid), "the manager's connection to the compositor")
        self.succeeds("create", site.address("/"), "--name", "Way", "--dev", "--no-icon")
        self.succeeds("launch", "Way")
        wait_for(self.is_running, "the app")
        picture = self.home / "way.png"

        def shows():
            if self.wrapio("capture", "Way", str(picture)).returncode != 0:
                return False
            pixel = subprocess.run(["convert", str(picture), "-format", "%[fx:int(255*p{w/2,h/2}.r)] "
                                    "%[fx:int(255*p{w/2,h/2}.g)] %[fx:int(255*p{w/2,h/2}.b)]", "info:"],
                                   stdout=subprocess.PIPE, check=True).stdout.split()
            return all(abs(int(value) - wanted) <= 3 for value, wanted in zip(pixel, GREEN))
        wait_for(shows, "a picture of the page")
        self.succeeds("quit", "Way")
        wait_for(lambda: not self.is_running(), "the end of the app")
        manager.terminate()
        self.assertEqual(manager.wait(timeout=PATIENCE), 0)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--wrapio", required=True)
    OPTIONS, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])
