"""Pages are shown in a sandbox or not at all."""
from desktop import wait_for
from runner_case import GREEN, RunnerCase, main

IN_A_WORLD = ["bwrap", "--dev-bind", "/", "/", "--die-with-parent"]


class Sandbox(RunnerCase):
    def check_is_refused(self, world, *words):
        """Starts an app in a `world` that lacks something; it must say so and show no page."""
        app = self.app()
        process = self.desktop.start([*IN_A_WORLD, *world, app.program], capture=True)
        search = ["xdotool", "search", "--onlyvisible", "--class", app.identifier]
        wait_for(lambda: self.desktop.run(*search).split(), "the message")
        self.keep_picture(app, "message")
        process.terminate()
        _, errors = process.communicate()
        said = [line for line in errors.decode().splitlines() if line.startswith("WrapioRunner: ")]
        self.assertEqual(len(said), 1, errors)
        for word in words:
            self.assertIn(word, said[0])
        self.assertEqual(self.site.requests, [])

    def test_missing_tool_is_named(self):
        self.check_is_refused(["--ro-bind", "/dev/null", "/usr/bin/bwrap"], "bubblewrap")

    def test_missing_proxy_is_named(self):
        self.check_is_refused(["--ro-bind", "/dev/null", "/usr/bin/xdg-dbus-proxy"], "xdg-dbus-proxy")

    def test_system_that_forbids_sandboxes_is_told_of(self):
        self.check_is_refused(["--unshare-user", "--disable-userns", "--uid", "1000", "--cap-drop", "ALL"], "user namespaces")

    def test_environment_cannot_turn_it_off(self):
        app = self.app().start(environment={"WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS": "1"})
        app.wait_for_pixel(GREEN)
        names = self.desktop.run("ps", "-o", "comm=", "-s", str(app.process.pid)).split()
        self.assertIn("bwrap", names)


if __name__ == "__main__":
    main()
