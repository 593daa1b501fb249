"""What is wrong is said."""
import signal

from desktop import PATIENCE, wait_for
from runner_case import GREEN, RunnerCase, main


class Problems(RunnerCase):
    def check_problem(self, app, *words):
        app.start(capture=True)
        app.window()
        app.process.send_signal(signal.SIGTERM)
        _, errors = app.process.communicate(timeout=PATIENCE)
        self.assertEqual(app.process.returncode, 1)
        self.assertEqual(len(errors.decode().splitlines()), 1, errors)
        for word in words:
            self.assertIn(word, errors.decode())

    def test_missing_settings_are_named_in_a_window(self):
        app = self.app()
        (app.bundle / "Contents/Resources/config.json").unlink()
        self.check_problem(app, "config.json", "is missing", "regenerate")

    def test_hostile_settings_are_refused_in_a_window(self):
        for text in ("[" * 1_000_000, '{"url":"javascript:alert(1)"}', '{"url":"' + "x" * 10_000_000 + '"}', "\0" * 100):
            with self.subTest(text=text[:20]):
                self.check_problem(self.app(text), "Wrapio")

    def test_hostile_values_leave_a_working_app(self):
        app = self.app({"name": "A\0\n" + "x" * 10_000_000, "allowedHosts": 7, "themeColor": "red", "themeOpacity": 1e9,
                        "userAgent": "a\nb", "customCSS": ["x"]}).start()
        app.wait_for_pixel(GREEN)
        self.assertTrue(app.title().startswith("A x"))

    def test_damaged_identity_is_said_in_a_window(self):
        app = self.app()
        (app.bundle / "Contents/Info.plist").write_text("<plist>")
        self.check_problem(app, "Info.plist")

    def test_without_a_display_one_line_is_said(self):
        for app in (self.app(), self.app("{")):
            process = self.desktop.start([app.program], environment={"DISPLAY": ":99999"}, capture=True)
            _, errors = process.communicate(timeout=PATIENCE)
            self.assertEqual(process.returncode, 1)
            lines = errors.decode().splitlines()
            self.assertEqual(len(lines), 1, errors)
            self.assertTrue(lines[0].startswith("WrapioRunner: "))

    def test_unreachable_site_is_said_in_the_window(self):
        app = self.app()
        self.site.close()
        app.start()
        app.wait_for_pixel((53, 132, 228), dx=0.5, dy=0.5, tolerance=255)
        # The engine's own page would be white from edge to edge.
        app.wait_for_pixel((246, 245, 244), dx=0.1, dy=0.9)


if __name__ == "__main__":
    main()
