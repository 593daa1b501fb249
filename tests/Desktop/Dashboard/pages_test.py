"""Opens an app's site in the manager's own window, with the real engine and pages on loopback."""
import pathlib

import manager
from manager import ManagerCase, wait_for
from desktop import Site

PAGE = """<!doctype html><title>{title}</title><body style="margin:0;background:#063">
<a href="{link}" style="display:block;height:100vh;font:40px sans-serif;color:white">{title}</a>
<script>{script}
requestAnimationFrame(() => requestAnimationFrame(() => fetch('/painted-{title}')))</script>"""


class PagesTest(ManagerCase):
    def setUp(self):
        super().setUp()
        self.site = Site()
        self.addCleanup(self.site.close)

    def page(self, path, title, link="/", script=""):
        self.site.page(path, PAGE.format(title=title, link=link, script=script))

    def open_site(self, path="/"):
        self.wrapio("create", self.site.address(path), "--name", "Desk", "--dev", "--no-icon")
        self.start_manager()
        self.choose("Desk", "Website")

    def wait_for_title(self, title):
        return wait_for(lambda: self.window(f"{title} – Desk"), f"the page “{title}”", 90)

    def click_page(self, title, shows, what):
        """Clicks into the page once it is there, and again where that got lost."""
        wait_for(lambda: self.site.seen("/painted-" + title), f"the page “{title}” to be drawn")

        def clicked():
            x, y, width, height = self.desktop.geometry(self.window_of_pages)
            self.desktop.click(x + width // 2, y + height // 2)
            try:
                return wait_for(shows, what, 20)
            except AssertionError:
                return None
        wait_for(clicked, what)

    def has_engine(self):
        return "libQt6WebEngineCore" in pathlib.Path(f"/proc/{self.manager.pid}/maps").read_text()

    def last_visited(self):
        return self.apps()[0].get("lastVisitedURL")

    def test_loads_the_engine_with_the_first_page_and_keeps_to_the_site(self):
        self.page("/", "Start", link="/next")
        self.page("/next", "Next", link=self.site.address("/other", host="127.0.0.2"))
        self.wrapio("create", self.site.address("/"), "--name", "Desk", "--dev", "--no-icon")
        self.start_manager()
        self.assertFalse(self.has_engine())
        self.choose("Desk", "Website")
        self.window_of_pages = self.wait_for_title("Start")
        self.assertTrue(self.has_engine())
        agent = self.site.seen("/")[-1][2]["User-Agent"]
        self.assertEqual(agent, "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like Gecko) "
                                "Chrome/120.0.0.0 Safari/537.36")
        wait_for(lambda: self.last_visited() == self.site.address("/"), "the page to be remembered")
        self.click_page("Start", lambda: self.window("Next – Desk"), "the next page")
        wait_for(lambda: self.last_visited() == self.site.address("/next"), "the next page to be remembered")
        self.picture("page")
        outside = self.site.address("/other", host="127.0.0.2")
        self.click_page("Next", lambda: self.desktop.opened() == [outside], "the other site in the default browser")
        self.assertEqual(self.site.seen("/other"), [])
        self.assertTrue(self.window("Next – Desk"))

    def test_sends_foreign_links_and_pop_ups_to_the_default_browser(self):
        elsewhere = "http://elsewhere.invalid/a"
        self.page("/", "Start", link=elsewhere, script="onkeydown = e => { if (e.key == 'p') open('/pop') }")
        self.open_site()
        self.window_of_pages = self.wait_for_title("Start")
        self.click_page("Start", lambda: self.desktop.opened() == [elsewhere], "the link in the default browser")
        self.key("p")
        pop = self.site.address("/pop")
        wait_for(lambda: self.desktop.opened() == [elsewhere, pop], "the pop-up in the default browser")
        self.assertTrue(self.window("Start – Desk"))
        self.assertEqual(self.site.seen("/pop"), [])

    def test_shows_dialogs_of_pages_and_gives_their_answers_back(self):
        self.page("/", "Start", script="""
setTimeout(() => { document.title = 'Hello ' + prompt('Your name?', 'Ada') }, 50)
onkeydown = event => { document.title = 'Key ' + event.key }""")
        self.open_site()
        field = self.find("text", "Your name?")
        self.picture("prompt")
        wait_for(lambda: "focused" in self.find("text", "Your name?")["states"], "the keyboard in the field")
        self.assertTrue(field)
        self.key("ctrl+a")
        self.type("Grace")
        self.key("Return")
        self.wait_for_title("Hello Grace")
        # The page has the keyboard again.
        self.wait_until_gone("text", "Your name?")

        def heard():
            self.key("k")
            return self.window("Key k – Desk")
        wait_for(heard, "the page to hear a key")

    def test_tells_of_a_page_that_cannot_be_loaded_and_loads_it_when_asked_again(self):
        port = self.free_port()
        self.wrapio("create", f"http://127.0.0.1:{port}/", "--name", "Desk", "--dev", "--no-icon")
        self.start_manager()
        self.choose("Desk", "Website")
        self.find("push button", "Try Again")
        self.picture("page-trouble")
        site = Site(port=port)
        self.addCleanup(site.close)
        site.page("/", PAGE.format(title="Back", link="/", script=""))
        self.click("push button", "Try Again")
        self.wait_for_title("Back")
        self.wait_until_gone("push button", "Try Again")

    def test_shows_the_pages_with_which_servers_tell_of_errors(self):
        self.site.page("/", PAGE.format(title="Lost", link="/", script=""), status=404)
        self.open_site()
        self.wait_for_title("Lost")
        wait_for(lambda: self.last_visited() == self.site.address("/"), "the page to be remembered")
        self.assertFalse(self.showing("push button", "Try Again"))


if __name__ == "__main__":
    manager.main()
