"""What runs below an app, and the memory that it takes."""
import os
import pathlib


def children_of(pid):
    """The ids of all processes below `pid`, by their names."""
    found = {}
    for entry in os.listdir("/proc"):
        if not entry.isdigit():
            continue
        try:
            with open(f"/proc/{entry}/stat") as stat:
                name, _, rest = stat.read().partition("(")[2].rpartition(")")
            found[int(entry)] = (name, int(rest.split()[1]), rest.split()[0])
        except OSError:
            continue
    below, known = {}, {pid}
    while True:
        fresh = {p for p, (_, parent, _) in found.items() if parent in known} - known
        if not fresh:
            return below
        known |= fresh
        below.update({p: found[p][0] for p in fresh if found[p][2] != "Z"})


def tree(pid):
    """The process `pid` and all below it, by name."""
    return {pid: pathlib.Path(f"/proc/{pid}/comm").read_text().strip(), **children_of(pid)}


def memory(pid, kind="Rss"):
    """MiB that `pid` takes: "Rss" with all that it shares, or "Pss" with its part of that."""
    try:
        with open(f"/proc/{pid}/smaps_rollup") as rollup:
            return next(int(line.split()[1]) for line in rollup if line.startswith(kind + ":")) / 1024
    except (OSError, StopIteration):
        return 0.0


def memory_of_tree(pid, kind="Rss"):
    return sum(memory(process, kind) for process in tree(pid))
