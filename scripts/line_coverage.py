#!/usr/bin/env python3
"""Lines of a source folder that were run, from what programs built with --coverage have left behind.

usage: line_coverage.py BUILD_FOLDER SOURCE_FOLDER [MINIMUM_PERCENT]

Headers are reached through links in the build folder, so every path is resolved before lines are counted: a line counts
as run when any object file has run it. Exit status 1 when less than the minimum was run.
"""
import json
import os
import pathlib
import subprocess
import sys


def counts(build: pathlib.Path, folder: pathlib.Path) -> dict:
    lines: dict = {}
    for data in sorted(build.rglob("*.gcda")):
        answer = subprocess.run(["gcov", "--json-format", "--stdout", str(data)], cwd=build, check=True,
                                capture_output=True)
        for document in answer.stdout.splitlines():
            for entry in json.loads(document)["files"]:
                path = pathlib.Path(os.path.realpath(build / entry["file"]))
                if not path.is_relative_to(folder):
                    continue
                runs = lines.setdefault(path, {})
                for line in entry["lines"]:
                    number = line["line_number"]
                    runs[number] = runs.get(number, 0) + line["count"]
    return lines


def row(name: str, run: int, total: int, missing: str) -> str:
    return f"{name:<36} {run:>5} / {total:<5} {100 * run / total if total else 100:6.1f} %  {missing}"


def main() -> int:
    if len(sys.argv) not in (3, 4):
        print(__doc__, file=sys.stderr)
        return 2
    build, folder = (pathlib.Path(os.path.realpath(a)) for a in sys.argv[1:3])
    all_run = all_lines = 0
    for path, runs in sorted(counts(build, folder).items()):
        if not runs:
            continue
        missing = sorted(number for number, count in runs.items() if count == 0)
        all_run += len(runs) - len(missing)
        all_lines += len(runs)
        print(row(str(path.relative_to(folder)), len(runs) - len(missing), len(runs), " ".join(map(str, missing))))
    if not all_lines:
        print(f"line_coverage.py: nothing of {folder} was run", file=sys.stderr)
        return 1
    print(row("all", all_run, all_lines, ""))
    return 1 if 100 * all_run / all_lines < float(sys.argv[3] if len(sys.argv) == 4 else 0) else 0


if __name__ == "__main__":
    sys.exit(main())
