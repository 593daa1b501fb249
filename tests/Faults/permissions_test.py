"""Files and folders that the user may not read or write.

Modes do not count for the machine's administrator: when he runs this, the program runs as somebody else.
"""
import os
import subprocess
import unittest

from support import DONE, FAILED, ProcessTestCase

NOBODY = 65534


class Permissions(ProcessTestCase):

    def setUp(self):
        super().setUp()
        self.create("Alpha")
        if os.getuid() == 0:
            subprocess.run(["chown", "-R", f"{NOBODY}:{NOBODY}", str(self.scratch)], check=True)

    def as_user(self, *arguments):
        somebody = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.getuid() == 0 else {}
        return self.home.wrapio(*arguments, **somebody)

    def test_an_unreadable_catalogue_is_not_overwritten(self):
        data = self.home.catalogue.read_bytes()
        self.home.catalogue.chmod(0)
        refused = self.as_user("create", "example.com", "--name", "New", "--no-icon")
        self.assertEqual(refused.status, FAILED, str(refused))
        self.assert_one_line_of_error(refused, "create")
        self.assertIn("Permission denied", refused.err)
        self.home.catalogue.chmod(0o600)
        self.assertEqual(self.home.catalogue.read_bytes(), data)
        self.assertEqual(sorted(p.name for p in self.home.bundles.iterdir()), ["Alpha.app"])

    def test_folders_without_permission_are_named_in_the_refusal(self):
        for folder in (self.home.bundles, self.home.configuration):
            with self.subTest(str(folder)):
                folder.chmod(0o500)
                refused = self.as_user("create", "example.com", "--name", "New", "--no-icon")
                folder.chmod(0o700)
                if refused.status == DONE:  # the program may open a folder of its own
                    self.assertEqual(folder, self.home.configuration)
                    self.assertEqual(self.as_user("delete", "New").status, DONE)
                else:
                    self.assert_one_line_of_error(refused, folder)
                    self.assertIn("Permission denied", refused.err)
                self.assertEqual([r["appName"] for r in self.home.records()], ["Alpha"])

    def test_a_template_that_may_not_be_read_is_named_in_the_refusal(self):
        program = self.installation.template / "Contents" / "Linux" / "WrapioRunner"
        program.chmod(0)
        refused = self.as_user("create", "example.com", "--name", "New", "--no-icon")
        self.assertEqual(refused.status, FAILED, str(refused))
        self.assert_one_line_of_error(refused, "create")
        self.assertIn("Permission denied", refused.err)
        self.assertEqual(sorted(p.name for p in self.home.bundles.iterdir()), ["Alpha.app"])
        self.assertEqual([r["appName"] for r in self.home.records()], ["Alpha"])


if __name__ == "__main__":
    if os.getuid() == 0:
        # Others must be able to reach the homes of the tests.
        os.chmod(os.environ["HOME"], 0o711)
        os.chmod(os.environ["TMPDIR"], 0o711)
    unittest.main()
