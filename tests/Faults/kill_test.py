"""The program is killed while it makes and changes apps: what was reported as done stands, and the rest can be repaired.

Two kinds of points: before each change of the file system, one by one, and at random moments. WRAPIO_SEED repeats a run.
"""
import concurrent.futures
import os
import random
import re
import shutil
import signal
import time
import unittest

from support import DONE, Home, ProcessTestCase, png

KILL_AT_CHANGE = os.environ["WRAPIO_KILL_AT_CHANGE"]
KILLED = 137
RANDOM_POINTS = 200
WORKERS = 2

ID = re.compile(r"[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}")
SHORT_ID = re.compile(r"-[0-9a-f]{8}(?=\.(png|desktop)$)")
ALWAYS_THERE = {".config/Wrapio/.lock", ".local/share/applications/mimeinfo.cache"}


class Attempt:
    """One command that may be killed, and the home in which it runs."""

    def __init__(self, arguments, home):
        self.arguments, self.home = arguments, home
        self.before = home.records()
        self.out, self.status = b"", None

    def kill_at_change(self, number):
        report = self.home.folder.parent / (self.home.folder.name + ".changes")
        process = self.home.start(*self.arguments, prefix=(KILL_AT_CHANGE, str(number), str(report)))
        self.out, _ = process.communicate(timeout=60)
        self.status = process.returncode
        return int(report.read_text())

    def kill_after(self, seconds):
        process = self.home.start(*self.arguments)
        time.sleep(seconds)
        process.send_signal(signal.SIGKILL)
        self.out, _ = process.communicate(timeout=60)
        self.status = process.returncode

    @property
    def was_reported(self):
        """The answer arrived in full, whether or not the process lived to end."""
        return self.out.endswith(b"}\n")


