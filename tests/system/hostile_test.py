"""Cameras that lie, hang, drip, flood and break off, alongside good ones: the time-out bounds the pass, the good
ones are stored, and nothing of a bad one is."""

import socket
import time
import unittest

import answers
import house
from camera_server import CameraServer
from house import GREEN, RED, House, camera_lists
from waiting import PATIENCE

TIME_OUT_SECONDS = 5
SLACK_SECONDS = 5 + 2 * (PATIENCE - 1)  # for a loaded machine; successive time-outs would take half a minute

BAD = {
    "hang": answers.hang,
    "hang_behind_head": answers.hang_behind_head,
    "drip": answers.drip,
    "cut": answers.cut,
    "broken_off": answers.broken_off,
    "wrong_length": answers.wrong_length,
    "redirect_loop": answers.redirect_loop,
    "endless_header": answers.endless_header,
    "endless_header_line": answers.endless_header_line,
    "endless_body": answers.endless_body,
    "missing": answers.long_missing_page,
    "garbage": answers.garbage,
    "short": answers.too_short,
    "nothing": answers.nothing,
}
# header lines about the date -> the date part of the image's name
DATED = {
    "undated": ([], "18991230_000000"),
    "empty": (["Last-Modified:"], "18991230_000000"),
    "broken": (["Last-Modified: yesterday evening"], "18991230_000000"),
    "broken_day": (["Last-Modified: Mon, 31 Feb 2022 10:00:00 GMT"], "18991230_000000"),
    "first_day": (["Last-Modified: Thu, 01 Jan 1970 00:00:00 GMT"], "19700101_000000"),
    "future": (["Last-Modified: Wed, 31 Dec 2098 23:59:59 GMT"], "20981231_235959"),
    "far_future": (["Last-Modified: Fri, 31 Dec 9999 23:59:59 GMT"], "99991231_235959"),
}
GOOD = [f"good{i}" for i in range(10)]


class HostileTest(unittest.TestCase):
    def setUp(self):
        self.server = CameraServer(self)
        self.house = House(self)

    def start_with(self, functions, endings=(".jpg", ".png")):
        """A camera for each name and extension, so that both ways of fetching are tried."""
        for name, function in functions.items():
            for ending in endings:
                self.server.answer(f"/{name}{ending}", function)
        return [self.server.url(f"/{name}{ending}") for name in functions for ending in endings]

    def write_settings(self, urls):
        control = {"Control": {"StRep": "C:\\in\\", "Tempo": "1", "TIO": str(TIME_OUT_SECONDS), "Debug": "1"}}
        self.house.write_settings(control, camera_lists(urls))

    def refusing_url(self):
        """The address of a port that is taken, but on which nothing listens."""
        taken = socket.socket()
        self.addCleanup(taken.close)
        taken.bind(("127.0.0.1", 0))
        return f"http://127.0.0.1:{taken.getsockname()[1]}/camera.jpg"

    def test_bounds_a_pass_over_bad_cameras_and_stores_the_good(self):
        bad = [*self.start_with(BAD), self.refusing_url(), "::/%%%", "http://"]
        good = self.start_with({name: answers.fresh(30_000) for name in GOOD})
        urls = [*bad[::2], *good, *bad[1::2]]
        self.write_settings(urls)
        began = time.monotonic()
        run = self.house.capture("--passes", "1")
        self.assertLess(time.monotonic() - began, TIME_OUT_SECONDS + SLACK_SECONDS)
        self.assertEqual(f"pass 1: {len(good)} stored, {len(bad)} failed, 0 unchanged", run.out[-1], run.report())
        for index, url in enumerate(urls):
            self.expect_outcome(index, url, good=url in good)
        self.assertEqual([], self.house.work_files())
        self.expect_reasons(run, len(bad))

    def expect_outcome(self, index, url, good):
        images = self.house.images(url)
        self.assertEqual(1 if good else 0, len(images), url)
        self.assertTrue(all(answers.is_whole(image.read_bytes()) for image in images), url)
        self.assertEqual(GREEN if good else RED, self.house.camera_value(index, "SB"), url)
        self.assertIsNotNone(self.house.camera_value(index, "TimeLoad"), url)
        for word in ("LastModified", "LocalTime", "lNew", "BestTime"):
            self.assertEqual(good, self.house.camera_value(index, word) is not None, f"{word} of {url}")

    def expect_reasons(self, run, count):
        failed = [line.split(" ", 2) for line in run.out if line.startswith("failed ")]
        self.assertEqual(count, len(failed))
        self.assertEqual([], [line for line in failed if len(line) < 3 or len(line[2]) < 8])

    def test_goes_on_with_a_camera_that_recovers(self):
        [url] = self.start_with({"camera": answers.cut}, endings=(".jpg",))
        self.write_settings([url])
        self.house.capture("--passes", "1")
        self.server.answer("/camera.jpg", answers.fresh(20_000))
        self.house.capture("--passes", "1")
        self.assertEqual(1, len(self.house.images(url)))
        self.assertEqual((GREEN, "1"), (self.house.camera_value(0, "SB"), self.house.camera_value(0, "lNew")))

    def test_takes_any_date_that_a_camera_may_send(self):
        urls = self.start_with({name: answers.dated(*lines) for name, (lines, _) in DATED.items()})
        self.write_settings(urls)
        self.house.capture("--passes", "1")
        stamps = {self.house.images(url)[0].name[:15] for url in urls}
        for name, (_, stamp) in DATED.items():
            for ending in (".jpg", ".png"):
                images = self.house.images(self.server.url(f"/{name}{ending}"))
                self.assertEqual([stamp], [image.name[:15] for image in images], name)
        self.assertEqual({stamp for _, stamp in DATED.values()}, stamps)
        self.expect_nothing_new_on_the_second_start([url for url in urls if "/broken" not in url])

    def expect_nothing_new_on_the_second_start(self, urls):
        """Except for dates that are not valid: such an image is new each time, and its name changes with the
        hour."""
        before = {url: self.house.images(url) for url in urls}
        self.house.capture("--passes", "1")
        self.assertEqual(before, {url: self.house.images(url) for url in urls})

    def test_ends_within_two_time_outs_while_cameras_hang(self):
        """A signal during a pass over dead cameras waits for their common time-out, and once more for that of the
        last pass."""
        urls = self.start_with({"hang": answers.hang, "drip": answers.drip}, endings=(".jpg",))
        self.write_settings(urls)
        run = self.house.start("--capture")
        self.assertFalse(run.ends_within(1))
        run.terminate()
        self.assertEqual(0, run.wait(2 * TIME_OUT_SECONDS + SLACK_SECONDS), run.report())
        self.assertEqual([], self.house.work_files())


if __name__ == "__main__":
    house.main()
