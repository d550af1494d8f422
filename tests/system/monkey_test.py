"""A monkey at the desktop: some thousand clicks, double clicks, drags and keys, random with a fixed seed, on
whatever windows are open while the capture runs. The program survives or was quit properly, and what it stored is
whole."""

import os
import random
import time
import unittest

import confined
import house
from answers import fresh, is_whole
from browser_window import Opener
from camera_server import CameraServer
from desktop import Desktop
from house import House, camera_lists
from pictures import colour_of, plain
from waiting import until

SEED = int(os.environ.get("VELMORA_TEST_MONKEY_SEED", "20011109"))
EVENTS = int(os.environ.get("VELMORA_TEST_MONKEY_EVENTS", "800"))  # of a round, at least
EVENTS_A_CALL = 40  # of xdotool
ROUNDS = int(os.environ.get("VELMORA_TEST_MONKEY_ROUNDS", "5"))
ROUND_SECONDS = 4  # at least; the capture needs its time too
CAMERAS = 10
EDGE = 3  # pixels of a window that are left alone
STORED_BEFORE = 15
KEYS = (
    "Up Down Left Right Home End Page_Up Page_Down Tab shift+Tab Return space Delete Escape F5 BackSpace "
    "alt+a alt+f alt+g alt+n alt+s alt+i alt+y alt+o a 1 2 0 slash backslash minus ctrl+a ctrl+v ctrl+c"
).split()
BUTTONS = (1, 1, 1, 1, 1, 3, 2, 4, 5)
# Fetched every second; the date is slightly earlier than that of the first picture.
OFTEN = {"AutoDelai": "1", "BestTime": "00:00:01", "LastModified": "09/09/2001 01:46:30"}


class AlwaysFresh(dict):
    """A picture under any path, since the monkey types into the addresses."""

    def __missing__(self, path):
        return fresh(20_000)


class MonkeyTest(unittest.TestCase):
    def setUp(self):
        self.lot = random.Random(SEED)
        paths = [f"/camera{row}.png" for row in range(CAMERAS)]
        self.server = CameraServer(self)
        self.server.answers = AlwaysFresh()
        self.urls = [self.server.url(path) for path in paths]
        self.house = House(self)
        self.opener = Opener(self.house)
        self.desktop = Desktop(self)
        self.quits = 0
        self.store()

    def write_settings(self):
        often = {f"{word}{row}": value for row in range(CAMERAS) for word, value in OFTEN.items()}
        control = {"StRep": "C:\\in\\", "Tempo": "1", "TIO": "5", "Auto": "1", "Debug": "1", "Vitesse": "50"}
        self.house.write_settings({"Control": control}, camera_lists(self.urls), {"Groupe0": often})

    def store(self):
        for row, url in enumerate(self.urls):
            folder = self.house.folder(url)
            folder.mkdir()
            for number in range(STORED_BEFORE):
                (folder / f"20000102_{number:06}0203.png").write_bytes(plain(colour_of(row * 10 + number)))

    def start(self):
        """The monkey types paths and opens file dialogs: whatever it does, only the house can change."""
        until(lambda: not self.windows(), 10, "the end of the windows before")
        environment = self.house.environment() | self.desktop.environment() | self.opener.environment()
        own = [house.VELMORA, "--program-folder", self.house.root]
        self.program = self.house.start_command([*confined.command(self.house.root), *own], environment)
        until(self.windows, 30, self.program.report)

    def windows(self):
        """(number, place) of all windows with a title that are large enough for a pointer."""
        found = [(number, self.desktop.place(number)) for number in self.desktop.windows(".+")]
        return [(n, place) for n, place in found if place and min(place.width, place.height) > 4 * EDGE]

    def point(self, place):
        """Inside that place and inside the screen."""
        x = self.lot.randrange(place.x + EDGE, place.x + place.width - EDGE)
        y = self.lot.randrange(place.y + EDGE, place.y + place.height - EDGE)
        return min(max(x, 0), 1279), min(max(y, 0), 1023)

    def event(self, place):
        """The words of one event for xdotool."""
        kind = self.lot.random()
        if kind < 0.45:
            return ["key", "--delay", 0, self.lot.choice(KEYS)]
        words = ["mousemove", *self.point(place)]
        button = self.lot.choice(BUTTONS)
        click = ["mousedown", button, "mouseup", button]
        if kind < 0.75:
            return [*words, *click]
        if kind < 0.9:
            return [*words, *click, *click]
        return [*words, "mousedown", 1, "mousemove", *self.point(place), "mouseup", 1]

    def play(self):
        """Some events on one of the windows. If it has gone before they end, that is just as well."""
        windows = self.windows()
        if not windows:
            return
        number, place = self.lot.choice(windows)
        words = ["windowraise", number, "windowfocus", number]
        for _ in range(EVENTS_A_CALL):
            words += self.event(place)
        self.desktop.tool(*words)

    def play_round(self):
        """Fresh settings, since the monkey soon changes the storage folder; then events until the round ends or
        the monkey quits the program. Returns their number."""
        self.write_settings()
        self.start()
        ends = time.monotonic() + ROUND_SECONDS
        played = 0
        while self.program.runs and (played < EVENTS or time.monotonic() < ends):
            self.play()
            played += EVENTS_A_CALL
        self.quits += not self.program.runs
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())
        return played

    def test_comes_to_no_harm(self):
        played = sum(self.play_round() for _ in range(ROUNDS))
        print(f"seed {SEED}: {played} events, quit {self.quits} times of {ROUNDS},", end=" ", flush=True)
        self.expect_nothing_broken()
        self.assertEqual([], house.ill_formed_lines(self.house.settings_bytes()))

    def expect_nothing_broken(self):
        self.assertEqual([], self.house.work_files())
        images = [path for path in self.house.root.rglob("20*_*") if path.is_file()]
        stored = [path for path in images if not path.name.startswith("20000102_")]
        print(f"{len(stored)} images stored")
        self.assertGreater(len(stored), CAMERAS)
        self.assertEqual([], [path for path in stored if not is_whole(path.read_bytes())])
        kept = [path for path in images if path not in stored]
        self.assertEqual([], [path for path in kept if not path.read_bytes().endswith(b"IEND\xaeB`\x82")])


if __name__ == "__main__":
    confined.enter_own_network()
    house.main()
