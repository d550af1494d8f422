"""A storage folder that is being typed, while windows take turns under three window managers: it is neither lost nor
in force before it is meant, and a kill makes nothing else of it."""

import time
import unittest

import house
from answers import fresh
from browser_window import MAIN, MAIN_WIDTH, SETUP_KEY, TITLE
from camera_server import CameraServer
from desktop import Desktop
from house import House, camera_lists
from waiting import until

EVERY_SECOND = {"AutoDelai0": "1", "BestTime0": "00:00:01"}
QUIET_SECONDS = 2.5  # two images would come
STORAGE_KEY = "alt+s"
BEFORE, AFTER = "C:\\in\\", "C:\\other\\"


class TypingTest(unittest.TestCase):
    def begin(self, manager):
        self.desktop = Desktop(self, manager=manager)
        self.server = CameraServer(self, {"/a.jpg": fresh(20_000)})
        self.house = House(self)
        self.other = self.house.storage.with_name("other")
        self.other.mkdir()
        self.url = self.server.url("/a.jpg")
        own = {"StRep": BEFORE, "Tempo": "1", "TIO": "60"}
        self.house.write_settings({"Control": own}, camera_lists([self.url]), {"Groupe0": EVERY_SECOND})

    def start(self):
        self.program = self.house.start(env=self.desktop.environment())
        self.browser = self.desktop.window(TITLE)
        self.wait_for_keyboard(self.browser)

    def wait_for_keyboard(self, window):
        until(lambda: self.desktop.active() == window, 10, lambda: f"the keyboard ({self.desktop.active()})")

    def bring_up(self, window):
        self.desktop.activate(window)
        self.wait_for_keyboard(window)

    def type(self, text):
        self.desktop.press("ctrl+a")
        self.desktop.tool("type", "--delay", "0", text)

    def stored(self, storage):
        return sum(1 for path in storage.rglob("20*") if path.is_file())

    def wait_for_more(self, storage):
        before = self.stored(storage)
        until(lambda: self.stored(storage) > before, 20, self.program.report)

    def storage_text(self):
        return self.house.settings()["Control"]["StRep"]

    def expect_quiet(self):
        """Nothing is asked, stored or made."""
        asked, files = self.server.count("/a.jpg"), sorted(self.house.root.rglob("*"))
        end = time.monotonic() + QUIET_SECONDS
        until(lambda: time.monotonic() > end, 30, "the end")
        self.assertEqual(asked, self.server.count("/a.jpg"))
        self.assertEqual(files, sorted(self.house.root.rglob("*")))

    def start_again(self):
        again = self.house.start(env=self.desktop.environment())
        self.assertEqual(0, again.wait(20), again.report())

    def tell(self, manager):
        self.begin(manager)
        self.start()
        self.wait_for_more(self.house.storage)
        self.desktop.press(SETUP_KEY)
        main = self.desktop.window(MAIN, MAIN_WIDTH)
        self.wait_for_keyboard(main)
        self.desktop.press(STORAGE_KEY)
        self.type("C:/other")
        until(lambda: self.storage_text() == AFTER, 10, self.storage_text)
        self.bring_up(self.browser)
        self.desktop.minimise(main)
        self.start_again()
        self.wait_for_keyboard(main)
        self.bring_up(self.browser)
        self.expect_quiet()
        self.assertEqual(0, self.stored(self.other))
        self.bring_up(main)
        self.desktop.press("Return")
        self.wait_for_more(self.other)
        self.desktop.press(STORAGE_KEY, "ctrl+a", "BackSpace")
        until(lambda: self.storage_text() == "\\", 10, self.storage_text)
        self.program.kill()
        self.start()
        self.assertEqual(AFTER, self.storage_text())
        self.wait_for_more(self.other)
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())

    def test_a_folder_named_by_a_command_waits_for_the_unchanged_box(self):
        self.begin("openbox")
        self.start()
        self.wait_for_more(self.house.storage)
        self.desktop.press(SETUP_KEY)
        self.wait_for_keyboard(self.desktop.window(MAIN, MAIN_WIDTH))
        self.desktop.press(STORAGE_KEY)
        self.expect_quiet()
        command = [house.VELMORA, "--program-folder", self.house.root, "--set", "storage=C:\\other"]
        self.assertEqual(0, self.house.start_command(command).wait(20))
        self.expect_quiet()
        self.desktop.press("Return")
        self.wait_for_more(self.other)
        self.assertEqual(AFTER, self.storage_text())

    def test_under_openbox(self):
        self.tell("openbox")

    def test_under_metacity(self):
        self.tell("metacity")

    def test_under_xfwm4(self):
        self.tell("xfwm4")


if __name__ == "__main__":
    house.main()
