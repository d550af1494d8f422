"""The program killed two hundred times at a moment drawn by lot, between its start and the end of a pass.
Whatever the moment, only whole images and a whole settings file are left, and a later start tidies up."""

import os
import random
import re
import time
import unittest

import house
from answers import is_whole, slow
from camera_server import CameraServer
from house import House, camera_lists
from waiting import until

ROUNDS = 200
CAMERAS = 30
BODY_BYTES = (20_000, 90_000, 400_000)
FRESH_SETTINGS_EVERY = 20  # rounds; an old file is written in place for the most part, a new one replaced
WINDOW_SECONDS = 0.15


def stamp_of(date):
    """The date part of an image name for a date of the settings file."""
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
        self.left_working = 0  # kills after which a working file was there

    def write_settings(self):
        control = {"Control": {"StRep": "C:\\in\\", "Tempo": "60", "TIO": "20"}}
        self.house.write_settings(control, camera_lists(self.urls))
        self.configured = self.house.settings_bytes().split(b"\r\n")

    def kill_once(self):
        """True when the kill fell into a pass."""
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
        """Every file is whole under its name; of those looked at, one stays, so that no folder is new again."""
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
        lines = raw.split(b"\r\n")
        self.assertEqual([], [line for line in self.configured if line not in lines])
        for index, seen in enumerate(self.seen):
            date = self.house.camera_value(index, "LastModified")
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
                self.write_settings()
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
        dead = self.house.start("--help")
        dead.wait(20)
        left = [folder / f".velmora-{dead.process.pid}-7.part" for folder in (self.house.root, work)]
        in_use = work / f".velmora-{os.getpid()}-1.part"
        for path in (*left, in_use):
            path.write_bytes(b"half a picture")
        self.house.capture("--passes", "1")
        self.assertEqual([in_use], self.house.work_files())


if __name__ == "__main__":
    house.main()
