"""Bringing a sign-in over from a browser on this machine. All browsers' files here are made by the test."""
import hashlib
import shutil
import sqlite3
import time

from cryptography.hazmat.primitives.ciphers import Cipher, algorithms, modes

from desktop import PATIENCE, wait_for
from runner_case import GREEN, GREEN_PAGE, RunnerCase, main

LATER = int(time.time()) + 86400


def encrypted(text, password=b"peanuts", scheme=b"v10"):
    key = hashlib.pbkdf2_hmac("sha1", password, b"saltysalt", 1, 16)
    padding = 16 - len(text) % 16
    cipher = Cipher(algorithms.AES(key), modes.CBC(b" " * 16)).encryptor()
    return scheme + cipher.update(text + bytes([padding]) * padding) + cipher.finalize()


class SessionImport(RunnerCase):
    def setUp(self):
        super().setUp()
        self.home = self.desktop.root / "home"
        self.addCleanup(shutil.rmtree, self.home / ".mozilla", True)
        self.addCleanup(shutil.rmtree, self.home / ".config/chromium", True)

    def make_firefox(self):
        path = self.home / ".mozilla/firefox/abc.default-release/cookies.sqlite"
        path.parent.mkdir(parents=True)
        database = sqlite3.connect(path)
        database.execute("PRAGMA journal_mode=WAL")
        database.execute("CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, originAttributes TEXT NOT NULL DEFAULT '', name TEXT,"
                         "value TEXT, host TEXT, path TEXT, expiry INTEGER, isSecure INTEGER, isHttpOnly INTEGER, sameSite INTEGER)")
        for host, name in (("127.0.0.1", "mine"), ("127.0.0.2", "foreign"), (".example.com", "other")):
            database.execute("INSERT INTO moz_cookies (name, value, host, path, expiry, isSecure, isHttpOnly, sameSite)"
                             "VALUES (?, 'secret-value', ?, '/', ?, 0, 1, 0)", (name, host, LATER))
        database.commit()
        # The browser goes on running.
        self.addCleanup(database.close)
        return path

    def make_chromium(self, values):
        path = self.home / ".config/chromium/Default/Cookies"
        path.parent.mkdir(parents=True)
        database = sqlite3.connect(path)
        database.execute("CREATE TABLE meta (key TEXT, value TEXT)")
        database.execute("INSERT INTO meta VALUES ('version', '24')")
        database.execute("CREATE TABLE cookies (host_key TEXT, path TEXT, name TEXT, value TEXT, encrypted_value BLOB,"
                         "expires_utc INTEGER, is_secure INTEGER, is_httponly INTEGER, samesite INTEGER)")
        for host, name, value in values:
            database.execute("INSERT INTO cookies VALUES (?, '/', ?, '', ?, ?, 0, 1, -1)",
                             (host, name, value, (LATER + 11644473600) * 1000000))
        database.commit()
        database.close()
        return path

    def asked(self, source):
        """An app that was asked to import from `source`, with the question open."""
        app = self.app().start()
        app.wait_for_pixel(GREEN)
        self.site.requests.clear()
        self.assertEqual(app.again(f"{app.scheme}://import-session?source={source}"), 0)
        app.wait_for_windows(2, "the question")
        return app

    def check_nothing_is_left(self, app):
        left = [path for folder in (app.profile, self.desktop.cache / "Wrapio/Profiles" / app.record)
                for path in folder.rglob("import-*")]
        self.assertEqual(left, [])

    def test_sign_in_comes_from_firefox_while_it_runs(self):
        path = self.make_firefox()
        before = path.read_bytes()
        app = self.asked("Firefox")
        self.keep_picture(app, "question")
        self.assertEqual(self.site.requests, [])
        question = app.windows()
        app.press_button(1)
        request = wait_for(lambda: self.site.seen("/"), "the page with the session")[0]
        self.assertEqual(request[2].get("Cookie"), "mine=secret-value")
        wait_for(lambda: len(windows := app.windows()) == 2 and windows != question, "what was taken")
        self.keep_picture(app, "taken")
        self.check_nothing_is_left(app)
        self.assertEqual(path.read_bytes(), before)

    def test_sign_in_comes_from_chromium(self):
        digest = hashlib.sha256(b"127.0.0.1").digest()
        self.make_chromium([("127.0.0.1", "mine", encrypted(digest + b"secret-value")),
                            ("127.0.0.2", "foreign", encrypted(hashlib.sha256(b"127.0.0.2").digest() + b"x"))])
        app = self.asked("chromium")
        app.press_button(1)
        request = wait_for(lambda: self.site.seen("/"), "the page with the session")[0]
        self.assertEqual(request[2].get("Cookie"), "mine=secret-value")
        self.check_nothing_is_left(app)

    def test_declining_takes_nothing(self):
        self.make_firefox()
        app = self.asked("")
        app.press_button()
        app.wait_for_windows(1, "the question to go")
        app.key("ctrl+r")
        self.assertNotIn("Cookie", wait_for(lambda: self.site.seen("/"), "the page")[0][2])

    def test_missing_source_is_explained(self):
        app = self.asked("Firefox")
        self.keep_picture(app, "missing")
        app.press_button()
        app.wait_for_windows(1, "the message to go")
        self.assertEqual(self.site.requests, [])

    def test_locked_away_source_is_explained(self):
        self.make_chromium([("127.0.0.1", "mine", encrypted(b"x" * 40, b"unknown", b"v11"))])
        app = self.asked("")
        question = app.windows()
        app.press_button(1)
        wait_for(lambda: len(windows := app.windows()) == 2 and windows != question, "the explanation")
        self.keep_picture(app, "locked")
        self.check_nothing_is_left(app)
        self.assertEqual(self.site.requests, [])

    def test_values_never_reach_the_terminal(self):
        self.make_firefox()
        app = self.app().start(capture=True)
        app.wait_for_pixel(GREEN)
        self.site.requests.clear()
        self.assertEqual(app.again(f"{app.scheme}://import-session"), 0)
        app.wait_for_windows(2, "the question")
        app.press_button(1)
        wait_for(lambda: self.site.seen("/"), "the page with the session")
        app.process.terminate()
        said = b"".join(app.process.communicate(timeout=PATIENCE))
        self.assertNotIn(b"secret-value", said)


if __name__ == "__main__":
    main()
