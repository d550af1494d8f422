"""The import of the built program, opened by its button and run by keys: what arrives is whole, whatever ends
the program meanwhile."""

import unittest

import house
from browser_window import MAIN, MAIN_WIDTH, SETUP_KEY, BrowserWindow
from desktop import Desktop
from house import House
from pictures import colour_of, plain
from waiting import until

IMPORT = "Import"
IMPORT_BUTTON = (928, 50)  # of the main window
COPY_KEY, QUIT_KEY = "alt+c", "alt+q"
ADDRESS = "http://127.0.0.1:9/a.png"
KEPT = "20240102_0304050203.png"
MANY, LARGE = 3000, 100_000


class ImportTest(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop(self)
        self.house = House(self)
        self.card = self.house.storage.parent / "card"
        self.card.mkdir()
        self.folder = self.house.folder(ADDRESS)
        self.folder.mkdir()
        control = {"StRep": "C:\\in\\", "Debug": "1", "Dir": "C:\\card", "Patern": "*.png"}
        self.house.write_settings({"Control": control}, {"Liste0": {"lst0": ADDRESS}})

    def start(self):
        """Starts the program and opens the import; its window's number."""
        environment = self.house.environment() | self.desktop.environment()
        command = [house.VELMORA, "--program-folder", self.house.root]
        self.program = self.house.start_command(command, environment)
        BrowserWindow(self.desktop).press(SETUP_KEY)
        self.desktop.click(self.desktop.window(MAIN, MAIN_WIDTH), IMPORT_BUTTON)
        window = self.desktop.window(IMPORT)
        self.desktop.focus(window)
        return window

    def fill(self):
        """Many large files; the bytes of each."""
        content = bytes(range(250)) * (LARGE // 250)
        for number in range(MANY):
            (self.card / f"20240102_{number:010}.png").write_bytes(content)
        return content

    def copied(self):
        return sorted(path.name for path in self.folder.iterdir())

    def copy(self):
        """Copies and answers the message, a new window of the program's title."""
        before = set(self.desktop.windows(MAIN))
        self.desktop.press(COPY_KEY)
        box = until(lambda: set(self.desktop.windows(MAIN)) - before, 30, "a message").pop()
        self.desktop.focus(box)
        self.desktop.press("Return")
        until(lambda: box not in self.desktop.windows(MAIN), 10, "the end of the message")

    def check_whole(self, content):
        names = self.copied()
        self.assertEqual([], [name for name in names if (self.folder / name).read_bytes() != content])
        return names

    def end(self):
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())
        self.assertEqual([], self.house.work_files())

    def test_copies_what_matches_twice_under_other_names(self):
        picture = plain(colour_of(1))
        (self.card / KEPT).write_bytes(picture)
        (self.card / "photo.PNG").write_bytes(picture)
        (self.card / "text.txt").write_text("no picture")
        window = self.start()
        self.copy()
        first = self.copied()
        self.assertEqual(2, len(first))
        self.assertIn(KEPT, first)
        self.assertRegex(" ".join(first), r"\b20\d{6}_\d{6}0000\.PNG\b")
        self.desktop.focus(window)
        self.copy()
        self.assertIn(KEPT.replace("0203.", "0001"), self.copied())
        self.assertEqual(4, len(self.copied()))
        self.check_whole(picture)
        self.desktop.focus(window)
        self.desktop.press(QUIT_KEY)
        self.desktop.wait_until_gone(IMPORT)
        log = self.house.log()
        for line in ("Interface Import_Click", "frmImport Form_Load", "frmImport cmdClik", "frmImport Form_Unload"):
            self.assertEqual(1, log.count(f" {line}\n"), line)
        self.end()

    def test_an_end_in_the_middle_leaves_whole_files_alone(self):
        content = self.fill()
        self.start()
        self.desktop.press(COPY_KEY)
        until(self.copied, 30, "a first file")
        self.end()
        self.assertLessEqual(len(self.check_whole(content)), MANY)

    def test_a_kill_in_the_middle_leaves_whole_files_alone(self):
        content = self.fill()
        self.start()
        self.desktop.press(COPY_KEY)
        until(self.copied, 30, "a first file")
        self.program.kill()
        self.assertLessEqual(len(self.check_whole(content)), MANY)
        self.assertEqual([], [p for p in self.folder.iterdir() if p.name.startswith(".")])


if __name__ == "__main__":
    house.main()
