"""The manager on a private desktop, driven by pointer and keyboard; things are found as assistive programs find them."""
import argparse
import json
import os
import pathlib
import socket
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "Runner"))
from desktop import Desktop, Site, wait_for  # noqa: E402

OPTIONS = None
PATIENCE = 60
# The interpreter that has the bindings of the accessibility interface, whichever runs the tests.
INTERPRETER = "/usr/bin/python3"


class ManagerCase(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.addCleanup(self.end_apps)
        self.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        if os.geteuid() == 0:
            # The engine's sandbox cannot be used by root; shipped code never switches it off.
            self.desktop.environment["QTWEBENGINE_DISABLE_SANDBOX"] = "1"
        self.manager = None

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except Exception:
            self.picture("failed-" + self._testMethodName)
            raise

    def picture(self, name):
        OPTIONS.pictures.mkdir(parents=True, exist_ok=True)
        self.desktop.save_screen(OPTIONS.pictures / f"dashboard-{name}.png")

    # The program

    def start_manager(self):
        self.manager = self.desktop.start([OPTIONS.wrapio])
        self.wait_for_dashboard()

    def wait_for_dashboard(self):
        wait_for(self.window, "the dashboard's window", PATIENCE)
        self.find("heading", "App Inventory") if self.names() else self.find("heading", "Turn Websites into Apps")

    def window(self, title="Wrapio"):
        """The id of the manager's window with that title."""
        for window in self.desktop.windows(self.manager.pid):
            if self.desktop.property(window, "_NET_WM_NAME").strip('"').startswith(title):
                return window
        return None

    def wrapio(self, *arguments):
        done = subprocess.run([OPTIONS.wrapio, *arguments], env=self.desktop.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, check=False)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return done.stdout.decode()

    def create(self, *names):
        """Makes apps of a site of this test."""
        site = Site()
        self.addCleanup(site.close)
        site.page("/", "<!doctype html><title>Start</title>Start")
        for name in names:
            self.create_from(site.address("/"), name)

    def create_from(self, address, name):
        self.wrapio("create", address, "--name", name, "--dev", "--no-icon")

    def bundle(self, name):
        return self.desktop.root / "home/Applications/Wrapio Apps" / f"{name}.app"

    def apps(self):
        return json.loads(self.wrapio("list", "--json"))

    def names(self):
        return [app["displayName"] for app in self.apps()]

    def end_apps(self):
        self.desktop.end_apps("Desk", "Chair", "Table")

    # What is on the screen

    def things(self):
        """Everything that assistive programs see of the manager."""
        try:
            return json.loads(self.desktop.run(INTERPRETER, "-B", str(HERE / "accessible.py"), str(self.manager.pid)) or "[]")
        except json.JSONDecodeError:
            return []

    def showing(self, role, name):
        found = [thing for thing in self.things()
                 if thing["role"] == role and thing["name"] == name and "showing" in thing["states"]]
        return found[-1] if found else None

    def find(self, role, name):
        """The thing on the screen with that role and name, waited for."""
        return wait_for(lambda: self.showing(role, name), f"the {role} “{name}”", PATIENCE)

    def wait_until_gone(self, role, name):
        wait_for(lambda: not self.showing(role, name), f"the {role} “{name}” to go", PATIENCE)

    def middle(self, thing):
        x, y, width, height = thing["area"]
        return x + width // 2, y + height // 2

    def find_at_rest(self, role, name):
        """The same, once it has stopped moving: what opens grows into its place."""
        seen = [self.find(role, name)]

        def rests():
            seen.append(self.showing(role, name))
            return seen[-1] and seen[-1]["area"] == (seen[-2] or {}).get("area")
        wait_for(rests, f"the {role} “{name}” to come to rest", PATIENCE)
        return seen[-1]

    def click(self, role, name, button=1):
        x, y = self.middle(self.find_at_rest(role, name))
        self.desktop.run("xdotool", "mousemove", "--sync", str(x), str(y), "click", str(button))

    def key(self, *keys):
        self.desktop.run("xdotool", "key", *keys)

    def type(self, text):
        self.desktop.run("xdotool", "type", "--delay", "15", text)

    def wait_for_keyboard(self, role, name):
        wait_for(lambda: "focused" in self.find(role, name)["states"], f"the keyboard at “{name}”", PATIENCE)

    def fill(self, label, text):
        """Replaces what the field holds."""
        self.click("text", label)
        self.wait_for_keyboard("text", label)
        self.key("ctrl+a")
        self.type(text)

    def choose(self, card, entry):
        """Chooses from the context menu of a card."""
        self.click("push button", card, button=3)
        self.click("menu item", entry)

    def free_port(self):
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            return probe.getsockname()[1]


def main():
    """Runs the tests of the calling module."""
    global OPTIONS
    parser = argparse.ArgumentParser()
    for option in ("--wrapio", "--services", "--pictures"):
        parser.add_argument(option, type=pathlib.Path, required=True)
    OPTIONS, rest = parser.parse_known_args()
    unittest.main(module="__main__", argv=[sys.argv[0], *rest])
