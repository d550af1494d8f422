"""The program's windows under three window managers: which is above which, which has the keyboard focus, and where
a window reappears."""

import shutil
import time
import unittest

import house
from answers import fresh, hang
from browser_window import FILM, FILM_KEY, MAIN, MAIN_WIDTH, QUESTION, QUIT_KEY, SETUP_KEY, TITLE
from camera_server import CameraServer
from desktop import MANAGERS, Desktop
from house import House, camera_lists
from pictures import colour_of, plain
from program import Program
from waiting import until

TWIPS = 15  # a pixel
SPLASH_WIDTH = 400  # at most; the main window of the same title is wider
TICKS_SECONDS = 2.3  # two ticks of the timer that keeps the film in front
AT_ONCE_SECONDS = 5  # of a time-out of sixty
BUTTON_SECONDS = 0.2  # a button pressed by its key stays down for half of that, and takes no key meanwhile
OTHER_PROGRAM = "Event Tester"


class WindowCase(unittest.TestCase):
    def begin(self, manager, size="1280x1024", control=None):
        self.desktop = Desktop(self, size, manager)
        self.server = CameraServer(self, {"/a.jpg": fresh(20_000)})
        self.house = House(self)
        self.url = self.server.url("/a.jpg")
        own = {"StRep": "C:\\in\\", "Tempo": "60", "TIO": "60", "Vitesse": "1000"} | (control or {})
        self.house.write_settings({"Control": own}, camera_lists([self.url]))
        folder = self.house.folder(self.url)
        folder.mkdir()
        for number in range(3):
            (folder / f"20240102_10000{number}0203.png").write_bytes(plain(colour_of(number)))

    def start(self, env=None):
        """The browser's window once it has its frame."""
        self.program = self.house.start(env=self.desktop.environment() | (env or {}))
        browser = self.desktop.window(TITLE)
        if self.desktop.manager:
            until(lambda: self.desktop.frame(browser).top > 0, 10, "the frame")
        return browser

    def wait_for_image(self):
        until(lambda: self.house.camera_value(0, "lNew") == "1", 30, self.program.report)

    def splash(self):
        places = {window: self.desktop.place(window) for window in self.desktop.windows(MAIN)}
        return next((window for window, place in places.items() if place and place.width <= SPLASH_WIDTH), None)

    def expect_above(self, upper, lower, what):
        order = lambda: [window for window in self.desktop.stacking() if window in (upper, lower)]
        until(lambda: order() == [lower, upper], 5, lambda: f"{what} ({order()}, not {[lower, upper]})")

    def wait_for_keyboard(self, window, what):
        until(lambda: self.desktop.active() == window, 10, lambda: f"{what} ({self.desktop.active()}, not {window})")

    def give_keyboard(self, window, what):
        """Asks the window manager only where necessary: keys pressed while it obeys go nowhere, and when a window
        gets the keyboard focus cannot be seen from outside."""
        if self.desktop.active() != window:
            self.desktop.activate(window)
        self.wait_for_keyboard(window, what)

    def is_hidden(self, window):
        return "_NET_WM_STATE_HIDDEN" in self.desktop.property("_NET_WM_STATE", window)

    def minimise(self, window):
        """Done once the window manager has passed the keyboard focus on."""
        self.desktop.minimise(window)
        until(lambda: self.is_hidden(window), 30, "the minimised window")
        until(lambda: self.desktop.active() not in (None, window), 10, "another window with the keyboard")

    def corner(self, window):
        """Of the window's frame."""
        place, frame = self.desktop.place(window), self.desktop.frame(window)
        return place.x - frame.left, place.y - frame.top

    def expect_on_screen(self, window, size):
        width, height = (int(number) for number in size.split("x"))
        frame, place, (left, top) = self.desktop.frame(window), self.desktop.place(window), self.corner(window)
        self.assertGreater(frame.top, 0)
        self.assertGreaterEqual((left, top), (0, 0))
        self.assertLessEqual(left + frame.left + place.width + frame.right, width)
        self.assertLessEqual(top + frame.top + place.height + frame.bottom, height)

    def control(self, key):
        return int(self.house.settings()["Control"][key])


