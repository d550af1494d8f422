"""The program installed from its Debian package into a clean system: it captures there for an ordinary user, with
and without windows, and is removed again with everything but that user's data."""

import unittest

import house
from answers import fresh, is_whole
from browser_window import QUIT_KEY, TITLE
from camera_server import CameraServer
from clean_root import HOME, CleanRoot
from debian_package import BUILD, DebianPackage, output
from desktop import Desktop
from house import GREEN, TIME_ZONE, House, camera_lists, encode_folder_name, parse_settings, settings_text
from pictures import plain
from waiting import until

DATA = ".local/share/velmora"
IMAGE_BYTES = 20_000
PROGRAM = "/usr/bin/velmora"
LIBRARIES = ("usr/lib/velmora/parts/libvelmora-windows.so", "usr/lib/velmora/parts/libvelmora-greys.so")
CLASS = '"velmora", "Velmora"'


def setUpModule():
    global PACKAGE, ROOT, CLEAN
    PACKAGE = DebianPackage(unittest.addModuleCleanup)
    ROOT = CleanRoot(unittest.addModuleCleanup, PACKAGE.field("Depends"))
    CLEAN = ROOT.state()


def without_home(state):
    return {path: told for path, told in state.items() if not path.startswith(HOME)}


class InstalledTest(unittest.TestCase):
    def setUp(self):
        ROOT.empty_home()
        ROOT.dpkg("--install", PACKAGE.path)
        self.addCleanup(ROOT.dpkg, "--purge", "velmora")
        self.server = CameraServer(self, {"/camera.jpg": fresh(IMAGE_BYTES)})
        self.url = self.server.url("/camera.jpg")
        self.installed = ROOT.state()

    def environment(self):
        return {"TZ": TIME_ZONE}

    def write_settings(self, folder=DATA, choices=None):
        """Those of the user, who has the folder C:\\in. choices: the sections of a camera's choices."""
        sections = {"Control": {"Tempo": "60"}} | (choices or {})
        ROOT.write(f"{folder}/Velmora.ini", settings_text(sections, camera_lists([self.url])))
        ROOT.make_folder("in")

    def images(self):
        folder = ROOT.home / "in" / encode_folder_name(self.url)
        return sorted(folder.iterdir()) if folder.is_dir() else []

    def settings(self, folder=DATA):
        return parse_settings((ROOT.home / folder / "Velmora.ini").read_bytes().decode("cp1252"))

    def run_program(self, *options, **how):
        program = ROOT.start(self, PROGRAM, *options, env=self.environment() | how.pop("env", {}), **how)
        return program.wait(60), program

    def capture(self, **how):
        status, program = self.run_program("--capture", "--passes", "1", **how)
        self.assertEqual((0, []), (status, program.err), program.report())
        return program

    def expect_nothing_changed_outside_the_home(self):
        self.assertEqual(without_home(self.installed), without_home(ROOT.state()))

    def expect_one_image(self, folder=DATA):
        [image] = self.images()
        self.assertTrue(is_whole(image.read_bytes()))
        self.assertEqual(GREEN, self.settings(folder)["Groupe0"]["SB0"])

    def test_the_user_of_these_tests_is_an_ordinary_one(self):
        self.assertNotEqual("0", ROOT.run(self, "/usr/bin/id", "-u").out[0])

    def test_is_known_as_installed_with_every_dependency_met(self):
        self.assertIn("Status: install ok installed", ROOT.dpkg("--status", "velmora"))
        self.assertEqual("", ROOT.dpkg("--verify", "velmora"))

    def test_finds_all_its_libraries(self):
        # Does what ldd does, which requires more than every way of running a program here can provide.
        for own in ("", *(f"/{library}" for library in LIBRARIES)):
            found = ROOT.run(self, "/usr/bin/env", "LD_TRACE_LOADED_OBJECTS=1", f"LD_PRELOAD={own}", PROGRAM)
            self.assertGreater(len(found.out), 10, found.report())
            self.assertIn(own, "\n".join(found.out))
            self.assertEqual([], [line for line in found.out if "not found" in line])

    def test_captures_without_the_library_of_its_windows_and_says_that_it_is_missing(self):
        (ROOT.path / LIBRARIES[0]).unlink()
        self.write_settings()
        status, program = self.run_program("-platform", "offscreen")
        self.assertEqual((1, []), (status, program.out), program.report())
        self.assertRegex(program.err[0], "^velmora: the library of the windows cannot be loaded: .*libvelmora-windows.so.* --capture ")
        self.capture()
        self.expect_one_image()

    def test_says_that_the_library_is_missing_by_which_pictures_are_compared(self):
        (ROOT.path / LIBRARIES[1]).unlink()
        picture = plain((200, 40, 20))

        def answer(connection):
            connection.head("200 OK", f"Content-Length: {len(picture)}")
            connection.send(picture)

        self.server.answers["/camera.jpg"] = answer
        self.write_settings(choices={"Camera00": {"Keep": "clearly:5"}})
        status, program = self.run_program("--capture", "--passes", "1")
        self.assertEqual(0, status, program.report())
        [told] = program.err
        self.assertRegex(told, "Pictures other than JPEG are not compared by what they show: .*libvelmora-greys.so")
        self.assertEqual(1, len(self.images()))

    def test_shows_its_help_and_its_version(self):
        for option, first in (("--help", "Usage: velmora [options]"), ("--version", "Velmora ")):
            status, program = self.run_program(option)
            self.assertEqual((0, []), (status, program.err))
            self.assertTrue(program.out[0].startswith(first), program.report())
        self.expect_nothing_changed_outside_the_home()
        self.assertEqual([], list(ROOT.home.rglob("*")))

    def test_captures_with_settings_in_the_users_home(self):
        self.write_settings()
        program = self.capture()
        self.assertEqual("pass 1: 1 stored, 0 failed, 0 unchanged", program.out[-1])
        self.expect_one_image()
        self.expect_nothing_changed_outside_the_home()

    def test_keeps_settings_where_the_user_keeps_all_data(self):
        self.write_settings("data/velmora")
        self.capture(env={"XDG_DATA_HOME": f"/{HOME}/data"})
        self.expect_one_image("data/velmora")
        self.assertFalse((ROOT.home / ".local").exists())

    def test_takes_no_notice_of_a_data_folder_that_is_not_absolute(self):
        self.write_settings()
        self.capture(env={"XDG_DATA_HOME": "data"})
        self.expect_one_image()

    def test_makes_its_folder_at_the_first_start_for_the_user_alone(self):
        status, program = self.run_program("--capture")
        self.assertEqual(1, status, program.report())
        self.assertIn("storage folder C:\\in\\ does not exist", program.err[0])
        self.assertEqual(0o700, (ROOT.home / DATA).stat().st_mode & 0o777)
        self.expect_nothing_changed_outside_the_home()

    def test_keeps_roots_settings_in_roots_home(self):
        status, program = self.run_program("--capture", user=0)
        self.assertEqual(1, status, program.report())
        self.assertTrue((ROOT.path / "root" / DATA).is_dir())
        self.assertEqual(["usr/bin/velmora"], [p for p in ROOT.state() if p.startswith("usr/bin/") and "elmora" in p])

    def test_captures_with_its_windows(self):
        self.write_settings()
        desktop = Desktop(self)
        program = ROOT.start(self, PROGRAM, env=self.environment() | desktop.environment())
        until(self.images, 60, lambda: f"an image ({program.report()})")
        browser = desktop.window(TITLE)
        self.expect_icon_and_class(desktop, browser)
        desktop.focus(browser)
        desktop.press(QUIT_KEY)
        self.assertEqual(0, program.wait(60), program.report())
        self.assertTrue(all(is_whole(image.read_bytes()) for image in self.images()))
        self.assertEqual(GREEN, self.settings()["Groupe0"]["SB0"])
        self.expect_nothing_changed_outside_the_home()

    def expect_icon_and_class(self, desktop, window):
        """A desktop finds the entry of a window by its class, which names it."""
        told = output("xprop", "-id", window, "WM_CLASS", "_NET_WM_ICON", env=desktop.environment())
        self.assertIn(f"WM_CLASS(STRING) = {CLASS}\n", told)
        for size in (16, 24, 32, 48, 128):
            self.assertIn(f"Icon ({size} x {size}):", told)
        entry = (ROOT.path / "usr/share/applications/velmora.desktop").read_text(encoding="utf-8")
        self.assertIn("StartupWMClass=Velmora\n", entry)

    def test_leaves_nothing_but_the_users_data_when_it_is_removed(self):
        for word in ("--remove", "--purge"):
            with self.subTest(word):
                ROOT.dpkg("--install", PACKAGE.path)
                ROOT.empty_home()
                self.write_settings()
                self.capture()
                data = {p: p.read_bytes() for p in ROOT.home.rglob("*") if p.is_file()}
                ROOT.dpkg(word, "velmora")
                self.assertEqual(without_home(CLEAN), without_home(ROOT.state()))
                self.assertEqual(data, {p: p.read_bytes() for p in ROOT.home.rglob("*") if p.is_file()})
                self.assertEqual(1, len(self.images()))

    def test_goes_on_with_the_users_data_when_it_is_installed_anew(self):
        self.write_settings()
        self.capture()
        ROOT.dpkg("--purge", "velmora")
        ROOT.dpkg("--install", PACKAGE.path)
        self.capture()
        self.assertEqual("2", self.settings()["Groupe0"]["lNew0"])


class PrefixTest(unittest.TestCase):
    """Installed by cmake under a prefix that is in no list of folders and is writable for its user."""

    def test_keeps_its_settings_in_the_users_home(self):
        home = House(self)
        prefix = home.root / "opt"
        output("cmake", "--install", BUILD, "--prefix", prefix)
        before = sorted(prefix.rglob("*"))
        program = home.start_command([prefix / "bin" / "velmora", "--capture", "--passes", "1"])
        self.assertEqual(1, program.wait(60), program.report())  # there is no storage folder yet
        self.assertTrue((home.root / DATA).is_dir())
        self.assertEqual(before, sorted(prefix.rglob("*")))


if __name__ == "__main__":
    house.main()
