"""Every key of the settings has its effect."""
import os

from desktop import wait_for
from runner_case import BLUE, GREEN, GREEN_PAGE, RED, RunnerCase, main


def luminance(color):
    parts = [c / 255 for c in color]
    parts = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in parts]
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]


def contrast(first, second):
    one, other = luminance(first), luminance(second)
    return (max(one, other) + 0.05) / (min(one, other) + 0.05)


class Settings(RunnerCase):
    def test_custom_style_wins_under_a_strict_content_policy(self):
        self.site.page("/", "<!doctype html><title>x</title><body>",
                       {"Content-Security-Policy": "default-src 'none'"})
        app = self.app({"customCSS": "body { background: #c00000 }"}).start()
        app.wait_for_pixel(RED)

    def test_custom_style_wins_over_a_rule_of_the_page_that_is_as_specific(self):
        self.site.page("/", GREEN_PAGE + "<style>body.a { background: #00c000 } p { color: green }</style><p>x")
        app = self.app({"customCSS": "body, html body[style] { background: #c00000 !important }"}).start()
        app.wait_for_pixel(RED)
        self.site.page("/", "<!doctype html><body><script>onload = () => { const s = document.createElement('style');"
                            "s.textContent = 'body { background: #00c000 }'; document.head.append(s) }</script>")
        app = self.app({"customCSS": "body { background: #c00000 }"}).start()
        app.wait_for_pixel(RED)

    def test_custom_script_runs_under_a_strict_content_policy(self):
        self.site.page("/", GREEN_PAGE, {"Content-Security-Policy": "default-src 'none'; style-src 'unsafe-inline'"})
        app = self.app({"customJS": "document.body.style.background = '#0000c0'"}).start()
        app.wait_for_pixel(BLUE)

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


if __name__ == "__main__":
    main()
