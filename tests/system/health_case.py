"""Ten cameras that a test lets deliver or not, images that they have stored before, and what a monitoring system
is told about them."""

import json
import subprocess
import unittest
from datetime import datetime, timedelta, timezone

from answers import fresh, nothing
from camera_server import CameraServer
from house import House, VELMORA, camera_lists
from waiting import until

CAMERAS = 10
EVERY_PASS = {"AutoDelai": "1", "BestTime": "00:00:01"}


def image_name(moment):
    return moment.strftime("%Y%m%d_%H%M%S%d%H.jpg")


class HealthCase(unittest.TestCase):
    def setUp(self):
        self.house = House(self)
        self.paths = [f"/camera{i}.jpg" for i in range(CAMERAS)]
        self.server = CameraServer(self, {path: fresh(20_000) for path in self.paths})
        self.urls = [self.server.url(path) for path in self.paths]

    def write_settings(self, **sections):
        control = {"StRep": "C:\\in\\", "Tempo": "1", "TIO": "5"}
        # Each is asked at every pass.
        every = {f"{key}{row}": value for row in range(CAMERAS) for key, value in EVERY_PASS.items()}
        self.house.write_settings({"Control": control, "Groupe0": every}, sections, camera_lists(self.urls))

    def store(self, camera, minutes, size=20_000, count=30):
        """Images a minute apart, the newest this many minutes old."""
        folder = self.house.folder(self.urls[camera])
        folder.mkdir(exist_ok=True)
        newest = datetime.now(timezone.utc).replace(tzinfo=None) - timedelta(minutes=minutes)
        for number in range(count):
            (folder / image_name(newest - timedelta(minutes=number))).write_bytes(bytes(size))

    def stop(self, *cameras):
        for camera in cameras:
            self.server.answer(self.paths[camera], nothing)

    def status(self):
        command = [VELMORA, "--program-folder", self.house.root, "--status", "--json"]
        run = subprocess.run(command, env=self.house.environment(), capture_output=True, timeout=20, check=False)
        return run.returncode, json.loads(run.stdout)

    def wait_for(self, program, text, seconds=40):
        return until(lambda: [line for line in program.out if text in line], seconds, program.report)

    def end(self, program):
        program.terminate()
        self.assertEqual(0, program.wait(30), program.report())
