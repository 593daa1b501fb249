"""Lives in one app for a long time, as a person does who never quits it, and watches the memory of its processes.

    runner_soak.py TEMPLATE [--seconds N] [--output FILE]

A round visits pages of two hosts, goes back, downloads, opens and closes a window, asks for a picture and makes a page
crash. The rounds of the first sixth are for warming up. Exits with 1 when the processes have grown by more than a tenth.
"""
import argparse
import os
import pathlib
import signal
import socket
import statistics
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "Desktop" / "Runner"))

from apps import App  # noqa: E402
from desktop import Desktop, Site, wait_for  # noqa: E402
from processes import children_of, memory, tree  # noqa: E402

GROWTH = 1.10
SETTLING = 2.0  # seconds that the app is left alone before it is measured
PAGE = """<!doctype html><title>({number}) Page {number}</title><body style='background:#00c000'>
<div id=list></div><script>
for (let i = 0; i < 500; ++i) {{ const p = document.createElement('p'); p.textContent = 'Entry ' + i; list.append(p) }}
localStorage.number = {number}; document.cookie = 'visited={number}; max-age=86400';
onclick = () => open('/small', 'small', 'width=300,height=200');
onload = () => fetch('/loaded-{number}');
</script>"""
SMALL = "<!doctype html><title>Small</title><script>onload = () => fetch('/small-is-there').then(() => close())</script>"


class Soak:
    def __init__(self, desktop, template):
        self.desktop = desktop
        self.site = Site()
        self.site.page("/small", SMALL)
        self.site.page("/file", "x" * 2_000_000, {"Content-Disposition": "attachment; filename=report.bin",
                                                  "Content-Type": "application/octet-stream"})
        self.number = 0
        self.crashes = 0
        self.downloads = 0
        self.app = App(desktop, template, "Soak", {"url": self.site.address(), "isDevMode": True,
                                                   "allowedHosts": ["127.0.0.2"], "themeColor": "#14213D"})
        self.site.page("/", PAGE.format(number=0))
        self.app.start()
        wait_for(lambda: self.site.seen("/loaded-0"), "the first page")

    def visit(self, host="127.0.0.1"):
        self.number += 1
        path = f"/page-{self.number}"
        self.site.page(path, PAGE.format(number=self.number))
        # Shown already, a message goes when the page comes; an app that has just seen too many crashes may show one now,
        # and a person asks again.
        had_message = self.app.is_message_shown()
        assert self.app.again(self.site.address(path, host)) == 0
        loaded = lambda: self.site.seen(f"/loaded-{self.number}")
        wait_for(lambda: loaded() or (not had_message and self.app.is_message_shown()), "the page or a message")
        if not loaded():
            assert self.app.again(self.site.address(path, host)) == 0
            wait_for(loaded, "the page")
        if self.number > 20:
            self.site.pages.pop(f"/page-{self.number - 20}", None)

    def go_back(self):
        self.app.key("alt+Left")
        wait_for(lambda: self.app.title().startswith(f"({self.number - 1})"), "the page before")

    def download(self):
        file = self.desktop.root / "home/Downloads/report.bin"
        assert self.app.again(self.site.address("/file")) == 0
        wait_for(lambda: file.exists() and file.stat().st_size == 2_000_000, "the file")
        file.unlink()
        self.downloads += 1

    def open_window(self):
        self.app.click()
        wait_for(lambda: self.site.seen("/small-is-there"), "the window")
        self.app.wait_for_windows(1, "the window to go")

    def take_picture(self):
        with socket.socket(socket.AF_UNIX) as client:
            client.connect(str(self.desktop.runtime / "wrapio" / (self.app.record + ".snapshot")))
            client.sendall(b"snapshot\n")
            assert client.recv(3) == b"ok "
            while client.recv(1 << 20):
                pass

    def crash(self):
        pages = [pid for pid, name in children_of(self.app.process.pid).items() if name.startswith("WebKitWebProces")]
        assert pages, "no page to crash"
        for pid in pages:
            os.kill(pid, signal.SIGKILL)
        # The page is loaded again, or a message says that it crashes too often.
        wait_for(lambda: self.site.requests or self.app.is_message_shown(), "the answer to the crash")
        self.crashes += 1

    def round(self):
        """One round, and the memory after it: (pages' processes, all others), in MiB."""
        self.site.requests.clear()
        self.crash()
        for _ in range(4):
            self.visit()
        self.visit("127.0.0.2")
        self.visit()
        self.open_window()
        self.download()
        self.visit()
        self.go_back()
        self.visit()
        self.take_picture()
        time.sleep(SETTLING)
        assert self.app.process.poll() is None, "the app has ended"
        sizes = {pid: (name, memory(pid)) for pid, name in tree(self.app.process.pid).items()}
        pages = sum(size for name, size in sizes.values() if name.startswith("WebKitWebProces"))
        return pages, sum(size for _, size in sizes.values()) - pages

    def close(self):
        self.desktop.end(self.app.process)
        self.site.close()


def run(soak, seconds):
    """The memory after each round, and the rounds that were for warming up."""
    begin = time.monotonic()
    sizes, warm = [], 0
    while time.monotonic() - begin < seconds or len(sizes) - warm < 4:
        sizes.append(soak.round())
        if time.monotonic() - begin < seconds / 6 or len(sizes) < 4:
            warm = len(sizes)
        if len(sizes) % 5 == 0:
            print(f"{time.monotonic() - begin:.0f} s, {len(sizes)} rounds, {sum(sizes[-1]):.0f} MiB", flush=True)
    return sizes, warm


def report(soak, sizes, warm, seconds):
    """Says what was measured; true when the memory has not grown by more than is allowed."""
    measured = sizes[warm:]
    share = max(2, len(measured) // 6)
    first, last = measured[:share], measured[-share:]
    lines = [f"{seconds:.0f} s: {len(sizes)} rounds, {soak.number} pages, {soak.downloads} downloads, {soak.crashes} crashes"]
    grown = 1.0
    for what, size in (("all processes", sum), ("without the page's process", lambda pair: pair[1])):
        begin, end = (statistics.median(map(size, part)) for part in (first, last))
        lines.append(f"{what}: {begin:.1f} MiB at first, {end:.1f} MiB at the end, {100 * (end / begin - 1):+.1f} %")
        grown = max(grown, end / begin)
    return "\n".join(lines) + "\n", grown <= GROWTH


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("template", type=pathlib.Path)
    parser.add_argument("--seconds", type=float, default=1800)
    parser.add_argument("--output", type=pathlib.Path)
    options = parser.parse_args()
    desktop = Desktop()
    try:
        soak = Soak(desktop, options.template)
        begin = time.monotonic()
        try:
            sizes, warm = run(soak, options.seconds)
        finally:
            soak.close()
        text, is_steady = report(soak, sizes, warm, time.monotonic() - begin)
    finally:
        desktop.close()
    print(text, end="")
    if options.output:
        options.output.write_text(text, "utf-8")
    sys.exit(not is_steady)


if __name__ == "__main__":
    main()
