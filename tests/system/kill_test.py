"""The program killed two hundred times at a random moment between its start and the end of a pass. Whatever the
moment, only whole images and a whole settings file are left, and a later start cleans up."""

import fcntl
import random
import re
import time
import unittest
from collections import Counter

import house
from answers import is_whole, slow
from camera_server import CameraServer
from house import House, camera_lists
from waiting import until

ROUNDS = 200
CAMERAS = 30
BODY_BYTES = (20_000, 90_000, 400_000)
FRESH_SETTINGS_EVERY = 4  # rounds; once its keys are there, the file is mostly written in place
COMMENT_BYTES = 300_000  # of the settings; a large file takes longer to write, and is hit more often
WINDOW_SECONDS = 0.15
# working files of killed runs: present ones, and one named after a process number that every container has
LEFT = (".velmora-0123456789abcdef01234567.part", ".velmora-1-1.part")
IN_BETWEEN, AT_THE_END = range(2)


def stamp_of(date):
    """The date part of an image name for a date in the settings file."""
    return re.sub(r"(\d\d)/(\d\d)/(\d{4}) (\d\d):(\d\d):(\d\d)", r"\3\2\1_\4\5\6", date)


class KillTest(unittest.TestCase):
    def setUp(self):
        self.lot = random.Random(20_011_109)
        self.server = CameraServer(self)
        paths = [f"/camera{i}.jpg" for i in range(CAMERAS)]
        for i, path in enumerate(paths):
            self.server.answer(path, slow(BODY_BYTES[i % 3], pieces=3, pause=0.002 * i))
        self.urls = [self.server.url(path) for path in paths]
        self.house = House(self)
        self.seen = [set() for _ in self.urls]  # names of the images found whole, by camera
        self.left_working = 0  # kills after which a working file was left

    def write_settings(self, new_keys=IN_BETWEEN):
        """new_keys: where the program will add its keys, which determines how it writes them."""
        parts = [{"Control": {"StRep": "C:\\in\\", "Tempo": "60", "TIO": "20"}}, camera_lists(self.urls)]
        if new_keys == IN_BETWEEN:
            parts.insert(0, {f"Groupe{group}": {"EffM0": "0"} for group in range(3)})
        self.house.write_settings(*parts, comments=house.comment_lines(COMMENT_BYTES))
        self.configured = Counter(self.house.settings_bytes().split(b"\r\n"))

    def kill_once(self):
        """True when the kill came during a pass."""
        program = self.house.start("--capture")
        if self.lot.random() < 0.6:
            until(lambda: program.out or not program.runs, 20, "the first line")
        self.assertFalse(program.ends_within(self.lot.uniform(0, WINDOW_SECONDS)), program.report())
        program.kill()
        self.left_working += len(self.house.work_files()) > 0
        self.check_images()
        self.check_settings()
        self.check_reported(program.out)
        return any(line.startswith("stored") for line in program.out) and "pass 1" not in "".join(program.out)

    def check_images(self):
        """Every file is whole under its name; one of those checked is kept, so that no folder is empty again."""
        for url, seen in zip(self.urls, self.seen):
            images = self.house.images(url)
            for image in images:
                if image.name not in seen:
                    self.assertTrue(is_whole(image.read_bytes()), f"{image} is not whole")
                    seen.add(image.name)
            for image in images[:-1]:
                image.unlink()

    def check_settings(self):
        raw = self.house.settings_bytes()
        self.assertEqual([], house.ill_formed_lines(raw))
        self.assertEqual([], list((self.configured - Counter(raw.split(b"\r\n"))).elements())[:5])
        settings = house.parse_settings(raw.decode("cp1252"))
        for index, seen in enumerate(self.seen):
            date = settings.get(f"Groupe{index // 10}", {}).get(f"LastModified{index % 10}")
            stamps = {name[:15] for name in seen}
            self.assertTrue(date is None or stamp_of(date) in stamps, f"{date} of camera {index} has no image")

    def check_reported(self, lines):
        for line in lines:
            stored = re.fullmatch(r"stored (\d):(\d) (\S+)", line)
            if stored:
                index = int(stored[1]) * 10 + int(stored[2])
                self.assertIn(stored[3], self.seen[index])

    def test_leaves_only_whole_files_whenever_it_is_killed(self):
        began = time.monotonic()
        in_pass = 0
        for round_number in range(ROUNDS):
            if round_number % FRESH_SETTINGS_EVERY == 0:
                self.write_settings(self.lot.choice((IN_BETWEEN, AT_THE_END)))
            in_pass += self.kill_once()
        print(f"{ROUNDS} kills in {time.monotonic() - began:.1f} s, {in_pass} within a pass,", end=" ", flush=True)
        print(f"{sum(map(len, self.seen))} images, a working file left after {self.left_working}")
        self.assertGreater(in_pass, ROUNDS // 4)
        self.expect_a_sound_run()

    def expect_a_sound_run(self):
        run = self.house.capture("--passes", "1")
        self.assertEqual(f"pass 1: {CAMERAS} stored, 0 failed, 0 unchanged", run.out[-1])
        self.check_images()
        self.check_settings()
        self.assertEqual([], self.house.work_files())

    def test_clears_the_working_files_of_killed_runs_alone(self):
        self.write_settings()
        work = self.house.storage / "tmp"
        work.mkdir()
        left = [folder / name for folder in (self.house.root, work) for name in LEFT]
        in_use = work / ".velmora-2-1.part"
        for path in (*left, in_use):
            path.write_bytes(b"half a picture")
        with in_use.open("r+b") as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            self.house.capture("--passes", "1")
            self.assertEqual([in_use], self.house.work_files())


if __name__ == "__main__":
    house.main()
