"""A full disk under the storage folder and under the settings file: a tiny file system of the test's own, mounted
where no other process sees it. Nothing partial is left, and what failed is made up for later."""

import random
import unittest

import house
from answers import fresh, is_whole
from camera_server import CameraServer
from film_test import FilmCase, encoded
from house import GREEN, RED, VELMORA, House, camera_lists, parse_settings
from small_disk import Disk, enter_own_mounts
from waiting import until

CAMERAS = 12
IMAGE_BYTES = 40_000
ROOM_FOR = 4  # images
PAGE_BYTES = 4096


class FullDiskTest(unittest.TestCase):
    def setUp(self):
        paths = [f"/camera{i}.jpg" for i in range(CAMERAS)]
        self.server = CameraServer(self, {path: fresh(IMAGE_BYTES) for path in paths})
        self.urls = [self.server.url(path) for path in paths]

    def write_settings(self, **control):
        """They fill all but a few bytes of a page of the file system."""
        basic = {"StRep": "C:\\in\\", "Tempo": "1", "TIO": "5"}
        self.sections = ({"Control": basic | control}, camera_lists(self.urls))
        self.house.write_settings(*self.sections)
        room = PAGE_BYTES - 5 - len(self.house.settings_bytes())
        self.house.write_settings(*self.sections, comments=house.comment_lines(room))

    def stored(self):
        """Positions of the cameras that have an image; every image there is whole."""
        images = [self.house.images(url) for url in self.urls]
        self.assertEqual([], [p.name for found in images for p in found if not is_whole(p.read_bytes())])
        return [index for index, found in enumerate(images) if found]

    def expect_settings_whole(self):
        raw = self.house.settings_bytes()
        self.assertEqual([], house.ill_formed_lines(raw))
        settings = parse_settings(raw.decode("cp1252"))
        for sections in self.sections:
            for section, keys in sections.items():
                self.assertEqual(keys, {key: settings[section].get(key) for key in keys})

    def end(self, program):
        program.terminate()
        self.assertEqual(0, program.wait(30), program.report())
        self.assertEqual([], self.house.work_files())

    def test_stores_what_fits_and_the_rest_when_there_is_room(self):
        self.house = House(self)
        disk = Disk(self, self.house.storage)
        self.write_settings()
        disk.leave(ROOM_FOR * (IMAGE_BYTES + 4096))
        program = self.house.start("--capture")
        until(lambda: any(line.startswith("pass 1") for line in program.out), 30, program.report)
        self.expect_some_stored(program)
        disk.give_back()
        until(lambda: len(self.stored()) == CAMERAS, 30, lambda: f"all images ({program.report()})")
        self.assertTrue(program.runs)
        self.end(program)
        self.assertEqual([GREEN] * CAMERAS, [self.house.camera_value(i, "SB") for i in range(CAMERAS)])
        self.expect_settings_whole()

    def test_says_that_a_list_cannot_be_written(self):
        self.house = House(self)
        disk = Disk(self, self.house.storage)
        self.write_settings()
        disk.leave(0)
        target = self.house.storage / "list.csv"
        program = self.house.start("--export-list", str(target))
        self.assertEqual(1, program.wait(20), program.report())
        self.assertIn("No space left", "\n".join(program.err))
        self.assertFalse(target.exists())

    def test_prints_again_what_it_stores_once_there_is_room(self):
        self.house = House(self)
        disk = Disk(self, self.house.storage)
        self.write_settings()
        lines = self.house.storage / "lines.txt"
        lines.touch()
        disk.leave(0)
        command = [VELMORA, "--program-folder", self.house.root, "--capture"]
        program = self.house.start_command(["sh", "-c", 'exec "$@" >> "$0"', lines, *command])
        until(lambda: min(self.server.count(f"/camera{i}.jpg") for i in range(CAMERAS)) >= 2, 30, program.report)
        self.assertEqual("", lines.read_text())
        disk.give_back()
        until(lambda: len(self.stored()) == CAMERAS, 30, lambda: f"all images ({program.report()})")
        self.end(program)
        for index in range(CAMERAS):
            self.assertIn(f"\nstored {index // 10}:{index % 10} ", lines.read_text())

    def expect_some_stored(self, program):
        stored = self.stored()
        self.assertIn(len(stored), range(1, ROOM_FOR + 1))
        self.assertEqual([], self.house.work_files())
        self.expect_settings_whole()
        for index in set(range(CAMERAS)) - set(stored):
            self.assertIsNone(self.house.camera_value(index, "LastModified"))
            self.assertEqual(RED, self.house.camera_value(index, "SB"))
            reason = f"failed {index // 10}:{index % 10} the image cannot be stored: No space left on device"
            self.assertIn(reason, program.out)

    def test_keeps_the_settings_whole_when_they_cannot_grow(self):
        self.start_beside_full_settings()
        before = self.house.settings_bytes()
        self.assertGreater(len(before) + 20, PAGE_BYTES)  # the first value to be written needs another page
        program = self.house.start("--capture")
        until(lambda: len(self.stored()) == CAMERAS, 30, lambda: f"all images ({program.report()})")
        until(lambda: any(line.startswith("pass 1") for line in program.out), 30, program.report)
        self.expect_settings_whole()
        self.assertEqual(before, self.house.settings_bytes())
        self.assertTrue(program.runs)
        self.disk.give_back()
        self.end(program)  # the last pass finds room for everything
        self.expect_settings_whole()
        self.assertEqual([GREEN] * CAMERAS, [self.house.camera_value(i, "SB") for i in range(CAMERAS)])
        self.assertNotIn(None, [self.house.camera_value(i, "LastModified") for i in range(CAMERAS)])

    def start_beside_full_settings(self):
        """The program folder is on the full disk, the storage folder elsewhere."""
        elsewhere = House(self)
        folder = elsewhere.root / "program"
        folder.mkdir()
        self.disk = Disk(self, folder)
        self.house = House(self, root=folder)
        self.house.storage.rmdir()
        self.house.storage.symlink_to(elsewhere.storage)
        self.write_settings(Debug="1")
        self.disk.leave(0)

    def test_makes_no_half_settings_from_the_template(self):
        self.start_beside_full_settings()
        template = self.house.root / "Velmora0.ini"
        self.house.settings_path.rename(template)
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 0 stored, 0 failed, 0 unchanged", run.out[-1])
        self.assertFalse(self.house.settings_path.exists())
        self.assertEqual([], self.house.work_files())


class FilmDiskTest(FilmCase):
    """The film is to be made where there is little room; its images are elsewhere."""

    def test_leaves_nothing_of_a_film_that_does_not_fit(self):
        noise = [random.Random(seed).randbytes(160 * 120 * 3) for seed in range(4)]
        self.store(12, pictures=[encoded(b"P6 160 120 255\n" + pixels) for pixels in noise])
        disk = Disk(self, self.out)
        for room in (20_000, 0):
            disk.leave(room)
            for name in ("film.mp4", "film.webm", "film.gif", "film.webp"):
                target = self.out / name
                program = self.film("2006-03-01", "2006-03-31", str(target))
                self.assertEqual(1, program.wait(60), (name, program.report()))
                self.assertIn("No space left", "\n".join(program.err), name)
                self.expect_nothing_else("ballast")


if __name__ == "__main__":
    enter_own_mounts()
    house.main()
