"""What pages may do besides being shown: windows, files, questions, dialogs and sign-ins."""
import base64

from desktop import wait_for
from runner_case import GREEN, GREEN_PAGE, RED, WHITE, RunnerCase, coloured, main

BUTTON_PAGE = ("<!doctype html><title>Button</title><body style='background:#00c000'>"
               "<script>onclick = () => {{ {0} }}</script>")

BLUE_OF_PROGRESS = (53, 132, 228)


class Pages(RunnerCase):
    def page_that_does(self, script, config=None):
        """An app whose page runs `script` at a click, which has happened."""
        self.site.page("/", BUTTON_PAGE.format(script))
        app = self.app(config).start()
        app.wait_for_pixel(GREEN)
        app.click()
        return app

    def popup_of(self, app):
        main_window = app.window()
        app.wait_for_windows(2, "the window that the page opens")
        return next(window for window in app.windows() if window != main_window)

    # Windows that pages open

    def test_sign_in_window_of_another_site_answers_its_opener_and_goes(self):
        self.site.page("/login", coloured("#c00000") + "<script>onclick = () => { opener.postMessage('token', '*'); close() }</script>")
        login = self.site.address("/login", host="127.0.0.2")
        app = self.page_that_does(f"onmessage = e => fetch('/got-' + e.data); open('{login}', 'login', 'width=400,height=300')")
        popup = self.popup_of(app)
        wait_for(lambda: self.desktop.property(popup, "_NET_WM_NAME") == '"127.0.0.2"', "the site's name in the title")
        self.keep_picture(app, "popup")
        x, y, width, height = self.desktop.geometry(popup)
        wait_for(lambda: self.desktop.screen().near(x + width // 2, y + height // 2, RED), "the sign-in page")
        self.desktop.click(x + width // 2, y + height // 2)
        wait_for(lambda: self.site.seen("/got-token"), "the answer to the opener")
        app.wait_for_windows(1, "the window to go")
        self.assertEqual(self.desktop.opened(), [])

    def test_ordinary_window_of_another_site_opens_in_the_browser(self):
        target = self.site.address("/other", host="127.0.0.2")
        self.site.page("/other", coloured("#c00000"))
        app = self.page_that_does(f"open('{target}')")
        wait_for(lambda: self.desktop.opened() == [target], "the browser")
        app.wait_for_windows(1, "the app's own window only")

    def test_small_window_has_the_size_that_was_asked_for(self):
        self.site.page("/small", coloured("#c00000"))
        app = self.page_that_does("open('/small', 'x', 'width=420,height=310')")
        popup = self.popup_of(app)
        wait_for(lambda: self.desktop.geometry(popup)[2:] == (420, 310), "the size")

    def test_window_without_wishes_has_the_openers_size_and_keeps_to_the_site(self):
        away = self.site.address("/away", host="127.0.0.2")
        self.site.page("/second", BUTTON_PAGE.format(f"location = '{away}'"))
        self.site.page("/away", coloured("#c00000"))
        app = self.page_that_does("const w = open('/second'); fetch('/opened-' + (w !== null))")
        wait_for(lambda: self.site.seen("/opened-true"), "the handle of the window")
        popup = self.popup_of(app)
        wait_for(lambda: self.desktop.geometry(popup)[2:] == self.desktop.geometry(app.window())[2:], "the opener's size")
        x, y, width, height = self.desktop.geometry(popup)
        wait_for(lambda: self.desktop.screen().near(x + width // 2, y + height // 2, GREEN), "the second page")
        self.desktop.click(x + width // 2, y + height // 2)
        wait_for(lambda: self.desktop.opened() == [away], "the browser")
        self.assertEqual(len(app.windows()), 2)

    def test_window_without_a_click_is_not_opened(self):
        self.site.page("/", GREEN_PAGE + "<script>onload = () => { open('/x', 'x', 'width=300,height=300'); fetch('/tried') }</script>")
        app = self.app().start()
        wait_for(lambda: self.site.seen("/tried"), "the attempt")
        app.wait_for_pixel(GREEN)
        self.assertEqual(len(app.windows()), 1)

    def test_window_is_closed_by_its_key_while_the_app_stays(self):
        self.site.page("/small", coloured("#c00000"))
        app = self.page_that_does("open('/small', 'x', 'width=400,height=300')")
        self.popup_of(app)
        app.key("ctrl+w")
        app.wait_for_windows(1, "the window to go")
        self.assertIsNone(app.process.poll())

    # Downloads

    def downloads(self):
        folder = self.desktop.root / "home/Downloads"
        return {path.name: path.read_text() for path in folder.iterdir() if path.is_file()} if folder.exists() else {}

    def clear_downloads(self):
        for name in self.downloads():
            (self.desktop.root / "home/Downloads" / name).unlink()

    def test_download_goes_to_the_folder_and_never_over_a_file(self):
        self.clear_downloads()
        self.site.page("/file", "content", {"Content-Disposition": "attachment; filename=letter.txt", "Content-Type": "text/plain"})
        app = self.page_that_does("location = '/file'")
        wait_for(lambda: self.downloads() == {"letter.txt": "content"}, "the file")
        self.site.page("/file", "other", {"Content-Disposition": "attachment; filename=letter.txt", "Content-Type": "text/plain"})
        app.click()
        wait_for(lambda: self.downloads() == {"letter.txt": "content", "letter (2).txt": "other"}, "the second file")
        self.keep_picture(app, "downloads")
        app.wait_for_pixel(GREEN, dx=0.5, dy=0.5)

    def start_large_download(self):
        """A download that has come half of the way, and what lets it go on."""
        self.clear_downloads()
        self.site.page("/file", "x" * 1_000_000, {"Content-Disposition": "attachment; filename=large.txt"})
        rest = self.site.hold("/file")
        app = self.page_that_does("location = '/file'")
        x, y, width, height = self.desktop.geometry(app.window())

        def shows_progress():
            picture = self.desktop.screen()
            return any(picture.near(px, y + height - 28 + dy, BLUE_OF_PROGRESS, 12)
                       for px in range(x, x + width, 4) for dy in range(-8, 9, 2))

        wait_for(shows_progress, "the progress")
        return app, rest

    def test_download_shows_its_progress(self):
        app, rest = self.start_large_download()
        self.keep_picture(app, "half")
        self.assertEqual([len(text) for text in self.downloads().values() if len(text) == 1_000_000], [])
        rest.set()
        wait_for(lambda: len(self.downloads().get("large.txt", "")) == 1_000_000, "the file")

    def test_download_can_be_cancelled_and_leaves_nothing(self):
        app, _ = self.start_large_download()
        x, y, width, height = self.desktop.geometry(app.window())
        self.desktop.click(x + width - 45, y + height - 28)
        wait_for(lambda: self.downloads() == {}, "the part to go")
        self.keep_picture(app, "cancelled")

    def test_many_downloads_leave_the_window_to_the_page(self):
        self.clear_downloads()
        self.site.page("/file", "x", {"Content-Disposition": "attachment; filename=note.txt"})
        app = self.page_that_does("location = '/file'")
        for number in range(1, 13):
            wait_for(lambda: len(self.downloads()) == number, "the file")
            app.click()
        wait_for(lambda: len(self.downloads()) == 13, "the last file")
        self.keep_picture(app, "many")
        app.wait_for_pixel(GREEN, dx=0.5, dy=0.75)

    def test_download_cannot_choose_its_folder(self):
        self.clear_downloads()
        self.site.page("/file", "x", {"Content-Disposition": 'attachment; filename="../../.config/autostart/evil.desktop"'})
        self.page_that_does("location = '/file'")
        wait_for(lambda: self.downloads(), "the file")
        self.assertEqual(list(self.desktop.root.rglob("*.desktop")), list(self.desktop.root.rglob("Downloads/evil.desktop")) +
                         list(self.desktop.root.rglob("fake-browser.desktop")))

    def test_link_with_a_download_name_saves_what_the_page_made(self):
        self.clear_downloads()
        self.page_that_does("const a = document.createElement('a'); a.download = 'made.txt';"
                            "a.href = URL.createObjectURL(new Blob(['made here'])); a.click()")
        wait_for(lambda: self.downloads().get("made.txt") == "made here", "the file")

    def test_what_cannot_be_shown_is_saved(self):
        self.clear_downloads()
        self.site.page("/data", "zip", {"Content-Type": "application/zip"})
        self.page_that_does("location = '/data'")
        wait_for(lambda: self.downloads() == {"data": "zip"} or list(self.downloads().values()) == ["zip"], "the file")

    # Files and dialogs

    def test_file_chooser_gives_the_page_a_file(self):
        chosen = self.desktop.root / "chosen.txt"
        chosen.write_text("chosen")
        self.site.page("/", GREEN_PAGE + "<input type=file style='position:fixed;inset:0;opacity:0' onchange=\""
                                         "this.files[0].text().then(t => fetch('/file-' + t))\">")
        app = self.app().start()
        app.wait_for_pixel(GREEN)

        def chooses():
            if len(app.windows()) == 1:
                app.click()
                app.wait_for_windows(2, "the file chooser")
            app.key("ctrl+l", "ctrl+a")
            app.type(str(chosen))
            self.keep_picture(app, "chooser")
            app.key("Return")
            try:
                # The first key may only take what is offered to complete the name.
                wait_for(lambda: self.site.seen("/file-chosen") or len(app.windows()) == 1 or app.key("Return"), "", 20)
                return wait_for(lambda: self.site.seen("/file-chosen"), "", 20)
            except AssertionError:
                return None
        # The chooser completes names while they are typed, and may take a part of one.
        wait_for(chooses, "the file's text in the page")

    def test_script_dialogs_ask_inside_the_window(self):
        app = self.page_that_does("fetch('/said-' + confirm('Really?'))")
        self.keep_dialog_picture(app)
        app.key("Return")
        wait_for(lambda: self.site.seen("/said-true"), "the answer")

    def keep_dialog_picture(self, app):
        # The page below the dialog is dimmed.
        wait_for(lambda: not self.shows(app, GREEN, 0.05, 0.9), "the dialog")
        self.keep_picture(app, "dialog")

    def shows(self, app, color, dx, dy):
        x, y, width, height = self.desktop.geometry(app.window())
        return self.desktop.screen().near(x + int(dx * width), y + int(dy * height), color)

    def test_password_for_a_page_is_asked_and_sent(self):
        expected = "Basic " + base64.b64encode(b"user:secret").decode()
        self.site.guard("/", expected)
        app = self.app().start()
        wait_for(lambda: self.site.seen("/"), "the request")
        wait_for(lambda: not self.shows(app, WHITE, 0.05, 0.9), "the question")
        self.keep_picture(app, "password")
        app.type("user")
        app.key("Tab")
        app.type("secret")
        app.key("Return")
        app.wait_for_pixel(GREEN)
        self.assertEqual(self.site.seen("/")[-1][2].get("Authorization"), expected)


if __name__ == "__main__":
    main()
