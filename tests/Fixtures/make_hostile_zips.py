#!/usr/bin/env python3
"""Writes ZIP files that no honest archiver makes into the folder given as argument.

Each is named after what is wrong with it. All of them must be refused, and nothing of them may stay on the disk.
"""
import pathlib
import struct
import sys
import zlib

FILE, LINK, DEVICE = 0o100644, 0o120777, 0o020666
UTF8, ENCRYPTED = 0x800, 0x1


def entry(name, data=b"data", mode=FILE, flags=0, system=3, local_name=None, crc=None, size=None, method=0, extra=b""):
    if isinstance(name, str):
        name, flags = name.encode(), flags | UTF8
    packed = data
    if method == 8:
        compressor = zlib.compressobj(9, zlib.DEFLATED, -15)
        packed = compressor.compress(data) + compressor.flush()
    return dict(name=name, local=name if local_name is None else local_name, packed=packed, mode=mode, flags=flags,
                system=system, crc=zlib.crc32(data) if crc is None else crc, size=len(data) if size is None else size,
                method=method, extra=extra)


def archive(*entries, count=None, comment=b""):
    body, directory = b"", b""
    for e in entries:
        offset = len(body)
        common = struct.pack("<HHHHIII", e["flags"], e["method"], 0, 0x21, e["crc"], len(e["packed"]), e["size"])
        body += b"PK\3\4" + struct.pack("<H", 20) + common + struct.pack("<HH", len(e["local"]), len(e["extra"]))
        body += e["local"] + e["extra"] + e["packed"]
        directory += b"PK\1\2" + struct.pack("<BBH", 20, e["system"], 20) + common
        directory += struct.pack("<HHHHHII", len(e["name"]), len(e["extra"]), 0, 0, 0, e["mode"] << 16, offset)
        directory += e["name"] + e["extra"]
    number = len(entries) if count is None else count
    return body + directory + b"PK\5\6" + struct.pack("<HHHHIIH", 0, 0, number, number, len(directory), len(body),
                                                      len(comment)) + comment


def unicode_path(name, real):
    content = struct.pack("<BI", 1, zlib.crc32(name)) + real
    return struct.pack("<HH", 0x7075, len(content)) + content


GOOD = entry("good.txt", b"first and fine")
whole = archive(GOOD, entry("icons/a.png", b"x" * 1000, method=8))

ARCHIVES = {
    "absolute": archive(GOOD, entry("/tmp/wrapio-evil")),
    "parent": archive(GOOD, entry("../evil")),
    "parent-inside": archive(GOOD, entry("a/../../evil")),
    "parent-folder": archive(GOOD, entry("../evil/", b"", mode=0o040755)),
    "backslash": archive(GOOD, entry("..\\evil")),
    "backslash-of-dos": archive(GOOD, entry("..\\evil", system=0)),
    "backslash-inside": archive(GOOD, entry("a\\b")),
    "link": archive(GOOD, entry("link", b"/etc/passwd", mode=LINK)),
    "link-then-file-below": archive(GOOD, entry("link", b"/tmp", mode=LINK), entry("link/wrapio-evil")),
    "device": archive(GOOD, entry("device", b"", mode=DEVICE)),
    "duplicate": archive(GOOD, entry("a"), entry("a")),
    "duplicate-but-for-case": archive(GOOD, entry("A.txt"), entry("a.txt")),
    "duplicate-folder-but-for-case": archive(GOOD, entry("D/x"), entry("d/y")),
    "duplicate-but-for-composition": archive(GOOD, entry("caf\u00e9"), entry("cafe\u0301")),
    "file-and-folder": archive(GOOD, entry("a"), entry("a/b")),
    "nul": archive(GOOD, entry(b"evil.sh\0.png")),
    "nul-in-the-own-header": archive(GOOD, entry(b"evil.sh.png\0", local_name=b"evil.sh\0.png")),
    "two-names": archive(GOOD, entry(b"harmless", local_name=b"../../xx")),
    "two-names-of-other-lengths": archive(GOOD, entry(b"harmless", local_name=b"other")),
    "unicode-path": archive(GOOD, entry(b"harmless", extra=unicode_path(b"harmless", b"../../evil"))),
    "no-utf-8": archive(GOOD, entry(b"\xff\xfe.txt")),
    "no-utf-8-though-it-says-so": archive(GOOD, entry(b"\xff\xfe.txt", flags=UTF8)),
    "overlong-utf-8": archive(GOOD, entry(b"a\xc0\xafb", flags=UTF8)),
    "control-character": archive(GOOD, entry("a\nb")),
    "empty-name": archive(GOOD, entry("")),
    "empty-part": archive(GOOD, entry("a//b")),
    "long-name": archive(GOOD, entry("a" * 300)),
    "long-path": archive(GOOD, entry("/".join(["a" * 200] * 30))),
    "deep": archive(GOOD, entry("a/" * 200 + "b")),
    "encrypted": archive(GOOD, entry("secret", b"x" * 32, flags=ENCRYPTED)),
    "wrong-checksum": archive(GOOD, entry("a", b"x" * 5000, crc=1)),
    "wrong-checksum-deflated": archive(GOOD, entry("a", b"x" * 5000, crc=1, method=8)),
    "more-than-it-says": archive(GOOD, entry("a", b"x" * 5000, size=10, method=8)),
    "less-than-it-says": archive(GOOD, entry("a", b"x" * 10, size=5000, method=8)),
    "unknown-method": archive(GOOD, entry("a", method=77)),
    "no-deflate-stream": archive(GOOD, {**entry("a", b"\xff" * 50), "method": 8}),
    "fewer-records-than-it-says": archive(GOOD, count=2),
    "more-records-than-it-says": archive(GOOD, entry("a"), count=1),
    "truncated": whole[:-30],
    "without-its-front": whole[20:],
    "only-an-end": b"PK\5\6" + b"\xff" * 18,
    "end-that-points-nowhere": b"PK\5\6" + struct.pack("<HHHHIIH", 0, 0, 1, 1, 46, 0x7FFFFFFF, 0),
    "large-end-that-points-nowhere": b"PK\6\7" + struct.pack("<IQI", 0, 2**63, 1) + b"PK\5\6"
                                     + struct.pack("<HHHHIIH", 0, 0, 0xFFFF, 0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0),
    "two-ends": archive(entry("hidden"), comment=archive(GOOD)),
    "empty-file": b"",
    "text": b"<html>not found</html>",
    "bomb": archive(entry("zeros", bytes(64 * 1024 * 1024), method=8)),
}

if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in ARCHIVES.items():
        (folder / (name + ".zip")).write_bytes(content)