class StackingTest(WindowCase):
    """One story for each window manager."""

    def tell(self, manager):
        self.begin(manager)
        browser, splash = self.start(), until(self.splash, 5, "the start box")
        self.expect_above(splash, browser, "the start box above the images")
        self.wait_for_keyboard(browser, "the images with the keyboard")
        self.wait_for_image()
        self.desktop.press(FILM_KEY)
        film = self.desktop.window(FILM)
        self.expect_above(film, browser, "the film above the images")
        self.give_keyboard(browser, "the images with the keyboard")
        self.expect_above(film, browser, "the film above the images that came up")
        self.desktop.press("Delete")
        question = self.desktop.window(QUESTION)
        other = self.another_program()
        until(lambda: splash not in self.desktop.stacking(), 10, "the end of the start box")
        self.give_keyboard(other, "the other program with the keyboard")
        self.expect_above(other, film, "the other program above the film")
        self.expect_no_change_of_order()
        self.expect_above(question, film, "the question above the film")
        self.give_keyboard(question, "the question with the keyboard")
        self.expect_keys_answer_the_question(browser, question)
        self.expect_setup_when_minimised(browser)
        self.expect_a_key_ends_the_last_pass()

    def expect_keys_answer_the_question(self, browser, question):
        """After a second start, which brings back the window over which it was asked."""
        self.minimise(browser)
        second = self.house.start(env=self.desktop.environment())
        self.assertEqual(0, second.wait(30), second.report())
        until(lambda: not self.is_hidden(question), 10, "the question on the screen again")
        self.wait_for_keyboard(question, "the question with the keyboard again")

        def is_answered():
            self.desktop.press("Escape")
            return not self.desktop.windows(QUESTION)

        until(is_answered, 10, "the answer")

    def expect_no_change_of_order(self):
        order, end = self.desktop.stacking(), time.monotonic() + TICKS_SECONDS

        def kept_to_the_end():
            self.assertEqual(order, self.desktop.stacking())
            return time.monotonic() > end

        until(kept_to_the_end, 30, "the ticks")

    def another_program(self):
        tester = Program(["xev"], self.desktop.environment() | {"PATH": "/usr/bin:/bin"})
        self.addCleanup(tester.end)
        return self.desktop.window(OTHER_PROGRAM)

    def expect_setup_when_minimised(self, browser):
        self.give_keyboard(browser, "the images with the keyboard")
        self.desktop.press(SETUP_KEY)
        button_is_up = time.monotonic() + BUTTON_SECONDS
        main = self.desktop.window(MAIN, MAIN_WIDTH)
        self.wait_for_keyboard(main, "the main window with the keyboard")
        self.minimise(main)
        self.give_keyboard(browser, "the images with the keyboard")
        until(lambda: time.monotonic() > button_is_up, 10, "the button up again")
        self.desktop.press(SETUP_KEY)
        opened = lambda: main in self.desktop.windows(MAIN) and not self.is_hidden(main)
        until(opened, 10, "the main window opened again")
        self.wait_for_keyboard(main, "the main window, no longer minimised, with the keyboard")
        self.desktop.press("alt+k")
        self.wait_for_keyboard(browser, "the images with the keyboard")

    def expect_a_key_ends_the_last_pass(self):
        self.server.answer("/a.jpg", hang)
        asked = self.server.count("/a.jpg")
        self.desktop.press(QUIT_KEY)
        until(lambda: self.server.count("/a.jpg") > asked, 20, "the last pass")
        closing = self.desktop.window(MAIN)
        self.wait_for_keyboard(closing, "the closing box with the keyboard")
        self.assertTrue(self.program.runs)
        self.desktop.press("x")
        self.assertTrue(self.program.ends_within(AT_ONCE_SECONDS), self.program.report())

    def test_under_openbox(self):
        self.tell("openbox")

    def test_under_metacity(self):
        self.tell("metacity")

    def test_under_xfwm4(self):
        self.tell("xfwm4")


