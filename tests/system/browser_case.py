"""The program with its image browser on a desktop of the test's own, and ten cameras on a real web server whose
pictures are told apart by colour."""

import unittest

import house
from browser_window import TITLE, BrowserWindow, Opener
from desktop import Desktop
from house import House, camera_lists
from hundred_cameras import set_modified
from nginx_server import NginxServer
from pictures import colour_of, plain
from waiting import until

CAMERAS = 10
FIRST_SECOND = 1_700_000_000


def image_name(number):
    """The name of a stored image: a minute of a day."""
    return f"20240102_{number // 60:02}{number % 60:02}000203.png"


class BrowserCase(unittest.TestCase):
    """Ten cameras; the pictures of camera c have the colours of the numbers 10 c, 10 c + 1, …"""

    def setUp(self):
        self.server = NginxServer(self, "nobody", "nothing")
        self.desktop = Desktop(self)
        self.house = House(self)
        self.opener = Opener(self.house)
        self.serials = [0] * CAMERAS
        for camera in range(CAMERAS):
            self.renew(camera)
        self.urls = [f"http://127.0.0.1:{self.server.port}/{camera}.png" for camera in range(CAMERAS)]

    def renew(self, camera):
        """A new picture in front of the camera, a second later than the last one."""
        number = camera * 10 + self.serials[camera]
        fresh = self.server.root / "fresh.png"
        fresh.write_bytes(plain(colour_of(number)))
        set_modified(fresh, FIRST_SECOND + self.serials[camera])
        fresh.replace(self.server.www / f"{camera}.png")
        self.serials[camera] += 1
        return colour_of(number)

    def store(self, camera, count):
        """Puts images into a camera's folder before the program starts; the camera then has nothing new."""
        folder = self.house.folder(self.urls[camera])
        folder.mkdir(exist_ok=True)
        for number in range(count):
            (folder / image_name(number)).write_bytes(plain(colour_of(number)))
        return folder

    def start(self, control=None, wait_for_pass=True, command=()):
        """command: the program's command line, unless it is already running."""
        own = {"StRep": "C:\\in\\", "Debug": "1", "Tempo": "1", "TIO": "20"} | (control or {})
        self.house.write_settings({"Control": own}, camera_lists(self.urls))
        return self.start_again(wait_for_pass, command)

    def start_again(self, wait_for_pass=True, command=()):
        self.desktop.wait_until_gone(TITLE)
        environment = self.house.environment() | self.desktop.environment() | self.opener.environment()
        own = [house.VELMORA, "--program-folder", self.house.root]
        self.program = self.house.start_command([*command, *own], environment)
        self.browser = BrowserWindow(self.desktop)
        if wait_for_pass:
            until(lambda: self.house.camera_value(9, "SB"), 30, self.program.report)
        return self.browser

    def control(self, key):
        return self.house.settings().get("Control", {}).get(key)

    def wait_for_control(self, key, value, seconds=20):
        until(lambda: self.control(key) == value, seconds, lambda: f"{key}={value} (it is {self.control(key)})")

    def wait_for_new(self, camera):
        count = str(self.serials[camera])
        until(lambda: self.house.camera_value(camera, "lNew") == count, 30, f"image {count} of camera {camera}")

    def capture(self, *cameras):
        """New pictures of these cameras, in the given order; returns the colour of the last."""
        for camera in cameras:
            colour = self.renew(camera)
        self.browser.capture_soon()
        for camera in cameras:
            self.wait_for_new(camera)
        return colour

    def refreshes(self):
        return self.house.log().count("Planche DirImage\n")

    def end(self):
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())
        self.assertEqual([], self.house.work_files())
        self.assertEqual([], house.ill_formed_lines(self.house.settings_bytes()))
