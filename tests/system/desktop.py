"""A display as a user sees it: windows found by their titles, keys and mouse through xdotool, and what is on the
screen, read from the X server's own picture memory."""

import os
import re
import shutil
import struct
import subprocess
import tempfile
from collections import namedtuple
from pathlib import Path

from program import Display, Program, session_bus
from waiting import until

LEFT, RIGHT = 1, 3
# Three window managers that place, frame and stack windows in different ways.
MANAGERS = {
    "openbox": ["openbox", "--sm-disable"],
    "metacity": ["metacity", "--no-composite", "--sm-disable"],
    "xfwm4": ["xfwm4", "--compositor=off"],
}
ON_A_BUS = ("xfwm4",)
KEYBOARD_ASKER, KEYBOARD_REQUESTS, MANAGER_ASKER, WINDOW_PINGER = (
    Path(__file__).with_name(f"{name}.py")
    for name in ("keyboard_asker", "keyboard_requests", "manager_asker", "window_pinger")
)
SYSTEM_PYTHON = "/usr/bin/python3"  # has the library for talking to the X server
XWD_HEADER = struct.Struct(">25I")

Place = namedtuple("Place", "x y width height")
Frame = namedtuple("Frame", "left right top bottom")


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
    """A display of the test's own. Windows are identified by their numbers, points in them by (x, y)."""

    def __init__(self, test, size="1280x1024", manager=None):
        """manager: the name of a window manager; with none, windows stay as the programs put them."""
        memory = tempfile.mkdtemp(prefix="velmora-screen-")
        test.addCleanup(shutil.rmtree, memory, ignore_errors=True)
        self._display = Display(f"{size}x24", ["-fbdir", memory])
        test.addCleanup(self._display.close)
        self._environment = {**os.environ, "DISPLAY": self._display.name}
        self.screen = Screen(Path(memory) / "Xvfb_screen0")
        self.manager = manager
        if manager:
            self._manage(test, manager)

    def _manage(self, test, manager):
        home = tempfile.mkdtemp(prefix="velmora-manager-")
        test.addCleanup(shutil.rmtree, home, ignore_errors=True)
        folders = {key: home for key in ("HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR")}
        environment = self._environment | folders | {"GSETTINGS_BACKEND": "memory", "NO_AT_BRIDGE": "1"}
        if manager in ON_A_BUS:
            environment |= session_bus(test, environment)
        program = Program(MANAGERS[manager], environment)
        test.addCleanup(program.end)
        until(lambda: self.property("_NET_SUPPORTING_WM_CHECK"), 20, program.report)
        self._ask(MANAGER_ASKER)
        self.end_manager = program.end

    def environment(self):
        return self._display.environment()

    def tool(self, *words):
        """The words that xdotool answers; none when what it was asked for does not exist."""
        command = ["xdotool", *(str(word) for word in words)]
        run = subprocess.run(command, env=self._environment, capture_output=True, text=True, check=False, timeout=30)
        return run.stdout.split()

    def property(self, name, window=None):
        """The words of a window's property, or of the root window's."""
        target = ["-id", str(window)] if window else ["-root"]
        run = subprocess.run(
            ["xprop", *target, name], env=self._environment, capture_output=True, text=True, check=False, timeout=30
        )
        found = re.fullmatch(r"\w+\(\w+\)(?: =|: window id #) (.*)", run.stdout.strip())
        return found[1].replace(",", " ").split() if found else []

    def frame(self, window):
        """How far the window manager's frame extends beyond a window."""
        words = self.property("_NET_FRAME_EXTENTS", window)
        return Frame(*(int(word) for word in words)) if words else Frame(0, 0, 0, 0)

    def stacking(self):
        """The windows that the window manager knows, lowest first."""
        return [str(int(word, 16)) for word in self.property("_NET_CLIENT_LIST_STACKING")]

    def children(self):
        """The windows below the root, lowest first: those on the screen where no window manager frames them."""
        run = subprocess.run(
            ["xwininfo", "-root", "-children"],
            env=self._environment,
            capture_output=True,
            text=True,
            check=False,
            timeout=30,
        )
        return [str(int(number, 16)) for number in re.findall(r"^ +(0x[0-9a-f]+)", run.stdout, re.MULTILINE)][::-1]

    def active(self):
        """The window that has the keyboard focus, according to the window manager and the X server."""
        words = self.property("_NET_ACTIVE_WINDOW")
        named = str(int(words[0], 16)) if words else None
        return named if self.tool("getwindowfocus", "-f") == [named] else None

    def wait_for_program(self, window):
        """Until the window's program has seen all that came before: it asks for the keyboard for a window that it shows
        when it hears that the window is there."""
        self._ask(WINDOW_PINGER, window)

    def activate(self, window):
        """Like a click on it in a list of windows by someone who sees it."""
        self.wait_for_program(window)
        self.tool("windowactivate", window)

    def minimise(self, window):
        """Like a click on the button in its frame by someone who sees it."""
        self.wait_for_program(window)
        self.tool("windowminimize", "--sync", window)

    def echo_request_for_keyboard(self, window):
        """As it comes back to the program that asked for the window; the window manager does not hear of it."""
        self._ask(KEYBOARD_ASKER, window)

    def keyboard_requests(self, test):
        """The list to which each window is added from now on for which its program asks for the keyboard."""
        listener = Program([SYSTEM_PYTHON, "-B", KEYBOARD_REQUESTS], self._environment)
        test.addCleanup(listener.end)
        until(lambda: listener.out, 20, listener.report)
        return listener.out

    def _ask(self, asker, *words):
        subprocess.run([SYSTEM_PYTHON, "-B", asker, *words], env=self._environment, check=True, timeout=30)

    def windows(self, title):
        """Numbers of the windows on the screen whose title matches the expression."""
        return self.tool("search", "--onlyvisible", "--name", f"^{title}$")

    def window(self, title, at_least=0, seconds=30):
        """The first with that title that has that width in pixels."""

        def wide_enough():
            found = [(window, self.place(window)) for window in self.windows(title)]
            return [window for window, place in found if place and place.width >= at_least]

        return until(wide_enough, seconds, f"the window {title}")[0]

    def wait_until_gone(self, title, seconds=20):
        until(lambda: not self.windows(title), seconds, f"the end of the window {title}")

    def place(self, window):
        """Where a window is, in screen pixels; None when it has gone."""
        words = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        run = subprocess.run(
            ["xwininfo", "-id", str(window)],
            env=self._environment,
            capture_output=True,
            text=True,
            check=False,
            timeout=30,
        )
        values = dict(line.strip().split(":", 1) for line in run.stdout.splitlines() if ":" in line)
        return Place(*(int(values[word]) for word in words)) if all(word in values for word in words) else None

    def focus(self, window):
        self.tool("windowraise", window, "windowfocus", "--sync", window)

    def press(self, *keys):
        """Sends keys to the window that has the focus."""
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
