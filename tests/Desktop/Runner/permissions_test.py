"""What pages must ask for, what they are told, and what reaches the desktop in their name."""
from desktop import wait_for
from runner_case import GREEN, GREEN_PAGE, RunnerCase, main

BUTTON_PAGE = ("<!doctype html><title>Button</title><body style='background:#00c000'>"
               "<script>onclick = () => {{ {0} }}</script>")
ASK_LOCATION = ("navigator.geolocation.getCurrentPosition(() => fetch('/location-yes'),"
                "e => fetch('/location-' + e.code), {timeout: 1000})")
NOTIFY = ("Notification.requestPermission().then(p => { fetch('/permission-' + p);"
          "const n = new Notification('<b>News</b>', {body: 'a & <i>b</i>'});"
          "n.onclick = () => fetch('/clicked') })")


class Permissions(RunnerCase):
    def page_that_does(self, script, config=None):
        self.site.page("/", BUTTON_PAGE.format(script))
        app = self.app(config).start()
        app.wait_for_pixel(GREEN)
        app.click()
        return app

    def wait_for_banner(self, app):
        """Waits for a bar between the title bar and the page."""
        x, y, width, _ = self.desktop.geometry(app.window())
        wait_for(lambda: self.desktop.screen().near(x + width // 3, y + 60, (246, 245, 244), 8), "a bar above the page")

    def choose(self, app, from_right):
        """Clicks the button of the bar; the rightmost one closes it."""
        self.wait_for_banner(app)
        self.keep_picture(app, "bar")
        x, y, width, _ = self.desktop.geometry(app.window())
        self.desktop.click(x + width - from_right, y + 68)

    def load_again(self, app):
        """The engine itself remembers a refusal for as long as a page lives."""
        loads = len(self.site.seen("/"))
        app.key("ctrl+r")
        wait_for(lambda: len(self.site.seen("/")) > loads, "the page to be loaded again")
        app.wait_for_pixel(GREEN)

    def allow(self, app):
        self.choose(app, 75)

    def block(self, app):
        self.choose(app, 150)

    def test_permission_is_asked_once_and_remembered(self):
        app = self.page_that_does(NOTIFY)
        self.allow(app)
        wait_for(lambda: self.site.seen("/permission-granted"), "the answer")
        self.assertIn("notifications\tallow", (app.profile / "permissions").read_text())
        self.assertEqual(app.quit(), 0)
        self.site.requests.clear()
        self.site.page("/", GREEN_PAGE + "<script>fetch('/now-' + Notification.permission)</script>")
        app.start()
        wait_for(lambda: self.site.seen("/now-granted"), "the remembered answer")

    def test_permission_that_is_blocked_stays_blocked(self):
        app = self.page_that_does(ASK_LOCATION)
        self.block(app)
        wait_for(lambda: self.site.seen("/location-1"), "the refusal")
        self.site.requests.clear()
        app.click()
        wait_for(lambda: self.site.seen("/location-1"), "the refusal without a question")

    def test_question_that_is_closed_is_asked_again(self):
        app = self.page_that_does(ASK_LOCATION)
        self.choose(app, 30)
        wait_for(lambda: self.site.seen("/location-1"), "the refusal")
        self.load_again(app)
        app.click()
        self.wait_for_banner(app)
        self.assertFalse((app.profile / "permissions").exists())

    def test_camera_and_microphone_are_asked_for(self):
        app = self.page_that_does("navigator.mediaDevices.getUserMedia({audio: true, video: true})"
                                  ".then(() => fetch('/media-yes'), e => fetch('/media-' + e.name))")
        # Without such devices the engine refuses before anybody is asked; with them, a question comes first.
        wait_for(lambda: self.site.seen("/media-NotFoundError") or self.site.seen("/media-OverconstrainedError") or
                 self.site.seen("/media-NotAllowedError") or self.banner_is_there(app), "the question or the refusal")
        self.assertFalse(self.site.seen("/media-yes"))

    def banner_is_there(self, app):
        x, y, width, _ = self.desktop.geometry(app.window())
        return self.desktop.screen().near(x + width // 3, y + 60, (246, 245, 244), 8)

    def test_permissions_can_be_taken_back(self):
        app = self.app()
        app.profile.mkdir(parents=True)
        origin = self.site.address("").rstrip("/")
        (app.profile / "permissions").write_text(f"{origin}\tlocation\tdeny\n")
        self.site.page("/", BUTTON_PAGE.format(ASK_LOCATION))
        app.start()
        app.wait_for_pixel(GREEN)
        app.click()
        wait_for(lambda: self.site.seen("/location-1"), "the refusal")
        app.key("ctrl+shift+p")
        app.wait_for_windows(2, "the list of permissions")
        self.keep_picture(app, "list")
        app.press_button()
        wait_for(lambda: (app.profile / "permissions").read_text() == "", "the permission to be forgotten")
        app.key("Escape")
        app.wait_for_windows(1, "the list to go")
        self.load_again(app)
        app.click()
        self.wait_for_banner(app)

    def test_notification_carries_the_apps_name_and_icon_and_a_click_raises_the_window(self):
        services = self.start_services()
        app = self.page_that_does(NOTIFY)
        self.allow(app)
        line = wait_for(lambda: services.heard("notify "), "the notification")[0]
        # The title is plain text for every service; in the body some read markup.
        self.assertEqual(line.split(" ", 3)[3],
                         f"{app.name}|{app.identifier}|<b>News</b>|a &amp; &lt;i&gt;b&lt;/i&gt;")
        window = app.window()
        self.desktop.run("xdotool", "windowminimize", window)
        wait_for(lambda: "Iconic" in self.desktop.run("xprop", "-id", window, "WM_STATE"), "the minimised window")
        services.say("click 0")
        wait_for(lambda: "Normal" in self.desktop.run("xprop", "-id", window, "WM_STATE"), "the raised window")
        wait_for(lambda: self.site.seen("/clicked"), "the page to hear of the click")

    # What this engine does not have

    def test_missing_protected_media_is_said_once_with_a_way_out(self):
        self.site.page("/", GREEN_PAGE + "<script>navigator.requestMediaKeySystemAccess('x', []).catch(e => fetch('/refused-' + e.name))</script>")
        app = self.app().start()
        wait_for(lambda: self.site.seen("/refused-NotSupportedError"), "the refusal")
        self.choose(app, 110)
        wait_for(lambda: self.desktop.opened() == [self.site.address()], "the browser")
        self.assertEqual(app.quit(), 0)
        self.site.requests.clear()
        app.start()
        wait_for(lambda: self.site.seen("/refused-NotSupportedError"), "the refusal")
        app.wait_for_pixel(GREEN, dx=0.33, dy=60)

    def test_missing_calls_and_push_are_said(self):
        for script in ("new RTCPeerConnection()",
                       "navigator.serviceWorker.register('/w.js').then(r => r.pushManager.subscribe())"):
            with self.subTest(script=script):
                self.site.page("/w.js", "", {"Content-Type": "text/javascript"})
                self.site.page("/", GREEN_PAGE + f"<script>onload = () => {{ {script} }}</script>")
                app = self.app().start()
                self.wait_for_banner(app)
                self.keep_picture(app, "missing")
                app.quit()


if __name__ == "__main__":
    main()
