"""Starting an app, asking a running one, and ending it."""
import os
import signal

from desktop import PATIENCE, wait_for
from runner_case import GREEN, GREEN_PAGE, RED, RunnerCase, main


class Process(RunnerCase):
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

    def test_termination_is_clean_even_while_the_page_hangs(self):
        self.site.page("/", GREEN_PAGE + "<script>onload = () => setTimeout(() => { fetch('/hangs'); for (;;); }, 300)</script>")
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        wait_for(lambda: self.site.seen("/hangs"), "the page to hang")
        self.assertEqual(app.quit(), 0)

    def test_keys_reload_close_and_quit(self):
        for keys in ("ctrl+w", "ctrl+q"):
            with self.subTest(keys=keys):
                app = self.app().start()
                app.wait_for_pixel(GREEN)
                self.site.requests.clear()
                app.key("ctrl+r")
                wait_for(lambda: self.site.seen("/"), "the reload")
                app.key(keys)
                self.assertEqual(app.process.wait(timeout=PATIENCE), 0)

    def test_page_has_the_keyboard_from_the_start(self):
        self.site.page("/", GREEN_PAGE + "<script>onkeydown = event => fetch('/key-' + event.key)</script>")
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        app.key("a")
        wait_for(lambda: self.site.seen("/key-a"), "the key")

    def test_import_request_is_answered_on_the_first_start(self):
        app = self.app()
        app.start(f"{app.scheme}://import-session?source=Some%20Browser")
        app.wait_for_windows(2, "the answer")
        app.wait_for_pixel(GREEN, dx=0.1, dy=0.9)

    def test_import_request_is_answered_by_the_running_app(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.again(f"{app.scheme}://import-session"), 0)
        app.wait_for_windows(2, "the answer")

    def test_import_request_is_answered_over_the_session_bus(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        path = "/" + app.identifier.replace(".", "/").replace("-", "_")
        self.desktop.run("gdbus", "call", "--session", "--dest", app.identifier, "--object-path", path, "--method",
                         "org.freedesktop.Application.Open", f"['{app.scheme}://import-session?source=x']", "{}")
        app.wait_for_windows(2, "the answer")

    def test_foreign_arguments_are_ignored_with_one_line_each(self):
        app = self.app()
        app.start("nonsense", "ftp://example.com/", "http://127.0.0.2/", capture=True)
        app.wait_for_pixel(GREEN)
        app.process.send_signal(signal.SIGTERM)
        _, errors = app.process.communicate(timeout=PATIENCE)
        lines = [line for line in errors.decode().splitlines() if "is ignored" in line]
        self.assertEqual(len(lines), 3, errors)


if __name__ == "__main__":
    main()
