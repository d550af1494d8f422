#!/usr/bin/env python3
"""Takes the pictures of docs/images: starts the demonstration cameras and the real program on a display of its
own, opens its windows as a user does, and captures exactly what is on screen. The cameras' folders are filled
beforehand with their pictures of the last half hour.

    scripts/screenshots.py BUILD_FOLDER [NAME.png …]

The build must have velmora, velmora-demo-cameras and make_demo_pictures, which draws what was stored before.

Needs Xvfb, xdotool and ImageMagick; for the dark picture also the packages qt6-gtk-platformtheme and
gnome-themes-extra, through which the program takes the desktop's dark colours."""

import shutil
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
SPLASH_WIDTH = 900  # at least that of the splash box, in pixels of a display at double density
DEAD = 9  # the camera whose time-out ends the first pass
# Choices that a user would have made for some of the cameras.
CHOSEN = {"AutoDelai0": "1", "AutoDelai3": "1", "EffM1": "1", "EffM3": "1"}
NAMED = {"Camera01": {"Name": "Harbour"}, "Camera04": {"Name": "Market"}}
IMAGES_A_CAMERA, SECONDS_BETWEEN = 40, 35
SHOWING = range(8)  # cameras that serve a picture
SHOWN_CAMERA = 1
TWIPS = 15  # a pixel
FILM_LEFT, FILM_SHOT = 726, "1386x744+0+0"  # pixels: beside the browser, and around both


def ask_display(display, *words):
    """The output of a tool on that display; empty when it finds nothing."""
    there = {"DISPLAY": display.name, "PATH": "/usr/bin:/bin"}
    run = subprocess.run(words, env=there, capture_output=True, check=False)
    return run.stdout.decode().split()


def windows(display, title):
    return ask_display(display, "xdotool", "search", "--onlyvisible", "--name", f"^{title}$")


def width_of(display, shown):
    """In pixels; 0 for a window that has gone."""
    lines = ask_display(display, "xdotool", "getwindowgeometry", "--shell", shown)
    return next((int(line.removeprefix("WIDTH=")) for line in lines if line.startswith("WIDTH=")), 0)


def main_window(display):
    """The main window, once the splash box, which has the same title, no longer covers it."""
    found = windows(display, "Velmora")
    return found[0] if len(found) == 1 and width_of(display, found[0]) > SPLASH_WIDTH else None


