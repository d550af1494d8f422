"""What the built program tells a screen reader, queried over the bus that screen readers use."""

import json
import subprocess
import unittest
from pathlib import Path

import house
from browser_window import TITLE, BrowserWindow
from desktop import Desktop
from house import House, camera_lists
from pictures import colour_of, plain
from program import Program, session_bus
from waiting import until

READER = Path(__file__).with_name("screen_reader.py")
LISTENER = Path(__file__).with_name("screen_reader_events.py")
SYSTEM_PYTHON = "/usr/bin/python3"
ADDRESS = "http://127.0.0.1:9/a.jpg"
PLACE = "Place in the list: "


class ScreenReaderTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop(self)
        self.house = House(self)
        control = {"Control": {"StRep": "C:\\none\\", "Tempo": "60"}}
        self.house.write_settings(control, camera_lists(["http://127.0.0.1:9/a.jpg"]), {"Groupe0": {"lNew0": "12"}})

    def bus(self):
        base = self.house.environment() | self.desktop.environment()
        return base | session_bus(self, base) | {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def told(self, environment):
        words = [SYSTEM_PYTHON, "-B", READER, "Velmora"]
        run = subprocess.run(words, env=environment, capture_output=True, text=True, check=True, timeout=60)
        return [json.loads(line) for line in run.stdout.splitlines()]

    def test_tells_values_and_roles(self):
        environment = self.bus()
        self.house.start(env=environment)
        self.desktop.window(TITLE)
        things = until(lambda: self.told(environment), 30, "the program on the bus")
        pairs = {(thing["role"], thing["name"]) for thing in things}
        for expected in (
            ("frame", "Velmora"),
            ("frame", TITLE),
            ("label", "New images of camera 0: 12"),
            ("label", "Refresh time of camera 0: 00:00:00"),
            ("image", "Live picture of the selected camera"),
            ("image", "Image 1 of the sheet"),
        ):
            self.assertIn(expected, pairs)
        messages = [name for role, name in pairs if role == "label" and name.startswith("Message: ")]
        self.assertTrue(any("storage folder does not exist" in message for message in messages), pairs)
        self.assertEqual([], [name for _, name in pairs if "&" in name])

    def listener(self, environment):
        """What the program announces on its own, as it arrives."""
        listener = Program([SYSTEM_PYTHON, "-B", LISTENER, "Velmora"], environment)
        self.addCleanup(listener.end)
        until(lambda: "listening" in listener.out, 20, listener.report)
        return listener

    def test_tells_of_a_value_that_changes(self):
        self.house.write_settings({"Control": {"StRep": "C:\\in\\", "Tempo": "60"}}, camera_lists([ADDRESS]))
        folder = self.house.folder(ADDRESS)
        folder.mkdir()
        for number in range(3):
            (folder / f"20240102_10000{number}0203.png").write_bytes(plain(colour_of(number)))
        environment = self.bus()
        self.house.start(env=environment)
        browser = BrowserWindow(self.desktop)
        until(lambda: PLACE + "3 / 3" in [thing["name"] for thing in self.told(environment)], 30, "the list")
        listener = self.listener(environment)
        browser.press("Up")
        until(lambda: f'"{PLACE}2 / 3"' in listener.out, 20, listener.report)


if __name__ == "__main__":
    house.main()
