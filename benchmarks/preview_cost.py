#!/usr/bin/env python3
"""What the status item, its menu and a live preview cost, in shares of a core: over a window of 1280 x 800 that another
one covers, on a private display, with the release build.

    benchmarks/preview_cost.py [SECONDS]        how long each state is looked at (60 if nothing is given)
"""
import argparse
import os
import pathlib
import sys
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[1]
BUILD = ROOT / "build/release"
sys.path.insert(0, str(ROOT / "tests/Desktop/MenuBar"))
import menu_bar_test
from menu_bar_test import RED, BLUE, Program


def processor_time(process):
    """Seconds that a process has had so far."""
    fields = pathlib.Path(f"/proc/{process}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


class Cost(menu_bar_test.MenuBarTest):
    seconds = 60

    def runTest(self):
        for name, color in (("Red", RED), ("Blue", BLUE)):
            self.make_app(name, color)
        red, _ = self.launch("Red"), self.launch("Blue")
        self.desktop.run("xdotool", "windowsize", red, "1280", "800")
        self.start_host()
        program = Program(self.desktop)
        program.wait_for_line("Menu bar setup complete")
        self.wait_for_item()
        program.wait_for_line("Rebuilding menu...")
        self.tell("menu closed, two apps running", program)
        self.open_menu(program)
        self.hover(program, "Red")
        self.tell("menu open", program)
        self.alt("keydown")
        program.wait_for_line("Option pressed")
        self.wait_for_preview_color(program, RED)
        self.tell("live preview", program)
        self.alt("keyup")

    def tell(self, what, program):
        processes = (program.process.pid, self.app_process("Red"))
        before, start = [processor_time(process) for process in processes], time.monotonic()
        time.sleep(self.seconds)
        passed = time.monotonic() - start
        shares = [(processor_time(p) - b) / passed * 100 for p, b in zip(processes, before)]
        print(f"{what}: manager {shares[0]:.2f} %, app {shares[1]:.2f} % of a core", flush=True)


if __name__ == "__main__":
    Cost.seconds = int(sys.argv[1]) if len(sys.argv) > 1 else 60
    menu_bar_test.OPTIONS = argparse.Namespace(
        program=BUILD / "libexec/wrapio-menu-bar", manager=BUILD / "libexec/wrapio/wrapio-manager",
        wrapio=BUILD / "bin/wrapio", share=BUILD / "share/wrapio", pictures=BUILD / "test-pictures")
    sys.exit(not unittest.TextTestRunner(stream=open(os.devnull, "w")).run(Cost()).wasSuccessful())
