"""What it costs to move a collection out and in: whole processes, on archives with an icon for every app."""
import json
import os
import pathlib
import random
import struct
import subprocess
import tempfile
import time
import zipfile
import zlib

EDGE = 256


def picture(number):
    """A picture with a run of colours and some grain, as icons of sites have."""
    grain = random.Random(number)
    base = bytes((number * 7 + x) % 256 for x in range(3 * EDGE))
    rows = b"".join(b"\0" + bytes(base[y:] + base[:y])[:-8] + grain.randbytes(8) for y in range(EDGE))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", EDGE, EDGE, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


def write_archive(path, records):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("manifest.json", json.dumps({"version": 1, "exportDate": 0, "appCount": len(records)}))
        archive.writestr("configs.json", json.dumps(records, sort_keys=True, indent=2))
        for number, record in enumerate(records):
            archive.writestr(f"icons/{record['id']}.png", picture(number))


def run(command, environment):
    """Seconds, seconds on a processor, and MiB at the most; of the program with those that it starts."""
    started = time.perf_counter()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        raise RuntimeError(f"{command} ended with {status}")
    return time.perf_counter() - started, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def move(wrapio, records):
    """Imports and exports them once: what each of both takes."""
    with tempfile.TemporaryDirectory() as home:
        environment = {k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "DISPLAY", "WAYLAND"))}
        environment.update(HOME=home, DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        archive = pathlib.Path(home) / "in.wrapio"
        write_archive(archive, records)
        imported = run([str(wrapio), "import", str(archive)], environment)
        exported = run([str(wrapio), "export", str(archive.with_name("out.wrapio"))], environment)
        return imported, exported
