"""A display as a user sits before it: windows found by their titles, keys and the mouse through xdotool, and
what stands on the screen, read from the X server's own picture memory."""

import os
import shutil
import struct
import subprocess
import tempfile
from collections import namedtuple
from pathlib import Path

from program import Display
from waiting import until

LEFT, RIGHT = 1, 3
XWD_HEADER = struct.Struct(">25I")

Place = namedtuple("Place", "x y width height")


class Screen:
    """The X server's picture memory, a file in the form of the tool xwd."""

    def __init__(self, path):
        self._path = path

    def pixels(self, place):
        """The bytes of a rectangle, 4 a pixel (blue, green, red, unused), row after row."""
        with open(self._path, "rb") as memory:
            header = XWD_HEADER.unpack(memory.read(XWD_HEADER.size))
            header_bytes, line_bytes, colours = header[0], header[12], header[19]
            begin = header_bytes + colours * 12
            rows = []
            for y in range(place.y, place.y + place.height):
                memory.seek(begin + y * line_bytes + place.x * 4)
                rows.append(memory.read(place.width * 4))
        return b"".join(rows)

    def colour(self, x, y):
        """(red, green, blue) at one point."""
        blue, green, red, _ = self.pixels(Place(x, y, 1, 1))
        return red, green, blue


class Desktop:
    """A display of the test's own. Windows are told by their numbers, points in them by (x, y)."""

    def __init__(self, test):
        memory = tempfile.mkdtemp(prefix="velmora-screen-")
        test.addCleanup(shutil.rmtree, memory, ignore_errors=True)
        self._display = Display(options=["-fbdir", memory])
        test.addCleanup(self._display.close)
        self._environment = {**os.environ, "DISPLAY": self._display.name}
        self.screen = Screen(Path(memory) / "Xvfb_screen0")

    def environment(self):
        return self._display.environment()

    def tool(self, *words):
        """The words that xdotool answers; none when what it was asked for is not there."""
        command = ["xdotool", *(str(word) for word in words)]
        run = subprocess.run(command, env=self._environment, capture_output=True, text=True, check=False, timeout=30)
        return run.stdout.split()

    def windows(self, title):
        """Numbers of the windows on the screen whose title matches the expression."""
        return self.tool("search", "--onlyvisible", "--name", f"^{title}$")

    def window(self, title, at_least=0, seconds=30):
        """The first with that title that is so many pixels wide."""

        def wide_enough():
            found = [(window, self.place(window)) for window in self.windows(title)]
            return [window for window, place in found if place and place.width >= at_least]

        return until(wide_enough, seconds, f"the window {title}")[0]

    def wait_until_gone(self, title, seconds=20):
        until(lambda: not self.windows(title), seconds, f"the end of the window {title}")

    def place(self, window):
        """Where a window stands, in pixels of the screen; None when it has gone."""
        lines = self.tool("getwindowgeometry", "--shell", window)
        values = dict(line.split("=", 1) for line in lines if "=" in line)
        keys = ("X", "Y", "WIDTH", "HEIGHT")
        return Place(*(int(values[key]) for key in keys)) if all(key in values for key in keys) else None

    def focus(self, window):
        self.tool("windowraise", window, "windowfocus", "--sync", window)

    def press(self, *keys):
        """Keys for the window that has the focus."""
        self.tool("key", "--delay", "0", *keys)

    def click(self, window, point, button=LEFT, times=1):
        x, y = point
        self.tool("mousemove", "--window", window, x, y, "click", "--repeat", times, "--delay", "40", button)

    def move(self, window, point):
        x, y = point
        self.tool("windowmove", "--sync", window, x, y)

    def point(self, window, point):
        """(red, green, blue) at a point of a window."""
        place = self.place(window)
        return self.screen.colour(place.x + point[0], place.y + point[1])
