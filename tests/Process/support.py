"""An installation of the program, homes to use it in, and a site to make apps of: for tests of whole processes.

Every home lies in the temporary folder that tests/with-private-home hands out. Nothing is sent beyond loopback.
"""
import http.server
import json
import os
import pathlib
import plistlib
import shutil
import signal
import struct
import subprocess
import tempfile
import threading
import time
import unittest
import zlib

BINARY = pathlib.Path(os.environ["WRAPIO_BINARY"])
SHARE = pathlib.Path(os.environ["WRAPIO_SHARE"])
STAND_IN = pathlib.Path(os.environ["WRAPIO_STAND_IN"])

DONE, FAILED, USAGE, NO_SUCH_APP, SEVERAL_APPS = range(5)


def png(edge=64, color=(200, 60, 20)):
    """The bytes of a square picture of one colour."""

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    rows = (b"\0" + bytes(color) * edge) * edge
    header = struct.pack(">IIBBBBB", edge, edge, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


class Result:
    """What a command answered."""

    def __init__(self, status, out, err):
        self.status, self.out, self.err = status, out, err

    def json(self):
        return json.loads(self.out)

    def __str__(self):
        return f"exit status {self.status}\n--- standard output\n{self.out}\n--- standard error\n{self.err}"


class Installation:
    """The programs and share/wrapio in a folder of their own, with a template bundle that can be changed."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.binary = self.folder / "bin" / "wrapio"
        self.share = self.folder / "share" / "wrapio"
        self.template = self.share / "WrapioRunner.app"
        self.share.mkdir(parents=True)
        for program in ("bin/wrapio", "libexec/wrapio/wrapio-manager"):
            own = self.folder / program
            own.parent.mkdir(parents=True)
            try:
                os.link(BINARY.parent.parent / program, own)
            except OSError:
                shutil.copy2(BINARY.parent.parent / program, own)
        for pictures in ("icons", "templates", "symbols"):
            if (SHARE / pictures).is_dir():
                os.symlink(SHARE / pictures, self.share / pictures)
        self.make_template("1.0.0")

    def make_template(self, version, executable=STAND_IN):
        if self.template.exists():
            shutil.rmtree(self.template)
        program = self.template / "Contents" / "Linux" / "WrapioRunner"
        program.parent.mkdir(parents=True)
        (self.template / "Contents" / "Resources").mkdir()
        shutil.copy(executable, program)
        program.chmod(0o755)
        self.write_template_information(version)

    def write_template_information(self, version):
        information = {
            "CFBundleDisplayName": "WrapioRunner",
            "CFBundleExecutable": "WrapioRunner",
            "CFBundleIdentifier": "com.wrapio.runner",
            "CFBundleName": "WrapioRunner",
            "CFBundlePackageType": "APPL",
            "CFBundleShortVersionString": version,
        }
        (self.template / "Contents" / "Info.plist").write_bytes(plistlib.dumps(information))


class Home:
    """A home folder and the environment of somebody who works there."""

    def __init__(self, installation, folder):
        self.installation = installation
        self.folder = pathlib.Path(folder)
        self.data = self.folder / ".local" / "share"
        self.configuration = self.folder / ".config" / "Wrapio"
        self.catalogue = self.configuration / "app_configurations"
        self.cache = self.folder / ".cache"
        self.applications = self.data / "applications"
        self.bundles = self.folder / "Applications" / "Wrapio Apps"
        self.temporary = self.folder / "tmp"
        self.temporary.mkdir(parents=True, exist_ok=True)
        self.environment = dict(os.environ)
        self.environment.update(
            HOME=str(self.folder),
            XDG_DATA_HOME=str(self.data),
            XDG_CONFIG_HOME=str(self.folder / ".config"),
            XDG_CACHE_HOME=str(self.cache),
            XDG_STATE_HOME=str(self.folder / ".local" / "state"),
            TMPDIR=str(self.temporary),
            WRAPIO_STAND_IN_LOG=str(self.stand_in_log),
        )

    @property
    def stand_in_log(self):
        return self.folder / "stand-in.log"

    def command(self, *arguments):
        return [str(self.installation.binary), *arguments]

    def start(self, *arguments, prefix=(), **options):
        return subprocess.Popen(
            [*prefix, *self.command(*arguments)],
            env=self.environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            **options,
        )

    def wrapio(self, *arguments, timeout=120, **options):
        process = self.start(*arguments, **options)
        try:
            out, err = process.communicate(timeout=timeout)
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            raise
        return Result(process.returncode, out.decode("utf-8"), err.decode("utf-8"))

    def tool(self, *command, timeout=60):
        """Another program of the desktop, in this home."""
        # Files and not pipes: what the program starts inherits them and may stay.
        with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
            done = subprocess.run(
                command, env=self.environment, stdin=subprocess.DEVNULL, stdout=out, stderr=err, timeout=timeout
            )
            texts = []
            for file in (out, err):
                file.seek(0)
                texts.append(file.read().decode("utf-8", "replace"))
        return Result(done.returncode, *texts)

    def records(self):
        """The records as the catalogue's file holds them."""
        return json.loads(self.catalogue.read_text("utf-8")) if self.catalogue.exists() else []

    def files(self):
        """Every file and link below the home folder, relative to it."""
        found = set()
        for folder, folders, names in os.walk(self.folder):
            links = [name for name in folders if os.path.islink(os.path.join(folder, name))]
            found.update(os.path.relpath(os.path.join(folder, name), self.folder) for name in names + links)
        return found

    def started_apps(self):
        """What stand-ins for the runner have said since the home was made: their process ids and arguments."""
        if not self.stand_in_log.exists():
            return []
        return [json.loads(line) for line in self.stand_in_log.read_text("utf-8").splitlines()]

    def running_apps(self):
        """The process ids of the stand-ins that are still there."""
        return [started["process"] for started in self.started_apps() if self.is_running(started["process"])]

    def is_running(self, process):
        try:
            # The number may belong to another process by now.
            return os.readlink(f"/proc/{process}/exe").startswith(str(self.folder))
        except OSError:
            return False

    def end_started_apps(self):
        for process in self.running_apps():
            os.kill(process, signal.SIGKILL)


class Site:
    """Pages on loopback. `pages` maps a path to (type, bytes); `requests` holds the paths that were asked for."""

    def __init__(self, pages=None, port=0):
        self.pages = pages or {"/": ("text/html", b"<!doctype html><title>Harbour</title>")}
        self.requests = []
        site = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                site.requests.append(self.path)
                kind, body = site.pages.get(self.path, ("text/plain", b""))
                self.send_response(200 if self.path in site.pages else 404)
                self.send_header("Content-Type", kind)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", port), Handler)
        self.port = self.server.server_address[1]
        self.thread = threading.Thread(target=self.server.serve_forever, args=(0.02,), daemon=True)
        self.thread.start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()
        self.thread.join()


def wait_until(holds, seconds=60):
    """Looks until `holds` answers something true, and answers that."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        found = holds()
        if found:
            return found
        time.sleep(0.02)
    return holds()


class ProcessTestCase(unittest.TestCase):
    """A test with an installation and a home of its own."""

    maxDiff = None

    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="process-")
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)
        self.installation = Installation(self.scratch / "prefix")
        self.home = Home(self.installation, self.scratch / "home")
        self.addCleanup(lambda: self.home.end_started_apps())
        self.icon = self.scratch / "icon.png"
        self.icon.write_bytes(png())

    def new_home(self, name):
        return Home(self.installation, self.scratch / name)

    def succeeds(self, *arguments, home=None):
        result = (home or self.home).wrapio(*arguments)
        self.assertEqual(result.status, DONE, f"{arguments}: {result}")
        self.assertEqual(result.err, "", f"{arguments}")
        return result

    def fails(self, status, *arguments, home=None, **options):
        """The command ends with `status`, says so in one line on standard error and nothing on standard output."""
        result = (home or self.home).wrapio(*arguments, **options)
        self.assertEqual(result.status, status, f"{arguments}: {result}")
        self.assert_one_line_of_error(result, arguments)
        return result

    def assert_one_line_of_error(self, result, arguments):
        self.assertEqual(result.out, "", f"{arguments}")
        self.assertRegex(result.err, r"\Awrapio: [^\n]+\n\Z", f"{arguments}")

    def create(self, name, *options, home=None, address="example.com"):
        """Makes an app without looking for an icon and answers what --json says of it."""
        icon = () if "--icon" in options or "--no-icon" in options else ("--no-icon",)
        return self.succeeds("create", address, "--name", name, *icon, *options, "--json", home=home).json()

    def bundle_of(self, app):
        return pathlib.Path(app["bundlePath"])

    def information_of(self, bundle):
        return plistlib.loads((bundle / "Contents" / "Info.plist").read_bytes())

    def configuration_of(self, bundle):
        return json.loads((bundle / "Contents" / "Resources" / "config.json").read_text("utf-8"))

    def desktop_id(self, app):
        elements = app["bundleIdentifier"].split(".")
        return ".".join("_" + e if e[:1].isdigit() else e for e in elements)

    def entry_of(self, app, home=None):
        return (home or self.home).applications / (self.desktop_id(app) + ".desktop")

    def assert_valid_entry(self, path):
        checked = self.home.tool("desktop-file-validate", "--warn-kde", str(path))
        self.assertEqual((checked.status, checked.out), (0, ""), f"{path.read_text('utf-8')}\n{checked}")

    def assert_healthy(self, home=None):
        """Nothing is wrong with any app, and nothing is left over."""
        report = (home or self.home).wrapio("doctor", "--json")
        found = report.json()
        self.assertEqual([c for c in found["checks"] if c["severity"] == "problem"], [])
        self.assertEqual(found["leftovers"], [])
        self.assertEqual(report.status, DONE)
