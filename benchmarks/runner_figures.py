"""What an app costs: time to its window, time to its end, memory, a second app, pictures and the size of its program.

    runner_figures.py TEMPLATE LIBEXEC [--repetitions N] [--output FILE]

Each repetition starts the runner and PlainPage, the least that shows the same page, in turn: with the engine's usual
drawing and with the drawing in software that the runner chooses where there is no render node. Ratios are taken within a
repetition, so that a busy machine weighs on both. Exits with 1 when the middle figure misses its mark.
"""
import argparse
import pathlib
import shutil
import socket
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "Desktop" / "Runner"))

from apps import App  # noqa: E402
from desktop import Desktop, Site, wait_for  # noqa: E402
from processes import memory_of_tree  # noqa: E402
from summary import table  # noqa: E402

IDLE = 5.0  # seconds before memory is read
IN_SOFTWARE = {"GSK_RENDERER": "cairo", "WEBKIT_DISABLE_DMABUF_RENDERER": "1"}
PAGE = ("<!doctype html><title>Start</title><body style='background:#00c000'><h1>Harbour Notes</h1>"
        "<script>onload = () => fetch('/loaded')</script>")


class Started:
    """A program, started and timed until its window had a title."""

    def __init__(self, bench, command, environment=None):
        bench.site.requests.clear()
        self.process = bench.desktop.start([bench.libexec / "WindowTime", *command], environment=environment, capture=True,
                                           stdin=subprocess.PIPE)
        pid, milliseconds = self.process.stdout.readline().split()
        self.pid, self.milliseconds = int(pid), float(milliseconds)
        wait_for(lambda: bench.site.seen("/loaded"), "the page")

    def memory(self):
        """MiB of the processes after some time without work."""
        time.sleep(IDLE)
        return memory_of_tree(self.pid, "Pss")

    def end(self):
        """Milliseconds until the program had ended."""
        self.process.stdin.close()
        status, milliseconds = self.process.stdout.readline().split()
        self.process.wait()
        assert int(status) in (0, -1), f"ended with status {status}"
        return float(milliseconds)


class Bench:
    def __init__(self, desktop, template, libexec):
        self.desktop, self.libexec = desktop, libexec
        self.site = Site()
        self.site.page("/", PAGE)
        self.apps = [App(desktop, template, name, {"url": self.site.address(), "isDevMode": True}) for name in ("One", "Two")]

    def start_app(self, index=0):
        return Started(self, [self.apps[index].program])

    def start_plain(self, environment=None):
        folders = [self.desktop.root / "plain-data", self.desktop.root / "plain-cache"]
        return Started(self, [self.libexec / "PlainPage", "Plain", self.site.address(), *folders], environment)

    def picture_time(self):
        """Milliseconds until the manager has a picture of the first app's window."""
        begin = time.perf_counter()
        with socket.socket(socket.AF_UNIX) as client:
            client.connect(str(self.desktop.runtime / "wrapio" / (self.apps[0].record + ".snapshot")))
            client.sendall(b"snapshot\n")
            assert client.recv(3) == b"ok "
            while client.recv(1 << 20):
                pass
        return (time.perf_counter() - begin) * 1000

    def make_usual_size(self, pid):
        window = wait_for(lambda: self.desktop.windows(pid), "the window")[0]
        self.desktop.run("xdotool", "windowsize", window, "1280", "800")
        wait_for(lambda: self.desktop.geometry(window)[2:] == (1280, 800), "the size")

    def repetition(self, figures):
        note = lambda what, value: figures.setdefault(what, []).append(value)
        app = self.start_app()
        note("window", app.milliseconds)
        note("memory", app.memory())
        second = self.start_app(1)
        both = second.memory()
        note("second", both + memory_of_tree(app.pid, "Pss") - figures["memory"][-1])
        second.end()
        self.make_usual_size(app.pid)
        note("picture", statistics.median(self.picture_time() for _ in range(9)))
        note("end", app.end())
        for name, environment in (("plain", None), ("software", IN_SOFTWARE)):
            plain = self.start_plain(environment)
            note(f"{name} window", plain.milliseconds)
            note(f"{name} memory", plain.memory())
            plain.end()
            note(f"{name} window ratio", figures["window"][-1] / plain.milliseconds)
            note(f"{name} memory ratio", figures["memory"][-1] / figures[f"{name} memory"][-1])

    def close(self):
        self.site.close()


def stripped_size(program, folder):
    """KB (thousands of bytes) of the program without its names."""
    copy = folder / "stripped"
    shutil.copy(program, copy)
    subprocess.run(["strip", str(copy)], check=True)
    return copy.stat().st_size / 1000


ROWS = (
    ("window", "an app's window with its title, warm start", None, "ms"),
    ("plain window", "the plain program's window", None, "ms"),
    ("plain window ratio", "the app's time against it", 0.9, ""),
    ("software window", "the plain program's window, drawing in software", None, "ms"),
    ("software window ratio", "the app's time against it", None, ""),
    ("memory", "memory of an app's processes, 5 s idle (PSS)", None, "MiB"),
    ("plain memory", "the plain program's memory", None, "MiB"),
    ("plain memory ratio", "the app's memory against it", 0.9, ""),
    ("software memory", "the plain program's memory, drawing in software", None, "MiB"),
    ("software memory ratio", "the app's memory against it", None, ""),
    ("second", "what a second app adds", 85, "MiB"),
    ("picture", "a picture of a window of 1280 × 800", 100, "ms"),
    ("end", "the end after SIGTERM", 2000, "ms"),
    ("size", "the runner, stripped", 400, "KB"),
)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("template", type=pathlib.Path)
    parser.add_argument("libexec", type=pathlib.Path)
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--output", type=pathlib.Path)
    options = parser.parse_args()
    desktop = Desktop()
    figures = {}
    try:
        bench = Bench(desktop, options.template, options.libexec)
        # The first start of each reads programs and fonts from the disk.
        bench.repetition({})
        for _ in range(options.repetitions):
            bench.repetition(figures)
        figures["size"] = [stripped_size(bench.apps[0].program, desktop.root)]
        bench.close()
    finally:
        desktop.close()
    lines = [(what, min(figures[key]), statistics.median(figures[key]), mark, unit) for key, what, mark, unit in ROWS]
    text = table(lines)
    print(text, end="")
    if options.output:
        options.output.write_text(text, "utf-8")
    sys.exit(any(mark is not None and statistics.median(figures[key]) > mark for key, _, mark, _ in ROWS))


if __name__ == "__main__":
    main()
