"""Drives the real runner on a private desktop: what a person sees, and what the desktop sees."""
import argparse
import os
import pathlib
import signal
import stat
import sys
import time
import unittest

from apps import App
from desktop import Desktop, Site, wait_for

TEMPLATE = None
PICTURES = None

GREEN_PAGE = "<!doctype html><title>Start</title><body style='background:#00c000'>"
LINK_PAGE = "<!doctype html><title>Links</title><a href='{0}' style='position:fixed;inset:0;background:#00c000'>x</a>"
GREEN, RED, BLUE = (0, 192, 0), (192, 0, 0), (0, 0, 192)


def luminance(color):
    parts = [c / 255 for c in color]
    parts = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in parts]
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]


def contrast(first, second):
    one, other = luminance(first), luminance(second)
    return (max(one, other) + 0.05) / (min(one, other) + 0.05)


class RunnerTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.close)

    def setUp(self):
        self.site = Site()
        self.addCleanup(self.site.close)
        self.site.page("/", GREEN_PAGE)
        self.desktop.opened_file.unlink(missing_ok=True)
        self.apps = []

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except Exception:
            if PICTURES:
                PICTURES.mkdir(parents=True, exist_ok=True)
                self.desktop.save_screen(PICTURES / f"{self._testMethodName}.png")
            raise

    def tearDown(self):
        for app in self.apps:
            if app.process:
                self.desktop.end(app.process)

    def app(self, config=None, **options):
        """An app of the site's start page, not started yet."""
        name = f"App{len(list((self.desktop.root / 'apps').glob('*'))) if (self.desktop.root / 'apps').exists() else 0}"
        values = config if isinstance(config, str) else {"url": self.site.address(), "isDevMode": True, **(config or {})}
        app = App(self.desktop, TEMPLATE, name, values, **options)
        self.apps.append(app)
        return app

    # What the desktop sees

    def test_window_title_class_and_process_name_the_app(self):
        app = self.app().start()
        window = app.window()
        self.assertEqual(app.title(), app.name)
        self.assertEqual(self.desktop.property(window, "WM_CLASS"), f'"{app.identifier}", "{app.identifier}"')
        self.assertEqual(self.desktop.property(window, "_NET_WM_PID"), str(app.process.pid))

    def test_identifier_element_with_leading_digit_is_mapped(self):
        app = self.app()
        plist = app.bundle / "Contents/Info.plist"
        plist.write_text(plist.read_text().replace("generated.app", "generated.1app"))
        app.start()
        self.assertIn(f"com.wrapio.generated._1{app.name.lower()}", self.desktop.property(app.window(), "WM_CLASS"))

    def test_site_data_is_private_and_keyed_by_the_record(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        for folder in (app.profile, pathlib.Path(self.desktop.environment["XDG_CACHE_HOME"]) / "Wrapio/Profiles" / app.record):
            self.assertEqual(stat.S_IMODE(folder.stat().st_mode), 0o700)

    def test_persistent_cookie_survives_a_restart(self):
        self.site.page("/", GREEN_PAGE, {"Set-Cookie": "kept=yes; Max-Age=86400"})
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.quit(), 0)
        self.site.requests.clear()
        app.start()
        wait_for(lambda: any(headers.get("Cookie") == "kept=yes" for _, _, headers in self.site.requests), "the cookie")

    # Every key of the settings

    def test_custom_style_wins_under_a_strict_content_policy(self):
        self.site.page("/", "<!doctype html><title>x</title><body>",
                       {"Content-Security-Policy": "default-src 'none'"})
        app = self.app({"customCSS": "body { background: #c00000 }"}).start()
        app.wait_for_pixel(RED)

    def test_script_at_the_end_still_hears_that_the_document_is_ready(self):
        app = self.app({"customJS": "document.addEventListener('DOMContentLoaded', "
                                    "() => { document.body.style.background = '#0000c0' })"}).start()
        app.wait_for_pixel(BLUE)

    def test_script_at_the_end_with_an_error_does_not_break_the_page(self):
        self.site.page("/", GREEN_PAGE + "<script>window.onload = () => document.addEventListener('x', () => 0) || "
                                         "fetch('/alive')</script>")
        self.app({"customJS": "syntax error here ("}).start()
        wait_for(lambda: self.site.seen("/alive"), "the page's own script")

    def test_script_at_the_start_runs_before_the_pages_own(self):
        self.site.page("/", "<!doctype html><script>fetch('/early-' + window.early)</script>")
        self.app({"customJS": "window.early = document.body === null", "jsInjectionTime": "documentStart"}).start()
        wait_for(lambda: self.site.seen("/early-true"), "the early script")

    def test_user_agent_is_sent(self):
        self.app({"userAgent": "Wrapio Test/1.0"}).start()
        request = wait_for(lambda: self.site.seen("/"), "a request")[0]
        self.assertEqual(request[2]["User-Agent"], "Wrapio Test/1.0")

    def test_languages_are_real_where_the_locale_names_none(self):
        self.site.page("/", "<!doctype html><script>fetch('/language-' + navigator.language)</script>")
        self.app().start()
        wait_for(lambda: self.site.seen("/language-en-US"), "the language")

    def test_theme_colour_tints_the_title_bar_and_its_text_is_legible(self):
        for color, expected in (("#FFD60A", (255, 214, 10)), ("#14213D", (20, 33, 61))):
            with self.subTest(color=color):
                app = self.app({"themeColor": color, "themeOpacity": 1}).start()
                app.wait_for_pixel(expected, dx=0.3, dy=12)
                x, y, width, _ = self.desktop.geometry(app.window())
                picture = self.desktop.screen()
                title = [picture.at(px, py) for px in range(x + width // 2 - 60, x + width // 2 + 60)
                         for py in range(y + 8, y + 40)]
                self.assertGreaterEqual(max(contrast(pixel, expected) for pixel in title), 4.5)
                app.quit()

    def test_theme_opacity_weakens_the_tint(self):
        app = self.app({"themeColor": "#000000", "themeOpacity": 0.5}).start()
        # Half black over the light title bar.
        app.wait_for_pixel((123, 123, 122), dx=0.3, dy=12)

    def test_border_is_drawn_in_the_theme_colour(self):
        app = self.app({"themeColor": "#C00000", "themeBorderEnabled": True}).start()
        app.wait_for_pixel(GREEN)
        app.wait_for_pixel(RED, dx=1.5, dy=0.5)
        app.wait_for_pixel(RED, dx=-2, dy=0.5)
        app.wait_for_pixel(RED, dx=0.5, dy=-2)

    def test_unread_count_reaches_title_and_launcher(self):
        self.site.page("/", "<!doctype html><title>(5) Inbox</title>")
        monitor = self.desktop.start(["dbus-monitor", "--session", "interface=com.canonical.Unity.LauncherEntry"],
                                     capture=True)
        wait_for(lambda: b"NameAcquired" in os.read(monitor.stdout.fileno(), 65536), "the bus monitor")
        app = self.app().start()
        wait_for(lambda: app.title() == f"(5) {app.name}", "the count in the title")
        os.set_blocking(monitor.stdout.fileno(), False)
        heard = b""

        def hears():
            nonlocal heard
            heard += monitor.stdout.read() or b""
            return b"int64 5" in heard and f"application://{app.identifier}.desktop".encode() in heard

        wait_for(hears, "the launcher's count")

    def test_no_count_is_shown_when_badges_are_off(self):
        self.site.page("/", "<!doctype html><title>(5) Inbox</title><script>onload = () => fetch('/done')</script>")
        app = self.app({"badgeEnabled": False}).start()
        wait_for(lambda: self.site.seen("/done"), "the page")
        self.assertEqual(app.title(), app.name)

    # Navigation

    def open_page_with_link(self, config=None, target=None):
        self.site.page("/", LINK_PAGE.format(target))
        app = self.app(config).start()
        app.wait_for_pixel(GREEN)
        app.click()
        return app

    def test_clicked_link_to_another_host_opens_in_the_browser(self):
        target = self.site.address("/other", host="127.0.0.2")
        app = self.open_page_with_link(target=target)
        wait_for(lambda: self.desktop.opened() == [target], "the browser")
        app.wait_for_pixel(GREEN)
        self.assertFalse(self.site.seen("/other"))
        environment = (self.desktop.root / "browser-environment").read_text()
        self.assertNotIn("WEBKIT_DISABLE_DMABUF_RENDERER", environment)

    def test_clicked_link_to_an_allowed_host_stays(self):
        self.site.page("/other", "<!doctype html><body style='background:#c00000'>")
        app = self.open_page_with_link({"allowedHosts": ["127.0.0.2"]}, self.site.address("/other", host="127.0.0.2"))
        app.wait_for_pixel(RED)
        self.assertEqual(self.desktop.opened(), [])

    def test_mail_link_opens_its_program(self):
        self.open_page_with_link(target="mailto:someone@example.com")
        wait_for(lambda: self.desktop.opened() == ["mailto:someone@example.com"], "the mail program")

    def test_link_that_asks_for_a_new_window_opens_in_the_same_one(self):
        self.site.page("/next", "<!doctype html><body style='background:#c00000'>")
        app = self.open_page_with_link(target="/next' target='_blank")
        app.wait_for_pixel(RED)
        self.assertEqual(len(app.windows()), 1)

    def test_script_that_leaves_the_site_ends_in_the_browser(self):
        target = self.site.address("/away", host="127.0.0.2")
        self.site.page("/away", "<!doctype html>")
        self.site.page("/", GREEN_PAGE + f"<script>onload = () => setTimeout(() => location = '{target}')</script>")
        app = self.app().start()
        wait_for(lambda: self.desktop.opened() == [target], "the browser")
        app.wait_for_pixel(GREEN)

    def test_start_address_may_redirect_to_another_host(self):
        self.site.page("/", "", {"Location": self.site.address("/new", host="127.0.0.2")}, status=302)
        self.site.page("/new", "<!doctype html><body style='background:#c00000'>")
        app = self.app().start()
        app.wait_for_pixel(RED)
        self.assertEqual(self.desktop.opened(), [])

    def test_frame_of_another_host_stays_in_its_page(self):
        frame = self.site.address("/frame", host="127.0.0.2")
        self.site.page("/frame", "<!doctype html><body style='background:#0000c0'>")
        self.site.page("/", GREEN_PAGE + f"<iframe src='{frame}' style='position:fixed;inset:0;width:100%;height:100%'>")
        app = self.app().start()
        app.wait_for_pixel(BLUE)
        self.assertEqual(self.desktop.opened(), [])

    # Starting, asking, ending

    def check_second_start(self, environment=None):
        app = self.app().start(environment=environment)
        app.wait_for_pixel(GREEN)
        window = app.window()
        self.desktop.run("xdotool", "windowminimize", window)
        wait_for(lambda: "Iconic" in self.desktop.run("xprop", "-id", window, "WM_STATE"), "the minimised window")
        self.assertEqual(app.again(environment=environment), 0)
        wait_for(lambda: "Normal" in self.desktop.run("xprop", "-id", window, "WM_STATE"), "the restored window")
        self.assertEqual(len(app.windows()), 1)
        self.site.page("/asked", "<!doctype html><body style='background:#c00000'>")
        self.assertEqual(app.again(self.site.address("/asked"), environment=environment), 0)
        app.wait_for_pixel(RED)

    def test_second_start_brings_the_first_to_the_front(self):
        self.check_second_start()

    def test_second_start_works_without_a_session_bus(self):
        self.check_second_start(self.desktop.no_bus)

    def test_second_start_on_another_bus_does_not_share_the_profile(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.again(environment=self.desktop.no_bus), 0)
        self.assertEqual(len(app.windows()), 1)

    def test_start_after_a_crash_is_not_blocked(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        os.killpg(app.process.pid, signal.SIGKILL)
        app.process.wait()
        app.start()
        app.wait_for_pixel(GREEN)

    def test_termination_is_clean_and_prompt(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        begin = time.monotonic()
        self.assertEqual(app.quit(), 0)
        self.assertLess(time.monotonic() - begin, 2.0)

    def test_keys_reload_close_and_quit(self):
        for keys in ("ctrl+w", "ctrl+q"):
            with self.subTest(keys=keys):
                app = self.app().start()
                app.wait_for_pixel(GREEN)
                self.site.requests.clear()
                self.desktop.run("xdotool", "key", "ctrl+r")
                wait_for(lambda: self.site.seen("/"), "the reload")
                self.desktop.run("xdotool", "key", keys)
                self.assertEqual(app.process.wait(timeout=10), 0)

    def test_page_has_the_keyboard_from_the_start(self):
        self.site.page("/", GREEN_PAGE + "<script>onkeydown = event => fetch('/key-' + event.key)</script>")
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.desktop.run("xdotool", "key", "a")
        wait_for(lambda: self.site.seen("/key-a"), "the key")

    def test_import_request_is_answered_on_the_first_start(self):
        app = self.app()
        app.start(f"{app.scheme}://import-session?source=Some%20Browser")
        wait_for(lambda: len(app.windows()) == 2, "the answer")
        app.wait_for_pixel(GREEN, dx=0.1, dy=0.9)

    def test_import_request_is_answered_by_the_running_app(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.again(f"{app.scheme}://import-session"), 0)
        wait_for(lambda: len(app.windows()) == 2, "the answer")

    def test_import_request_is_answered_over_the_session_bus(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        path = "/" + app.identifier.replace(".", "/").replace("-", "_")
        self.desktop.run("gdbus", "call", "--session", "--dest", app.identifier, "--object-path", path, "--method",
                         "org.freedesktop.Application.Open", f"['{app.scheme}://import-session?source=x']", "{}")
        wait_for(lambda: len(app.windows()) == 2, "the answer")

    def test_foreign_arguments_are_ignored_with_one_line_each(self):
        app = self.app()
        app.start("nonsense", "ftp://example.com/", "http://127.0.0.2/", capture=True)
        app.wait_for_pixel(GREEN)
        app.process.send_signal(signal.SIGTERM)
        _, errors = app.process.communicate(timeout=10)
        lines = [line for line in errors.decode().splitlines() if "is ignored" in line]
        self.assertEqual(len(lines), 3, errors)

    # What is wrong is said

    def check_problem(self, app, *words):
        app.start(capture=True)
        app.window()
        app.process.send_signal(signal.SIGTERM)
        _, errors = app.process.communicate(timeout=10)
        self.assertEqual(app.process.returncode, 1)
        self.assertEqual(len(errors.decode().splitlines()), 1, errors)
        for word in words:
            self.assertIn(word, errors.decode())

    def test_missing_settings_are_named_in_a_window(self):
        app = self.app()
        (app.bundle / "Contents/Resources/config.json").unlink()
        self.check_problem(app, "config.json", "is missing", "regenerate")

    def test_hostile_settings_are_refused_in_a_window(self):
        for text in ("[" * 1_000_000, '{"url":"javascript:alert(1)"}', '{"url":"' + "x" * 10_000_000 + '"}', "\0" * 100):
            with self.subTest(text=text[:20]):
                self.check_problem(self.app(text), "Wrapio")

    def test_hostile_values_leave_a_working_app(self):
        app = self.app({"name": "A\0\n" + "x" * 10_000_000, "allowedHosts": 7, "themeColor": "red", "themeOpacity": 1e9,
                        "userAgent": "a\nb", "customCSS": ["x"]}).start()
        app.wait_for_pixel(GREEN)
        self.assertTrue(app.title().startswith("A x"))

    def test_damaged_identity_is_said_in_a_window(self):
        app = self.app()
        (app.bundle / "Contents/Info.plist").write_text("<plist>")
        self.check_problem(app, "Info.plist")

    def test_without_a_display_one_line_is_said(self):
        for app in (self.app(), self.app("{")):
            process = self.desktop.start([app.program], environment={"DISPLAY": ":99999"}, capture=True)
            _, errors = process.communicate(timeout=20)
            self.assertEqual(process.returncode, 1)
            lines = errors.decode().splitlines()
            self.assertEqual(len(lines), 1, errors)
            self.assertTrue(lines[0].startswith("WrapioRunner: "))

    def test_unreachable_site_is_said_in_the_window(self):
        app = self.app()
        self.site.close()
        app.start()
        app.wait_for_pixel((53, 132, 228), dx=0.5, dy=0.5, tolerance=255)
        # The engine's own page would be white from edge to edge.
        app.wait_for_pixel((246, 245, 244), dx=0.1, dy=0.9)


def main():
    global TEMPLATE, PICTURES
    parser = argparse.ArgumentParser()
    parser.add_argument("--template", required=True, type=pathlib.Path)
    parser.add_argument("--pictures", type=pathlib.Path)
    options, rest = parser.parse_known_args()
    TEMPLATE, PICTURES = options.template, options.pictures
    unittest.main(argv=[sys.argv[0], *rest])


if __name__ == "__main__":
    main()
