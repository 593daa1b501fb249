"""Where links, scripts and redirects lead."""
from desktop import wait_for
from runner_case import BLUE, GREEN, GREEN_PAGE, LINK_PAGE, RED, RunnerCase, main


class Navigation(RunnerCase):
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


if __name__ == "__main__":
    main()
