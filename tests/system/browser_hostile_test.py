"""The image browser on folders that no one would wish for: files that are not pictures or are far too large,
folders that vanish or change while on show, half a million images. The program survives, stays small and answers
keys."""

import os
import random
import shutil
import tempfile
import threading
import time
from pathlib import Path

import house
from browser_case import CAMERAS, BrowserCase, image_name
from browser_window import FILM, FILM_KEY, GROUP_VIEW_KEY, Opener
from hostile_pictures import fill
from house import House
from pictures import colour_of, plain
from waiting import until

MEMORY_BYTES = 200 * 1024 * 1024
MANY = int(os.environ.get("VELMORA_TEST_MANY_IMAGES", "100000"))
END_SECONDS = 8  # of a program told to end while it lists a folder
ANSWER_SECONDS = 20
WITHOUT_ROOTS_RIGHTS = ["setpriv", "--bounding-set=-dac_override,-dac_read_search"]
LAST_NAME = "20991231_2359593123.png"
MAX_LINKS = 60_000  # of one file, on common file systems


def is_sanitized():
    """A sanitizer takes several times as much memory as the program itself."""
    return b"__asan_init" in Path(house.VELMORA).read_bytes()


class HostileCase(BrowserCase):
    def expect_to_answer(self):
        """A key works, and works again."""
        for _ in range(2):
            state = "0" if self.control("Camera") == "1" else "1"
            self.browser.press(GROUP_VIEW_KEY)
            self.wait_for_control("Camera", state, ANSWER_SECONDS)
        self.assertTrue(self.program.runs, self.program.report())

    def peak_bytes(self):
        lines = Path(f"/proc/{self.program.process.pid}/status").read_text(encoding="utf-8").splitlines()
        return next(int(line.split()[1]) * 1024 for line in lines if line.startswith("VmHWM"))

    def expect_small(self):
        peak = self.peak_bytes()
        print(f"{peak / 1048576:.0f} MB", end=" ", flush=True)
        self.assertTrue(is_sanitized() or peak < MEMORY_BYTES, peak)

    def end_with_failures(self):
        self.program.terminate()
        self.assertEqual(0, self.program.wait(40), self.program.report())
        self.assertEqual([], self.house.work_files())


class PicturesTest(HostileCase):
    def test_shows_what_is_none(self):
        folder = self.store(0, 0)
        count = fill(folder)
        for name, number in (("20000101_0000000100.png", 0), (LAST_NAME, 100)):
            (folder / name).write_bytes(plain(colour_of(number)))
        browser = self.start({"Vitesse": "10"})
        browser.wait_for(lambda: browser.colour(9), colour_of(100))
        browser.press("Home")
        browser.wait_for(lambda: browser.colour(0), colour_of(0))
        browser.press(*["Down"] * count)
        browser.press("Return", *["Up"] * count)  # enlarged, one after another
        browser.press("Escape", "End")
        browser.wait_for(lambda: browser.colour(9), colour_of(100), 40)
        self.expect_to_answer()
        self.play_through()
        self.expect_to_answer()
        self.expect_small()
        self.end_with_failures()

    def play_through(self):
        """Twice; only the last picture of a round can be recognised."""
        self.browser.press(FILM_KEY)
        film = self.desktop.window(FILM)
        shows = lambda number: self.desktop.point(film, (200, 200)) == colour_of(number)
        for number in (100, 0, 100):
            until(lambda: shows(number), 60, "the last picture of the film")
        self.desktop.focus(film)
        self.desktop.press("Escape")
        self.desktop.wait_until_gone(FILM)

    def test_shows_a_group_of_what_is_none(self):
        for camera in range(CAMERAS - 1):
            folder = self.store(camera, 0)
            fill(folder)
            for path in sorted(folder.iterdir())[camera * 4 + 1 :]:
                shutil.rmtree(path) if path.is_dir() and not path.is_symlink() else path.unlink()
        browser = self.start({"Camera": "1", "Auto": "1"})
        browser.wait_for(lambda: browser.colour(9), colour_of(90))
        self.expect_to_answer()
        self.expect_small()
        self.end_with_failures()


