"""What happens while a command is busy: in a network that ends at this machine, where a site keeps it waiting."""
import os
import signal
import unittest

import network
from managers import ManagerTestCase
from support import DONE, FAILED, wait_until


class ABusyCommand(ManagerTestCase):
    def test_goes_on_when_its_caller_is_gone(self):
        self.start_manager()
        process, site = self.start_command_that_waits("Harbour")
        process.kill()
        process.communicate()
        site.release()
        self.assertTrue(wait_until(lambda: self.names() == ["Harbour"]))
        self.assertTrue(wait_until((self.home.bundles / "Harbour.app/Contents/_CodeSignature").exists))

    def test_is_finished_before_its_manager_ends(self):
        for ending in (signal.SIGTERM, signal.SIGINT):
            with self.subTest(ending.name):
                manager = self.start_manager()
                process, site = self.start_command_that_waits(ending.name)
                manager.process.send_signal(ending)
                self.assertTrue(wait_until(lambda: not manager.answers()))
                self.assertIsNone(manager.process.poll())
                site.release()
                out, err = process.communicate(timeout=30)
                self.assertEqual((process.returncode, err), (DONE, b""), out)
                self.assertEqual(manager.process.wait(30), 0)
                self.assertIn(ending.name, self.names())
                self.assertFalse((self.home.configuration / ".socket").exists())
                site.close()

    def test_fails_when_its_manager_is_killed_and_the_next_has_room(self):
        manager = self.start_manager()
        self.create("Harbour")
        process, _ = self.start_command_that_waits("Never")
        manager.kill()
        out, err = process.communicate(timeout=30)
        self.assertEqual((process.returncode, out), (FAILED, b""))
        self.assertRegex(err.decode(), r"\Awrapio: [^\n]*ended before it had done this[^\n]*\n\Z")
        self.create("Lighthouse")
        self.start_manager()
        self.create("Pier")
        self.assertEqual(self.names(), ["Harbour", "Lighthouse", "Pier"])
        self.assert_healthy()

    def test_is_taken_over_by_a_manager_that_starts_before_it_comes_to_the_catalogue(self):
        process, site = self.start_command_that_waits("Harbour")
        manager = self.start_manager()
        site.release()
        out, err = process.communicate(timeout=30)
        self.assertEqual((process.returncode, err), (DONE, b""), out)
        self.assertIn("Generating app for Harbour", manager.text())
        self.assertEqual(self.names(), ["Harbour"])


if __name__ == "__main__":
    network.enter()
    unittest.main()
