"""How soon the dashboard's window shows a thousand apps, and how long its frames take while they scroll and are dragged.

Drawn in software, and by GL: on a graphics card where there is one and a display with it, else on a private display, where
the processor plays the card. What frames are to take is asked of cards only.
"""
import glob
import json
import os
import pathlib
import statistics
import subprocess
import tempfile

FIRST_FRAME, FRAME = 500, 32
SCREEN = "-screen 0 1280x900x24 -noreset"
REPETITIONS = 3


def has_card():
    return bool(glob.glob("/dev/dri/renderD*")) and bool(os.environ.get("DISPLAY"))


def run(program, environment, is_shown):
    """The repetitions of each benchmark of the program, by name; on a private display unless `is_shown`."""
    display = [] if is_shown else ["xvfb-run", "--auto-servernum", f"--server-args={SCREEN}"]
    with tempfile.TemporaryDirectory() as folder:
        report = pathlib.Path(folder) / "report.json"
        options = ("--benchmark_out_format=json", f"--benchmark_repetitions={REPETITIONS}")
        subprocess.run([*display, str(program), f"--benchmark_out={report}", *options], capture_output=True, check=True,
                       env={**os.environ, "QT_QPA_PLATFORM": "xcb", "vblank_mode": "0", **environment})
        reported = json.loads(report.read_text("utf-8"))
    runs = {}
    for each in reported["benchmarks"]:
        if each["run_type"] == "iteration":
            runs.setdefault(each["run_name"].split("/")[0], []).append(each)
    return runs


def lines_of(program, renderer, environment, is_shown):
    runs = run(program, environment, is_shown)
    mark = FRAME if is_shown else f"{FRAME} ms on a card"
    lines = []

    def add(what, values, mark):
        lines.append((f"dashboard, 1,000 apps, {renderer}: {what}", min(values), statistics.median(values), mark, "ms"))
    add("first frame", [each["real_time"] for each in runs["firstFrame"]], FIRST_FRAME)
    for name, doing in (("scrollFrame", "scrolling"), ("dragFrame", "dragging")):
        add(f"a frame while {doing}", [each["real_time"] for each in runs[name]], None)
        add(f"the longest frame while {doing}", [each["worst_ms"] for each in runs[name]], mark)
    return lines


def measure(libexec):
    """Lines of (what, best, middle, mark, unit); a mark in words cannot be reached or missed here."""
    program = libexec / "DashboardFrames"
    lines = lines_of(program, "software", {"QT_QUICK_BACKEND": "software"}, False)
    is_shown = has_card()
    return lines + lines_of(program, "GL" if is_shown else "GL without a card", {}, is_shown)