class FolderTest(HostileCase):
    def begin(self, **keys):
        self.folder = self.store(0, 12)
        browser = self.start({"Auto": "1"}, **keys)
        browser.wait_for(lambda: browser.colour(9), colour_of(11))
        return browser

    def go_about(self):
        self.browser.press("Up", "Up", "Return", "Down", "Escape", "F5", "Delete", "End")
        self.expect_to_answer()
        self.browser.press(FILM_KEY)
        self.expect_to_answer()

    def test_outlives_the_folder_on_show(self):
        self.begin()
        shutil.rmtree(self.folder)
        self.go_about()
        newest = self.renew(0)
        self.browser.wait_for(lambda: self.browser.colour(0), newest)
        self.end_with_failures()

    def test_outlives_a_folder_that_turns_into_a_file(self):
        self.begin()
        self.folder.rename(self.house.root / "away")
        self.folder.write_bytes(b"in the way")
        self.go_about()
        self.assertEqual(b"in the way", self.folder.read_bytes())
        self.end_with_failures()

    def test_outlives_a_folder_that_may_not_be_read(self):
        self.begin(command=WITHOUT_ROOTS_RIGHTS if os.geteuid() == 0 else [])
        for mode in (0o000, 0o300, 0o400):
            self.folder.chmod(mode)
            self.go_about()
        self.folder.chmod(0o700)
        self.browser.press(FILM_KEY, "F5", "End")
        self.browser.wait_for(lambda: colour_of(11) in self.browser.colours(), True)
        self.end_with_failures()

    def test_outlives_files_that_come_and_go(self):
        browser = self.begin()
        browser.press(FILM_KEY)
        self.desktop.window(FILM)
        ended = threading.Event()
        worker = threading.Thread(target=self.shuffle_files, args=(ended,))
        worker.start()
        try:
            for key in ("Up", "Down", "F5", "Home", "End", GROUP_VIEW_KEY) * 8:
                browser.press(key, "Page_Up")
        finally:
            ended.set()
            worker.join()
        self.expect_to_answer()
        self.expect_small()
        self.end_with_failures()

    def shuffle_files(self, ended):
        lot = random.Random(11)
        while not ended.is_set():
            path = self.folder / image_name(lot.randrange(40))
            try:
                path.unlink() if path.exists() else path.write_bytes(plain(colour_of(lot.randrange(200)), 400, 300))
            except FileNotFoundError:
                self.folder.mkdir(exist_ok=True)
            if lot.randrange(50) == 0:
                shutil.rmtree(self.folder, ignore_errors=True)


class ManyTest(HostileCase):
    """Images by the hundred thousand, as links to a few, in memory."""

    def setUp(self):
        super().setUp()
        fast = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        self.house = House(self, tempfile.mkdtemp(prefix="velmora-house-", dir=fast))
        self.opener = Opener(self.house)
        self.folder = self.store(0, 0)
        self.names = [self.many_name(number) for number in range(MANY)]
        self.link_all()

    @staticmethod
    def many_name(number):
        return time.strftime("%Y%m%d_%H%M%S%d%H.png", time.gmtime(1_600_000_000 + 60 * number))

    def link_all(self):
        inside = os.open(self.folder, os.O_RDONLY)
        try:
            for first in range(0, MANY, MAX_LINKS):
                source = self.names[first]
                (self.folder / source).write_bytes(plain(colour_of(1)))
                for name in self.names[first + 1 : first + MAX_LINKS]:
                    os.link(source, name, src_dir_fd=inside, dst_dir_fd=inside)
        finally:
            os.close(inside)
        for name, number in ((self.names[0], 2), (self.names[-1], 3)):
            (self.folder / name).unlink()
            (self.folder / name).write_bytes(plain(colour_of(number)))

    def test_opens_and_pages_through_them(self):
        browser = self.start()
        browser.wait_for(lambda: browser.colour(9), colour_of(3))
        browser.press("Home")
        browser.wait_for(lambda: browser.colour(0), colour_of(2))
        browser.press(*["Page_Up", "Page_Down"] * 5, *["Page_Down"] * 5, "End")
        browser.wait_for(lambda: browser.colour(9), colour_of(3))
        newest = self.folder / LAST_NAME
        newest.write_bytes(plain(colour_of(4)))
        browser.press("F5", "End")
        browser.wait_for(lambda: browser.colour(9), colour_of(4))
        self.expect_to_answer()
        self.expect_small()
        self.end()

    def test_ends_at_once_while_it_lists_them(self):
        for view in ("0", "1"):
            self.start({"Camera": view}, wait_for_pass=False)
            before = self.refreshes()
            self.browser.press("F5")
            until(lambda: self.refreshes() > before, 20, "the listing")
            began = time.monotonic()
            self.program.terminate()
            self.assertEqual(0, self.program.wait(40), self.program.report())
            self.assertLess(time.monotonic() - began, END_SECONDS)


if __name__ == "__main__":
    house.main()
