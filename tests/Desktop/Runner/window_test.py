"""The window: its commands and keys, what it remembers, and light and dark."""
import re

from desktop import wait_for
from runner_case import BLUE, GREEN, GREEN_PAGE, RED, RunnerCase, coloured, main

FIND_PAGE = ("<!doctype html><title>Find</title><body style='background:#00c000'>needle hay hay needle<script>"
             "onscroll = () => scrollY > 3000 && fetch('/scrolled')</script><div style='height:4000px'></div>last straw")


class Window(RunnerCase):
    def started(self, config=None):
        app = self.app(config).start()
        app.wait_for_pixel(GREEN)
        return app

    def test_back_and_forward_keys_walk_through_the_pages(self):
        self.site.page("/", GREEN_PAGE + "<script>onkeydown = e => { if (e.key == 'n') location = '/next' }</script>")
        self.site.page("/next", coloured("#c00000"))
        app = self.started()
        app.key("n")
        app.wait_for_pixel(RED)
        app.key("alt+Left")
        app.wait_for_pixel(GREEN)
        app.key("alt+Right")
        app.wait_for_pixel(RED)
        app.key("alt+Home")
        app.wait_for_pixel(GREEN)

    def test_find_scrolls_to_the_text_and_escape_gives_the_page_its_keys_back(self):
        self.site.page("/", FIND_PAGE + "<script>onkeydown = e => fetch('/key-' + e.key)</script>")
        app = self.started()
        app.key("ctrl+f")
        app.type("last straw")
        wait_for(lambda: self.site.seen("/scrolled"), "the page to scroll to the match")
        self.keep_picture(app, "find")
        app.key("Escape")
        app.key("q")
        wait_for(lambda: self.site.seen("/key-q"), "the key in the page")

    def test_zoom_keys_change_the_size_and_it_is_remembered(self):
        self.site.page("/", GREEN_PAGE + "<script>onresize = () => fetch('/wide-' + innerWidth);"
                                         "fetch('/first-' + innerWidth)</script>")
        app = self.started()
        first = int(wait_for(lambda: self.seen_number("/first-"), "the width"))
        app.key("ctrl+plus")
        wait_for(lambda: self.seen_number("/wide-") and abs(int(self.seen_number("/wide-")) * 1.1 - first) < 4, "larger")
        self.assertEqual(app.quit(), 0)
        self.site.requests.clear()
        app.start()
        wait_for(lambda: self.seen_number("/first-") and abs(int(self.seen_number("/first-")) * 1.1 - first) < 4,
                 "the remembered zoom")
        app.key("ctrl+minus")
        wait_for(lambda: self.seen_number("/wide-") == str(first), "smaller again")
        app.key("ctrl+minus")
        wait_for(lambda: int(self.seen_number("/wide-")) > first, "smaller than usual")
        app.key("ctrl+0")
        wait_for(lambda: self.seen_number("/wide-") == str(first), "the usual size")

    def seen_number(self, start):
        """What followed `start` in the latest request for it."""
        found = [re.sub("^" + start, "", path) for _, path, _ in self.site.requests if path.startswith(start)]
        return found[-1] if found else None

    def test_full_screen_key_covers_the_screen_and_gives_it_back(self):
        app = self.started()
        window = app.window()
        app.key("F11")
        wait_for(lambda: "FULLSCREEN" in self.desktop.property(window, "_NET_WM_STATE"), "the full screen")
        app.wait_for_pixel(GREEN, dx=0.5, dy=5)
        app.key("F11")
        wait_for(lambda: "FULLSCREEN" not in self.desktop.property(window, "_NET_WM_STATE"), "the window")

    def test_size_and_place_are_remembered(self):
        self.site.page("/", GREEN_PAGE + "<script>onresize = () => fetch('/wide-' + innerWidth)</script>")
        app = self.started()
        window = app.window()
        self.desktop.run("xdotool", "windowsize", window, "700", "500", "windowmove", window, "123", "210")
        wait_for(lambda: self.desktop.geometry(window) == (123, 210, 700, 500), "the moved window")
        wait_for(lambda: self.seen_number("/wide-") and int(self.seen_number("/wide-")) <= 700, "the app to know")
        self.assertEqual(app.quit(), 0)
        app.start()
        wait_for(lambda: self.desktop.geometry(app.window()) == (123, 210, 700, 500), "the remembered place")

    def test_maximised_window_comes_back_maximised(self):
        app = self.started()
        window = app.window()
        x, y, width, _ = self.desktop.geometry(window)
        self.desktop.click(x + width // 4, y + 15, times=2)
        wait_for(lambda: "MAXIMIZED" in self.desktop.property(window, "_NET_WM_STATE"), "the maximised window")
        self.assertEqual(app.quit(), 0)
        app.start()
        wait_for(lambda: "MAXIMIZED" in self.desktop.property(app.window(), "_NET_WM_STATE"), "the maximised window")

    def test_damaged_memory_of_the_window_is_no_obstacle(self):
        app = self.app()
        app.profile.mkdir(parents=True)
        (app.profile / "window").write_bytes(b"width=99999999999999999999\nheight=-5\nzoom=nan\nx=1e9\n\0\xff" * 50)
        app.start()
        app.wait_for_pixel(GREEN)

    def test_print_key_opens_the_print_dialog(self):
        app = self.started()
        app.key("ctrl+p")
        app.wait_for_windows(2, "the print dialog")
        self.keep_picture(app, "print")

    def test_shortcuts_key_shows_all_keys(self):
        app = self.started()
        app.key("ctrl+question")
        app.wait_for_windows(2, "the window of shortcuts")
        self.keep_picture(app, "shortcuts")

    def test_address_can_be_copied_and_opened_in_the_browser(self):
        self.site.page("/", GREEN_PAGE + "<textarea autofocus oninput=\"fetch('/pasted?' + value)\"></textarea>")
        app = self.started()
        app.key("ctrl+shift+c")
        app.key("ctrl+v")
        wait_for(lambda: self.site.seen("/pasted?" + self.site.address()), "the pasted address")
        app.key("ctrl+shift+o")
        wait_for(lambda: self.desktop.opened() == [self.site.address()], "the browser")

    def test_clearing_data_asks_first_and_signs_out(self):
        self.site.page("/", GREEN_PAGE, {"Set-Cookie": "user=me; Max-Age=86400"})
        self.site.page("/check", coloured("#c00000"))
        app = self.started({"isDevMode": True})
        app.key("ctrl+shift+Delete")
        app.wait_for_windows(2, "the question")
        self.keep_picture(app, "clear-data")
        # The safe answer has the keyboard; the other one is to its right.
        self.site.requests.clear()
        app.press_button(1)
        wait_for(lambda: self.site.seen("/"), "the start page")
        self.assertNotIn("Cookie", self.site.seen("/")[0][2])

    def test_clearing_data_can_be_declined(self):
        self.site.page("/", GREEN_PAGE, {"Set-Cookie": "user=me; Max-Age=86400"})
        app = self.started()
        app.key("ctrl+shift+Delete")
        app.wait_for_windows(2, "the question")
        app.press_button()
        app.wait_for_windows(1, "the question to go")
        self.site.requests.clear()
        app.key("ctrl+r")
        wait_for(lambda: self.site.seen("/"), "the page")
        self.assertEqual(self.site.seen("/")[0][2].get("Cookie"), "user=me")

    def test_dark_desktop_makes_a_dark_title_bar_and_dark_pages(self):
        self.site.page("/", "<!doctype html><style>body { background: #00c000 }"
                            "@media (prefers-color-scheme: dark) { body { background: #0000c0 } }</style>")
        services = self.start_services()
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        services.say("color-scheme 1")
        app.wait_for_pixel(BLUE)
        wait_for(lambda: sum(self.pixel(app, 0.25, 12)) < 300, "the dark title bar")
        self.keep_picture(app, "dark")
        services.say("color-scheme 2")
        app.wait_for_pixel(GREEN)
        wait_for(lambda: sum(self.pixel(app, 0.25, 12)) > 500, "the light title bar")

    def pixel(self, app, dx, dy):
        x, y, width, _ = self.desktop.geometry(app.window())
        return self.desktop.screen().at(x + int(width * dx), y + dy)


if __name__ == "__main__":
    main()
