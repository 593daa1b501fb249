"""The socket that gives the manager pictures of the window."""
import socket
import stat

from desktop import PATIENCE, wait_for
from runner_case import GREEN, RunnerCase, main


class Picture:
    """What the socket has answered."""

    def __init__(self, answer):
        line, _, self.pixels = answer.partition(b"\n")
        word, width, height, stride = line.decode().split()
        assert word == "ok", line
        self.width, self.height, self.stride = int(width), int(height), int(stride)

    def at(self, x, y):
        blue, green, red, alpha = self.pixels[y * self.stride + x * 4:][:4]
        return red, green, blue, alpha


class Snapshot(RunnerCase):
    def socket_of(self, app):
        return self.desktop.runtime / "wrapio" / (app.record + ".snapshot")

    def ask(self, app, line=b"snapshot\n"):
        with socket.socket(socket.AF_UNIX) as client:
            client.settimeout(PATIENCE)
            client.connect(str(self.socket_of(app)))
            client.sendall(line)
            answer = b""
            while received := client.recv(1 << 20):
                answer += received
            return answer

    def shown(self, config=None):
        app = self.app(config).start()
        app.wait_for_pixel(GREEN)
        return app

    def check(self, picture):
        self.assertEqual(len(picture.pixels), picture.height * picture.stride)
        self.assertGreaterEqual(picture.stride, picture.width * 4)
        self.assertEqual(picture.at(picture.width // 2, picture.height // 2), (0, 192, 0, 255))

    def test_answers_with_the_page_below_the_title_bar(self):
        app = self.shown({"themeColor": "#c00000"})
        picture = Picture(self.ask(app))
        self.check(picture)
        _, _, width, height = self.desktop.geometry(app.window())
        self.assertLessEqual(abs(picture.width - width), 8)
        self.assertLessEqual(abs(picture.height - height), 8)
        self.assertEqual(picture.at(picture.width // 4, 12), (192, 0, 0, 255))

    def test_answers_with_the_whole_window_after_it_was_resized(self):
        app = self.shown()
        self.desktop.run("xdotool", "windowsize", app.window(), "1280", "800")
        wait_for(lambda: self.desktop.geometry(app.window())[2:] == (1280, 800), "the size")
        picture = wait_for(lambda: abs((answer := Picture(self.ask(app))).width - 1280) <= 8 and answer, "the new size")
        self.check(picture)

    def test_answers_while_minimised(self):
        app = self.shown()
        window = app.window()
        self.desktop.run("xdotool", "windowminimize", window)
        wait_for(lambda: "Iconic" in self.desktop.run("xprop", "-id", window, "WM_STATE"), "the minimised window")
        self.check(Picture(self.ask(app)))

    def test_answers_while_covered(self):
        app = self.shown()
        self.site.page("/other", "<!doctype html><body style='background:#0000c0'>")
        other = self.app({"url": self.site.address("/other")}).start()
        other.wait_for_pixel((0, 0, 192))
        self.desktop.run("xdotool", "windowmove", other.window(), *map(str, self.desktop.geometry(app.window())[:2]))
        self.check(Picture(self.ask(app)))

    def test_answers_for_a_message_in_place_of_the_page(self):
        self.site.close()
        app = self.app().start()
        app.window()
        wait_for(self.socket_of(app).exists, "the socket")
        picture = wait_for(lambda: Picture(self.ask(app)), "a picture")
        self.assertGreater(picture.height, 200)

    def test_answers_while_a_page_hangs(self):
        self.site.page("/", "<!doctype html><body style='background:#00c000'><script>"
                            "onload = () => setTimeout(() => { fetch('/hangs'); for (;;); }, 300)</script>")
        app = self.shown()
        wait_for(lambda: self.site.seen("/hangs"), "the page to hang")
        self.check(Picture(self.ask(app)))

    def test_refuses_other_requests(self):
        app = self.shown()
        self.assertTrue(self.ask(app, b"open http://x/\n").startswith(b"error "))

    def test_is_private(self):
        app = self.shown()
        path = self.socket_of(app)
        self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o600)
        self.assertEqual(stat.S_IMODE(path.parent.stat().st_mode), 0o700)
        self.assertEqual(path.name, app.record.upper() + ".snapshot")

    def test_is_gone_when_the_app_is(self):
        app = self.shown()
        self.assertEqual(app.quit(), 0)
        self.assertFalse(self.socket_of(app).exists())

    def test_is_not_there_without_a_runtime_folder(self):
        app = self.app()
        app.start(environment={"XDG_RUNTIME_DIR": ""})
        app.wait_for_pixel(GREEN)
        found = list(self.desktop.root.rglob("*.snapshot"))
        self.assertEqual(found, [])


if __name__ == "__main__":
    main()