class Killing(ProcessTestCase):
    COMMANDS = {
        "create": ("create", "example.com", "--name", "New", "--icon", "{icon}", "--css", "{style}", "--json"),
        "edit": ("edit", "Alpha", "--address", "example.org", "--icon", "{icon}", "--border", "--json"),
        "rename": ("rename", "Beta", "Omega", "--json"),
        "move": ("move", "Gamma", "1", "--json"),
        "delete": ("delete", "Beta", "--json"),
    }

    def setUp(self):
        super().setUp()
        (self.scratch / "style.css").write_text("body { color: red }")
        self.blue = self.scratch / "blue.png"
        self.blue.write_bytes(png(128, (0, 0, 200)))

    def arguments(self, command):
        return tuple(a.format(icon=self.blue, style=self.scratch / "style.css") for a in self.COMMANDS[command])

    def homes(self):
        """One home for each worker, each with three apps and a copy of how it was."""
        for number in range(WORKERS):
            home = self.new_home(f"worker-{number}")
            for name in ("Alpha", "Beta", "Gamma"):
                self.create(name, "--icon", str(self.icon), home=home)
            self.assert_healthy(home)
            shutil.copytree(home.folder, self.pristine(home), symlinks=True)
            yield home

    def pristine(self, home):
        return home.folder.parent / (home.folder.name + "-pristine")

    def restore(self, home):
        shutil.rmtree(home.folder)
        shutil.copytree(self.pristine(home), home.folder, symlinks=True)

    def fresh_attempt(self, command, home):
        self.restore(home)
        return Attempt(self.arguments(command), home)

    def shape_of(self, home):
        """The files of the home with the ids left out."""
        names = {SHORT_ID.sub("-ID", ID.sub("ID", name)) for name in home.files()}
        return names - ALWAYS_THERE

    def outcome_of(self, command, home):
        """What the command leads to when nobody kills it: the records, and the shape of the home."""
        attempt = self.fresh_attempt(command, home)
        changes = attempt.kill_at_change(0)
        self.assertEqual(attempt.status, DONE, attempt.out)
        attempt = self.fresh_attempt(command, home)
        started = time.monotonic()
        result = home.wrapio(*attempt.arguments)
        duration = time.monotonic() - started
        self.assertEqual(result.status, DONE, str(result))
        return {"records": home.records(), "shape": self.shape_of(home), "changes": changes, "duration": duration}

    # Each check raises with the point at which the program was killed.

    def comparable(self, records, ids=True):
        ignored = ("lastUpdated",) if ids else ("lastUpdated", "id")
        return [{k: v for k, v in record.items() if k not in ignored} for record in records]

    def check_catalogue(self, attempt, done):
        """Every app that was there is there with all its fields, before or after the change; nothing is half changed."""
        records = attempt.home.records()
        before, after = self.comparable(attempt.before), self.comparable(done["records"], ids=False)
        now, now_without_ids = self.comparable(records), self.comparable(records, ids=False)
        without_version = [{k: v for k, v in record.items() if k != "runnerVersion"} for record in now_without_ids]
        # A new app is in the catalogue before the bundle is made, and knows no template until then.
        after_without_version = [{k: v for k, v in record.items() if k != "runnerVersion"} for record in after]
        if attempt.was_reported:
            self.assertEqual(now_without_ids, after)
        elif now != before:
            self.assertEqual(without_version, after_without_version)
        listed = attempt.home.wrapio("list", "--json")
        self.assertEqual((listed.status, listed.err), (DONE, ""), str(listed))
        self.assertEqual([a["id"] for a in listed.json()], [r["id"] for r in records])

    def check_report(self, attempt, done):
        if attempt.was_reported:
            self.assertEqual(self.shape_of(attempt.home), done["shape"])

    def repair(self, home):
        """Does what the doctor says, and nothing else."""
        examined = home.wrapio("doctor", "--clean", "--yes", "--json")
        self.assertEqual(examined.err, "", str(examined))
        self.assertEqual(examined.json()["removed"], len(examined.json()["leftovers"]))
        for check in examined.json()["checks"]:
            if check["severity"] == "problem":
                self.assertRegex(check.get("remedy", ""), r"\Awrapio regenerate [0-9A-F-]{36}\Z", str(check))
                self.succeeds(*check["remedy"].split()[1:], home=home)

    def check_health(self, attempt, done):
        home = attempt.home
        self.repair(home)
        self.assert_healthy(home)
        now = self.shape_of(home)
        shapes = [done["shape"], self.shape_of(Home(self.installation, self.pristine(home)))]
        nearest = min(shapes, key=lambda shape: len(now ^ shape))
        self.assertEqual((sorted(now - nearest), sorted(nearest - now)), ([], []))
        for record in home.records():
            bundle = home.bundles / (record["appName"] + ".app")
            self.assertEqual(self.configuration_of(bundle)["url"], record["configuredURL"])
            self.assertEqual(self.configuration_of(bundle)["name"], record["appName"])
            icon = home.data / "Wrapio" / (record["id"] + ".png")
            self.assertTrue(icon.read_bytes().endswith(b"IEND\xaeB`\x82"), record["appName"])

    def check(self, attempt, done):
        self.check_catalogue(attempt, done)
        self.check_report(attempt, done)
        self.check_health(attempt, done)

    def in_parallel(self, points, run):
        """Runs run(point, home) for all points, and fails with all points at which a check failed."""
        homes = list(self.homes())
        failures = []

        def work(home, mine):
            for point in mine:
                try:
                    run(point, home)
                except Exception as error:  # pylint: disable=broad-except
                    failures.append(f"{point}: {error}")

        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
            for future in [pool.submit(work, home, points[n::WORKERS]) for n, home in enumerate(homes)]:
                future.result()
        self.assertEqual(len(failures), 0, f"{len(failures)} of {len(points)} points\n" + "\n".join(failures))

    def test_before_each_change_of_the_file_system_leaves_what_can_be_repaired(self):
        home = next(iter(self.homes()))
        outcomes = {command: self.outcome_of(command, home) for command in self.COMMANDS}
        shutil.rmtree(home.folder)
        shutil.rmtree(self.pristine(home))
        points = [(c, n) for c, outcome in outcomes.items() for n in range(1, outcome["changes"] + 1)]
        self.assertGreater(len(points), 100)
        killed = []

        def run(point, worker):
            command, number = point
            attempt = self.fresh_attempt(command, worker)
            attempt.kill_at_change(number)
            if attempt.status == KILLED:
                killed.append(point)
            self.check(attempt, outcomes[command])

        self.in_parallel(points, run)
        self.assertGreater(len(killed), len(points) * 9 // 10)

    def test_at_random_moments_leaves_what_can_be_repaired(self):
        seed = int(os.environ.get("WRAPIO_SEED") or random.randrange(1 << 32))
        chance = random.Random(seed)
        home = next(iter(self.homes()))
        outcomes = {command: self.outcome_of(command, home) for command in self.COMMANDS}
        shutil.rmtree(home.folder)
        shutil.rmtree(self.pristine(home))
        commands = list(self.COMMANDS)
        points = [(commands[n % len(commands)], chance.random()) for n in range(RANDOM_POINTS)]
        cut_short = []

        def run(point, worker):
            command, share = point
            attempt = self.fresh_attempt(command, worker)
            attempt.kill_after(outcomes[command]["duration"] * share)
            if attempt.status == -signal.SIGKILL:
                cut_short.append(point)
            self.check(attempt, outcomes[command])

        with self.subTest(f"WRAPIO_SEED={seed}"):
            self.in_parallel(points, run)
            self.assertGreater(len(cut_short), RANDOM_POINTS // 2)


if __name__ == "__main__":
    unittest.main()
