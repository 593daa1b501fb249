"""Requests of other software, as the desktop hands them over."""
import os
import shutil
import unittest

from managers import ManagerTestCase
from support import BINARY, DONE, FAILED, wait_until

CREATE = "wrapio://create?url=https%3A%2F%2Fexample.com&title=Example"
ENTRY = BINARY.parent.parent / "share" / "applications" / "com.wrapio.Wrapio.desktop"


class ARequest(ManagerTestCase):
    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: self.kill_manager_of(self.home))

    def install_entry(self):
        """Makes the program known to the desktop, as an installation into a prefix does."""
        self.home.applications.mkdir(parents=True)
        shutil.copy(ENTRY, self.home.applications)
        self.home.environment["PATH"] = f"{self.installation.binary.parent}:{os.environ['PATH']}"
        self.assertEqual(self.home.tool("update-desktop-database", str(self.home.applications)).status, 0)

    def test_entry_is_valid_and_takes_requests(self):
        self.assert_valid_entry(ENTRY)
        text = ENTRY.read_text("utf-8")
        self.assertIn("\nMimeType=x-scheme-handler/wrapio;\n", text)
        self.assertIn("\nExec=wrapio open %u\n", text)
        self.assertIn("\nIcon=com.wrapio.Wrapio\n", text)

    def test_reaches_the_manager_that_runs(self):
        self.install_entry()
        manager = self.start_manager()
        self.assertEqual(self.home.tool("gio", "open", CREATE).status, 0)
        # What is no request is the one that leaves a trace without a window.
        self.home.tool("gio", "open", "wrapio://nothing")
        self.assertTrue(wait_until(lambda: "Unsupported Wrapio URL: wrapio://nothing" in manager.text()), manager.text())
        self.assertNotIn("Unsupported Wrapio URL: wrapio://create", manager.text())

    def test_starts_a_manager_where_there_is_none(self):
        self.install_entry()
        self.assertEqual(self.home.tool("gio", "open", CREATE).status, 0)
        self.assertTrue(wait_until((self.home.configuration / ".socket").exists))
        self.assertTrue(os.path.exists(f"/proc/{self.manager_process()}"))

    def test_by_the_command_line_starts_a_manager_that_stays(self):
        self.succeeds("open", CREATE)
        process = self.manager_process()
        self.assertEqual(os.readlink(f"/proc/{process}/exe"),
                         str(self.installation.folder / "libexec/wrapio/wrapio-manager"))
        self.succeeds("open", CREATE)
        self.assertEqual(self.manager_process(), process)

    def test_that_is_none_is_refused_and_starts_nothing(self):
        refused = self.fails(FAILED, "open", "wrapio://create?url=ftp%3A%2F%2Fexample.com")
        self.assertIn("is no request that Wrapio knows", refused.err)
        self.assertFalse((self.home.configuration / ".socket").exists())

    def test_over_the_bus_reaches_the_manager_as_well(self):
        self.start_bus()
        manager = self.start_manager()
        call = ["gdbus", "call", "--session", "--dest", "com.wrapio.Wrapio", "--object-path", "/com/wrapio/Wrapio"]
        for method, arguments in (("Activate", ["{}"]),
                                  ("Open", ["['wrapio://one', 'wrapio://two']", "{'activation-token': <'x'>}"]),
                                  ("ActivateAction", ["new", "[]", "{}"])):
            done = self.home.tool(*call, "--method", f"org.freedesktop.Application.{method}", *arguments)
            self.assertEqual(done.status, 0, str(done))
        text = manager.text()
        self.assertLess(text.index("Unsupported Wrapio URL: wrapio://one"), text.index("Unsupported Wrapio URL: wrapio://two"))


if __name__ == "__main__":
    unittest.main()
