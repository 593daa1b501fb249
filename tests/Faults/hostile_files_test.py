"""Files that are damaged or made to do harm: the catalogue, icons, and what lies in bundles."""
import functools
import json
import os
import plistlib
import random
import resource
import shutil
import struct
import unittest

from support import BINARY, DONE, FAILED, ProcessTestCase, png

MEMORY = 3 * 1024**3
LAUGHS = (
    b'<?xml version="1.0"?><!DOCTYPE plist [<!ENTITY a "ha">'
    + b"".join(b'<!ENTITY %c "%s">' % (98 + n, b"&%c;" % (97 + n) * 10) for n in range(12))
    + b"]><plist><dict><key>CFBundleIdentifier</key><string>&m;</string></dict></plist>"
)


def little_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


@functools.cache
def reserves_memory():
    """The address sanitizer reserves terabytes."""
    return b"__asan_init" in BINARY.read_bytes()


def noise(size, seed=7):
    return random.Random(seed).randbytes(size)


class HostileFilesTestCase(ProcessTestCase):
    def survives(self, *arguments):
        """Ends by itself, done or failed, says why in one line when it failed, and takes neither long nor much memory."""
        result = self.home.wrapio(*arguments, timeout=180, preexec_fn=None if reserves_memory() else little_memory)
        self.assertIn(result.status, (DONE, FAILED), f"{arguments}: {result}")
        if result.status == FAILED and arguments[0] != "doctor":
            self.assert_one_line_of_error(result, arguments)
        else:
            self.assertEqual(result.err, "", f"{arguments}")
        return result


