"""Pages that do not load, that cannot be trusted, and that stop working."""
import os
import signal

from desktop import PATIENCE, Site, wait_for
from processes import children_of
from runner_case import GREEN, GREEN_PAGE, RED, RunnerCase, coloured, main
from tls import TlsSite


class Troubles(RunnerCase):
    def page_process(self, app):
        return wait_for(lambda: [p for p, name in children_of(app.process.pid).items() if name.startswith("WebKitWebProces")],
                        "the page's process")

    def test_offline_page_recovers_by_itself(self):
        port = self.site.port
        self.site.close()
        app = self.app().start()
        app.wait_for_message()
        self.keep_picture(app, "offline")
        self.site = Site(port)
        self.addCleanup(self.site.close)
        self.site.page("/", GREEN_PAGE)
        app.wait_for_pixel(GREEN)

    def test_offline_page_can_be_loaded_again_by_hand(self):
        port = self.site.port
        self.site.close()
        app = self.app().start()
        app.wait_for_message()
        self.site = Site(port)
        self.addCleanup(self.site.close)
        self.site.page("/", GREEN_PAGE)
        app.press_button()
        app.wait_for_pixel(GREEN)

    def test_crashed_page_is_loaded_again_but_not_for_ever(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        for loads in (2, 3):
            for process in self.page_process(app):
                os.kill(process, signal.SIGKILL)
            wait_for(lambda: len(self.site.seen("/")) == loads, "the page to be loaded again")
            app.wait_for_pixel(GREEN)
        for process in self.page_process(app):
            os.kill(process, signal.SIGKILL)
        app.wait_for_message()
        self.keep_picture(app, "crash")
        self.assertEqual(len(self.site.seen("/")), 3)
        app.press_button()
        app.wait_for_pixel(GREEN)

    def test_page_that_is_asked_for_while_another_one_crashes_is_shown(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        # More often than a page is loaded again: these were asked for.
        for number in range(4):
            path = f"/asked-{number}"
            self.site.page(path, coloured("#c00000") + f"<script>onload = () => fetch('{path}-is-there')</script>")
            for process in self.page_process(app):
                os.kill(process, signal.SIGKILL)
            self.assertEqual(app.again(self.site.address(path)), 0)
            wait_for(lambda: self.site.seen(f"{path}-is-there"), "the page that was asked for")
        app.wait_for_pixel(RED)

    def test_last_of_two_requests_is_shown_while_a_process_starts_for_the_first(self):
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.site.page("/last", coloured("#c00000"))
        for process in self.page_process(app):
            os.kill(process, signal.SIGKILL)
        requests = [self.desktop.start([app.program, self.site.address(path)]) for path in ("/first", "/first")]
        self.assertEqual([request.wait(PATIENCE) for request in requests], [0, 0])
        self.assertEqual(app.again(self.site.address("/last")), 0)
        app.wait_for_pixel(RED)

    def test_process_that_never_gets_going_is_replaced(self):
        self.site.page("/asked", coloured("#c00000"))
        app = self.app_with_frozen_process()
        app.wait_for_pixel(RED)

    def app_with_frozen_process(self):
        """An app whose new page process has stopped before it did anything, with a page that has been asked for since."""
        for _ in range(8):
            app = self.app().start()
            app.wait_for_pixel(GREEN)
            before, loads = self.page_process(app), len(self.site.seen("/"))
            for process in before:
                os.kill(process, signal.SIGKILL)
            for process in wait_for(lambda: set(self.page_process(app)) - set(before), "the process for the page"):
                os.kill(process, signal.SIGSTOP)
            self.assertEqual(app.again(self.site.address("/asked")), 0)
            if len(self.site.seen("/")) == loads:
                return app
            # The process was faster than this test.
            self.desktop.end(app.process)
        self.fail("no process was stopped in time")

    def tls_site(self, **options):
        site = TlsSite(self.desktop.root, **options)
        self.addCleanup(site.close)
        site.page("/", coloured("#c00000"))
        return site

    def test_certificate_that_proves_nothing_stops_the_page(self):
        site = self.tls_site()
        app = self.app({"url": site.address(), "isDevMode": True}).start()
        app.wait_for_message()
        self.keep_picture(app, "tls")
        self.assertEqual(site.requests, [])
        # Trying again changes nothing, and nothing but the question leads on.
        app.press_button()
        app.key("ctrl+r")
        app.wait_for_message()
        self.assertEqual(site.requests, [])

    def test_developer_may_trust_a_local_server_after_a_question(self):
        site = self.tls_site()
        app = self.app({"url": site.address(), "isDevMode": True}).start()
        app.wait_for_message()
        app.press_button(1)
        app.wait_for_windows(2, "the question")
        self.keep_picture(app, "question")
        app.press_button(0)
        app.wait_for_windows(1, "the question to go")
        self.assertEqual(site.requests, [])
        app.press_button(0)
        app.wait_for_windows(2, "the question")
        app.press_button(1)
        app.wait_for_pixel(RED)

    def test_expired_certificate_is_never_offered_to_be_trusted(self):
        site = self.tls_site(days=-1)
        app = self.app({"url": site.address(), "isDevMode": True}).start()
        app.wait_for_message()
        app.press_button(1)
        app.wait_for_message()
        self.assertEqual(len(app.windows()), 1)
        self.assertEqual(site.requests, [])


if __name__ == "__main__":
    main()
