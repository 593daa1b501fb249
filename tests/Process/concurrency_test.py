"""Many processes that change one catalogue at the same time."""
import unittest

from support import DONE, NO_SUCH_APP, ProcessTestCase


class ManyProcesses(ProcessTestCase):
    def finish(self, processes):
        """The exit statuses by key; every process must say what its status promises."""
        statuses = {}
        for key, process in processes.items():
            out, err = process.communicate(timeout=120)
            statuses[key] = process.returncode
            if process.returncode != DONE:
                self.assertRegex(err.decode(), r"\Awrapio: [^\n]+\n\Z", key)
                self.assertEqual(out, b"", key)
        return statuses

    def test_that_create_end_in_a_catalogue_with_all_of_them(self):
        names = [f"App {number:02}" for number in range(16)]
        processes = {
            name: self.home.start("create", "example.com", "--name", name, "--icon", str(self.icon)) for name in names
        }
        statuses = self.finish(processes)
        self.assertEqual(set(statuses.values()), {DONE}, statuses)
        records = self.home.records()
        self.assertEqual(sorted(r["appName"] for r in records), names)
        self.assertEqual(sorted(r["sortOrder"] for r in records), list(range(16)))
        self.assertEqual(len({r["id"] for r in records}), 16)
        self.assert_healthy()

    def test_that_create_delete_rename_and_move_end_in_what_their_statuses_say(self):
        deleted = {name: self.create(name) for name in ("D1", "D2", "D3", "D4")}
        renamed = {name: self.create(name) for name in ("R1", "R2", "R3")}
        processes = {}
        for number in range(6):
            processes["create", f"N{number}"] = self.home.start(
                "create", "example.com", "--name", f"N{number}", "--no-icon")
            if number < 4:
                processes["delete", f"D{number + 1}"] = self.home.start("delete", deleted[f"D{number + 1}"]["id"])
            if number < 3:
                name = f"R{number + 1}"
                processes["rename", name] = self.home.start("rename", renamed[name]["id"], name + " new")
                processes["move", name] = self.home.start("move", renamed[name]["id"], "1")
        self.assertGreaterEqual(len(processes), 12)
        statuses = self.finish(processes)
        self.assertEqual(set(statuses.values()), {DONE}, statuses)
        expected = [f"N{n}" for n in range(6)] + [f"R{n} new" for n in (1, 2, 3)]
        self.assertEqual(sorted(r["appName"] for r in self.home.records()), expected)
        self.assertEqual(sorted(p.name for p in self.home.bundles.iterdir()), [e + ".app" for e in expected])
        for app in deleted.values():
            self.assertFalse(self.entry_of(app).exists())
        self.assertEqual(self.home.wrapio("doctor", "--clean", "--yes").status, DONE)
        self.assert_healthy()

    def test_that_delete_the_same_app_agree_on_who_did_it(self):
        app = self.create("Harbour")
        processes = {number: self.home.start("delete", app["id"]) for number in range(12)}
        statuses = sorted(self.finish(processes).values())
        self.assertEqual(statuses, [DONE] + [NO_SUCH_APP] * 11)
        self.assertEqual(self.home.records(), [])

    def test_readers_see_whole_catalogues_while_others_write(self):
        writers = {
            number: self.home.start("create", "example.com", "--name", f"App {number:02}", "--no-icon")
            for number in range(6)
        }
        seen = []
        while any(process.poll() is None for process in writers.values()):
            listed = self.home.wrapio("list", "--json")
            self.assertEqual(listed.status, DONE, str(listed))
            seen.append(len(listed.json()))
        self.assertEqual(set(self.finish(writers).values()), {DONE})
        self.assertEqual(seen, sorted(seen))
        self.assertEqual(len(self.home.records()), 6)


if __name__ == "__main__":
    unittest.main()
