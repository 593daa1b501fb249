"""Runs the benchmarks and sets their figures beside what is to be reached.

    summary.py LIBEXEC WRAPIO [--repetitions N] [--output FILE]

Of each figure the best and the middle one of all repetitions are told: the best is nearest to a quiet machine. Exits with 1
when a best figure misses its mark; a mark in words cannot be reached or missed on this machine.
"""
import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import exchange
import frames

# Program, benchmark, what it is, and the most that the best figure may be (None: told for information).
FIGURES = (
    ("CatalogueBenchmark", "encodingOneRecord", "encode one record", None),
    ("CatalogueBenchmark", "decodingOneRecord", "decode one record", None),
    ("CatalogueBenchmark", "loadingAndDecoding/10000", "load and decode 10,000 records", 80),
    ("CatalogueBenchmark", "encodingAndSaving/10000", "encode and durably save 10,000 records", 80),
    ("CatalogueBenchmark", "loadingAndDecoding/1000", "load and decode 1,000 records", None),
    ("CatalogueBenchmark", "encodingAndSaving/1000", "encode and durably save 1,000 records", None),
    ("AddressBenchmark", "normalisingAnAddress", "judge an address", None),
    ("PollBenchmark", "lookWithGivenProcesses", "match 1,000 apps with 500 processes", 5),
    ("PollBenchmark", "lookAmongRealProcesses/20", "the same, 20 of 500 real processes being apps", 5),
    ("PollBenchmark", "lookAmongRealProcesses/500", "the same, all of 500 real processes being apps", None),
    ("IconPipelineBenchmark", "iconPipeline", "icon file of a photograph of 512 pixels", None),
    ("IconPipelineBenchmark", "libraryEncoding", "the library's encoding of the same sizes", None),
    ("IconPipelineBenchmark", "generatingAnApp", "generate an app with that icon", 80),
)
# Ratios of one benchmark, taken side by side.
RATIOS = (
    ("IconPipelineBenchmark", "pipelineToLibraryRatio", "time", "icon file, time against the library's encoding", 0.35),
    ("IconPipelineBenchmark", "pipelineToLibraryRatio", "size", "icon file, size against the library's", 1.3),
)
UNITS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}


def run_benchmark(program, repetitions):
    with tempfile.TemporaryDirectory() as folder:
        report = pathlib.Path(folder) / "report.json"
        options = ("--benchmark_out_format=json", f"--benchmark_repetitions={repetitions}", "--benchmark_min_time=0.05")
        subprocess.run([str(program), f"--benchmark_out={report}", *options], capture_output=True, check=True)
        reported = json.loads(report.read_text("utf-8"))
    runs = {}
    for run in reported["benchmarks"]:
        if run["run_type"] == "iteration":
            # Options of a benchmark follow its name and its arguments.
            parts = [p for p in run["run_name"].split("/") if not p.startswith(("real_time", "min_time"))]
            runs.setdefault("/".join(parts), []).append(run)
    return runs


def milliseconds(run):
    return run["real_time"] * UNITS[run["time_unit"]]


def record(number):
    return {
        "id": f"00000000-0000-4000-8000-{number:012X}",
        "configuredURL": f"https://notes-{number}.harbour.example/start",
        "appName": f"Harbour Notes {number}",
        "runnerVersion": "1.0.0",
        "lastUpdated": 786961234.5,
        "sortOrder": number,
    }


def time_of_listing(wrapio, apps, repetitions):
    """How long "wrapio list" takes from start to end, in milliseconds."""
    with tempfile.TemporaryDirectory() as home:
        folder = pathlib.Path(home) / ".config" / "Wrapio"
        folder.mkdir(parents=True)
        (folder / "app_configurations").write_text(json.dumps([record(n) for n in range(apps)]))
        environment = {k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "DISPLAY", "WAYLAND"))}
        environment.update(HOME=home, DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        times = []
        for _ in range(repetitions):
            started = time.perf_counter()
            subprocess.run([str(wrapio), "list", "--json"], env=environment, stdout=subprocess.DEVNULL, check=True)
            times.append((time.perf_counter() - started) * 1000)
        return times


def exchange_lines(wrapio):
    """Moving 50 and 500 apps with icons once: the rate and the memory, which is to be the same for both."""
    lines, memory = [], {}
    for apps in (50, 500):
        for what, (seconds, busy, mebibytes) in zip(("import", "export"), exchange.move(wrapio, [record(n) for n in range(apps)])):
            each, mark = seconds / apps * 1000, 50 if (what, apps) == ("import", 500) else None
            lines.append((f"{what} {apps} apps with icons, each", each, each, mark, "ms"))
            lines.append(("the same, on a processor", busy / apps * 1000, busy / apps * 1000, None, "ms"))
            memory[what, apps] = mebibytes
    for what in ("import", "export"):
        ratio = memory[what, 500] / memory[what, 50]
        lines.append((f"{what}, memory with 500 apps against 50", ratio, ratio, 1.2, ""))
    return lines


def measure(libexec, wrapio, repetitions):
    """Lines of (what, best, middle, mark, unit)."""
    runs = {p: run_benchmark(libexec / p, repetitions) for p in sorted({f[0] for f in FIGURES})}
    lines = []
    for program, name, what, mark in FIGURES:
        times = [milliseconds(run) for run in runs[program][name]]
        lines.append((what, min(times), statistics.median(times), mark, "ms"))
    for program, name, counter, what, mark in RATIOS:
        values = [run[counter] for run in runs[program][name]]
        lines.append((what, min(values), statistics.median(values), mark, ""))
    lines += exchange_lines(wrapio)
    lines += frames.measure(libexec)
    for apps in (0, 1000):
        times = time_of_listing(wrapio, apps, repetitions)
        lines.append((f"\"wrapio list\" with {apps:,} apps, from start to end", min(times), statistics.median(times), None, "ms"))
    return lines


def number(value):
    return f"{value:.4f}" if value < 0.1 else f"{value:.2f}" if value < 10 else f"{value:.0f}"


def table(lines):
    rows = [("what", "best", "middle", "to reach", "")]
    for what, best, middle, mark, unit in lines:
        verdict = "" if mark is None else "not shown" if isinstance(mark, str) else "MISSED" if best > mark else "reached"
        at_most = "" if mark is None else f"≤ {mark}" if isinstance(mark, str) else f"≤ {mark} {unit}".strip()
        rows.append((what, f"{number(best)} {unit}".strip(), f"{number(middle)} {unit}".strip(), at_most, verdict))
    widths = [max(len(row[i]) for row in rows) for i in range(5)]
    lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in rows]
    lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("libexec", type=pathlib.Path)
    parser.add_argument("wrapio", type=pathlib.Path)
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--output", type=pathlib.Path)
    options = parser.parse_args()
    lines = measure(options.libexec, options.wrapio, options.repetitions)
    text = table(lines)
    print(text, end="")
    load = os.getloadavg()[0]
    if load > 1:
        print(f"\nThe machine is busy (load {load:.1f}): the figures are worse than they could be.")
    if options.output:
        options.output.write_text(text, "utf-8")
    sys.exit(any(isinstance(mark, (int, float)) and best > mark for _, best, _, mark, _ in lines))


if __name__ == "__main__":
    main()
