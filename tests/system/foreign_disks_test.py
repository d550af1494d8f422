"""Captures to disks with the file systems of other platforms: every image is there, whole, once, and none replaces
another; nothing is left in the folder of working files."""

import fcntl
import subprocess
import unittest

import house
from answers import fresh, is_whole
from camera_server import CameraServer
from foreign_disks import DISKS
from house import House, camera_lists
from small_disk import ROOT, enter_own_mounts

CAMERAS = 12
SIZES = (20_000, 400_000)  # one stays in memory until it is stored, one goes to a working file as it arrives


class ForeignDisksTest(unittest.TestCase):
    def start_on(self, mount):
        paths = [f"/camera{i}.jpg" for i in range(CAMERAS)]
        self.server = CameraServer(self, {path: fresh(SIZES[i % 2]) for i, path in enumerate(paths)})
        self.urls = [self.server.url(path) for path in paths]
        self.house = House(self)
        mount(self, self.house)
        self.house.write_settings({"Control": {"StRep": "C:\\in\\", "Tempo": "1", "TIO": "20"}}, camera_lists(self.urls))

    def expect_captures(self, mount):
        self.start_on(mount)
        run = self.house.capture("--passes", "1")
        self.assertEqual(f"pass 1: {CAMERAS} stored, 0 failed, 0 unchanged", run.out[-1], run.report())
        for url in self.urls:
            [stored] = self.house.images(url)
            self.assertTrue(is_whole(stored.read_bytes()), url)
        self.assertEqual([], self.house.work_files())
        self.expect_held_files_stay()

    def expect_held_files_stay(self):
        """Working files have names here: one that is held survives a start, one that is not is removed."""
        work = self.house.storage / "tmp"
        held, left = work / ".velmora-1-1.part", work / ".velmora-1-2.part"
        for path in (held, left):
            path.write_bytes(b"half a picture")
        with held.open("r+b") as file:
            fcntl.flock(file, fcntl.LOCK_EX)
            self.house.capture("--passes", "1")
            self.assertEqual([held], self.house.work_files())

    def test_says_that_settings_mounted_by_themselves_cannot_change(self):
        self.start_on(lambda test, house: None)
        path = self.house.settings_path
        subprocess.run(["mount", "--bind", path, path], check=True)
        self.addCleanup(subprocess.run, ["umount", path], check=True)
        run = self.house.capture("--passes", "1")
        self.assertIn("is mounted by itself", run.report())
        self.assertEqual(1, len(self.house.images(self.urls[0])))

    def test_keeps_old_images_of_a_camera_whose_folder_another_shares_but_for_capitals(self):
        """Only the other one's box for the deletion of old images is ticked."""
        self.server = CameraServer(self, {path: fresh(SIZES[0]) for path in ("/Snap.jpg", "/snap.jpg")})
        ticked, kept = self.server.url("/Snap.jpg"), self.server.url("/snap.jpg")
        self.house = House(self)
        DISKS["exfat"](self, self.house)
        settings = {"Control": {"StRep": "C:\\in\\"}, "Groupe0": {"EffM0": "1"}}
        self.house.write_settings(settings, camera_lists([ticked, kept]))
        folder = self.house.folder(kept)
        folder.mkdir()
        old = [folder / "20000101_1200000112.jpg", folder / "20000102_1200000212.jpg"]
        for path in old:
            path.write_bytes(b"x" * 1000)
        self.assertTrue((self.house.folder(ticked) / old[0].name).exists())
        self.house.capture("--passes", "1")
        self.assertEqual(old, self.house.images(kept)[:2])

    def test_captures_to_ntfs(self):
        self.expect_captures(DISKS["ntfs"])

    def test_captures_to_exfat(self):
        self.expect_captures(DISKS["exfat"])


if __name__ == "__main__":
    enter_own_mounts((ROOT,))
    house.main()
