"""When the manager lives on without its window, when it ends with it, and what it then gives back."""
import sys

import manager
from manager import HERE, ManagerCase, wait_for

sys.path.insert(0, str(HERE.parent / "Runner"))
from desktop import Services  # noqa: E402
from panel import prepare_panel, start_panel, wait_for_item, wait_for_panel  # noqa: E402
from processes import memory  # noqa: E402

FAREWELL = "|Wrapio is still here|"
MOST_IN_BACKGROUND = 50


class LifeTest(ManagerCase):
    def start_panel(self):
        prepare_panel(self.desktop)
        start_panel(self.desktop)
        wait_for_panel(self.desktop)

    def start_in_background(self):
        self.manager = self.desktop.start([manager.OPTIONS.wrapio, "--background"])
        wait_for_item(self.desktop)

    def open_dashboard(self):
        self.wrapio()
        self.wait_for_dashboard()

    def close_dashboard(self, *keys):
        window = self.window()
        wait_for(lambda: int(self.desktop.active_window() or "0", 16) == int(window, 16), "the keyboard in the window",
                 manager.PATIENCE)
        self.key(*keys)
        wait_for(lambda: not self.window(), "the window to go", manager.PATIENCE)

    def test_is_raised_by_a_second_start_and_ends_with_its_window_where_nobody_shows_status_items(self):
        self.create("Desk")
        self.start_manager()
        window = self.window()
        self.desktop.run("xdotool", "windowminimize", window)
        wait_for(lambda: "IsViewable" not in self.desktop.run("xwininfo", "-id", window), "the window to be iconified")
        self.wrapio()
        wait_for(lambda: "IsViewable" in self.desktop.run("xwininfo", "-id", window), "the window to come back")
        self.assertNotIn("not found", self.desktop.run("xprop", "-id", window, "_NET_WM_ICON"))
        # Nobody shows status items here, so the program could not be reached without its window.
        self.key("ctrl+w")
        self.assertEqual(self.manager.wait(manager.PATIENCE), 0)

    def test_goes_on_without_its_window_beside_a_status_item_and_says_so_once(self):
        services = Services(self.desktop, manager.OPTIONS.services)
        self.start_panel()
        self.start_manager()
        wait_for_item(self.desktop)
        self.close_dashboard("ctrl+w")
        wait_for(lambda: any(FAREWELL in line for line in services.heard("notify")), "the program to say that it goes on")
        self.picture("closed")

        self.open_dashboard()
        self.close_dashboard("alt+F4")
        # It has opened again: whatever closing was to lead to has come by then, and all that was sent is heard before
        # what is sent now.
        self.open_dashboard()
        self.notify("Later")
        wait_for(lambda: any("|Later|" in line for line in services.heard("notify")), "what was said later")
        self.assertEqual(sum(FAREWELL in line for line in services.heard("notify")), 1, services.lines)
        self.assertIsNone(self.manager.poll(), "the program goes on")
        services.close()

    def notify(self, title):
        self.desktop.run("gdbus", "call", "--session", "--dest", "org.freedesktop.Notifications", "--object-path",
                         "/org/freedesktop/Notifications", "--method", "org.freedesktop.Notifications.Notify",
                         "test", "0", "", title, "", "[]", "{}", "0")

    def test_gives_back_the_memory_of_its_window(self):
        self.create(*(f"App {number}" for number in range(24)))
        self.start_panel()
        self.start_in_background()
        background = self.memory_at_rest()
        opened, closed = self.open_and_close(background)
        reopened, closed_again = self.open_and_close(background)
        print(f"MiB of its own: {background:.1f} in the background, {opened:.1f} with the window, {closed:.1f} without, "
              f"{reopened:.1f} with it again, {closed_again:.1f} without; {memory(self.manager.pid, 'Pss'):.1f} in all")
        self.assertLess(closed_again, closed + 2)
        self.assertLess(memory(self.manager.pid, "Pss"), MOST_IN_BACKGROUND)

    def open_and_close(self, background):
        self.open_dashboard()
        opened = self.memory_at_rest()
        self.close_dashboard("ctrl+w")
        # What stays are types, fonts and the relocated parts of libraries, which no program can unload.
        bound = background + (opened - background) * 0.6
        wait_for(lambda: self.memory() <= bound,
                 f"the memory to fall: {background:.1f} MiB in the background, {opened:.1f} with the window", manager.PATIENCE)
        return opened, self.memory_at_rest()

    def memory(self):
        """MiB that belong to the program alone; the files of libraries are the system's."""
        return memory(self.manager.pid, "Pss_Anon") + memory(self.manager.pid, "Pss_Shmem")

    def memory_at_rest(self):
        """What it takes once that has stopped to change."""
        seen = [self.memory()]

        def rests():
            seen.append(self.memory())
            return len(seen) > 25 and max(seen[-25:]) - min(seen[-25:]) < 0.25
        wait_for(rests, "the memory to settle", manager.PATIENCE)
        return seen[-1]


if __name__ == "__main__":
    manager.main()
