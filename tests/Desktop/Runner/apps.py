"""Makes app bundles from the template, as the manager does, and starts them."""
import json
import plistlib
import shutil
import signal
import uuid

from desktop import PATIENCE, wait_for


class App:
    def __init__(self, desktop, template, name, config, record=None):
        self.desktop = desktop
        self.name = name
        self.record = record or str(uuid.uuid4()).upper()
        self.scheme = "wrapio-" + self.record.lower()
        self.identifier = f"com.wrapio.generated.{name.lower()}-{self.record[:8].lower()}"
        self.bundle = desktop.root / "apps" / f"{name}.app"
        self.process = None
        shutil.copytree(template, self.bundle)
        plist = self.bundle / "Contents/Info.plist"
        values = plistlib.loads(plist.read_bytes())
        values.update(CFBundleName=name, CFBundleDisplayName=name, CFBundleIdentifier=self.identifier,
                      CFBundleURLTypes=[{"CFBundleURLName": self.identifier, "CFBundleURLSchemes": [self.scheme]}])
        plist.write_bytes(plistlib.dumps(values))
        resources = self.bundle / "Contents/Resources"
        resources.mkdir(exist_ok=True)
        if config is not None:
            text = config if isinstance(config, str) else json.dumps({"name": name, **config})
            (resources / "config.json").write_text(text)

    @property
    def program(self):
        return self.bundle / "Contents/Linux/WrapioRunner"

    @property
    def profile(self):
        return self.desktop.data / "Wrapio/Profiles" / self.record

    def start(self, *arguments, **options):
        self.process = self.desktop.start([self.program, *arguments], **options)
        return self

    def again(self, *arguments, environment=None):
        """A second start; returns its exit status."""
        process = self.desktop.start([self.program, *arguments], environment=environment)
        return process.wait(timeout=PATIENCE)

    def windows(self):
        return self.desktop.windows(self.process.pid)

    def window(self):
        return wait_for(self.windows, f"the window of {self.name}")[0]

    def title(self):
        return self.desktop.property(self.window(), "_NET_WM_NAME").strip('"')

    def wait_for_pixel(self, color, dx=0.5, dy=0.5, tolerance=3):
        """Waits until the window shows `color` at a place given as shares of its size, or pixels if over 1."""
        window = self.window()

        def shows():
            x, y, width, height = self.desktop.geometry(window)
            place = lambda share, size: int(share * size) if 0 <= share <= 1 else int(share) % size
            return self.desktop.screen().near(x + place(dx, width), y + place(dy, height), color, tolerance)

        wait_for(shows, f"the colour {color} in the window of {self.name}")

    def is_message_shown(self):
        """True when a message with a suggested button is shown in place of the page."""
        x, y, width, height = self.desktop.geometry(self.window())
        picture = self.desktop.screen()
        row = range(x + width // 2 - 150, x + width // 2 + 150, 5)
        return any(picture.near(px, py, (53, 132, 228), 12) for py in range(y + 60, y + height, 6) for px in row)

    def wait_for_message(self):
        wait_for(self.is_message_shown, f"a message in the window of {self.name}")

    def wait_until_active(self):
        """Waits until the newest of the app's windows has the keyboard."""
        def is_active():
            active, windows = self.desktop.active_window(), self.windows()
            return bool(active and windows) and int(windows[-1], 16) == int(active, 16)

        wait_for(is_active, f"{self.name} to have the keyboard")

    def wait_for_windows(self, count, what):
        """Waits until the app has `count` windows, and gives their ids, the newest one last."""
        return wait_for(lambda: len(windows := self.windows()) == count and windows, what)

    def key(self, *keys):
        """Presses keys in the app's newest window."""
        self.wait_until_active()
        self.desktop.run("xdotool", "key", "--clearmodifiers", "--delay", "60", *keys)

    def type(self, text):
        self.wait_until_active()
        self.desktop.run("xdotool", "type", "--delay", "30", text)

    def press_button(self, index=0):
        """Presses the button that has the keyboard, or one further on."""
        self.key(*["Tab"] * index, "Return")

    def click(self):
        x, y, width, height = self.desktop.geometry(self.window())
        self.desktop.click(x + width // 2, y + height // 2)

    def quit(self):
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(timeout=PATIENCE)
