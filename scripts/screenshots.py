#!/usr/bin/env python3
"""Takes the pictures of docs/images: starts the demonstration cameras and the real program on a display of its
own, opens the main window as a user does, and captures just that window.

    scripts/screenshots.py BUILD_FOLDER

Needs Xvfb, xdotool and ImageMagick; for the dark picture also the packages qt6-gtk-platformtheme and
gnome-themes-extra, through which the program takes the desktop's dark colours."""

import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "system"))
sys.dont_write_bytecode = True

import house  # noqa: E402
from house import House, camera_lists  # noqa: E402
from program import Display, Program  # noqa: E402
from waiting import until  # noqa: E402

IMAGES = ROOT / "docs" / "images"
DARK = {"QT_QPA_PLATFORMTHEME": "gtk3", "GTK_THEME": "Adwaita:dark"}
CAMERAS = 10
SPLASH_WIDTH = 900  # at least that of the splash box, in pixels of a display at twice the size
DEAD = 9  # the camera whose time-out ends the first pass
# What a user would have chosen for some of the cameras.
CHOSEN = {"AutoDelai0": "1", "AutoDelai3": "1", "EffM1": "1", "EffM3": "1"}


def ask_display(display, *words):
    """The output of a tool of that display; empty when it finds nothing."""
    there = {"DISPLAY": display.name, "PATH": "/usr/bin:/bin"}
    run = subprocess.run(words, env=there, capture_output=True, check=False)
    return run.stdout.decode().split()


def windows(display, title):
    return ask_display(display, "xdotool", "search", "--onlyvisible", "--name", f"^{title}$")


def width_of(display, shown):
    """In pixels; 0 for a window that has gone meanwhile."""
    lines = ask_display(display, "xdotool", "getwindowgeometry", "--shell", shown)
    return next((int(line.removeprefix("WIDTH=")) for line in lines if line.startswith("WIDTH=")), 0)


def main_window(display):
    """The main window, once the splash box, which has the same title, no longer lies over it."""
    found = windows(display, "Velmora")
    return found[0] if len(found) == 1 and width_of(display, found[0]) > SPLASH_WIDTH else None


class Studio(unittest.TestCase):
    """One picture a run; a unittest.TestCase only for its clean-up."""

    def runTest(self):
        pass

    def begin(self, build, size="1400x900x24"):
        house.VELMORA = build / "velmora"
        self.cameras = Program([build / "velmora-demo-cameras"])
        self.addCleanup(self.cameras.kill)
        self.display = Display(size)
        self.addCleanup(self.display.close)
        port = until(lambda: self.cameras.out, 20, "the cameras' port")[0].split()[1]
        self.house = House(self)
        urls = [f"http://127.0.0.1:{port}/camera{i}.jpg" for i in range(CAMERAS)]
        control = {"Control": {"StRep": "C:\\in\\", "TIO": "5"}}
        self.house.write_settings(control, camera_lists(urls), {"Groupe0": CHOSEN})

    def start(self, env):
        self.program = self.house.start(env=self.display.environment() | env)

    def open_main_window(self):
        """By the browser window's button, once the first pass is over."""
        until(lambda: self.house.camera_value(DEAD, "SB"), 60, "the end of the first pass")
        [browser] = until(lambda: windows(self.display, "Kesh Camera"), 20, "the browser window")
        ask_display(self.display, "xdotool", "windowfocus", "--sync", browser)
        ask_display(self.display, "xdotool", "key", "alt+s")

    def capture(self, name):
        shown = until(lambda: main_window(self.display), 20, "the main window")
        ask_display(self.display, "xdotool", "windowraise", shown)
        ask_display(self.display, "xdotool", "mousemove", "0", "0")
        target = IMAGES / name
        # A window is painted some time after it is shown: the same twice in a row is the whole of it.
        shots = [b"", b" "]

        def settled():
            ask_display(self.display, "import", "-window", shown, "-strip", str(target))
            shots.append(target.read_bytes())
            return shots[-1] == shots[-2] == shots[-3]

        until(settled, 20, "a settled picture")
        print(f"{target.relative_to(ROOT)}: {len(shots[-1])} bytes")


def take(build, name, env=None, size="1400x900x24", storage=True):
    studio = Studio()
    try:
        studio.begin(build, size)
        if not storage:
            studio.house.storage.rmdir()
        studio.start(env or {})
        if storage:
            studio.open_main_window()
        studio.capture(name)
    finally:
        studio.doCleanups()


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    build = Path(sys.argv[1]).resolve() / "bin"
    IMAGES.mkdir(parents=True, exist_ok=True)
    take(build, "main-window.png")
    take(build, "main-window-dark.png", env=DARK)
    take(build, "main-window-2x.png", env={"QT_SCALE_FACTOR": "2"}, size="2600x1800x24")
    take(build, "storage-missing.png", storage=False)


main()