class HostileCatalogues(HostileFilesTestCase):
    def valid(self):
        for name in ("Alpha", "Beta"):
            self.create(name)
        return self.home.catalogue.read_bytes()

    def undecodable(self):
        valid = self.valid()
        yield "nothing", b""
        yield "blanks", b" \n\t "
        yield "NULs", b"\0" * 4096
        yield "NULs where blocks were lost", valid[:200] + b"\0" * 4096
        yield "a byte order mark of another encoding", valid.decode().encode("utf-16")
        yield "invalid UTF-8", valid.replace(b"Alpha", b"Al\xffha")
        yield "a lone surrogate", valid.replace(b"Alpha", b"\\ud800")
        yield "an object", b"{}"
        yield "a text", b'"records"'
        yield "null", b"null"
        yield "a list of numbers", b"[1, 2, 3]"
        yield "a list of lists", b"[[[]]]"
        yield "a name that is a number", valid.replace(b'"Alpha"', b"7")
        yield "an id that is none", valid.replace(b'"id":"', b'"id":"x')
        yield "a number too large", b'[{"sortOrder": 1e999}]'
        yield "two documents", valid + valid
        yield "a comment", b"/* x */" + valid
        yield "deep nesting", b"[" * 1_000_000
        yield "deep nesting of objects", b'[{"a":' * 500_000
        yield "deep nesting that is closed", b"[" * 1_000_000 + b"]" * 1_000_000
        yield "100 megabytes of noise", noise(100_000_000)
        yield "100 megabytes of brackets", b"[" * 100_000_000
        yield "100 megabytes of an open text", b'[{"appName":"' + b"x" * 100_000_000
        for cut in sorted(random.Random(11).sample(range(1, len(valid)), 12)):
            yield f"the first {cut} bytes", valid[:cut]
        for seed in range(6):
            yield f"noise {seed}", noise(3000, seed)
            damaged = bytearray(valid)
            damaged[random.Random(seed).randrange(len(valid) // 3)] ^= 0x80
            yield f"one turned bit {seed}", bytes(damaged)

    def test_give_an_empty_catalogue_and_are_kept_when_something_is_saved(self):
        for description, data in self.undecodable():
            with self.subTest(description):
                self.home = self.new_home(f"home {description}")
                self.home.configuration.mkdir(parents=True)
                self.home.catalogue.write_bytes(data)
                listed = self.survives("list", "--json")
                self.assertEqual((listed.status, listed.json()), (DONE, []))
                self.assertEqual(self.home.catalogue.read_bytes(), data)
                self.survives("doctor", "--json")
                self.assertEqual(self.home.catalogue.read_bytes(), data)
                self.assertEqual(self.survives("create", "example.com", "--name", "New", "--no-icon").status, DONE)
                self.assertEqual([r["appName"] for r in self.home.records()], ["New"])
                (kept,) = self.home.configuration.glob("app_configurations.damaged-*")
                self.assertEqual(kept.read_bytes(), data)
                checks = self.survives("doctor", "--json").json()["checks"]
                self.assertEqual(len([c for c in checks if kept.name in c["text"]]), 1)
                self.succeeds("delete", "New")
                self.assertEqual(kept.read_bytes(), data)

    def test_of_records_without_anything_usable_can_still_be_listed_examined_and_deleted(self):
        hostile_names = ["", " ", ".", "..", "../../x", "/etc/passwd", "a/b", "x" * 5000, "\u202egpj", "a\nb", "\x1b[2J", "%u"]
        records = [{"appName": name, "configuredURL": "https://example.com"} for name in hostile_names]
        records += [{}, {"configuredURL": "javascript:x"}, {"unknown": [[{"deep": {}}]]}, {"sortOrder": -(2**63)}]
        self.home.configuration.mkdir(parents=True)
        ids = []
        for number, record in enumerate(records):
            record["id"] = f"00000000-0000-4000-8000-{number:012}"
            ids.append(record["id"])
        self.home.catalogue.write_text(json.dumps(records))
        outside = self.scratch / "x.app"
        outside.mkdir()
        listed = self.survives("list", "--json")
        self.assertEqual({a["id"] for a in listed.json()}, set(ids))
        self.assertNotIn("\x1b", self.survives("list").out)
        self.assertNotIn("\x1b", self.survives("doctor").out)
        for app in ids:
            self.survives("show", app)
            self.survives("regenerate", app)
            self.assertEqual(self.survives("delete", app).status, DONE)
        self.assertEqual(self.home.records(), [])
        self.assertTrue(outside.is_dir())
        # The bundle of a name that climbs lies elsewhere than the catalogue looks for it.
        self.assertEqual(self.home.wrapio("doctor", "--clean", "--yes").status, DONE)
        self.assertEqual([p for p in self.home.bundles.glob("*")], [])


class HostileIcons(HostileFilesTestCase):
    def pictures(self):
        good = png(64)
        yield "nothing", b""
        yield "noise", noise(5000)
        yield "a text", b"This is no picture.\n"
        yield "a page", b"<!doctype html><title>Not found</title>"
        for cut in (8, 20, 33, 40, len(good) - 12, len(good) - 1):
            yield f"the first {cut} bytes of a PNG", good[:cut]
        for seed in range(12):
            damaged = bytearray(good)
            for _ in range(4):
                damaged[random.Random(seed).randrange(8, len(good))] ^= 0xFF
            yield f"a PNG with damage {seed}", bytes(damaged)
        yield "a PNG of absurd size", good[:16] + struct.pack(">II", 2**31 - 1, 2**31 - 1) + good[24:]
        yield "a PNG of 60000 pixels a side", good[:16] + struct.pack(">II", 60000, 60000) + good[24:]
        yield "a GIF of absurd size", b"GIF89a" + b"\xff" * 6 + noise(200)
        yield "a BMP of absurd size", b"BM" + struct.pack("<IHHI", 10**9, 0, 0, 54) + struct.pack("<IiiHHI", 40, 2**30, 2**30, 1, 24, 0)
        yield "an ICO that points outside", struct.pack("<HHH", 0, 1, 1) + struct.pack("<BBBBHHII", 0, 0, 0, 0, 1, 32, 2**31, 2**31)
        yield "an ICO of many entries", struct.pack("<HHH", 0, 1, 65535) + noise(64000)
        yield "an ICNS of itself", b"icns" + struct.pack(">I", 16) + b"icns" + struct.pack(">I", 8)
        yield "an ICNS that points outside", b"icns" + struct.pack(">I", 2**31) + b"ic10" + struct.pack(">I", 2**31 - 1) + good
        yield "a TIFF whose pages go in circles", b"II*\0" + struct.pack("<I", 8) + struct.pack("<H", 0) + struct.pack("<I", 8)
        yield "a JPEG without an end", b"\xff\xd8\xff\xe0" + noise(3000)
        yield "a WebP of noise", b"RIFF" + struct.pack("<I", 5000) + b"WEBPVP8L" + noise(4988)
        yield "an SVG of absurd size", b'<svg xmlns="http://www.w3.org/2000/svg" width="1e9" height="1e9"/>'
        yield "an SVG with a file of the system", (
            b'<!DOCTYPE svg [<!ENTITY x SYSTEM "file:///etc/passwd">]>'
            b'<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"><text>&x;</text>'
            b'<image href="file:///etc/passwd"/></svg>')
        yield "an SVG that uses itself", (
            b'<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"><g id="a"><use href="#a"/></g></svg>')
        yield "an SVG of deep groups", (
            b'<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64">' + b"<g>" * 50000 + b"</g>" * 50000 + b"</svg>")
        yield "more than 16 megabytes", good + b"\0" * (17 * 1024 * 1024)

    def test_are_refused_or_used_and_leave_the_catalogue_in_order(self):
        refused = 0
        for number, (description, data) in enumerate(self.pictures()):
            with self.subTest(description):
                self.icon.write_bytes(data)
                result = self.survives("create", "example.com", "--name", f"App {number}", "--icon", str(self.icon))
                refused += result.status == FAILED
                names = [r["appName"] for r in self.home.records()]
                self.assertEqual(f"App {number}" in names, result.status == DONE)
        self.assertGreater(refused, 15)
        self.assert_healthy()

    def test_that_are_no_files_do_not_hold_the_program_up(self):
        os.mkfifo(self.scratch / "pipe")
        (self.scratch / "circle").symlink_to(self.scratch / "circle")
        for place in (self.scratch / "pipe", self.scratch / "circle", self.scratch, "/dev/zero", "/dev/null", "/proc/self/mem", ""):
            for option in ("--icon", "--css", "--js"):
                if place == "" and option != "--icon":
                    continue  # an empty value takes a style or a script away
                with self.subTest(f"{option} {place}"):
                    result = self.survives("create", "example.com", "--name", "New", option, str(place))
                    self.assertEqual(result.status, FAILED)
        self.assertEqual(self.home.records(), [])

    def test_in_the_place_of_a_saved_icon_leave_an_app_without_one(self):
        app = self.create("Alpha", "--icon", str(self.icon))
        saved = self.home.data / "Wrapio" / (app["id"] + ".png")
        for description, data in self.pictures():
            with self.subTest(description):
                saved.write_bytes(data)
                self.survives("regenerate", "Alpha")
                self.survives("list", "--json")


class HostileBundles(HostileFilesTestCase):
    def contents(self):
        yield "nothing", b""
        yield "noise", noise(4000)
        yield "NULs", b"\0" * 4000
        yield "an XML bomb", LAUGHS
        yield "deep nesting", b"<plist>" + b"<array>" * 100_000 + b"</array>" * 100_000 + b"</plist>"
        yield "an open element", b'<?xml version="1.0"?><plist><dict><key>CFBundleIdentifier'
        yield "a list", plistlib.dumps(["x"])
        yield "numbers for texts", plistlib.dumps({"CFBundleIdentifier": 7, "CFBundleExecutable": [], "files2": 3})
        yield "a path for the executable", plistlib.dumps({
            "CFBundleIdentifier": "com.wrapio.generated.x-1", "CFBundleExecutable": "../../../../../../bin/sh"})
        yield "an identifier that is a path", plistlib.dumps({
            "CFBundleIdentifier": "../../../../.bashrc", "CFBundleExecutable": "WrapioRunner"})
        binary = plistlib.dumps({"CFBundleIdentifier": "com.wrapio.x"}, fmt=plistlib.FMT_BINARY)
        yield "half a binary list", binary[: len(binary) // 2]
        yield "a binary list that points outside", binary[:-8] + b"\xff" * 8
        yield "a binary list of noise", b"bplist00" + noise(400)
        yield "100 megabytes", b" " * 100_000_000
        yield "JSON", b'{"url": 7, "name": []}'
        yield "deep JSON", b"[" * 200_000

    FILES = (
        "Contents/Info.plist",
        "Contents/Resources/config.json",
        "Contents/Resources/AppIcon.icns",
        "Contents/_CodeSignature/CodeResources",
    )

    def test_are_found_by_the_doctor_and_made_again(self):
        app = self.create("Alpha", "--icon", str(self.icon))
        bundle = self.bundle_of(app)
        for file in self.FILES:
            for description, data in self.contents():
                with self.subTest(f"{file}: {description}"):
                    (bundle / file).write_bytes(data)
                    report = self.survives("doctor", "--json")
                    self.assertEqual(report.status, FAILED)
                    problems = [c for c in report.json()["checks"] if c["severity"] == "problem"]
                    self.assertEqual({c.get("app") for c in problems}, {app["id"]})
                    self.assertEqual(len(self.survives("list", "--json").json()), 1)
                    self.assertEqual(self.survives("regenerate", "Alpha").status, DONE)
        self.assert_healthy()

    def test_of_odd_kinds_of_files_hold_nobody_up_and_are_made_again(self):
        app = self.create("Alpha", "--icon", str(self.icon))
        bundle = self.bundle_of(app)
        outside = self.scratch / "outside"
        outside.mkdir()
        (outside / "precious").write_text("mine")

        def folder(path):
            path.mkdir()
            (path / "inside").write_text("x")

        kinds = {
            "a pipe": os.mkfifo,
            "a folder": folder,
            "a link to itself": lambda path: path.symlink_to(path.name),
            "a link to endless zeros": lambda path: path.symlink_to("/dev/zero"),
            "a link to a folder outside": lambda path: path.symlink_to(outside),
        }
        for file in (*self.FILES, "Contents/Resources", "Contents/_CodeSignature", "Contents"):
            for description, make in kinds.items():
                with self.subTest(f"{file}: {description}"):
                    place = bundle / file
                    if place.is_dir() and not place.is_symlink():
                        shutil.rmtree(place)
                    else:
                        place.unlink()
                    make(place)
                    self.assertEqual(self.survives("doctor", "--json").status, FAILED)
                    self.survives("list")
                    self.assertEqual(self.survives("regenerate", "Alpha").status, DONE)
        self.assertEqual((outside / "precious").read_text(), "mine")
        self.assertEqual([p.name for p in outside.iterdir()], ["precious"])
        self.assert_healthy()

    def test_that_are_hostile_can_be_deleted(self):
        for number, (description, data) in enumerate(self.contents()):
            with self.subTest(description):
                app = self.create(f"App {number}")
                (self.bundle_of(app) / "Contents" / "Info.plist").write_bytes(data)
                self.assertEqual(self.survives("delete", app["id"]).status, DONE)
                self.assertFalse(self.bundle_of(app).exists())
                self.assertFalse(self.entry_of(app).exists())

    def test_that_stray_around_are_listed_as_leftovers_or_left_alone(self):
        self.create("Alpha")
        for number, (_, data) in enumerate(self.contents()):
            stray = self.home.bundles / f"Stray {number}.app" / "Contents"
            stray.mkdir(parents=True)
            (stray / "Info.plist").write_bytes(data)
        os.mkfifo(self.home.bundles / "Pipe.app")
        (self.home.bundles / "Circle.app").symlink_to("Circle.app")
        self.survives("doctor", "--clean", "--yes")
        self.survives("list")
        self.assertTrue((self.home.bundles / "Alpha.app").is_dir())

    def test_hostile_desktop_entries_are_survived(self):
        app = self.create("Alpha")
        entries = [b"", noise(3000), b"\0" * 3000, b"[Desktop Entry]\nX-Wrapio-Bundle=" + b"x" * 1_000_000,
                   b"[Desktop Entry]\nX-Wrapio-Bundle=\\", b"[Desktop Entry]\nX-Wrapio-Bundle=/\n", b"[" * 300_000]
        for data in entries:
            with self.subTest(data[:40]):
                self.entry_of(app).write_bytes(data)
                self.survives("doctor", "--json")
                self.assertEqual(self.survives("regenerate", "Alpha").status, DONE)
        self.entry_of(app).unlink()
        os.mkfifo(self.entry_of(app))
        self.survives("doctor", "--json")
        self.assertEqual(self.survives("regenerate", "Alpha").status, DONE)
        self.assert_healthy()


if __name__ == "__main__":
    unittest.main()
