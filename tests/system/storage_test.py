"""The storage folder and the settings file under bad treatment: removed, put back, blocked, unwritable, damaged,
far too large. The program goes on and recovers where it can."""

import os
import random
import shutil
import time
import unittest

import house
from answers import fresh, is_whole
from camera_server import CameraServer
from house import GREEN, House, camera_lists
from program import Display
from waiting import until

CAMERAS = 5
EVERY_TWO_SECONDS = {"AutoDelai": "1", "BestTime": "00:00:01"}
NOTICED_SECONDS = 4  # the folder is checked every two


class StorageCase(unittest.TestCase):
    """Five cameras that always have something new, and are asked every two seconds once they run."""

    def setUp(self):
        paths = [f"/camera{i}.jpg" for i in range(CAMERAS)]
        self.server = CameraServer(self, {path: fresh(20_000) for path in paths})
        self.urls = [self.server.url(path) for path in paths]
        self.house = House(self)
        self.control = {"Control": {"StRep": "C:\\in\\", "Tempo": "1", "TIO": "5"}}
        often = {f"{word}{row}": value for row in range(CAMERAS) for word, value in EVERY_TWO_SECONDS.items()}
        self.house.write_settings(self.control, camera_lists(self.urls), {"Groupe0": often})

    def start(self, env=None):
        program = self.house.start(*([] if env else ["--capture"]), env=env)
        self.wait_for_more(program)
        return program

    def counts(self):
        return [len(self.house.images(url)) for url in self.urls]

    def wait_for_more(self, program):
        """Every camera stores an image from now on."""
        before = self.counts()
        grown = lambda: all(now > then for now, then in zip(self.counts(), before))
        until(lambda: grown() or not program.runs, 30, lambda: f"new images ({program.report()})")
        self.assertTrue(program.runs, program.report())

    def end(self, program):
        program.terminate()
        self.assertEqual(0, program.wait(30), program.report())
        self.assertEqual([], [p for url in self.urls for p in self.house.images(url) if not is_whole(p.read_bytes())])
        self.assertEqual([], self.house.work_files())
        self.assertEqual([], house.ill_formed_lines(self.house.settings_bytes()))


class FolderTest(StorageCase):
    def expect_to_outlive_the_folder(self, env=None):
        program = self.start(env)
        away = self.house.root / "away"
        self.house.storage.rename(away)
        self.assertFalse(program.ends_within(NOTICED_SECONDS), program.report())
        asked = len(self.server.requests)
        self.assertFalse(program.ends_within(2), program.report())
        self.assertEqual(asked, len(self.server.requests), "cameras are asked for images that have no place")
        self.assertFalse(self.house.storage.exists())
        away.rename(self.house.storage)
        self.wait_for_more(program)
        self.end(program)

    def test_waits_for_a_folder_that_was_taken_away(self):
        self.expect_to_outlive_the_folder()

    def test_waits_for_a_folder_that_was_taken_away_from_its_windows(self):
        display = Display()
        self.addCleanup(display.close)
        self.expect_to_outlive_the_folder(display.environment())

    def test_fills_an_empty_folder_that_was_put_in_the_place(self):
        program = self.start()
        self.house.storage.rename(self.house.root / "away")
        self.house.storage.mkdir()
        self.wait_for_more(program)
        self.end(program)

    def test_fails_only_the_camera_whose_folder_is_a_file(self):
        self.house.folder(self.urls[2]).write_bytes(b"in the way")
        run = self.house.capture("--passes", "1")
        self.assertEqual(f"pass 1: {CAMERAS - 1} stored, 1 failed, 0 unchanged", run.out[-1])
        self.assertTrue(any(line.startswith("failed 0:2 the image cannot be stored: ") for line in run.out))
        self.assertEqual(b"in the way", self.house.folder(self.urls[2]).read_bytes())
        self.assertEqual("255", self.house.camera_value(2, "SB"))
        self.assertIsNone(self.house.camera_value(2, "LastModified"))

    def test_stores_again_once_the_way_to_its_work_folder_is_free(self):
        work = self.house.storage / "tmp"
        work.write_bytes(b"in the way")
        program = self.house.start("--capture")
        until(lambda: sum(line.startswith("failed 0:") for line in program.out) == CAMERAS, 30, program.report)
        asked = len(self.server.requests)
        until(lambda: len(self.server.requests) >= asked + CAMERAS, 30, "another pass")
        self.assertEqual([0] * CAMERAS, self.counts())
        self.assertEqual(CAMERAS, sum(line.startswith("failed") for line in program.out), program.report())
        work.unlink()
        self.wait_for_more(program)
        self.end(program)


