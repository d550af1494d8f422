"""The demonstration cameras with the real program: what a newcomer sees on the first try."""

import signal
import subprocess
import unittest

import house
from house import DEMO_CAMERAS, GREEN, RED, House, camera_lists
from program import Program
from waiting import until

GOOD, MISSING, DEAD = range(8), 8, 9
JPEG_BEGIN, JPEG_END = b"\xff\xd8\xff", b"\xff\xd9"


class DemoTest(unittest.TestCase):
    def start_cameras(self, *options):
        cameras = Program([DEMO_CAMERAS, *options])
        self.addCleanup(cameras.kill)
        line = until(lambda: cameras.out, 20, lambda: f"the port ({cameras.report()})")[0]
        self.assertRegex(line, r"^PORT \d+$")
        return cameras, int(line.split()[1])

    def test_captures_the_demonstration(self):
        cameras, port = self.start_cameras()
        urls = [f"http://127.0.0.1:{port}/camera{i}.jpg" for i in range(10)]
        self.house = House(self)
        self.house.write_settings({"Control": {"StRep": "C:\\in\\"}}, camera_lists(urls))
        run = self.house.capture("--passes", "3", seconds=90)
        for index in GOOD:
            self.expect_pictures(self.house.images(urls[index]), index)
        for index in (MISSING, DEAD):
            self.assertEqual([], self.house.images(urls[index]))
            self.assertEqual(RED, self.house.camera_value(index, "SB"))
        self.expect_summary(run)
        cameras.terminate()
        self.assertEqual(0, cameras.wait(20), cameras.report())

    def expect_pictures(self, images, index):
        self.assertGreaterEqual(len(images), 1, f"camera {index}")
        self.assertEqual(GREEN, self.house.camera_value(index, "SB"), f"camera {index}")
        for image in images:
            data = image.read_bytes()
            self.assertTrue(data.startswith(JPEG_BEGIN) and data.endswith(JPEG_END), image)

    def expect_summary(self, run):
        passes = [line for line in run.out if line.startswith("pass ")]
        self.assertEqual("pass 1: 8 stored, 2 failed, 0 unchanged", passes[0])
        self.assertEqual([f"pass {n}: 0 stored, 2 failed, 0 unchanged" for n in (2, 3)], passes[1:])

    def test_ends_with_the_one_who_started_it(self):
        process = subprocess.Popen(
            [DEMO_CAMERAS, "--until-stdin-closes"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        )
        self.addCleanup(process.kill)
        with process.stdout:
            self.assertRegex(process.stdout.readline(), r"^PORT \d+$")
        process.stdin.close()
        self.assertEqual(0, process.wait(20))

    def test_ends_on_sigint(self):
        cameras, _ = self.start_cameras()
        cameras.process.send_signal(signal.SIGINT)
        self.assertEqual(0, cameras.wait(20), cameras.report())


if __name__ == "__main__":
    house.main()
