"""Apps that look for the icon of their site: in a network that ends at this machine, on the port where sites are."""
import os
import unittest

import network
from support import DONE, ProcessTestCase, Site, png


class FetchingIcons(ProcessTestCase):
    def serve(self, pages):
        site = Site(pages, port=80)
        self.addCleanup(site.close)
        return site

    def create_without_icon_option(self, *options):
        result = self.home.wrapio("create", "127.0.0.1", "--dev", "--name", "Harbour", "--json", *options)
        self.assertEqual((result.status, result.err), (DONE, ""), str(result))
        return result.json()

    def saved_icon(self, app):
        return self.home.data / "Wrapio" / (app["id"] + ".png")

    def test_takes_the_first_picture_that_the_site_offers(self):
        site = self.serve({
            "/apple-touch-icon.png": ("text/html", b"<h1>Not found</h1>"),
            "/apple-touch-icon-precomposed.png": ("image/png", png(180, (1, 2, 3))),
            "/favicon.ico": ("image/png", png(16)),
        })
        app = self.create_without_icon_option()
        self.assertEqual(site.requests, ["/apple-touch-icon.png", "/apple-touch-icon-precomposed.png"])
        self.assertEqual(app["iconSource"], "favicon")
        self.assertTrue(self.saved_icon(app).is_file())
        self.assertTrue((self.bundle_of(app) / "Contents" / "Resources" / "AppIcon.icns").is_file())
        self.assert_healthy()

    def test_gives_an_app_of_a_site_without_pictures_the_drawing_of_developers(self):
        self.serve({"/": ("text/html", b"<!doctype html>")})
        app = self.create_without_icon_option()
        self.assertTrue(self.saved_icon(app).is_file())
        self.assertTrue((self.bundle_of(app) / "Contents" / "Resources" / "AppIcon.icns").is_file())
        self.assert_healthy()

    def test_asks_nobody_when_no_icon_is_wanted(self):
        site = self.serve({"/apple-touch-icon.png": ("image/png", png())})
        app = self.create_without_icon_option("--no-icon")
        self.assertEqual(site.requests, [])
        self.assertFalse(self.saved_icon(app).exists())

    def test_is_done_when_nobody_answers(self):
        app = self.create_without_icon_option()
        self.assertEqual(self.information_of(self.bundle_of(app))["CFBundleName"], "Harbour")
        self.assert_healthy()

    def test_survives_hostile_pictures(self):
        header = png(8)
        for body in (b"", b"\x89PNG\r\n\x1a\n", header[:-20], png(8)[:16] + b"\x7f\xff\xff\xff\x7f\xff\xff\xff" + header[24:],
                     b"<svg xmlns='http://www.w3.org/2000/svg' width='1e9' height='1e9'/>", os.urandom(4096)):
            with self.subTest(body[:24]):
                site = Site({"/apple-touch-icon.png": ("image/png", body)}, port=80)
                try:
                    app = self.create_without_icon_option()
                finally:
                    site.close()
                self.assert_healthy()
                self.succeeds("delete", app["id"])
                self.home.wrapio("doctor", "--clean", "--yes")


if __name__ == "__main__":
    network.enter()
    unittest.main()
