"""The manager on a private desktop, driven by pointer and keyboard; things are found as assistive programs find them."""
import http.server
import json
import os
import pathlib
import socket
import struct
import subprocess
import sys
import threading
import unittest
import zlib

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "Runner"))
from desktop import Desktop, wait_for  # noqa: E402

OPTIONS = None
# An address of loopback that no other test serves on; local, so that it wants developer mode.
HOST = "127.83.0.1"
PATIENCE = 60
# The interpreter that has the bindings of the accessibility interface, whichever runs the tests.
INTERPRETER = "/usr/bin/python3"


def picture_file(edge, color):
    """A PNG of one colour."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + bytes(color) * edge for _ in range(edge))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", edge, edge, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


class IconSite:
    """A site on the usual port, where icons are asked for; `address` is empty where that port may not be used."""

    def __init__(self):
        site = self
        self.paths = []

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                site.paths.append(self.path)
                is_icon = self.path == "/apple-touch-icon.png"
                data = picture_file(96, (200, 40, 40)) if is_icon else b"<!doctype html><title>Desk</title>Desk"
                self.send_response(200 if is_icon or self.path == "/" else 404)
                self.send_header("Content-Type", "image/png" if is_icon else "text/html")
                self.send_header("Content-Length", str(len(data)))
                self.end_headers()
                self.wfile.write(data)

            def log_message(self, *_):
                pass

        try:
            self.server = http.server.ThreadingHTTPServer((HOST, 80), Handler)
            self.address = f"http://{HOST}/"
        except PermissionError:
            self.server = http.server.ThreadingHTTPServer((HOST, 0), Handler)
            self.address = f"http://{HOST}:{self.server.server_address[1]}/"
        self.has_usual_port = self.server.server_address[1] == 80
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()


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

    def apps(self):
        return json.loads(self.wrapio("list", "--json"))

    def names(self):
        return [app["displayName"] for app in self.apps()]

    def end_apps(self):
        self.desktop.end_apps("Desk", "Table")

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

    def fill(self, label, text):
        """Replaces what the field holds."""
        self.click("text", label)
        wait_for(lambda: "focused" in self.find("text", label)["states"], f"the keyboard in “{label}”", PATIENCE)
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


def main(options):
    """Runs the tests of the calling module."""
    global OPTIONS
    OPTIONS = options
    unittest.main(module="__main__", argv=[sys.argv[0], *options.tests])
