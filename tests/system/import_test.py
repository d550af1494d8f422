"""The built program's import, opened with its button and operated by keys: what arrives is whole, whatever the
folder holds, however full the disk is and however the program ends meanwhile."""

import os
import socket
import unittest

import house
from browser_window import MAIN, MAIN_WIDTH, SETUP_KEY, BrowserWindow
from desktop import Desktop
from house import House
from pictures import colour_of, plain
from small_disk import Disk, enter_own_mounts
from waiting import until

IMPORT = "Import"
IMPORT_BUTTON = (928, 50)  # of the main window
COPY_KEY, QUIT_KEY = "alt+c", "alt+q"
ADDRESS = "http://127.0.0.1:9/a.png"
KEPT = "20240102_0304050203.png"
MANY, LARGE = 3000, 100_000
VERY_MANY = 50_000
ROOM_FOR = 4  # large files


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
        """Starts the program and opens the import; returns its window's number."""
        environment = self.house.environment() | self.desktop.environment()
        command = [house.VELMORA, "--program-folder", self.house.root]
        self.program = self.house.start_command(command, environment)
        BrowserWindow(self.desktop).press(SETUP_KEY)
        self.desktop.click(self.desktop.window(MAIN, MAIN_WIDTH), IMPORT_BUTTON)
        window = self.desktop.window(IMPORT)
        self.desktop.focus(window)
        return window

    def fill(self):
        """Many large files; returns the bytes of each."""
        content = bytes(range(250)) * (LARGE // 250)
        for number in range(MANY):
            (self.card / f"20240102_{number:010}.png").write_bytes(content)
        return content

    def fill_with_links(self):
        """Very many names of one file; returns its bytes."""
        content = plain(colour_of(1))
        first = self.card / f"20240102_{0:010}.png"
        first.write_bytes(content)
        for number in range(1, VERY_MANY):
            os.link(first, self.card / f"20240102_{number:010}.png")
        return content

    def copied(self):
        return sorted(path.name for path in self.folder.iterdir())

    def copy(self, seconds=30):
        """Copies and dismisses the message, a new window with the program's title."""
        before = set(self.desktop.windows(MAIN))
        self.desktop.press(COPY_KEY)
        box = until(lambda: set(self.desktop.windows(MAIN)) - before, seconds, "a message").pop()
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
        self.assertEqual([], self.stray_files())

    def stray_files(self):
        """Work files, and anything else made by the import that does not have an image's name."""
        hidden = [path for path in self.folder.iterdir() if path.name.startswith(".")]
        return self.house.work_files() + hidden

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
        self.assertEqual([], self.stray_files())

    def test_fifty_thousand_files_arrive(self):
        content = self.fill_with_links()
        self.start()
        self.copy(120)
        self.assertEqual(sorted(path.name for path in self.card.iterdir()), self.check_whole(content))
        self.end()

    def test_quitting_among_fifty_thousand_files_stops_behind_one(self):
        content = self.fill_with_links()
        self.start()
        self.desktop.press(COPY_KEY)
        until(self.copied, 30, "a first file")
        self.desktop.press(QUIT_KEY)
        self.desktop.wait_until_gone(IMPORT, 5)
        self.assertIn(len(self.check_whole(content)), range(1, VERY_MANY))
        self.end()

    def put_what_is_no_file(self):
        """A socket, a pipe, a folder and links that lead nowhere, each with a matching name."""
        names = [self.card / f"20240102_{number:010}.png" for number in range(1, 7)]
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(names[0]))
        os.mkfifo(names[1])
        names[2].mkdir()
        names[3].symlink_to("nowhere")
        names[4].symlink_to(names[4])
        names[5].symlink_to(names[1])

    def test_what_is_no_file_is_passed_over_and_what_cannot_be_read_aborts(self):
        content = plain(colour_of(1))
        good = [f"{day}_0304050203.png" for day in (20240101, 20240103, 20240105)]
        for name in good:
            (self.card / name).write_bytes(content)
        self.put_what_is_no_file()
        unreadable = self.card / "20240104_0304050203.png"
        unreadable.symlink_to("/proc/self/mem")  # for root, too
        window = self.start()
        self.copy()
        self.assertEqual(good[:2], self.check_whole(content))
        self.assertTrue(self.program.runs)
        unreadable.unlink()
        self.desktop.focus(window)
        self.copy()
        self.assertIn(good[2], self.check_whole(content))
        self.assertEqual(5, len(self.copied()))
        self.end()

    def test_a_full_disk_aborts_behind_what_fitted(self):
        disk = Disk(self, self.house.storage)
        self.folder.mkdir()
        content = bytes(range(250)) * (LARGE // 250)
        names = [f"20240102_{number:010}.png" for number in range(2 * ROOM_FOR)]
        for name in names:
            (self.card / name).write_bytes(content)
        disk.leave(ROOM_FOR * LARGE + LARGE // 2)
        window = self.start()
        self.copy()
        fitted = self.check_whole(content)
        self.assertEqual(names[: len(fitted)], fitted)
        self.assertIn(len(fitted), range(1, ROOM_FOR + 1))
        self.assertEqual([], self.stray_files())
        self.assertTrue(self.program.runs)
        disk.give_back()
        self.desktop.focus(window)
        self.copy()
        self.assertLessEqual(set(names), set(self.check_whole(content)))
        self.assertEqual(len(names) + len(fitted), len(self.copied()))
        self.end()


if __name__ == "__main__":
    enter_own_mounts()
    house.main()
