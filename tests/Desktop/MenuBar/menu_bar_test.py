"""Drives the status item, its menu and the previews on a private desktop with real apps: what a person sees."""
import argparse
import os
import pathlib
import re
import signal
import subprocess
import sys
import threading
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "Runner"))
from desktop import HEIGHT, WIDTH, Desktop, Site, wait_for  # noqa: E402
from panel import prepare_panel, start_panel  # noqa: E402

OPTIONS = None
PANEL_ICON = (14, 14)
RED, BLUE, GREEN = (192, 0, 0), (0, 0, 192), (0, 160, 0)

# The page takes its colour from the site, again and again.
PAGE = """<!doctype html><title>{name}</title><body style='background:rgb{color}'><script>
setInterval(async () => {{ document.body.style.background = await (await fetch('{path}')).text() }}, 100)</script>"""


class Program:
    """The program with the status item, and the lines that it writes: the manager itself, or what shows a recorded
    catalogue."""

    def __init__(self, desktop, offline=None, environment=None):
        self.desktop = desktop
        self.lines = []
        # A menu has the name of the program; so has the window that stands in for the dashboard.
        self.others = ("Preview", "Wrapio") if offline else ("Preview",)
        command = [OPTIONS.program, "--share", OPTIONS.share, "--offline", offline] if offline else [
            OPTIONS.manager, "--background"]
        self.process = subprocess.Popen([str(part) for part in command],
                                        env={**desktop.environment, **(environment or {})},
                                        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                        start_new_session=True)
        desktop.processes.append(self.process)
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.append(line.decode(errors="replace").rstrip("\n"))

    def wait_for_line(self, text, after=0):
        wait_for(lambda: any(text in line for line in self.lines[after:]), f"the line {text!r} in {self.lines[-8:]}")

    def visible(self):
        """The program's windows on the screen: pairs of title and id."""
        tree = self.desktop.run("xwininfo", "-root", "-tree")
        found = re.findall(r'(0x[0-9a-f]+) (?:"([^"]*)"|\(has no name\)): \("(?:wrapio-menu-bar|wrapio-manager)"', tree)
        return [(title, window) for window, title in found
                if "IsViewable" in self.desktop.run("xwininfo", "-id", window)]

    def menu(self):
        """The area of the open menu; nothing when it is closed."""
        areas = [self.desktop.geometry(window) for title, window in self.visible() if title not in self.others]
        return next((area for area in areas if area[2] > 100 and area[3] > 40), None)

    def panel(self):
        return next((self.desktop.geometry(window) for title, window in self.visible() if title == "Preview"), None)


class MenuBarTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.site = Site()
        self.addCleanup(self.site.close)
        prepare_panel(self.desktop)
        self.host = None
        self.addCleanup(self.end_apps)

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except Exception:
            self.picture("failed-" + self._testMethodName)
            raise

    def picture(self, name):
        OPTIONS.pictures.mkdir(parents=True, exist_ok=True)
        self.desktop.save_screen(OPTIONS.pictures / f"menu-bar-{name}.png")

    # The desktop

    def start_host(self):
        self.host = start_panel(self.desktop)

    def wait_for_item(self):
        """Waits until the panel shows an icon at the place of the item."""
        def shows():
            screen = self.desktop.screen()
            return len({screen.at(x, y) for x in range(4, 26) for y in range(4, 26)}) > 6
        wait_for(shows, "the status item in the panel")

    def wrapio(self, *arguments):
        done = subprocess.run([OPTIONS.wrapio, *arguments], env=self.desktop.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60, check=False)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return done.stdout.decode()

    def make_app(self, name, color):
        path = "/" + name.lower()
        self.site.page(path, PAGE.format(name=name, color=color, path=path + "-color"))
        self.set_color(name, color)
        self.wrapio("create", self.site.address(path), "--name", name, "--dev", "--no-icon")

    def set_color(self, name, color):
        self.site.page(f"/{name.lower()}-color", f"rgb{color}")

    def app_process(self, name):
        return self.desktop.process_of(name)

    def end_apps(self):
        self.desktop.end_apps("Red", "Blue")

    def launch(self, name):
        self.wrapio("launch", name)
        process = wait_for(lambda: self.app_process(name), f"the process of {name}")
        return wait_for(lambda: self.desktop.windows(process), f"the window of {name}")[0]

    # What a person does

    def move(self, x, y):
        self.desktop.run("xdotool", "mousemove", str(x), str(y))

    def open_menu(self, program):
        """Opens the menu by a click on the item and answers its area. The panel may need a moment to know it."""
        def opened():
            if not program.menu():
                self.desktop.click(*PANEL_ICON)
            try:
                return wait_for(program.menu, "the menu", timeout=2)
            except AssertionError:
                return None
        return wait_for(opened, "the menu after a click")

    def close_menu(self, program):
        def closed():
            if program.menu():
                self.desktop.run("xdotool", "key", "Escape")
            return program.menu() is None
        wait_for(closed, "the menu to close")

    def hover(self, program, name):
        """Moves the pointer down the menu until the app of that name is under it, and told so."""
        for patience in (0.4, 1, 3):
            x, y, width, height = wait_for(program.menu, "the menu")
            self.move(x + width // 2, y + 2)
            for place in range(y + 8, y + height, 6):
                before = len(program.lines)
                self.move(x + width // 2, place)
                try:
                    wait_for(lambda: any("Hovering over: " in line for line in program.lines[before:]), "", patience)
                except AssertionError:
                    continue
                if self.last_hovered(program) == name:
                    return x + width // 2, place
        raise AssertionError(f"{name} is not in the menu: {program.lines[-10:]}")

    @staticmethod
    def last_hovered(program):
        hovered = [line.rsplit("Hovering over: ", 1)[1] for line in program.lines if "Hovering over: " in line]
        return hovered[-1] if hovered else None

    def alt(self, action):
        self.desktop.run("xdotool", action, "alt")

    def wait_for_preview_color(self, program, color, tolerance=24):
        """Waits until the middle of the panel's picture has that colour; pictures are JPEG or scaled."""
        def shows():
            panel = program.panel()
            if not panel:
                return False
            x, y, width, height = panel
            return self.desktop.screen().near(x + width // 2, y + (height - 80) * 2 // 3, color, tolerance)
        wait_for(shows, f"the colour {color} in the preview; the panel is at {program.panel()}")

    # What is expected

    def test_previews_of_running_and_stopped_apps(self):
        for name, color in (("Red", RED), ("Blue", BLUE)):
            self.make_app(name, color)
        self.launch("Red")
        blue_window = self.launch("Blue")
        # The one covers the other wholly.
        self.desktop.run("xdotool", "windowsize", blue_window, str(WIDTH), str(HEIGHT - 40))
        self.desktop.run("xdotool", "windowmove", blue_window, "0", "30")
        wait_for(lambda: self.desktop.screen().near(WIDTH // 2, HEIGHT // 2, BLUE), "the window on top")
        self.start_host()
        program = Program(self.desktop)
        program.wait_for_line("Menu bar setup complete with hover preview support")
        self.wait_for_item()
        program.wait_for_line("Rebuilding menu...")
        self.open_menu(program)
        self.picture("1-menu")

        self.hover(program, "Red")
        self.assertIsNone(program.panel(), "hovering alone shows nothing")
        self.alt("keydown")
        program.wait_for_line("Option pressed - showing preview for: Red")
        self.wait_for_preview_color(program, RED)
        self.assertIsNotNone(program.menu(), "Alt must not close the menu")
        self.picture("2-live-covered")
        self.set_color("Red", GREEN)
        self.wait_for_preview_color(program, GREEN)
        self.picture("3-live-changed")
        self.hover(program, "Blue")
        program.wait_for_line("Showing preview for: Blue")
        self.wait_for_preview_color(program, BLUE)
        self.picture("4-next-app")
        self.alt("keyup")
        program.wait_for_line("Option released - hiding preview")
        wait_for(lambda: program.panel() is None, "the panel to go")
        self.picture("5-released")

        before = len(program.lines)
        os.kill(self.app_process("Red"), signal.SIGTERM)
        wait_for(lambda: self.app_process("Red") is None, "the end of Red")
        program.wait_for_line("Rebuilding menu...", before)
        # A menu closes when the window that had the keyboard goes, or soon.
        self.close_menu(program)
        self.open_menu(program)
        self.hover(program, "Red")
        before = len(program.lines)
        self.alt("keydown")
        program.wait_for_line("Option pressed - showing preview for: Red", before)
        x, y, width, height = wait_for(program.panel, "the panel")

        def is_gray():
            color = self.desktop.screen().at(x + width // 2, y + 200)
            return max(color) - min(color) <= 8
        wait_for(is_gray, "the grey picture")
        self.picture("6-cached")
        x, y, width, height = program.panel()
        self.desktop.click(x + width - 70, y + height - 40)
        self.alt("keyup")
        wait_for(lambda: self.app_process("Red"), "the launch from the panel")
        wait_for(lambda: program.panel() is None, "the panel to go")
        self.picture("7-launched")

        program.wait_for_line("Rebuilding menu...", before)
        self.close_menu(program)
        x, y, width, height = self.open_menu(program)
        self.picture("8-both-running")
        # Open Wrapio Manager, Quit All Apps, a separator, Quit Wrapio: from below.
        self.desktop.click(x + width // 2, y + height - 56)
        wait_for(lambda: not self.app_process("Red") and not self.app_process("Blue"), "the end of all apps")
        self.picture("9-quit-all")
        self.assertIsNone(program.process.poll(), "the program itself goes on")

    def test_closing_the_menu_with_alt_held_keeps_the_preview(self):
        self.start_host()
        program = Program(self.desktop, "running")
        self.wait_for_item()
        self.open_menu(program)
        self.hover(program, "Mail")
        self.alt("keydown")
        wait_for(program.panel, "the panel")
        x, y, width, height = program.menu()
        self.desktop.click(WIDTH - 20, HEIGHT - 20)
        program.wait_for_line("Menu closed but Option held - persisting preview")
        self.assertIsNotNone(program.panel())
        self.alt("keyup")
        program.wait_for_line("Option released - hiding preview")
        wait_for(lambda: program.panel() is None, "the panel to go")

    def test_the_item_appears_with_a_later_host_and_survives_its_restart(self):
        program = Program(self.desktop, "dozen")
        program.wait_for_line("Menu bar setup complete with hover preview support")
        self.start_host()
        self.wait_for_item()
        self.open_menu(program)
        self.close_menu(program)
        self.desktop.end(self.host)
        self.start_host()
        self.wait_for_item()
        self.open_menu(program)
        self.picture("host-restarted")

    def test_without_a_host_the_program_goes_on(self):
        program = Program(self.desktop, "dozen")
        program.wait_for_line("Menu bar setup complete with hover preview support")
        self.assertIsNone(program.process.poll())
        no_bus = Program(self.desktop, "dozen", environment=self.desktop.no_bus)
        no_bus.wait_for_line("Menu bar setup complete with hover preview support")
        self.assertIsNone(no_bus.process.poll())

    def test_the_other_button_shows_the_same_entries(self):
        self.start_host()
        program = Program(self.desktop, "dozen")
        self.wait_for_item()

        def chosen():
            self.desktop.run("xdotool", "mousemove", *map(str, PANEL_ICON), "click", "3")
            self.picture("desktop-menu")
            self.desktop.run("xdotool", "key", "Down", "Return")
            return any("launchOrFocusApp called" in line for line in program.lines)
        wait_for(chosen, "a choice in the menu that the desktop draws")
        program.wait_for_line("Config: Mail")


def main():
    global OPTIONS
    parser = argparse.ArgumentParser()
    for option in ("--program", "--manager", "--wrapio", "--share", "--pictures"):
        parser.add_argument(option, required=True, type=pathlib.Path)
    OPTIONS, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])


if __name__ == "__main__":
    main()
