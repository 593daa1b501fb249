"""The ground that all desktop tests of the runner stand on: a desktop of their own, a site, and apps of it."""
import argparse
import pathlib
import sys
import unittest

from apps import App
from desktop import Desktop, Services, Site

TEMPLATE = None
PICTURES = None
SERVICES = None

GREEN_PAGE = "<!doctype html><title>Start</title><body style='background:#00c000'>"
LINK_PAGE = "<!doctype html><title>Links</title><a href='{0}' style='position:fixed;inset:0;background:#00c000'>x</a>"
GREEN, RED, BLUE, WHITE = (0, 192, 0), (192, 0, 0), (0, 0, 192), (255, 255, 255)


def coloured(color):
    """A page of one colour."""
    return f"<!doctype html><title>Page</title><body style='background:{color}'>"


class RunnerCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.close)

    def setUp(self):
        self.site = Site()
        self.addCleanup(self.site.close)
        self.site.page("/", GREEN_PAGE)
        self.desktop.opened_file.unlink(missing_ok=True)
        self.apps = []

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except Exception:
            if PICTURES:
                PICTURES.mkdir(parents=True, exist_ok=True)
                self.desktop.save_screen(PICTURES / f"{self._testMethodName}.png")
            raise

    def tearDown(self):
        for app in self.apps:
            if app.process:
                self.desktop.end(app.process)

    def app(self, config=None, **options):
        """An app of the site's start page, not started yet."""
        name = f"App{len(list((self.desktop.root / 'apps').glob('*'))) if (self.desktop.root / 'apps').exists() else 0}"
        values = config if isinstance(config, str) else {"url": self.site.address(), "isDevMode": True, **(config or {})}
        app = App(self.desktop, TEMPLATE, name, values, **options)
        self.apps.append(app)
        return app

    def keep_picture(self, app, name):
        """Saves what the screen shows, for people to look at."""
        if PICTURES:
            PICTURES.mkdir(parents=True, exist_ok=True)
            self.desktop.save_screen(PICTURES / f"{self._testMethodName.removeprefix('test_')[:40]}-{name}.png")

    def start_services(self):
        """The desktop's services, until the test ends."""
        services = Services(self.desktop, SERVICES)
        self.addCleanup(services.close)
        return services


def main():
    global TEMPLATE, PICTURES, SERVICES
    parser = argparse.ArgumentParser()
    parser.add_argument("--template", required=True, type=pathlib.Path)
    parser.add_argument("--pictures", type=pathlib.Path)
    parser.add_argument("--services", type=pathlib.Path)
    options, rest = parser.parse_known_args()
    TEMPLATE, PICTURES, SERVICES = options.template, options.pictures, options.services
    unittest.main(module="__main__", argv=[sys.argv[0], *rest])
