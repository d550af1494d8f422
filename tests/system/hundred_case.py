"""A hundred cameras on a real web server of any make, captured by the built program with and without windows: the
image tree, the settings, the log and what the server saw."""

import hashlib
import re
import time
import unittest
from pathlib import Path

import house
from house import GREEN, RED, House, camera_lists
from hundred_cameras import PASSWORD, USER, hundred_cameras, make_pictures, modified_at, path_asked, set_modified
from program import Display
from waiting import until

CHANGED = range(0, 100, 3)
TEN_MINUTES = 600


def date_text(seconds, zone=time.gmtime):
    return time.strftime("%d/%m/%Y %H:%M:%S", zone(seconds))


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


class WebCase(unittest.TestCase):
    """A server of the make given by a derived class, and a house."""

    SERVER = None

    def setUp(self):
        self.server = self.SERVER(self, USER, PASSWORD)
        self.house = House(self)
        self.control = {"Control": {"StRep": "C:\\in\\", "Debug": "1", "Tempo": "1", "TIO": "20"}}

    def expect_no_credentials(self, *texts):
        for text in texts:
            self.assertNotIn(PASSWORD, text)
            self.assertNotIn(USER + ":", text)


class HundredCase(WebCase):
    """Its tests run for each class derived from it."""

    def setUp(self):
        super().setUp()
        self.cameras = hundred_cameras(self.server.port)
        make_pictures(self.server.www, [c.file for c in self.cameras])
        for index, camera in enumerate(self.cameras):
            set_modified(self.server.www / camera.file, modified_at(index))
        self.house.write_settings(self.control, camera_lists([c.url for c in self.cameras]))
        self.began = time.time()

    def served(self, index):
        return digest(self.server.www / self.cameras[index].file)

    def possible_names(self, index, modified):
        """The hour of the download is one of those during which the test ran."""
        stem = time.strftime("%Y%m%d_%H%M%S", time.gmtime(modified))
        hours = {time.strftime("%d%H", time.localtime(t)) for t in (self.began, time.time())}
        return {(stem + hour + self.cameras[index].ending)[:23] for hour in hours}

    def expect_first_image(self, index):
        images = self.house.images(self.cameras[index].url)
        self.assertEqual(1, len(images), self.cameras[index].url)
        self.assertIn(images[0].name, self.possible_names(index, modified_at(index)))
        self.assertEqual(self.served(index), digest(images[0]))

    def expect_first_tree(self):
        folders = {p.name for p in self.house.storage.iterdir()} - {"tmp"}
        self.assertEqual({self.house.folder(c.url).name for c in self.cameras}, folders)
        for index in range(100):
            self.expect_first_image(index)
        self.assertEqual([], self.house.work_files())

    def expect_settings(self, index, modified, count, best_time):
        value = lambda word: self.house.camera_value(index, word)
        self.assertEqual(
            (str(count), GREEN, date_text(modified), best_time),
            (value("lNew"), value("SB"), value("LastModified"), value("BestTime")),
            self.cameras[index].url,
        )
        self.assertRegex(value("TimeLoad"), r"^\d{1,2}$")
        hour = time.strptime(value("LocalTime"), "%d/%m/%Y %H:%M:%S")
        self.assertTrue(self.began - 2 <= time.mktime(hour[:8] + (-1,)) <= time.time() + 1, value("LocalTime"))

    def expect_first_settings(self):
        for index in range(100):
            self.expect_settings(index, modified_at(index), 1, "00:00:00")
        self.assertEqual([], house.ill_formed_lines(self.house.settings_bytes()))

    def expect_log_in_table_order(self, passes):
        loads = re.findall(r"Chargement de .* (\d:\d)$", self.house.log(), re.M)
        every = [f"{group}:{row}" for group in range(10) for row in range(10)]
        self.assertEqual(every * passes, loads)

    def expect_requests(self):
        """Every camera is asked once, in its protocol; a password is sent only after the server has refused."""
        asked = self.server.requests()
        for camera in self.cameras:
            mine = [r for r in asked if path_asked(r) == camera.file]
            private = camera.file.startswith("private/")
            self.assertEqual(["401", "200"] if private else ["200"], [r.status for r in mine], camera.url)
            self.assertEqual({camera.protocol}, {r.protocol for r in mine}, camera.url)
            self.assertEqual("-", mine[0].authorization, camera.url)

    def test_stores_every_camera_once_without_windows(self):
        run = self.house.capture("--passes", "2")
        self.expect_first_tree()
        self.expect_first_settings()
        self.expect_requests()
        self.expect_log_in_table_order(passes=1)
        self.expect_no_credentials(self.house.log(), *run.out, *run.err)
        names = [self.house.images(c.url)[0].name for c in self.cameras]
        stored = [f"stored {i // 10}:{i % 10} {name}" for i, name in enumerate(names)]
        passes = ["pass 1: 100 stored, 0 failed, 0 unchanged", "pass 2: 0 stored, 0 failed, 0 unchanged"]
        self.assertEqual(stored + passes, run.out)
        self.assertEqual([], run.err)

    def test_stores_a_second_image_of_just_those_cameras_that_changed(self):
        self.house.capture("--passes", "1")
        self.change(CHANGED)
        run = self.house.capture("--passes", "1")
        self.assertEqual(f"pass 1: {len(CHANGED)} stored, 0 failed, {100 - len(CHANGED)} unchanged", run.out[-1])
        for index in range(100):
            if index in CHANGED:
                self.expect_second_image(index)
            else:
                self.expect_first_image(index)
                self.expect_settings(index, modified_at(index), 1, "00:00:00")
        self.expect_log_in_table_order(passes=2)

    def change(self, indices):
        fresh = {i: f"new/{i}" + Path(self.cameras[i].file).suffix for i in indices}
        make_pictures(self.server.www, list(fresh.values()))
        for index, name in fresh.items():
            target = self.server.www / self.cameras[index].file
            (self.server.www / name).replace(target)
            set_modified(target, modified_at(index) + TEN_MINUTES)

    def expect_second_image(self, index):
        images = self.house.images(self.cameras[index].url)
        self.assertEqual(2, len(images), self.cameras[index].url)
        self.assertIn(images[1].name, self.possible_names(index, modified_at(index) + TEN_MINUTES))
        self.assertEqual(self.served(index), digest(images[1]))
        self.assertNotEqual(self.served(index), digest(images[0]))
        self.expect_settings(index, modified_at(index) + TEN_MINUTES, 2, "00:10:00")

    def test_leaves_groups_alone_that_are_not_switched_on(self):
        lists = camera_lists([c.url for c in self.cameras])
        for group, state in ((2, "0"), (5, "2"), (7, "")):
            lists[f"Liste{group}"]["LstAct"] = state
        del lists["Liste9"]["LstAct"]
        self.house.write_settings(self.control, lists)
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 60 stored, 0 failed, 0 unchanged", run.out[-1])
        on = {c.file for i, c in enumerate(self.cameras) if i // 10 not in (2, 5, 7, 9)}
        self.assertEqual(on, {path_asked(r) for r in self.server.requests()})

    def test_fails_a_missing_page_and_follows_a_redirect(self):
        base = f"http://127.0.0.1:{self.server.port}"
        urls = [f"{base}/none.jpg", f"{base}/none.png", f"{base}/moved.jpg", f"{base}/moved-away.png"]
        make_pictures(self.server.www, ["snap/1", "cam/0.jpg"])
        self.house.write_settings(self.control, camera_lists(urls))
        run = self.house.capture("--passes", "1")
        self.assertEqual("pass 1: 2 stored, 2 failed, 0 unchanged", run.out[-1])
        self.assertEqual(2, sum("status 404" in line for line in run.out), run.report())
        self.assertEqual([RED, RED, GREEN, GREEN], [self.house.camera_value(i, "SB") for i in range(4)])
        stored = [digest(p) for url in urls for p in self.house.images(url)]
        self.assertEqual([digest(self.server.www / name) for name in ("cam/0.jpg", "snap/1")], stored)
        protocols = {path_asked(r): r.protocol for r in self.server.requests()}
        self.assertEqual("HTTP/1.0", protocols["moved.jpg"])
        self.assertEqual("HTTP/1.1", protocols["none.png"])

    def test_stores_every_camera_once_with_its_windows(self):
        display = Display()
        self.addCleanup(display.close)
        run = self.house.start(env=display.environment())
        until(lambda: self.house.image_count() == 100, 60, lambda: f"100 images ({run.report()})")
        self.expect_requests()
        run.terminate()
        self.assertEqual(0, run.wait(60), run.report())
        self.expect_first_tree()
        self.expect_first_settings()
        self.expect_log_in_table_order(passes=2)
        self.expect_no_credentials(self.house.log(), *run.out, *run.err)
