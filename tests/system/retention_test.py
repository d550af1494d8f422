"""Old images of the built program's cameras: deleted after one month where the camera's box is ticked, and never
anything else."""

import unittest
from datetime import datetime, timedelta

import house
from answers import fresh, long_missing_page
from camera_server import CameraServer
from house import House, camera_lists
from waiting import PATIENCE

TICKED, OTHER = 0, 1


def name_of(days_ago, extension="jpg"):
    """Of an image taken so long ago, in UTC as the cameras give it."""
    return f"{datetime.utcnow() - timedelta(days=days_ago):%Y%m%d_%H%M%S}0101.{extension}"


class RetentionTest(unittest.TestCase):
    def setUp(self):
        self.server = CameraServer(self, {path: fresh(20_000) for path in ("/a.jpg", "/b.jpg")})
        self.urls = [self.server.url("/a.jpg"), self.server.url("/b.jpg")]
        self.house = House(self)
        self.house.write_settings(
            {"Control": {"StRep": "C:\\in\\", "Debug": "1"}}, camera_lists(self.urls), {"Groupe0": {"EffM0": "1"}}
        )

    def put(self, camera, *names):
        folder = self.house.folder(self.urls[camera])
        folder.mkdir(exist_ok=True)
        for name in names:
            (folder / name).write_bytes(b"x" * 1000)

    def names(self, camera):
        return [path.name for path in self.house.images(self.urls[camera])]

    def test_deletes_what_is_older_than_a_month_of_the_ticked_camera_alone(self):
        old, young = [name_of(40), name_of(400, "png")], name_of(20)
        for camera in (TICKED, OTHER):
            self.put(camera, *old, young)
        self.house.capture("--passes", "1")
        self.assertEqual([], [name for name in self.names(TICKED) if name in old])
        self.assertIn(young, self.names(TICKED))
        self.assertEqual(sorted(old), [name for name in self.names(OTHER) if name in old])
        self.assertIn("Retention 0:0: 2 images from before ", self.house.log())

    def test_keeps_the_newest_and_what_is_no_image(self):
        kept = ["20050101_000000.jpg", "20050101_0000000001jpg", "notes.txt", "18991230_0000000101.jpg"]
        newest = name_of(300)
        self.put(TICKED, *kept, newest, name_of(301))
        self.server.answers["/a.jpg"] = long_missing_page  # nothing new arrives
        self.house.capture("--passes", "1")
        self.assertEqual(sorted([*kept, newest]), self.names(TICKED))

    def test_deletes_nothing_while_the_clock_is_before_the_newest_image(self):
        names = sorted([name_of(40), name_of(-2)])
        self.put(TICKED, *names)
        self.house.capture("--passes", "1")
        self.assertLessEqual(set(names), set(self.names(TICKED)))
        self.assertIn("the clock is before the newest image", self.house.log())

    def test_never_follows_a_link_that_stands_for_the_folder(self):
        elsewhere = self.house.root / "pictures"
        elsewhere.mkdir()
        for name in (name_of(40), name_of(1)):
            (elsewhere / name).write_bytes(b"mine")
        before = sorted(p.name for p in elsewhere.iterdir())
        self.house.folder(self.urls[TICKED]).symlink_to(elsewhere)
        self.house.capture("--passes", "1")
        self.assertLessEqual(set(before), {p.name for p in elsewhere.iterdir()})

    @unittest.skipIf(PATIENCE > 1, "an instrumented program does not get that far in one pass")
    def test_deletes_twenty_thousand_images_beside_a_capture(self):
        folder = self.house.folder(self.urls[TICKED])
        newest = name_of(1)
        self.put(TICKED, newest)
        begin = datetime(2020, 1, 1)
        for i in range(20_000):
            (folder / f"{begin + timedelta(seconds=i):%Y%m%d_%H%M%S}0101.jpg").touch()
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 2 stored, 0 failed, 0 unchanged", run.out[-1])
        self.assertEqual(newest, self.names(TICKED)[-1])
        self.assertLessEqual(len(self.names(TICKED)), 2)  # the stored one may arrive after its folder's turn


if __name__ == "__main__":
    house.main()
