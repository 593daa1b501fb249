"""The project's files, for tests of what compilers do not hold."""
import functools
import os
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]


@functools.cache
def files():
    """Every file that belongs to the project, as a path relative to its folder."""
    command = ["git", "-C", str(ROOT), "ls-files", "--cached", "--others", "--exclude-standard", "-z"]
    listed = subprocess.run(command, capture_output=True, check=False)
    if listed.returncode == 0:
        names = [os.fsdecode(name) for name in listed.stdout.split(b"\0") if name]
    else:
        # Unpacked without its history.
        names = [str(p.relative_to(ROOT)) for p in ROOT.rglob("*") if p.is_file() and p.parts[len(ROOT.parts)] != "build"]
    return sorted(name for name in names if (ROOT / name).is_file())


def having(*endings, under=("",)):
    return [name for name in files() if name.endswith(endings) and name.startswith(tuple(under))]


@functools.cache
def text(name):
    """The text of a file; of one that holds no text, nothing."""
    data = (ROOT / name).read_bytes()
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return ""


def lines_that_match(names, pattern):
    """Where `pattern` occurs, as "file:line: text"."""
    found = []
    for name in names:
        for number, line in enumerate(text(name).split("\n"), 1):
            if re.search(pattern, line):
                found.append(f"{name}:{number}: {line.strip()}")
    return found


def exists(path):
    return (ROOT / path).exists()


def is_known_folder(name):
    return any(file.startswith(name.rstrip("/") + "/") for file in files())
