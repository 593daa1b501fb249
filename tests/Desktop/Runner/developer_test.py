"""What developers get, and others do not."""
from desktop import wait_for
from runner_case import GREEN, GREEN_PAGE, RED, RunnerCase, coloured, main

TOLD_KEYS = ("<script>onkeydown = e => fetch('/key-' + e.key); onresize = () => fetch('/resized')</script>")


class Developer(RunnerCase):
    def started(self, config=None):
        app = self.app(config).start()
        app.wait_for_pixel(GREEN)
        return app

    def test_inspector_opens_by_its_key(self):
        self.site.page("/", GREEN_PAGE + TOLD_KEYS)
        app = self.started()
        app.key("F12")
        # It shares the window with the page, or has one of its own where there is no room.
        wait_for(lambda: self.site.seen("/resized") or len(app.windows()) == 2, "the inspector")
        self.assertEqual(self.site.seen("/key-F12"), [])

    def test_hard_reload_asks_the_server_anew(self):
        self.site.page("/", GREEN_PAGE, {"Cache-Control": "max-age=3600"})
        app = self.started()
        self.site.requests.clear()
        app.key("ctrl+shift+r")
        request = wait_for(lambda: self.site.seen("/"), "the page")[0]
        self.assertEqual(request[2].get("Cache-Control"), "no-cache")

    def test_nothing_is_kept_on_disk_that_a_developer_may_have_changed(self):
        self.site.page("/s.js", "fetch('/ran')", {"Cache-Control": "max-age=3600", "Content-Type": "text/javascript"})
        self.site.page("/", GREEN_PAGE + "<script src='/s.js'></script>")
        app = self.started()
        wait_for(lambda: self.site.seen("/ran"), "the script")
        self.assertEqual(app.quit(), 0)
        app.start()
        wait_for(lambda: len(self.site.seen("/ran")) == 2, "the script")
        self.assertEqual(len(self.site.seen("/s.js")), 2)

    def test_pages_that_developers_write_tell_what_is_wrong_on_the_terminal(self):
        self.site.page("/", GREEN_PAGE + "<script>console.error('something ' + 'is wrong'); fetch('/said')</script>")
        app = self.app().start(capture=True)
        wait_for(lambda: self.site.seen("/said"), "the page")
        app.wait_for_pixel(GREEN)
        app.process.terminate()
        self.assertIn(b"something is wrong", b"".join(app.process.communicate()))

    def test_local_address_is_refused_to_others(self):
        app = self.app({"isDevMode": False}).start(capture=True)
        app.window()
        app.process.terminate()
        _, errors = app.process.communicate()
        self.assertIn("developer mode", errors.decode())
        self.assertEqual(self.site.requests, [])

    def test_links_of_local_sites_stay_inside(self):
        self.site.page("/", GREEN_PAGE + "<script>onkeydown = () => location = '/next'</script>")
        self.site.page("/next", coloured("#c00000"))
        app = self.started()
        app.key("n")
        app.wait_for_pixel(RED)


if __name__ == "__main__":
    main()
