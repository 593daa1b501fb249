"""Pages that do not load, that cannot be trusted, and that stop working."""
import os
import signal

from desktop import Site, wait_for
from runner_case import GREEN, GREEN_PAGE, RED, RunnerCase, coloured, main
from tls import TlsSite


def children_of(pid):
    """The ids of all processes below `pid`, by their names."""
    found = {}
    for entry in os.listdir("/proc"):
        if not entry.isdigit():
            continue
        try:
            with open(f"/proc/{entry}/stat") as stat:
                name, _, rest = stat.read().partition("(")[2].rpartition(")")
            found[int(entry)] = (name, int(rest.split()[1]), rest.split()[0])
        except OSError:
            continue
    below, known = {}, {pid}
    while True:
        fresh = {p for p, (_, parent, _) in found.items() if parent in known} - known
        if not fresh:
            return below
        known |= fresh
        below.update({p: found[p][0] for p in fresh if found[p][2] != "Z"})


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
        # Two reloads in a minute are what there is; on a slow machine the minute may pass in between.
        for crash in range(30):
            for process in self.page_process(app):
                os.kill(process, signal.SIGKILL)
            wait_for(lambda: app.is_message_shown() or len(self.site.seen("/")) == crash + 2, "the answer to the crash")
            if app.is_message_shown():
                break
        app.wait_for_message()
        self.keep_picture(app, "crash")
        loads = len(self.site.seen("/"))
        self.assertGreaterEqual(loads, 3)
        self.assertEqual(loads, crash + 1)
        app.press_button()
        app.wait_for_pixel(GREEN)

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