class KeyboardTest(WindowCase):
    """A window of the program asks for the keyboard focus, and does not get it."""

    def test_keys_reach_the_images_after_a_minimised_window_asked_for_them(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                main, browser = self.begin_with_both_windows(manager)
                self.minimise(main)
                self.expect_film_by_key(main, browser)
                self.doCleanups()

    def test_keys_reach_the_images_after_a_window_beside_them_asked_for_them(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.expect_film_by_key(*self.begin_with_both_windows(manager))
                self.doCleanups()

    def test_keys_answer_a_question_after_the_window_manager_has_ended(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.begin(manager)
                browser = self.start()
                self.wait_for_image()
                self.give_keyboard(browser, "the images with the keyboard")
                self.desktop.end_manager()
                self.desktop.focus(browser)
                self.desktop.press("Delete")
                self.desktop.wait_for_program(self.desktop.window(QUESTION))
                self.desktop.press("Escape")
                until(lambda: not self.desktop.windows(QUESTION), 5, "the end of the question")
                self.doCleanups()

    def begin_with_both_windows(self, manager):
        self.begin(manager)
        browser = self.start()
        self.wait_for_image()
        self.give_keyboard(browser, "the images with the keyboard")
        self.desktop.press(SETUP_KEY)
        main = self.desktop.window(MAIN, MAIN_WIDTH)
        self.wait_for_keyboard(main, "the main window with the keyboard")
        return main, browser

    def expect_film_by_key(self, asker, browser):
        self.give_keyboard(browser, "the images with the keyboard")
        self.desktop.echo_request_for_keyboard(asker)
        self.desktop.press(FILM_KEY)
        self.desktop.window(FILM)


class PlaceTest(WindowCase):
    """Where windows reappear, to the pixel."""

    def move(self, window, corner):
        """A window manager that is still placing the window may not heed the first request; nor is the window moved while
        its program has yet to put it where it is to be, within the frame."""
        self.desktop.wait_for_program(window)
        frame = self.desktop.frame(window)

        def has_moved():
            self.desktop.move(window, corner)
            return self.corner(window) != (0, 0)

        until(has_moved, 20, "the move")
        place = self.corner(window)
        until(lambda: self.corner(window) == place and self.desktop.frame(window) == frame, 5, "the frame")
        return place

    def end(self, browser):
        self.give_keyboard(browser, "the images with the keyboard")
        self.desktop.press(QUIT_KEY)
        self.assertEqual(0, self.program.wait(30), self.program.report())

    def come_back(self, manager):
        self.begin(manager)
        browser = self.start()
        until(lambda: self.corner(browser) == (0, 0), 5, lambda: f"the corner ({self.corner(browser)})")
        self.expect_on_screen(browser, "1280x1024")
        self.wait_for_image()
        place = self.move(browser, (150, 15))
        self.give_keyboard(browser, "the images with the keyboard")
        self.desktop.press(FILM_KEY)
        film = self.desktop.window(FILM)
        film_place = self.move(film, (302, 263))
        self.end(browser)
        stored = [self.control(key) for key in ("Planche.Left", "Planche.Top", "fCine.left", "fCine.Top")]
        self.assertEqual([TWIPS * number for number in (*place, *film_place)], stored)
        for _ in range(2):
            browser = self.start()
            until(lambda: self.corner(browser) == place, 5, lambda: f"{place} ({self.corner(browser)})")
            self.give_keyboard(browser, "the images with the keyboard")
            self.desktop.press(FILM_KEY)
            film = self.desktop.window(FILM)
            until(lambda: self.corner(film) == film_place, 5, lambda: f"{film_place} ({self.corner(film)})")
            self.end(browser)
            self.assertEqual(
                stored, [self.control(key) for key in ("Planche.Left", "Planche.Top", "fCine.left", "fCine.Top")]
            )

    def test_under_openbox(self):
        self.come_back("openbox")

    def test_under_metacity(self):
        self.come_back("metacity")

    def test_under_xfwm4(self):
        self.come_back("xfwm4")

    def test_a_title_bar_stays_in_reach(self):
        self.begin("openbox", control={"Planche.Top": "-3000", "Planche.Left": "-30000"})
        browser = self.start()
        until(lambda: self.corner(browser)[1] == 0, 5, lambda: f"the top ({self.corner(browser)})")
        self.assertGreater(self.corner(browser)[0] + self.desktop.place(browser).width, 50)


    def test_a_title_bar_stays_in_reach_of_a_window_that_is_made_smaller(self):
        for manager, size in (("xfwm4", "1280x720"), ("openbox", "1366x768")):
            with self.subTest(manager=manager):
                self.begin(manager, size, {"Planche.Top": "3000", "Planche.Left": "-12000"})
                browser = self.start()
                until(lambda: self.in_sight(browser) >= 100, 5, lambda: f"the bar ({self.in_sight(browser)} pixels)")
                self.doCleanups()

    def in_sight(self, window):
        """How many pixels of a frame that begins left of the screen are on it."""
        frame = self.desktop.frame(window)
        return self.corner(window)[0] + self.desktop.place(window).width + frame.left + frame.right


class FirstStartTest(WindowCase):
    """Without a storage folder the main window comes first: the user has to name one."""

    def test_the_main_window_fits_on_a_low_screen(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.begin(manager, "1024x600")
                shutil.rmtree(self.house.storage)
                self.program = self.house.start(env=self.desktop.environment())
                main = self.desktop.window(MAIN, MAIN_WIDTH)
                until(lambda: not self.splash(), 10, "the end of the start box")
                self.expect_on_screen(main, "1024x600")
                self.doCleanups()

    def test_the_main_window_is_in_front_with_the_keyboard(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.begin(manager, "1280x720")
                shutil.rmtree(self.house.storage)
                self.program = self.house.start(env=self.desktop.environment())
                main = self.desktop.window(MAIN, MAIN_WIDTH)
                self.desktop.window(TITLE)
                until(lambda: not self.splash(), 10, "the end of the start box")
                self.wait_for_keyboard(main, "the main window with the keyboard")
                until(lambda: self.desktop.stacking()[-1] == main, 5, "the main window above the others")
                self.doCleanups()

    def test_only_the_main_window_asks_for_the_keyboard(self):
        """A window manager that is still busy with a request for another window may drop this one."""
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.begin(manager)
                shutil.rmtree(self.house.storage)
                requests = self.desktop.keyboard_requests(self)
                self.program = self.house.start(env=self.desktop.environment())
                main = self.desktop.window(MAIN, MAIN_WIDTH)
                until(lambda: not self.splash(), 10, "the end of the start box")
                until(lambda: main in requests, 10, "the request for the main window")
                self.assertEqual({"listening", main}, set(requests))
                self.doCleanups()


class WithoutManagerTest(WindowCase):
    """Here only the program keeps windows in order."""

    def lowest_first(self):
        words = self.desktop.tool("search", "--onlyvisible", "--name", f"^({TITLE}|{FILM}|{MAIN})$")
        return [window for window in self.desktop.children() if window in words]

    def test_the_film_comes_back_over_the_browser(self):
        self.begin(None)
        browser = self.start()
        self.wait_for_image()
        until(lambda: not self.splash(), 10, "the end of the start box")
        self.desktop.focus(browser)
        self.desktop.press(FILM_KEY)
        film = self.desktop.window(FILM)
        self.desktop.focus(browser)
        until(lambda: self.lowest_first() == [browser, film], 5, lambda: f"the film above ({self.lowest_first()})")


class RefusedStartTest(WindowCase):
    def test_a_second_start_brings_back_the_box_that_was_minimised(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.desktop = Desktop(self, manager=manager)
                self.house = House(self)
                self.house.settings_path.symlink_to("Velmora.ini")  # to itself: cannot be read
                self.program = self.house.start(env=self.desktop.environment())
                box = self.desktop.window(MAIN)
                self.desktop.minimise(box)
                until(lambda: self.is_hidden(box), 30, "the minimised box")
                second = self.house.start(env=self.desktop.environment())
                self.assertEqual(0, second.wait(20), second.report())
                self.assertIn("comes to the front", second.out[0])
                until(lambda: not self.is_hidden(box), 5, "the box back in front")
                self.doCleanups()


class SmallScreenTest(WindowCase):
    def test_the_images_fit_on_small_screens(self):
        for manager, size in zip(MANAGERS, ("1280x720", "1366x768", "1280x720")):
            with self.subTest(manager=manager, size=size):
                self.begin(manager, size, {"Planche.Top": "330", "Planche.Left": "4485"})
                browser = self.start()
                until(lambda: self.corner(browser) == (299, 22), 5, lambda: f"its place ({self.corner(browser)})")
                self.expect_on_screen(browser, size)
                self.doCleanups()

    def test_a_window_wider_than_the_screen_keeps_its_title_bar(self):
        for manager in MANAGERS:
            with self.subTest(manager=manager):
                self.begin(manager, "1024x768")
                browser = self.start({"QT_SCALE_FACTOR": "2"})
                self.wait_for_image()
                self.give_keyboard(browser, "the images")
                self.desktop.press("ctrl+h")
                health = self.desktop.window("Health")
                title = lambda: self.desktop.frame(health).top
                until(lambda: 0 < title() <= self.desktop.place(health).y, 5, lambda: f"{self.desktop.place(health)}")
                self.doCleanups()

    def test_alarm_and_sheet_open_no_larger_than_the_screen(self):
        size = "1280x1024"
        self.begin("openbox", size)
        browser = self.start({"QT_SCALE_FACTOR": "2"})
        self.wait_for_image()
        self.give_keyboard(browser, "the images")
        self.desktop.press("alt+m")
        alarm = self.desktop.window("Alarm")
        self.expect_on_screen(alarm, size)
        self.give_keyboard(browser, "the images again")
        self.desktop.press("alt+s")
        self.wait_for_keyboard(self.desktop.window(MAIN, MAIN_WIDTH), "the main window")
        self.desktop.press("Tab", "Tab", "Tab", "F4")
        self.expect_on_screen(self.desktop.window("Camera 0:0"), size)


if __name__ == "__main__":
    house.main()
