"""The count on the app's icon and in its title."""
import os

from desktop import wait_for
from runner_case import GREEN, GREEN_PAGE, RunnerCase, main


class Badge(RunnerCase):
    def setUp(self):
        super().setUp()
        self.monitor = self.desktop.start(["dbus-monitor", "--session", "interface=com.canonical.Unity.LauncherEntry"],
                                          capture=True)
        wait_for(lambda: b"NameAcquired" in os.read(self.monitor.stdout.fileno(), 65536), "the bus monitor")
        os.set_blocking(self.monitor.stdout.fileno(), False)
        self.addCleanup(self.desktop.end, self.monitor)
        self.text = ""

    def latest(self):
        """The latest count that the launcher was told, and whether it is visible."""
        self.text += (self.monitor.stdout.read() or b"").decode()
        signal = self.text.rpartition("member=Update")[2]
        count = signal.partition("int64 ")[2].split()
        visible = signal.partition("boolean ")[2].split()
        return (int(count[0]), visible[0] == "true") if count and visible else None

    def test_count_of_the_title_is_gone_on_exit(self):
        self.site.page("/", "<!doctype html><title>(5) Inbox</title><body style='background:#00c000'>")
        app = self.app().start()
        wait_for(lambda: self.latest() == (5, True), "the count")
        self.assertEqual(app.title(), f"(5) {app.name}")
        app.quit()
        wait_for(lambda: self.latest() == (0, False), "the badge to go")

    def test_badge_calls_of_the_page_count(self):
        self.site.page("/", GREEN_PAGE + "<script>navigator.setAppBadge(7).then(() => fetch('/set'));"
                                         "onkeydown = e => e.key == 'f' ? navigator.setAppBadge() : navigator.clearAppBadge()</script>")
        app = self.app().start()
        wait_for(lambda: self.latest() == (7, True), "the count")
        self.assertEqual(app.title(), f"(7) {app.name}")
        app.wait_for_pixel(GREEN)
        app.key("f")
        wait_for(lambda: app.title() == f"• {app.name}", "the dot")
        app.key("c")
        wait_for(lambda: app.title() == app.name, "the title without a badge")
        wait_for(lambda: self.latest() == (0, False), "the badge to go")

    def test_hostile_badge_calls_are_refused(self):
        self.site.page("/", GREEN_PAGE + "<script>for (const x of [-1, NaN, 'x', {}]) navigator.setAppBadge(x).catch(() => 0);"
                                         "for (const x of [{}, 1, null, 'x'.repeat(1e6), '(9)'])"
                                         "window.webkit.messageHandlers.wrapioBadge.postMessage(x);"
                                         "navigator.setAppBadge(1e300); navigator.setAppBadge(2).then(() => fetch('/done'))</script>")
        app = self.app().start()
        wait_for(lambda: self.site.seen("/done"), "the page")
        wait_for(lambda: app.title() == f"(2) {app.name}", "the only good count")

    def test_badge_calls_do_nothing_when_badges_are_off(self):
        self.site.page("/", GREEN_PAGE + "<script>navigator.setAppBadge?.(7); fetch('/done')</script>")
        app = self.app({"badgeEnabled": False}).start()
        wait_for(lambda: self.site.seen("/done"), "the page")
        app.wait_for_pixel(GREEN)
        self.assertEqual(app.title(), app.name)


if __name__ == "__main__":
    main()
