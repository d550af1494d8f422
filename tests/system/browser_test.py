"""The built program's image browser, its film and its live view, with cameras on a real web server: they follow
the capture, answer keys and the mouse, and remember their places."""

import time

import house
from browser_case import CAMERAS, BrowserCase, image_name
from browser_window import (
    CAMERA_X,
    FILE_X,
    FILM,
    FILM_KEY,
    GROUP_VIEW_KEY,
    MAIN,
    MAIN_WIDTH,
    QUESTION,
    QUIT_KEY,
    SETUP_KEY,
)
from hundred_cameras import path_asked, set_modified
from pictures import colour_of, plain
from waiting import until

TWIPS = 15  # a pixel
SECOND_OF_SCAN = 10
SOURCE_X, SOURCE_TOP, SOURCE_STEP = 300, 138, 26  # the address boxes of the main window
STORED_PICTURE, LIVE_PICTURE = (200, 520), (680, 520)
ZOOM_MIDDLE, FILM_MIDDLE = (480, 360), (330, 200)
BESIDE = 60  # pixels: away from the pointer


class CaptureTest(BrowserCase):
    def test_follows_the_camera_on_show_and_no_other(self):
        browser = self.start({"Auto": "1"})
        browser.wait_for(lambda: browser.colour(0), colour_of(0))
        self.assertEqual([0], browser.framed())
        before = self.refreshes()
        newest = self.capture(1, 0)
        browser.wait_for(lambda: browser.colour(1), newest)
        browser.wait_for(browser.framed, [1])
        self.assertEqual(colour_of(0), browser.colour(0))
        self.assertEqual(before + 1, self.refreshes())
        self.end()

    def test_follows_every_camera_of_the_group_on_show(self):
        browser = self.start({"Auto": "1", "Camera": "1"})
        first = [colour_of(10 * camera) for camera in range(CAMERAS)]
        browser.wait_for(browser.colours, first)
        before = self.refreshes()
        newest = self.capture(1)
        browser.wait_for(browser.colours, [first[0], newest, *first[2:]])
        browser.wait_for(browser.framed, [1])
        self.assertEqual(before + 1, self.refreshes())
        self.end()

    def test_stays_as_it_is_while_it_is_not_to_follow(self):
        browser = self.start()
        browser.wait_for(lambda: browser.colour(0), colour_of(0))
        before = self.refreshes() + 1
        browser.press("F5")
        browser.wait_for(self.refreshes, before)
        self.capture(1, 0)
        self.assertEqual(before, self.refreshes())
        self.end()

    def test_brings_short_names_into_form_and_captures_on(self):
        browser = self.start({"Auto": "1", "lstImg": "3"})
        night = time.mktime((2020, 5, 7, 23, 30, 0, 0, 0, -1))
        meant = [self.house.folder(self.urls[camera]) / "20200506_101112.png" for camera in (1, 5)]
        for path in meant:
            path.write_bytes(plain((9, 90, 9)))
            set_modified(path, night)
        (meant[0].parent / "20200506_1011120723.png").write_bytes(b"in the way")
        browser.click_row(CAMERA_X, 1)
        until(lambda: not meant[1].exists(), 20, "the new name")
        self.assertEqual(plain((9, 90, 9)), meant[1].with_name("20200506_1011120723.png").read_bytes())
        self.assertTrue(meant[0].exists())
        self.assertEqual(b"in the way", meant[0].with_name("20200506_1011120723.png").read_bytes())
        self.capture(1)
        self.end()


class HandsTest(BrowserCase):
    """Keys and the mouse on a camera with thirty images; the last is selected."""

    def begin(self):
        self.folder = self.store(0, 30)
        browser = self.start()
        browser.wait_for(browser.framed, [9])
        browser.wait_for(browser.colours, [colour_of(number) for number in range(20, 30)])
        return browser

    def names(self):
        return {path.name for path in self.folder.iterdir()} & {image_name(number) for number in range(30)}

    def ask_to_delete(self, *keys):
        before = self.names()
        self.browser.press(*keys, "Delete")
        self.desktop.focus(self.desktop.window(QUESTION))
        return before

    def test_deletes_the_selected_image_when_told_yes(self):
        browser = self.begin()
        before = self.ask_to_delete("Up", "Up", "Down")
        self.desktop.press("alt+y")
        until(lambda: self.names() != before, 10, "the end of the file")
        self.assertEqual({image_name(28)}, before - self.names())
        browser.wait_for(lambda: colour_of(28) in browser.colours(), False)
        self.end()

    def test_deletes_nothing_when_told_no(self):
        self.begin()
        for answer in ("alt+n", "Return", "Escape"):
            before = self.ask_to_delete("Up")
            self.desktop.press(answer)
            self.desktop.wait_until_gone(QUESTION)
            self.assertEqual(before, self.names(), answer)
        self.end()

    def test_opens_an_image_and_its_folder_with_the_desktop(self):
        browser = self.begin()
        browser.click_cell(4, times=2)
        image = str(self.folder / image_name(24))
        until(lambda: self.opener.opened() == [image], 10, lambda: f"{image}, {self.opener.opened()}")
        browser.click_row(FILE_X, 5, times=2)
        until(lambda: len(self.opener.opened()) == 2, 10, "the folder")
        self.assertEqual(str(self.folder), self.opener.opened()[1].rstrip("/"))
        self.end()

    def test_enlarges_the_image_under_the_right_button(self):
        browser = self.begin()
        browser.click_cell(2, button=3)
        browser.wait_for(lambda: {browser.colour(cell) for cell in range(4)}, {colour_of(22)})
        browser.click_cell(0)
        browser.wait_for(lambda: browser.colour(0), colour_of(20))
        self.assertEqual([9], browser.framed())
        self.end()

    def test_keeps_its_place_and_that_of_the_film(self):
        browser = self.begin()
        self.desktop.move(browser.number, (150, 20))
        browser.press(FILM_KEY)
        film = self.desktop.window(FILM)
        self.desktop.move(film, (302, 63))
        self.desktop.focus(film)
        self.desktop.press("Escape")
        self.wait_for_control("fCine.left", str(302 * TWIPS))
        self.wait_for_control("fCine.Top", str(63 * TWIPS))
        browser.press(QUIT_KEY)
        self.assertEqual(0, self.program.wait(30), self.program.report())
        self.assertEqual((str(150 * TWIPS), str(20 * TWIPS)), (self.control("Planche.Left"), self.control("Planche.Top")))
        browser = self.start_again()
        self.assertEqual((150, 20), self.desktop.place(browser.number)[:2])
        browser.press(FILM_KEY)
        self.assertEqual((302, 63), self.desktop.place(self.desktop.window(FILM))[:2])
        self.end()


