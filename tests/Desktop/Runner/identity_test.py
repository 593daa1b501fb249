"""What the desktop sees of an app, and where the app keeps its data."""
import os
import pathlib
import signal
import stat

from desktop import wait_for
from runner_case import GREEN, GREEN_PAGE, RunnerCase, main


class Identity(RunnerCase):
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

    def test_sign_in_survives_that_the_app_is_renamed_and_made_anew(self):
        self.site.page("/", GREEN_PAGE, {"Set-Cookie": "kept=yes; Max-Age=86400"})
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.quit(), 0)
        self.site.requests.clear()
        self.site.page("/", GREEN_PAGE)
        renamed = self.app(record=app.record).start()
        self.assertNotEqual(renamed.identifier, app.identifier)
        request = wait_for(lambda: self.site.seen("/"), "the page")[0]
        self.assertEqual(request[2].get("Cookie"), "kept=yes")

    def test_sign_in_of_the_session_survives_a_restart_and_is_private(self):
        self.site.page("/", GREEN_PAGE, {"Set-Cookie": "session=a%09b; HttpOnly; SameSite=Lax"})
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.quit(), 0)
        self.assertEqual(stat.S_IMODE((app.profile / "session-cookies").stat().st_mode), 0o600)
        self.site.requests.clear()
        self.site.page("/", GREEN_PAGE)
        app.start()
        request = wait_for(lambda: self.site.seen("/"), "the page")[0]
        self.assertEqual(request[2].get("Cookie"), "session=a%09b")

    def test_sign_in_of_the_session_survives_a_killed_app(self):
        self.site.page("/", GREEN_PAGE, {"Set-Cookie": "session=kept"})
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        wait_for((app.profile / "session-cookies").exists, "the cookies to be written")
        os.killpg(app.process.pid, signal.SIGKILL)
        app.process.wait()
        self.site.requests.clear()
        self.site.page("/", GREEN_PAGE)
        app.start()
        request = wait_for(lambda: self.site.seen("/"), "the page")[0]
        self.assertEqual(request[2].get("Cookie"), "session=kept")

    def test_storage_of_the_page_survives_termination(self):
        self.site.page("/", GREEN_PAGE + "<script>fetch('/was-' + localStorage.x); localStorage.x = 'kept'</script>")
        app = self.app().start()
        wait_for(lambda: self.site.seen("/was-undefined"), "the first visit")
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.quit(), 0)
        app.start()
        wait_for(lambda: self.site.seen("/was-kept"), "the storage")


if __name__ == "__main__":
    main()
