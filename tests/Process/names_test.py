"""Names that break files, desktop entries, command lines or terminals: a valid app, or a clear refusal."""
import unicodedata
import unittest

from support import DONE, FAILED, ProcessTestCase

HOSTILE_NAMES = {
    "a line break": "Har\nbour",
    "a carriage return": "Har\rbour",
    "a tab": "Har\tbour",
    "an escape sequence": "\x1b[31mHarbour\x1b[0m",
    "a bell": "Harbour\x07",
    "a delete": "Har\x7fbour",
    "a C1 control": "Har\x9bbour",
    "double quotes": 'Har"bour"',
    "single quotes": "Har'bour'",
    "a back quote": "`touch harbour`",
    "a dollar": "$(touch harbour)$HOME",
    "a percent field": "100%u of %f",
    "a trailing percent": "100%",
    "a backslash": "Har\\bour",
    "backslash escapes": "\\s\\n\\t",
    "a semicolon": "Har;bour;",
    "an equals sign": "Name=Harbour",
    "a group header": "[Desktop Entry]",
    "a comment": "# Harbour",
    "an ampersand": "Har & bour <b>",
    "markup": "<string>&amp;</string>",
    "a slash": "Har/bour",
    "a path": "../../../etc/passwd",
    "one dot": ".",
    "two dots": "..",
    "a dot at the end": "Harbour.",
    "a hidden file": ".harbour",
    "a colon": "Har:bour",
    "a wildcard": "*?",
    "a dash": "-harbour",
    "an option": "--json",
    "blanks at the ends": "  Harbour  ",
    "only blanks": "   ",
    "only dots": "....",
    "only separators": "//\\\\::",
    "only controls": "\x01\x02\x03",
    "a no-break space": "Har\u00a0bour",
    "a line separator": "Har\u2028bour",
    "a right-to-left mark": "Har\u200fbour",
    "a direction override": "Har\u202egpj.bour",
    "a zero width space": "Har\u200bbour",
    "a byte order mark": "\ufeffHarbour",
    "a soft hyphen": "Har\u00adbour",
    "Hebrew": "נמל",
    "Arabic": "ميناء",
    "combining marks": "H" + "\u0301" * 40,
    "emoji": "🚢⚓",
    "a joined emoji": "👨\u200d👩\u200d👧",
    "a flag": "🇮🇸",
    "a letter outside the basic plane": "𝕳arbour",
    "a non-character": "Har\ufffebour",
    "300 letters": "h" * 300,
    "255 letters": "h" * 255,
    "200 umlauts": "ü" * 200,
    "100 emoji": "🚢" * 100,
    "digits": "4711",
    "a name of devices": "CON",
    "the extension": "Harbour.app",
    "decomposed letters": unicodedata.normalize("NFD", "Häfen"),
}

NEWLINES = set("\n\x0b\x0c\r\x85\u2028\u2029")


def has_controls(text):
    return any(unicodedata.category(c) in ("Cc", "Cf") or c in NEWLINES for c in text)


class HostileNames(ProcessTestCase):
    def use_empty_home(self):
        self.homes = getattr(self, "homes", 0) + 1
        self.home = self.new_home(f"home-{self.homes}")

    def assert_refused(self, name, result):
        self.assertEqual(result.status, FAILED, str(result))
        self.assert_one_line_of_error(result, name)
        self.assertFalse(has_controls(result.err[:-1]), repr(result.err))
        self.assertEqual(self.home.records(), [])
        self.assertEqual([p for p in self.home.bundles.glob("*")], [])
        self.assertEqual([p for p in self.home.applications.glob("*.desktop")], [])
        self.assertEqual([p for p in (self.home.data / "Wrapio").glob("*")], [])

    def assert_usable(self, name, result):
        app = result.json()
        bundle = self.bundle_of(app)
        self.assertEqual(bundle.parent, self.home.bundles)
        self.assertTrue(bundle.is_dir())
        # Property lists are XML, which has no place for non-characters.
        self.assertEqual(self.information_of(bundle)["CFBundleDisplayName"], name.replace("\ufffe", ""))
        self.assertEqual(self.configuration_of(bundle)["name"], name)
        entry = self.entry_of(app)
        self.assert_valid_entry(entry)
        (shown,) = [line[5:] for line in entry.read_text("utf-8").split("\n") if line.startswith("Name=")][:1]
        self.assertFalse(has_controls(shown), repr(shown))
        self.assert_healthy()
        table = self.succeeds("list").out
        self.assertEqual(table.count("\n"), 1, repr(table))
        self.assertFalse(has_controls(table[:-1]), repr(table))
        self.assertEqual(self.succeeds("show", "--json", "--", name).json()["id"], app["id"])

    def assert_gone(self, app):
        self.succeeds("delete", app["id"])
        self.assertFalse(self.bundle_of(app).exists())
        self.assertFalse(self.entry_of(app).exists())

    def test_give_a_usable_app_or_a_clear_refusal_that_leaves_nothing(self):
        outcomes = set()
        for description, name in HOSTILE_NAMES.items():
            with self.subTest(description):
                self.use_empty_home()
                result = self.home.wrapio("create", "example.com", "--name=" + name, "--no-icon", "--json")
                outcomes.add(result.status)
                if result.status == DONE:
                    self.assert_usable(name, result)
                    self.assert_gone(result.json())
                else:
                    self.assert_refused(name, result)
        self.assertEqual(outcomes, {DONE, FAILED})

    def test_are_refused_by_rename_too_and_leave_the_app_as_it_was(self):
        app = self.create("Harbour")
        before = self.home.files(), self.home.records()
        for description in ("a line break", "a path", "two dots", "only controls", "300 letters", "a direction override"):
            with self.subTest(description):
                self.fails(FAILED, "rename", app["id"], HOSTILE_NAMES[description])
                self.assertEqual((self.home.files(), self.home.records()), before)
        self.assert_healthy()

    def test_the_name_that_a_refusal_offers_is_accepted(self):
        for description in ("a slash", "a percent field", "blanks at the ends", "a right-to-left mark", "300 letters"):
            with self.subTest(description):
                self.use_empty_home()
                refused = self.fails(FAILED, "create", "example.com", "--name=" + HOSTILE_NAMES[description], "--no-icon")
                offered = refused.err.rsplit('--name "', 1)[1].rstrip('"\n')
                self.create(offered)

    def test_a_name_that_is_not_utf_8_gives_a_usable_app_or_a_refusal(self):
        result = self.home.wrapio("create", "example.com", b"--name=Har\xff\xfebour", "--no-icon", "--json")
        if result.status == DONE:
            self.assert_usable(result.json()["displayName"], result)
        else:
            self.assert_refused("Har\\xff\\xfebour", result)

    def test_a_hostile_page_address_never_reaches_the_desktop_entry(self):
        address = "https://example.com/a%20b?q=%u;$(touch%20x)&r=`y`"
        app = self.create("Harbour", address=address)
        self.assertEqual(self.configuration_of(self.bundle_of(app))["url"], address)
        text = self.entry_of(app).read_text("utf-8")
        self.assertNotIn("example.com", text)
        self.assert_valid_entry(self.entry_of(app))


if __name__ == "__main__":
    unittest.main()