class SettingsTest(StorageCase):
    def test_captures_with_settings_that_may_not_be_written(self):
        os.chmod(self.house.settings_path, 0o444)
        before = self.house.settings_bytes()
        run = self.house.capture("--passes", "1")
        self.assertEqual(f"pass 1: {CAMERAS} stored, 0 failed, 0 unchanged", run.out[-1])
        self.assertEqual([1] * CAMERAS, self.counts())
        self.assertEqual(before, self.house.settings_bytes())
        self.assertEqual([], self.house.work_files())

    def expect_idle_start(self):
        before = self.house.settings_bytes()
        run = self.house.capture("--passes", "2")
        self.assertEqual("pass 2: 0 stored, 0 failed, 0 unchanged", run.out[-1])
        self.assertEqual(before, self.house.settings_bytes())

    def test_idles_on_settings_that_are_noise(self):
        for size in (1, 1000, 300_000):
            self.house.settings_path.write_bytes(random.Random(size).randbytes(size))
            self.expect_idle_start()

    def test_idles_on_settings_that_are_zeros(self):
        self.house.settings_path.write_bytes(bytes(100_000))
        self.expect_idle_start()

    def test_idles_when_a_folder_or_a_pipe_stands_for_the_settings(self):
        self.house.settings_path.unlink()
        for make in (os.mkdir, os.mkfifo):
            make(self.house.settings_path)
            run = self.house.capture("--passes", "1")
            self.assertEqual("pass 1: 0 stored, 0 failed, 0 unchanged", run.out[-1])
            (shutil.rmtree if self.house.settings_path.is_dir() else os.unlink)(self.house.settings_path)

    def test_takes_nothing_for_settings_that_cannot_be_read(self):
        """Their disk may be away; without them every camera would count as removed."""
        text = self.house.settings_bytes()
        path = self.house.settings_path
        path.unlink()
        path.symlink_to("away/Velmora.ini")
        (self.house.root / "Velmora0.ini").write_bytes(b"[Control]\r\n")
        (self.house.root / "list.csv").write_text("kept")
        for options in (("--capture", "--passes", "1"), ("--list",), ("--export-list", self.house.root / "list.csv"),
                        ("--set", "tick=7"), ("--get", "storage"), ("--film", "0:0", "2000-01-01", "2030-01-01", self.house.root / "film.mp4")):
            program = self.house.start(*options)
            self.assertEqual(1, program.wait(30), program.report())
            self.assertIn("The settings file", program.report())
            self.assertTrue(path.is_symlink())
        self.assertEqual("kept", (self.house.root / "list.csv").read_text())
        path.parent.joinpath("away").mkdir()
        (path.parent / "away" / "Velmora.ini").write_bytes(text)
        self.house.capture("--passes", "1")
        self.assertEqual([1] * CAMERAS, self.counts())

    def test_captures_from_among_noise(self):
        """Lines without a meaning stay byte for byte, those with one are found."""
        noise = random.Random(3).randbytes(50_000).replace(b"[", b"(")
        text = self.house.settings_bytes()
        self.house.settings_path.write_bytes(noise + b"\r\n" + text)
        self.house.capture("--passes", "1")
        self.assertEqual([1] * CAMERAS, self.counts())
        self.assertTrue(self.house.settings_bytes().startswith(noise))

    def masked(self, mask, *options):
        """A finished capture under a different umask."""
        command = ["sh", "-c", f'umask {mask}; exec "$@"', "-", house.VELMORA, "--program-folder", self.house.root]
        program = self.house.start_command([*command, "--capture", "--passes", "1", *options])
        self.assertEqual(0, program.wait(30), program.report())

    def modes(self):
        return {path.stat().st_mode & 0o777 for url in self.urls for path in self.house.images(url)}

    def test_images_have_the_rights_that_the_mask_leaves(self):
        for mask, mode in (("077", 0o600), ("022", 0o644), ("002", 0o664)):
            shutil.rmtree(self.house.storage)
            self.house.storage.mkdir()
            self.masked(mask)
            self.assertEqual({mode}, self.modes())

    def test_new_settings_are_for_the_user_alone(self):
        template = self.house.root / "Velmora0.ini"
        self.house.settings_path.rename(template)
        template.chmod(0o666)
        self.masked("000")
        self.assertEqual(0o600, self.house.settings_path.stat().st_mode & 0o777)
        self.assertEqual([1] * CAMERAS, self.counts())

    def test_no_template_holds_the_start_up(self):
        self.house.settings_path.unlink()
        template = self.house.root / "Velmora0.ini"
        for make in (os.mkfifo, lambda path: os.symlink("/dev/zero", path), os.mkdir):
            make(template)
            run = self.house.capture("--passes", "1", seconds=20)
            self.assertEqual("pass 1: 0 stored, 0 failed, 0 unchanged", run.out[-1])
            self.assertFalse(self.house.settings_path.exists())
            (shutil.rmtree if template.is_dir() and not template.is_symlink() else os.unlink)(template)

    def test_captures_with_settings_of_ten_megabytes(self):
        filler = b";" + b"x" * 98 + b"\r\n"
        text = self.house.settings_bytes()
        self.house.settings_path.write_bytes(filler * 50_000 + text + filler * 50_000)
        began = time.monotonic()
        run = self.house.capture("--passes", "1", seconds=40)
        print(f"{time.monotonic() - began:.1f} s", end=" ", flush=True)
        self.assertEqual(1, len(run.err), run.report())
        for words in (str(self.house.settings_path), "10.1 MB"):
            self.assertIn(words, run.err[0])
        self.assertEqual([1] * CAMERAS, self.counts())
        self.assertEqual([GREEN] * CAMERAS, [self.house.camera_value(i, "SB") for i in range(CAMERAS)])
        raw = self.house.settings_bytes()
        self.assertEqual(100_000, raw.count(filler))
        self.assertEqual([], self.house.work_files())


if __name__ == "__main__":
    house.main()