class Studio(unittest.TestCase):
    """One picture per run; a unittest.TestCase only for its cleanup."""

    def runTest(self):
        pass

    def begin(self, build, size="1400x900x24", options=None):
        self.build = build
        house.VELMORA = build / "velmora"
        self.cameras = Program([build / "velmora-demo-cameras"])
        self.addCleanup(self.cameras.kill)
        self.display = Display(size, ["-wr"])  # white behind the windows
        self.addCleanup(self.display.close)
        port = until(lambda: self.cameras.out, 20, "the cameras' port")[0].split()[1]
        self.house = House(self)
        urls = [f"http://127.0.0.1:{port}/camera{i}.jpg" for i in range(CAMERAS)]
        control = {"Control": {"StRep": "C:\\in\\", "TIO": "5"} | (options or {})}
        self.house.write_settings(control, camera_lists(urls), {"Groupe0": CHOSEN}, NAMED)
        self.store(urls)

    def store(self, urls):
        """What the program would have stored in the last half hour."""
        for row in SHOWING:
            folder = self.house.folder(urls[row])
            folder.mkdir()
            maker = self.build / "make_demo_pictures"
            environment = self.house.environment()
            words = [maker, folder, str(row), str(IMAGES_A_CAMERA), str(SECONDS_BETWEEN)]
            subprocess.run(words, env=environment, check=True, timeout=120)

    def start(self, env):
        self.program = self.house.start(env=self.display.environment() | env)

    def browser(self, *keys):
        """The browser window once the first pass is over, after some keys."""
        until(lambda: self.house.camera_value(DEAD, "SB"), 60, "the end of the first pass")
        [browser] = until(lambda: windows(self.display, "Kesh Camera"), 20, "the browser window")
        until(lambda: not windows(self.display, "Velmora"), 20, "the end of the splash box")
        ask_display(self.display, "xdotool", "windowfocus", "--sync", browser)
        for key in keys:
            ask_display(self.display, "xdotool", "key", key)
        return browser

    def main_window(self):
        return until(lambda: main_window(self.display), 20, "the main window")

    def open_main_window(self):
        self.browser("alt+s")
        return self.main_window()

    def sheet(self):
        return self.browser(*["Up"] * 6)

    def group(self):
        return self.browser("alt+g")

    def zoom(self):
        """The picture of the second cell."""
        browser = self.sheet()
        ask_display(self.display, "xdotool", "mousemove", "--window", browser, "360", "90", "click", "3")
        return browser

    def film(self):
        """Both windows side by side; the film is paused."""
        self.browser(*["Up"] * 6, "alt+f")
        [film] = until(lambda: windows(self.display, "Film.*"), 20, "the film")
        until(lambda: self.picture_of(film) != self.picture_of(film), 20, "a film that plays")
        ask_display(self.display, "xdotool", "windowfocus", "--sync", film, "key", "space")
        return "root"

    def opened(self, window, keys, title):
        """The window with that title, which is opened by some keys in another one."""
        ask_display(self.display, "xdotool", "windowfocus", "--sync", window, "key", keys)
        [found] = until(lambda: windows(self.display, title), 20, f"the window {title}")
        ask_display(self.display, "xdotool", "windowfocus", "--sync", found)
        return found

    def importing(self):
        """A folder of pictures from another source."""
        photos = self.house.root / "drives" / "c" / "Holiday"
        photos.mkdir()
        stored = [path for row in (2, 4) for path in sorted(self.house.storage.glob(f"*camera%3{row}*/*"))]
        for number, path in enumerate(stored[::6]):
            shutil.copy(path, photos / f"IMG_{1207 + 3 * number}.jpg")
        return self.opened(self.open_main_window(), "alt+i", "Import")

    def in_second_row(self, key):
        """A key in the address box of the second row."""
        main = self.open_main_window()
        ask_display(self.display, "xdotool", "mousemove", "--window", main, "300", "164", "click", "1", "key", key)

    def camera_sheet(self):
        """Of the second row, tried out."""
        self.in_second_row("F4")
        [sheet] = until(lambda: windows(self.display, "Camera 0:.*"), 20, "the camera's sheet")
        ask_display(self.display, "xdotool", "windowfocus", "--sync", sheet, "key", "alt+t")
        return sheet

    def camera_list(self):
        """Three lines that have been typed."""
        self.in_second_row("F6")
        [many] = until(lambda: windows(self.display, "Many cameras"), 20, "the window for many cameras")
        ask_display(self.display, "xdotool", "windowfocus", "--sync", many)
        lines = ("name,address,group,row", "Garage,http://192.168.1.20/snap.jpg,1,0", "Yard,rtsp://192.168.1.21/live,1,1")
        for line in lines:
            ask_display(self.display, "xdotool", "type", "--window", many, line)
            ask_display(self.display, "xdotool", "key", "--window", many, "Return")
        return many

    def health(self):
        return self.opened(self.browser(), "ctrl+h", "Health")

    def calendar(self):
        return self.opened(self.sheet(), "ctrl+d", "Calendar")

    def film_keep(self):
        """While its preview plays."""
        keep = self.opened(self.sheet(), "ctrl+e", "Keep as a film.*")
        until(lambda: self.picture_of(keep) != self.picture_of(keep), 20, "a preview that plays")
        return keep

    def alarm(self):
        """The last pair of a scan."""
        alarm = self.opened(self.browser(), "alt+m", "Alarm")
        ask_display(self.display, "xdotool", "key", "--window", alarm, "space")
        return alarm

    def picture_of(self, shown):
        there = {"DISPLAY": self.display.name, "PATH": "/usr/bin:/bin:/usr/local/bin"}
        words = ["import", "-window", shown, "-depth", "8", "rgb:-"]
        return subprocess.run(words, env=there, capture_output=True, check=True).stdout

    def capture(self, name, shown, crop=None, plays=False):
        if shown != "root":
            ask_display(self.display, "xdotool", "windowraise", shown)
        ask_display(self.display, "xdotool", "mousemove", "1390", "890")
        # A window is painted some time after it is shown: once three pictures in a row are the same, it is complete.
        shots = [b"", b" "]

        def settled():
            shots.append(self.picture_of(shown))
            return plays or shots[-1] == shots[-2] == shots[-3]

        until(settled, 20, "a settled picture")
        target = IMAGES / name
        area = ["-crop", crop, "+repage"] if crop else []
        ask_display(self.display, "import", "-window", shown, *area, "-strip", "-quality", "95", str(target))
        print(f"{target.relative_to(ROOT)}: {target.stat().st_size} bytes")


def take(build, name, shot, env=None, size="1400x900x24", storage=True, options=None, crop=None, plays=False):
    """shot: a method of Studio that returns the window to capture."""
    if sys.argv[2:] and name not in sys.argv[2:]:
        return
    studio = Studio()
    try:
        studio.begin(build, size, options=options)
        if not storage:
            studio.house.storage.rename(studio.house.root / "away")
        studio.start(env or {})
        studio.capture(name, shot(studio), crop, plays)
    finally:
        studio.doCleanups()


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    build = Path(sys.argv[1]).resolve() / "bin"
    IMAGES.mkdir(parents=True, exist_ok=True)
    browser = {"lstImg": str(SHOWN_CAMERA), "Auto": "1"}
    film = browser | {"fCine.Top": "0", "fCine.left": str(FILM_LEFT * TWIPS), "Vitesse": "200"}
    twice = {"env": {"QT_SCALE_FACTOR": "2"}, "size": "2600x1800x24"}
    take(build, "main-window.png", Studio.open_main_window)
    take(build, "main-window-dark.png", Studio.open_main_window, env=DARK)
    take(build, "main-window-2x.png", Studio.open_main_window, **twice)
    take(build, "storage-missing.png", Studio.main_window, storage=False)
    take(build, "import.png", Studio.importing, options={"Drive": "C:", "Dir": "C:\\Holiday", "ILien": "1"})
    take(build, "alarm.png", Studio.alarm, options=browser)
    take(build, "camera-sheet.png", Studio.camera_sheet)
    take(build, "camera-list.png", Studio.camera_list, plays=True)
    take(build, "health.png", Studio.health, options=browser, plays=True)
    take(build, "calendar.png", Studio.calendar, options=browser)
    take(build, "film-keep.png", Studio.film_keep, options=browser, plays=True)
    take(build, "browser-camera.png", Studio.sheet, options=browser)
    take(build, "browser-group.png", Studio.group, options=browser)
    take(build, "browser-zoom.png", Studio.zoom, options=browser)
    take(build, "browser-film.png", Studio.film, options=film, crop=FILM_SHOT)
    take(build, "browser-dark.png", Studio.sheet, options=browser, env=DARK)
    take(build, "browser-2x.png", Studio.sheet, options=browser, **twice)


main()
