"""A private desktop for tests: X server, window manager, session bus, folders, a fake browser and a web server.

Nothing outside of its temporary folder is read or written, and only processes that it started are ended.
"""
import http.server
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import threading
import time

WIDTH, HEIGHT = 1280, 900


# The time after which something is taken not to happen at all. No test measures time: machines that test are slow.
PATIENCE = 120


def wait_for(condition, what, timeout=PATIENCE):
    """The first true answer of `condition`, asked until `timeout` seconds have passed."""
    end = time.monotonic() + timeout
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"waited {timeout:.0f} s for {what}")
        time.sleep(0.02)


class Site:
    """A web server on two loopback hosts; pages are set by the test, requests are kept."""

    def __init__(self, port=0, context=None):
        self.pages = {}
        self.guards = {}
        self.held = {}
        self.requests = []
        site = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                site.requests.append((self.headers.get("Host", ""), self.path, dict(self.headers)))
                if site.guards.get(self.path, None) not in (None, self.headers.get("Authorization")):
                    self.send_response(401)
                    self.send_header("WWW-Authenticate", 'Basic realm="Test"')
                    self.send_header("Content-Length", "0")
                    self.end_headers()
                    return
                status, headers, body = site.pages.get(self.path.split("?")[0], (404, {}, ""))
                data = body.encode()
                self.send_response(status)
                for key, value in {"Content-Type": "text/html; charset=utf-8", **headers}.items():
                    self.send_header(key, value)
                self.send_header("Content-Length", str(len(data)))
                self.end_headers()
                self.wfile.write(data[:len(data) // 2])
                if self.path in site.held:
                    self.wfile.flush()
                    site.held[self.path].wait(PATIENCE)
                self.wfile.write(data[len(data) // 2:])

            def log_message(self, *_):
                pass

        first = http.server.ThreadingHTTPServer(("127.0.0.1", port), Handler)
        self.port = first.server_address[1]
        self.servers = [first, http.server.ThreadingHTTPServer(("127.0.0.2", self.port), Handler)]
        for server in self.servers:
            if context:
                # Each connection shakes hands in a thread of its own: one that fails must not stop the server.
                server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
            server.handle_error = lambda *_: None
            threading.Thread(target=server.serve_forever, daemon=True).start()

    def page(self, path, body, headers=None, status=200):
        self.pages[path] = (status, headers or {}, body)

    def guard(self, path, authorization):
        """Asks for a password before the page at `path` is given."""
        self.guards[path] = authorization

    def hold(self, path):
        """Gives only half of the page at `path` until what is returned here is set."""
        return self.held.setdefault(path, threading.Event())

    def address(self, path="/", host="127.0.0.1"):
        return f"http://{host}:{self.port}{path}"

    def seen(self, path):
        return [request for request in self.requests if request[1] == path]

    def close(self):
        for event in self.held.values():
            event.set()
        for server in self.servers:
            server.shutdown()
            server.server_close()


class Services:
    """The stand-in for notifications and the settings portal."""

    def __init__(self, desktop, program):
        self.desktop = desktop
        self.process = subprocess.Popen([str(program)], env=desktop.environment, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, start_new_session=True)
        desktop.processes.append(self.process)
        self.lines = []
        threading.Thread(target=self._read, daemon=True).start()
        wait_for(lambda: "ready" in self.lines, "the desktop's services")

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.decode(errors="replace").rstrip("\n"))

    def say(self, command):
        self.process.stdin.write(command.encode() + b"\n")
        self.process.stdin.flush()

    def heard(self, start):
        return [line for line in self.lines if line.startswith(start)]

    def close(self):
        self.process.stdin.close()
        self.process.wait(timeout=PATIENCE)


class Desktop:
    def __init__(self):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="desktop-"))
        self.processes = []
        home = self.root / "home"
        self.runtime = self.root / "run"
        folders = {
            "HOME": home,
            "XDG_DATA_HOME": home / ".local/share",
            "XDG_CONFIG_HOME": home / ".config",
            "XDG_CACHE_HOME": home / ".cache",
            "XDG_STATE_HOME": home / ".local/state",
            "XDG_RUNTIME_DIR": self.runtime,
        }
        for folder in folders.values():
            folder.mkdir(parents=True, exist_ok=True)
        self.runtime.chmod(0o700)
        self.data = folders["XDG_DATA_HOME"]
        self.cache = folders["XDG_CACHE_HOME"]
        self.environment = {
            key: value for key, value in os.environ.items()
            if key not in ("WAYLAND_DISPLAY", "XAUTHORITY", "DISPLAY", "GTK_THEME", "LANGUAGE")
            and not key.startswith(("LC_", "WEBKIT_", "GSK_"))
        }
        self.environment.update({key: str(value) for key, value in folders.items()})
        self.environment.update({"GDK_BACKEND": "x11", "LC_ALL": "C.UTF-8", "NO_AT_BRIDGE": "1"})
        self._start_display()
        self._start_bus()
        self._start_window_manager()
        self._make_browser(folders["XDG_CONFIG_HOME"])

    def _start_display(self):
        # Without -noreset the server would start over, dropping whoever connects, each time its last client leaves.
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-nolisten", "tcp", "-noreset"],
                   pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        assert number, "Xvfb did not start"
        self.environment["DISPLAY"] = ":" + number

    def _start_bus(self):
        # The engine binds the socket's folder into its sandbox, so it gets one of its own.
        folder = self.runtime / "bus"
        folder.mkdir()
        address = f"unix:path={folder / 'socket'}"
        self.start(["dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"])
        wait_for((folder / "socket").exists, "the session bus")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        # An address where nobody listens; without one, a daemon of its own might be started for each process.
        (self.runtime / "no-bus").mkdir()
        self.no_bus = {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.runtime / 'no-bus' / 'socket'}"}

    def _start_window_manager(self):
        # It says when it has started.
        ready = self.root / "window-manager-ready"
        self.start(["openbox", "--sm-disable", "--startup", f"touch {ready}"])
        wait_for(ready.exists, "the window manager")

    def _make_browser(self, config):
        self.opened_file = self.root / "opened"
        program = self.root / "browser"
        program.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >> "{self.opened_file}"\n'
                           f'env > "{self.root / "browser-environment"}"\n')
        program.chmod(0o755)
        entries = self.data / "applications"
        entries.mkdir(parents=True)
        (entries / "fake-browser.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Fake Browser\nExec={program} %u\n"
            "MimeType=x-scheme-handler/http;x-scheme-handler/https;x-scheme-handler/mailto;\n")
        (config / "mimeapps.list").write_text(
            "[Default Applications]\n" + "".join(
                f"x-scheme-handler/{scheme}=fake-browser.desktop\n" for scheme in ("http", "https", "mailto")))

    def opened(self):
        """The addresses that the default browser was given."""
        return self.opened_file.read_text().split() if self.opened_file.exists() else []

    def start(self, command, pass_fds=(), environment=None, capture=False, stdin=subprocess.DEVNULL):
        stream = subprocess.PIPE if capture else subprocess.DEVNULL
        process = subprocess.Popen([str(part) for part in command], env={**self.environment, **(environment or {})},
                                   stdin=stdin, stdout=stream, stderr=stream, pass_fds=pass_fds,
                                   start_new_session=True)
        self.processes.append(process)
        return process

    def run(self, *command, environment=None, timeout=PATIENCE):
        return subprocess.run(command, env={**self.environment, **(environment or {})}, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=timeout,
                              check=False).stdout.decode(errors="replace")

    def windows(self, pid):
        """The ids of the managed windows of the process `pid`."""
        line = self.run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2]
        ids = [part.strip() for part in line.split(",") if part.strip()]
        return [window for window in ids
                if self.run("xprop", "-id", window, "_NET_WM_PID").strip().endswith(f"= {pid}")]

    def process_of(self, name):
        """The process that runs the app's bundle; nothing when there is none."""
        for entry in pathlib.Path("/proc").iterdir():
            try:
                program = os.readlink(entry / "exe") if entry.name.isdigit() else ""
            except OSError:
                continue
            if program.startswith(str(self.root)) and f"/{name}.app/" in program:
                return int(entry.name)
        return None

    def end_apps(self, *names):
        for process in filter(None, map(self.process_of, names)):
            os.kill(process, signal.SIGKILL)

    def active_window(self):
        """The id of the window that has the keyboard, if any."""
        return self.run("xprop", "-root", "_NET_ACTIVE_WINDOW").partition("# ")[2].split(",")[0].strip()

    def property(self, window, name):
        return self.run("xprop", "-id", window, name).partition("= ")[2].strip()

    def geometry(self, window):
        """x, y, width and height on the screen."""
        text = self.run("xwininfo", "-id", window)
        # A window that has just gone has no place; nothing is found there.
        value = lambda name: int((text.partition(name + ":")[2].split() or ["0"])[0])
        return (value("Absolute upper-left X"), value("Absolute upper-left Y"), value("Width"), value("Height"))

    def screen(self):
        return Picture(subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"],
                                      env=self.environment, stdout=subprocess.PIPE, check=True).stdout)

    def save_screen(self, path):
        self.run("import", "-silent", "-window", "root", str(path))

    def click(self, x, y, times=1):
        self.run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", str(times), "--delay", "60", "1")

    def end(self, process, grace=10):
        """Asks a process to end, makes it end when it does not, and ends what it has left behind in its group."""
        if process.poll() is None:
            process.terminate()
            try:
                process.wait(grace)
            except subprocess.TimeoutExpired:
                pass
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()
        for stream in (process.stdin, process.stdout, process.stderr):
            if stream:
                stream.close()

    def close(self):
        for process in reversed(self.processes):
            self.end(process)
        shutil.rmtree(self.root, ignore_errors=True)


class Picture:
    def __init__(self, pixels):
        self.pixels = pixels

    def at(self, x, y):
        start = (y * WIDTH + x) * 3
        return tuple(self.pixels[start:start + 3])

    def near(self, x, y, color, tolerance=3):
        return all(abs(a - b) <= tolerance for a, b in zip(self.at(x, y), color))
