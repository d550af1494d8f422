"""How full the disk gets: reported, and kept within bounds where that was chosen. The disk is a small one of the
test's own, mounted where no other process sees it."""

import os
import subprocess

import house
from health_case import HealthCase
from notification_server import NotificationServer
from small_disk import enter_own_mounts
from waiting import until

MEGABYTE = 1_000_000
DISK_BYTES = 64 * MEGABYTE


class DiskTest(HealthCase):
    """A disk of 64 MB under the storage folder."""

    def setUp(self):
        super().setUp()
        options = ["-t", "tmpfs", "-o", f"size={DISK_BYTES},nr_inodes=8192", "velmora-test"]
        subprocess.run(["mount", *options, self.house.storage], check=True)
        self.addCleanup(subprocess.run, ["umount", "-l", self.house.storage], check=True)

    def fill(self, left):
        disk = os.statvfs(self.house.storage)
        with open(self.house.storage / "ballast", "wb") as ballast:
            ballast.write(bytes(disk.f_bavail * disk.f_frsize - left))

    def test_tells_of_a_disk_that_is_nearly_full_and_again_when_there_is_room(self):
        desktop = NotificationServer(self)
        self.write_settings()
        self.fill(MEGABYTE)
        program = self.house.start("--capture", env=desktop.environment())
        self.wait_for(program, "nearly full")
        until(lambda: [n for n in desktop.notices() if "nearly full" in n], 20, "the notice")
        code, status = self.status()
        self.assertEqual(1, code)
        self.assertLess(status["free_bytes"], DISK_BYTES // 50)
        (self.house.storage / "ballast").unlink()
        self.wait_for(program, "room on the disk again")
        self.end(program)

    def test_deletes_the_oldest_images_of_all_cameras_when_that_is_chosen(self):
        self.write_settings(Health={"DeleteOldest": "1", "LimitMB": "10"})
        self.store(0, 5000, size=100_000, count=40)
        self.store(1, 2000, size=100_000, count=40)
        kept = self.house.folder(self.urls[0]) / "20010101_note.jpg"
        kept.write_bytes(bytes(10))
        elsewhere = self.house.root / "elsewhere"
        self.house.folder(self.urls[2]).symlink_to(elsewhere)
        elsewhere.mkdir()
        linked = elsewhere / "20010101_0000000100.jpg"
        linked.write_bytes(bytes(1000))
        newest = max(p.name for p in self.house.images(self.urls[0]))
        self.fill(5 * MEGABYTE)
        program = self.house.start("--capture")
        free = lambda: os.statvfs(self.house.storage).f_bavail * os.statvfs(self.house.storage).f_frsize
        until(lambda: free() >= 10 * MEGABYTE, 40, program.report)
        self.end(program)
        self.assertTrue(kept.exists() and linked.exists())
        left = [p.name for p in self.house.images(self.urls[0])]
        self.assertIn(newest, left)
        went = (self.house.root / "Velmora.deleted").read_text(encoding="utf-8").splitlines()
        self.assertGreaterEqual(len(went), 50)
        self.assertEqual(39, sum(1 for line in went if " 0:0 " in line))
        names = [line.split()[-1] for line in went]
        self.assertEqual(sorted(names), names)

    def test_deletes_nothing_on_another_disk(self):
        self.write_settings(Health={"DeleteOldest": "1", "LimitMB": "10"})
        other = self.house.folder(self.urls[0])
        other.mkdir()
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=8M", "velmora-test", other], check=True)
        self.addCleanup(subprocess.run, ["umount", "-l", other], check=True)
        self.store(0, 5000, size=10_000, count=20)
        self.store(1, 2000, size=10_000, count=20)
        before = self.house.images(self.urls[0])
        self.fill(5 * MEGABYTE)
        program = self.house.start("--capture")
        went = self.house.root / "Velmora.deleted"
        until(lambda: went.exists() and went.read_text().count(" 0:1 ") >= 19, 40, program.report)
        self.end(program)
        self.assertEqual([], [p for p in before if not p.exists()])
        self.assertNotIn(" 0:0 ", went.read_text())

    def test_stops_where_deletion_gains_nothing(self):
        self.write_settings(Health={"DeleteOldest": "1", "LimitMB": "10"})
        folder = self.house.folder(self.urls[0])
        folder.mkdir()
        for number in range(300):  # empty: they hold no room
            (folder / f"20000101_00{number // 60:02}{number % 60:02}0101.jpg").touch()
        self.fill(5 * MEGABYTE)
        program = self.house.start("--capture")
        went = self.house.root / "Velmora.deleted"
        until(lambda: went.exists() and went.read_text().count("\n") >= 100, 40, program.report)
        looks = len(program.out)
        until(lambda: len(program.out) > looks + 25, 40, program.report)  # two passes, and a look at the disk
        self.assertEqual(100, went.read_text().count("\n"))
        self.end(program)

    def test_deletes_nothing_that_is_not_chosen_and_stops_when_that_is(self):
        self.write_settings(Health={"StopWhenFull": "1", "LimitMB": "10"})
        self.store(0, 5000, size=100_000, count=10)
        before = self.house.images(self.urls[0])
        self.fill(4 * MEGABYTE)
        program = self.house.start("--capture")
        self.wait_for(program, "The capture is stopped")
        self.assertEqual([], [p for p in before if not p.exists()])
        (self.house.storage / "ballast").unlink()
        self.wait_for(program, "The capture goes on")
        self.end(program)


if __name__ == "__main__":
    enter_own_mounts()
    house.main()
