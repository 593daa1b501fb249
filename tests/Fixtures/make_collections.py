#!/usr/bin/env python3
"""Writes collection archives into the folder given as argument.

Those below "imports" are honest or harmless: each holds the apps "One" (with an icon of 8 by 8 pixels below "icons",
unless the name says otherwise) and "Two". Those below "failures" must be refused whole.
"""
import json
import pathlib
import struct
import sys
import zipfile
import zlib

ONE, TWO = "11111111-2222-4333-8444-555555555555", "AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE"
RECORDS = [
    {"sortOrder": 4, "id": ONE, "appName": "One", "configuredURL": "https://one.example/", "themeOpacity": 1},
    {"appName": "Two", "configuredURL": "https://two.example/", "id": TWO, "sortOrder": 5},
]


def png(width, height, data=None):
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    if data is None:
        data = zlib.compress(b"".join(b"\0" + b"\x20\x80\xc0" * width for _ in range(height)))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", data) + chunk(b"IEND", b""))


ICON = png(8, 8)


def nested_bomb():
    inner = pathlib.Path(sys.argv[1]) / "inner.zip"
    with zipfile.ZipFile(inner, "w", zipfile.ZIP_DEFLATED) as z:
        z.writestr("zeros", bytes(10_000_000))
    content = inner.read_bytes()
    inner.unlink()
    return content


def write(path, records=None, configs=None, manifest="{}", icons=None, extra=None, compression=zipfile.ZIP_DEFLATED):
    with zipfile.ZipFile(path, "w", compression) as z:
        if manifest is not None:
            z.writestr("manifest.json", manifest)
        if configs is None and records is not None:
            configs = json.dumps(records)
        if configs is not None:
            z.writestr("configs.json", configs)
        for name, content in ({ONE: ICON} if icons is None else icons).items():
            z.writestr("icons/" + name + ".png", content)
        for name, content in (extra or {}).items():
            z.writestr(name, content)


def write_like_macos(path):
    """Data descriptors, folders as entries, and the platform's own extras."""
    class Pipe:  # cannot seek, so sizes and checksums follow the data
        def __init__(self, file):
            self.write, self.flush = file.write, file.flush
    with open(path, "wb") as file, zipfile.ZipFile(Pipe(file), "w", zipfile.ZIP_DEFLATED) as z:
        z.writestr("icons/", "")
        z.writestr("icons/" + ONE + ".png", ICON)
        z.writestr("icons/Größe 🎈.txt", "ignored")
        z.writestr("__MACOSX/", "")
        z.writestr("__MACOSX/icons/", "")
        z.writestr("__MACOSX/icons/._" + ONE + ".png", b"\0\5\x16\7")
        z.writestr("__MACOSX/._configs.json", b"\0\5\x16\7")
        z.writestr("._manifest.json", b"\0\5\x16\7")
        z.writestr("configs.json", json.dumps(RECORDS, indent=2, sort_keys=True))
        z.writestr("manifest.json", '{"version":1,"exportDate":700000000.5,"appCount":2}')


def with_record(**fields):
    return [dict(RECORDS[0], **fields), RECORDS[1]]


IMPORTS = {
    "plain": dict(records=RECORDS),
    "stored": dict(records=RECORDS, compression=zipfile.ZIP_STORED),
    "byte-order-mark": dict(configs="\ufeff" + json.dumps(RECORDS)),
    "unknown-keys": dict(records=with_record(future={"a": [1, None, {"b": 2.5}]})),
    "keys-twice": dict(configs=json.dumps(RECORDS).replace('"sortOrder": 4', '"sortOrder": 1, "sortOrder": 4')),
    "manifest-that-is-no-json": dict(records=RECORDS, manifest=b"\xff\xfe"),
    "ten-megabytes-of-style": dict(records=with_record(customCSS="x" * 10_000_000)),
    "other-files": dict(records=RECORDS, extra={"readme.txt": "hello", "icons/sub/x.png": "no icon"}),
    "icon-of-nobody": dict(records=RECORDS, icons={ONE: ICON, "99999999-0000-4000-8000-000000000000": ICON}),
    "huge-sort-order": dict(records=with_record(sortOrder=2**63 - 1)),
    "without-icon": dict(records=RECORDS, icons={}),
    "without-icon-since-it-is-text": dict(records=RECORDS, icons={ONE: "<html>not found</html>"}),
    "without-icon-since-it-is-empty": dict(records=RECORDS, icons={ONE: ""}),
    "without-icon-since-it-is-60000-wide": dict(records=RECORDS, icons={ONE: png(60000, 60000, zlib.compress(b""))}),
    "without-icon-since-it-is-a-bomb": dict(
        records=RECORDS, icons={ONE: png(16000, 16000, zlib.compress(bytes(3_000_000)))}),
    "without-icon-since-it-is-cut-off": dict(records=RECORDS, icons={ONE: ICON[:50]}),
    "without-icon-since-it-is-another-archive": dict(records=RECORDS, icons={ONE: nested_bomb}),
    "without-icon-since-it-is-under-another-case": dict(records=RECORDS, icons={TWO.lower(): ICON}),
}

FAILURES = {
    "no-manifest": dict(records=RECORDS, manifest=None),
    "no-records": dict(),
    "records-in-a-folder": dict(extra={"backup/configs.json": json.dumps(RECORDS)}),
    "records-that-are-an-object": dict(configs="{}"),
    "records-that-are-text": dict(configs="hello"),
    "records-that-are-empty": dict(configs=""),
    "records-cut-off": dict(configs=json.dumps(RECORDS)[:-10]),
    "records-in-utf-16": dict(configs=json.dumps(RECORDS).encode("utf-16")),
    "records-that-are-no-utf-8": dict(configs=json.dumps(RECORDS).encode().replace(b"One", b"\xff")),
    "wrong-type": dict(records=with_record(badgeEnabled="yes")),
    "wrong-id": dict(records=with_record(id="../../../../tmp/evil")),
    "unknown-icon-source": dict(records=with_record(iconSource="🎈")),
    "number-out-of-range": dict(configs=json.dumps(RECORDS).replace('"themeOpacity": 1', '"themeOpacity": 1e999')),
    "100-megabytes": dict(configs="[" + " " * 100_000_000 + "]"),
    "nested-deeply": dict(configs="[" * 5_000_000),
    "many-members": dict(configs="[{" + ",".join('"%d":0' % i for i in range(500_000)) + "}]"),
    "many-records": dict(configs="[" + "{}," * 1_000_000 + "{}]"),
    "many-values": dict(configs="[{" + '"x":[' + "0," * 8_000_000 + "0]}]"),
    "bomb": dict(records=RECORDS, extra={"zeros": bytes(64 * 1024 * 1024)}),
}

if __name__ == "__main__":
    root = pathlib.Path(sys.argv[1])
    for kind, archives in (("imports", IMPORTS), ("failures", FAILURES)):
        (root / kind).mkdir(parents=True, exist_ok=True)
        for name, content in archives.items():
            icons = content.get("icons")
            if icons:
                content["icons"] = {k: v() if callable(v) else v for k, v in icons.items()}
            write(root / kind / (name + ".wrapio"), **content)
    write_like_macos(root / "imports" / "like-macos.wrapio")
