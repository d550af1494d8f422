"""The program under tight limits of the system: few open files, little memory. Good cameras are stored all the
same, since neither their number nor the length of their pictures decides how much the program takes."""

import os
import subprocess
import unittest

import house
from answers import NOISE, fresh, is_whole
from camera_server import CameraServer
from house import VELMORA, House, camera_lists
from program import Display
from waiting import PATIENCE, until

FEW_FILES = 64
SMALL_FILES = 200  # of 512 bytes
LITTLE_MEMORY_KB = 400_000  # of address space; an idle program takes two thirds of it
LONG_PIECES = 30  # of a megabyte each
LONG_CAMERAS = 12  # together almost as much as that memory


def long_picture(connection):
    connection.head("200 OK", "Content-Type: image/jpeg", f"Content-Length: {LONG_PIECES * len(NOISE)}")
    for _ in range(LONG_PIECES):
        connection.send(NOISE)


class LimitsTest(unittest.TestCase):
    def start_with(self, answers):
        self.server = CameraServer(self, answers)
        self.urls = [self.server.url(path) for path in answers]
        self.house = House(self)
        self.house.write_settings({"Control": {"StRep": "C:\\in\\", "Tempo": "1", "TIO": "60"}}, camera_lists(self.urls))

    def capture_under(self, limit, failed=0):
        """limit: arguments for the shell's ulimit. Returns what the program printed."""
        within = ["sh", "-c", f'ulimit {limit}; exec "$@"', "sh"]
        command = [VELMORA, "--program-folder", self.house.root, "--capture", "--passes", "1"]
        program = self.house.start_command([*within, *command])
        self.assertEqual(0, program.wait(90), program.report())
        stored = len(self.urls) - failed
        self.assertEqual(f"pass 1: {stored} stored, {failed} failed, 0 unchanged", program.out[-1], program.report())
        return program.out

    def test_stores_a_hundred_cameras_with_few_open_files(self):
        self.start_with({f"/camera{i}.jpg": fresh(5_000) for i in range(100)})
        self.capture_under(f"-n {FEW_FILES}")
        images = [image for url in self.urls for image in self.house.images(url)]
        self.assertTrue(all(is_whole(image.read_bytes()) for image in images))

    @unittest.skipIf(PATIENCE > 1, "an instrumented program needs more memory for itself")
    def test_stores_long_pictures_in_little_memory(self):
        self.start_with({f"/camera{i}.jpg": long_picture for i in range(LONG_CAMERAS)})
        self.capture_under(f"-v {LITTLE_MEMORY_KB}")
        sizes = {image.stat().st_size for url in self.urls for image in self.house.images(url)}
        self.assertEqual({LONG_PIECES * len(NOISE)}, sizes)
        self.assertEqual([], self.house.work_files())

    def test_a_limit_on_the_size_of_files_costs_the_long_pictures_alone(self):
        sizes = {"/small.jpg": 5_000, "/long.jpg": 250_000, "/longer.jpg": 2_000_000, "/last.jpg": 5_000}
        self.start_with({path: fresh(size) for path, size in sizes.items()})
        said = self.capture_under(f"-f {SMALL_FILES}", failed=2)
        self.assertEqual([1, 0, 0, 1], [len(self.house.images(url)) for url in self.urls])
        self.assertEqual(2, sum("File too large" in line for line in said), said)
        self.assertEqual([], self.house.work_files())

    def test_goes_on_with_its_windows_when_nobody_reads_its_output(self):
        self.start_with({"/camera.jpg": fresh(5_000)})
        display = Display()
        self.addCleanup(display.close)
        nobody_reads, output = os.pipe()
        os.close(nobody_reads)
        program = subprocess.Popen(
            [VELMORA, "--program-folder", self.house.root],
            env=self.house.environment() | display.environment() | {"QT_LOGGING_RULES": "*.debug=true"},
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=output,
        )
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        os.close(output)
        until(lambda: len(self.house.images(self.urls[0])) > 1, 30, "the second image")
        self.assertIsNone(program.poll())
        program.terminate()
        self.assertEqual(0, program.wait(30))


if __name__ == "__main__":
    house.main()