class FilmTest(BrowserCase):
    def test_plays_all_images_in_turn_until_it_is_closed(self):
        self.store(0, 3)
        browser = self.start({"Vitesse": "150"})
        browser.press(FILM_KEY)
        film = self.desktop.window(FILM)
        for number in (0, 1, 2, 3 - 3, 1):
            until(lambda: self.desktop.point(film, FILM_MIDDLE) == colour_of(number), 10, lambda: f"picture {number}")
        self.desktop.focus(film)
        self.desktop.press("space")
        browser.press(FILM_KEY)
        self.desktop.wait_until_gone(FILM)
        self.assertIn("Cine Form_Unload", self.house.log())
        self.end()


class ModesTest(BrowserCase):
    def test_walks_through_the_cameras(self):
        browser = self.start({"Scan": "1", "lstImg": "4"})
        before = self.refreshes()
        self.wait_for_control("lstImg", "5", 2 * SECOND_OF_SCAN)
        self.assertGreater(self.refreshes(), before)
        browser.wait_for(lambda: browser.colour(0), colour_of(50))
        self.end()

    def test_changes_its_view_by_keys(self):
        browser = self.start()
        browser.press(GROUP_VIEW_KEY)
        self.wait_for_control("Camera", "1")
        browser.wait_for(browser.colours, [colour_of(10 * camera) for camera in range(CAMERAS)])
        browser.press(GROUP_VIEW_KEY)
        self.wait_for_control("Camera", "0")
        browser.wait_for(lambda: browser.colour(0), colour_of(0))
        self.end()

    def test_starts_with_places_that_no_list_has(self):
        values = ("10", "-1", "one", "9.7", "-32768")
        for shift in range(3):
            keys = dict(zip(("lstP", "lstImg", "Selecteur", "Auto", "Scan"), values[shift:] + values[:shift]))
            self.start(keys)
            self.assertTrue(self.program.runs, keys)
            self.assertNotIn("out of range", self.house.log(), keys)
            self.end()

    def test_says_which_number_is_too_large(self):
        self.start({"lstImg": "99999"})
        self.assertRegex(self.house.log(), "lstImg.*99999.*out of range")
        until(lambda: len(self.desktop.windows(MAIN)) == 1, 20, "the message without the splash box")
        [message] = self.desktop.windows(MAIN)
        self.desktop.focus(message)
        self.desktop.press("Return")
        self.desktop.wait_until_gone(MAIN)
        self.browser.press("F5")
        self.browser.wait_for(lambda: self.browser.colour(0), colour_of(0))
        self.end()


class LiveViewTest(BrowserCase):
    def asked(self, camera):
        return sum(path_asked(request) == f"{camera}.png" for request in self.server.requests())

    def test_fetches_the_camera_whose_row_is_clicked(self):
        self.start().press(SETUP_KEY)
        main = self.desktop.window(MAIN, MAIN_WIDTH)
        before, colour = self.asked(4), self.renew(4)
        self.desktop.focus(main)
        self.desktop.click(main, (SOURCE_X, SOURCE_TOP + 4 * SOURCE_STEP))
        target = self.house.storage / "tmp" / "Target.jpg"
        until(lambda: target.exists() and target.read_bytes() == plain(colour), 20, "the live picture's file")
        self.assertGreater(self.asked(4), before)
        until(lambda: self.desktop.point(main, LIVE_PICTURE) == colour, 10, "the live picture")
        self.assertEqual(colour_of(40), self.desktop.point(main, STORED_PICTURE))
        self.expect_enlarged(main, LIVE_PICTURE, "Target.jpg", colour)
        self.end()

    def expect_enlarged(self, window, point, title, colour):
        self.desktop.click(window, (point[0] + BESIDE, point[1]))
        zoom = self.desktop.window(title)
        until(lambda: self.desktop.point(zoom, ZOOM_MIDDLE) == colour, 10, "the enlarged picture")
        self.desktop.focus(zoom)
        self.desktop.press("Escape")
        self.desktop.wait_until_gone(title)


if __name__ == "__main__":
    house.main()
