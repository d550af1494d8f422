"""How the program answers its options, where it finds its folder and its settings, and what it says when it cannot
start."""

import hashlib
import json
import os
import pwd
import re
import shutil
import socket
import subprocess
import unittest
from pathlib import Path

import house
from answers import fresh, too_short
from camera_server import CameraServer
from house import VELMORA, House, camera_lists
from program import Display, Program
from waiting import until


def run_without_display(*options):
    program = Program([VELMORA, *options])
    return program.wait(20), program


def everything_in(folder):
    """Each path below a folder with its content."""
    return {p: p.read_bytes() if p.is_file() else None for p in folder.rglob("*")}


class OptionTest(unittest.TestCase):
    def expect_usage_error(self, options, *words):
        status, program = run_without_display(*options)
        self.assertEqual(2, status, program.report())
        self.assertEqual([], program.out)
        text = "\n".join(program.err)
        for word in ("velmora: ", "--help", *words):
            self.assertIn(word, text)

    def test_shows_its_help_without_a_display(self):
        for option in ("--help", "-h"):
            status, program = run_without_display(option)
            self.assertEqual((0, []), (status, program.err))
            text = "\n".join(program.out)
            for word in ("--program-folder", "--capture", "--passes", "--version"):
                self.assertIn(word, text)

    def test_shows_its_version_without_a_display(self):
        for option in ("--version", "-v"):
            status, program = run_without_display(option)
            self.assertEqual((0, []), (status, program.err))
            self.assertRegex("\n".join(program.out), r"^Velmora \d+\.\d+\.\d+$")

    def test_refuses_an_unknown_option(self):
        self.expect_usage_error(["--fast"], "fast")
        self.expect_usage_error(["--capture", "-z"], "z")

    def test_refuses_an_argument_that_is_no_option(self):
        self.expect_usage_error(["Velmora.ini"], "Velmora.ini")

    def test_refuses_a_number_of_passes_that_is_none(self):
        for passes in ("0", "-1", "abc", "", "1.5", "99999999999"):
            self.expect_usage_error(["--capture", "--passes", passes], "--passes")

    def test_refuses_passes_with_windows(self):
        self.expect_usage_error(["--passes", "1"], "--capture")

    def test_refuses_an_empty_program_folder(self):
        self.expect_usage_error(["--program-folder", "", "--capture"], "--program-folder")


class StartTest(unittest.TestCase):
    def setUp(self):
        self.server = CameraServer(self, {"/camera.jpg": fresh(20_000)})
        self.url = self.server.url("/camera.jpg")
        self.house = House(self)
        self.sections = ({"Control": {"StRep": "C:\\in\\", "Tempo": "60"}}, camera_lists([self.url]))

    def expect_refused_start(self, program, *words):
        self.assertEqual(1, program.wait(20), program.report())
        self.assertEqual([], program.out)
        self.assertEqual(1, len(program.err), program.report())
        for word in ("velmora: ", *words):
            self.assertIn(word, program.err[0])

    def test_says_that_the_storage_folder_is_missing_and_makes_nothing(self):
        self.house.write_settings(*self.sections)
        self.house.storage.rmdir()
        before = everything_in(self.house.root)
        self.expect_refused_start(self.house.start("--capture"), "storage folder", "C:\\in\\")
        self.assertEqual(before, everything_in(self.house.root))
        self.assertEqual([], self.server.requests)

    def test_says_that_a_drive_is_missing(self):
        self.house.write_settings({"Control": {"StRep": "Q:\\cams\\"}}, camera_lists([self.url]))
        self.expect_refused_start(self.house.start("--capture"), "storage folder", "Q:\\cams\\")

    def test_says_that_there_is_no_display_and_makes_nothing(self):
        self.house.write_settings(*self.sections)
        before = everything_in(self.house.root)
        self.expect_refused_start(self.house.start(), "display", "--capture")
        self.assertEqual(before, everything_in(self.house.root))

    def test_says_that_a_display_cannot_be_opened_and_makes_nothing(self):
        self.house.write_settings(*self.sections)
        before = everything_in(self.house.root)
        for name in ("", ":", "nowhere", "127.0.0.1:4242.0"):
            self.expect_refused_start(self.house.start(env={"DISPLAY": name}), "display", "--capture")
        self.assertEqual(before, everything_in(self.house.root))

    def test_takes_its_folder_from_the_environment(self):
        self.house.write_settings(*self.sections)
        program = self.house.start_command(
            [VELMORA, "--capture", "--passes", "1"], {"VELMORA_PROGRAM_FOLDER": str(self.house.root)}
        )
        self.assertEqual(0, program.wait(20), program.report())
        self.assertEqual(1, len(self.house.images(self.url)))

    def test_keeps_its_settings_beside_a_copy_of_it_which_has_its_windows_too(self):
        self.house.write_settings(*self.sections)
        copy = shutil.copy2(VELMORA, self.house.root)
        program = self.house.start_command([copy], {"QT_QPA_PLATFORM": "offscreen"})
        until(lambda: self.house.images(self.url), 20, "an image")
        self.assertIn("libQt6Widgets", program.libraries())
        program.terminate()
        self.assertEqual(0, program.wait(20), program.report())

    def test_loads_no_library_of_windows_to_capture_without_any(self):
        self.house.write_settings(*self.sections)
        program = self.house.start("--capture")
        until(lambda: self.house.images(self.url), 20, "an image")
        self.assertIn("libQt6Core", program.libraries())
        self.assertEqual([], [name for name in program.libraries() if re.match("libQt6(Gui|Widgets|DBus)|libvelmora|libX", name)])
        program.terminate()
        self.assertEqual(0, program.wait(20), program.report())

    def test_takes_its_folder_from_the_option_first(self):
        self.house.write_settings(*self.sections)
        other = House(self)
        program = self.house.start("--capture", "--passes", "1", env={"VELMORA_PROGRAM_FOLDER": str(other.root)})
        self.assertEqual(0, program.wait(20), program.report())
        self.assertEqual(1, len(self.house.images(self.url)))
        self.assertEqual(0, other.image_count())

    def test_moves_the_settings_of_the_old_place_over_its_own(self):
        old = House(self)
        old.write_settings(*self.sections)
        moved = old.settings_bytes()
        self.house.write_settings({"Control": {"StRep": "C:\\elsewhere\\"}})
        program = self.house.start("--capture", "--passes", "1", env={"windir": str(old.root)})
        self.assertEqual(0, program.wait(20), program.report())
        self.assertFalse(old.settings_path.exists())
        self.assertTrue(self.house.settings_bytes().startswith(moved))
        self.assertEqual(1, len(self.house.images(self.url)))

    def test_begins_with_the_template_when_it_has_no_settings(self):
        self.house.write_settings(*self.sections)
        template = self.house.root / "Velmora0.ini"
        self.house.settings_path.rename(template)
        text = template.read_bytes()
        self.house.capture("--passes", "1")
        self.assertEqual(text, template.read_bytes())
        self.assertTrue(self.house.settings_bytes().startswith(text))
        self.assertEqual(1, len(self.house.images(self.url)))

    def test_leaves_its_settings_alone_when_there_is_a_template(self):
        self.house.write_settings(*self.sections)
        (self.house.root / "Velmora0.ini").write_bytes(b"[Control]\r\nStRep=C:\\elsewhere\r\n")
        self.house.capture("--passes", "1")
        self.assertEqual("C:\\in\\", self.house.settings()["Control"]["StRep"])

    def test_starts_on_an_empty_folder_and_idles(self):
        run = self.house.capture("--passes", "2")
        self.assertEqual([f"pass {n}: 0 stored, 0 failed, 0 unchanged" for n in (1, 2)], run.out)

    def test_names_no_image_that_the_settings_do_not_know(self):
        urls = [self.server.url(f"/camera{number}.jpg") for number in range(60)]
        for number in range(60):
            self.server.answer(f"/camera{number}.jpg", fresh(20_000))
        self.house.write_settings({"Control": {"StRep": "C:\\in\\"}}, camera_lists(urls))
        program = subprocess.Popen(
            [VELMORA, "--program-folder", self.house.root, "--capture", "--passes", "1"],
            env=self.house.environment(), stdout=subprocess.PIPE, encoding="utf-8",
        )
        self.addCleanup(program.kill)
        unknown, named = [], 0
        with program.stdout as lines:
            for line in lines:
                if line.startswith("stored "):
                    named += 1
                    camera = int(line[7]) * 10 + int(line[9])
                    unknown += [] if self.house.camera_value(camera, "LastModified") else [line]
        self.assertEqual((0, 60, []), (program.wait(20), named, unknown))

    def start_first(self, *options, env=None):
        self.house.write_settings(*self.sections)
        first = self.house.start(*options, env=env)
        until(lambda: self.house.images(self.url), 30, lambda: f"an image ({first.report()})")
        return first

    def expect_refused_beside(self, first, *options, env=None):
        second = self.house.start(*options, env=env)
        self.assertEqual(1, second.wait(20), second.report())
        self.assertEqual([], second.out)
        self.assertEqual(1, len(second.err), second.report())
        self.assertIn("already running", second.err[0])
        self.assertRegex(second.err[0], rf"process {first.process.pid}\b")

    def expect_undisturbed(self, first):
        self.assertTrue(first.runs)
        self.assertEqual(1, self.server.count("/camera.jpg"))
        first.terminate()
        self.assertEqual(0, first.wait(30), first.report())
        self.assertEqual(2, self.server.count("/camera.jpg"))
        self.assertFalse((self.house.root / "Velmora.lock").exists())

    def test_leaves_a_folder_to_the_program_that_runs_on_it(self):
        first = self.start_first("--capture")
        self.expect_refused_beside(first, "--capture")
        self.expect_refused_beside(first, "--capture", "--passes", "1")
        self.expect_undisturbed(first)

    def test_does_not_bring_up_windows_that_the_other_does_not_have(self):
        env = self.display()
        first = self.start_first("--capture")
        self.expect_refused_beside(first, env=env)
        self.expect_undisturbed(first)

    def test_writes_into_none_of_its_files_when_it_is_started_without_outputs(self):
        self.house.write_settings(*self.sections)
        closed = ["sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh"]
        first = self.house.start_command([*closed, VELMORA, "--program-folder", self.house.root, "--capture"])
        until(lambda: self.house.images(self.url), 30, lambda: f"an image ({first.report()})")
        until(lambda: self.house.camera_value(0, "LastModified"), 30, first.report)
        self.expect_refused_beside(first, "--capture")
        self.expect_undisturbed(first)

    def test_a_command_fails_without_the_standard_file_that_it_needs(self):
        """Not even an empty list is read then."""
        self.house.write_settings(*self.sections)
        for closed, options in (("<&-", ("--import-list", "-")), (">&-", ("--list",)), (">&-", ("--version",))):
            with self.subTest(options):
                command = ["sh", "-c", f'exec "$@" {closed}', "sh", VELMORA, "--program-folder", self.house.root]
                program = self.house.start_command([*command, *options])
                self.assertEqual(1, program.wait(20), program.report())
                self.assertTrue(program.err)

    def test_leaves_a_folder_to_the_windows_that_run_on_it(self):
        env = self.display()
        first = self.start_first(env=env)
        self.expect_refused_beside(first, "--capture", env=env)
        second = self.house.start(env=env)
        self.assertEqual(0, second.wait(20), second.report())
        self.assertIn(f"already running with this program folder, as process {first.process.pid}.", second.out[0])
        self.expect_undisturbed(first)

    def test_a_socket_of_the_former_name_shuts_nobody_out(self):
        key = f"{os.getuid()}:{self.house.root}".encode()
        taken = socket.socket(socket.AF_UNIX)
        self.addCleanup(taken.close)
        taken.bind("\0velmora-" + hashlib.sha1(key).hexdigest())
        taken.listen()
        self.house.write_settings(*self.sections)
        self.house.capture("--passes", "1")
        self.assertEqual(1, len(self.house.images(self.url)))

    def test_holds_across_network_name_spaces(self):
        first = self.start_first("--capture")
        command = [*self.other_network(), VELMORA, "--program-folder", self.house.root, "--capture"]
        second = self.house.start_command(command)
        self.assertEqual(1, second.wait(20), second.report())
        self.assertRegex(second.err[0], rf"process {first.process.pid}\b")
        self.expect_undisturbed(first)

    def other_network(self):
        """A command prefix for running in a network of its own; nothing where that is not allowed."""
        return self.space_of_its_own(["-n"], ["-rn"])

    def space_of_its_own(self, *ways):
        for options in ways:
            if subprocess.run(["unshare", *options, "true"], check=False, stderr=subprocess.DEVNULL).returncode == 0:
                return ["unshare", *options]
        return []

    def test_names_no_process_that_is_counted_in_another_container(self):
        options = ["--fork", "--kill-child"]
        container = self.space_of_its_own(["-p", *options], ["-rp", *options])
        if not container:
            self.skipTest("this machine makes no name space for processes")
        self.house.write_settings(*self.sections)
        first = self.house.start_command([*container, VELMORA, "--program-folder", self.house.root, "--capture"])
        until(lambda: self.house.images(self.url), 30, lambda: f"an image ({first.report()})")
        second = self.house.start("--capture")
        self.assertEqual(1, second.wait(20), second.report())
        self.assertEqual(1, len(second.err), second.report())
        self.assertIn("already running with this program folder", second.err[0])
        self.assertNotRegex(second.err[0], r"process \d")
        status = self.house.start("--status", "--json")
        status.wait(20)
        told = json.loads("\n".join(status.out))
        self.assertEqual((True, None), (told["running"], told["pid"]), status.report())
        self.assertTrue(first.runs)

    def test_drive_c_is_the_home_folder_of_the_account_when_the_environment_names_none(self):
        self.house.storage.parent.rename(self.house.root / "away")
        storage = str(Path(pwd.getpwuid(os.geteuid()).pw_dir) / "in")
        for home in ("-u HOME", "HOME=", "HOME=home"):
            with self.subTest(home):
                command = ["env", *home.split(), VELMORA, "--program-folder", self.house.root, "--get", "storage"]
                program = self.house.start_command(command)
                self.assertEqual((0, [storage]), (program.wait(20), program.out), program.report())

    def test_a_killed_run_leaves_the_folder_free(self):
        first = self.start_first("--capture")
        first.kill()
        self.assertTrue((self.house.root / "Velmora.lock").exists())
        self.house.capture("--passes", "1")
        self.assertFalse((self.house.root / "Velmora.lock").exists())

    def display(self):
        display = Display()
        self.addCleanup(display.close)
        return display.environment()

    def test_runs_beside_one_on_another_folder(self):
        other = House(self)
        for one in (self.house, other):
            one.write_settings(*self.sections)
        first = self.house.start("--capture")
        until(lambda: self.house.images(self.url), 30, first.report)
        other.capture("--passes", "1")
        self.assertEqual(1, len(other.images(self.url)))
        self.assertTrue(first.runs)


class CaptureLinesTest(unittest.TestCase):
    """What the capture without windows prints over a long time."""

    def setUp(self):
        self.server = CameraServer(self, {"/camera.jpg": too_short})
        self.house = House(self)
        self.url = self.server.url("/camera.jpg")
        self.house.write_settings({"Control": {"StRep": "C:\\in\\", "Tempo": "1"}}, camera_lists([self.url]))
        self.program = self.house.start("--capture")

    def lines(self, word):
        return [line for line in self.program.out if line.startswith(word)]

    def wait_for_line(self, word):
        until(lambda: self.lines(word), 30, self.program.report)

    def test_prints_a_failure_once_and_that_it_is_over(self):
        until(lambda: self.server.count("/camera.jpg") >= 4, 30, self.program.report)
        self.server.answers["/camera.jpg"] = fresh(20_000)
        self.wait_for_line("stored 0:0")
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())
        self.assertEqual(1, len(self.lines("failed 0:0")), self.program.report())
        self.assertLessEqual(len(self.lines("pass ")), 3, self.program.report())

    def test_prints_that_the_storage_folder_is_gone_and_back(self):
        self.wait_for_line("failed 0:0")
        away = self.house.storage.with_name("away")
        self.house.storage.rename(away)
        self.wait_for_line("The capture has stopped: the storage folder C:\\in\\ is not there")
        away.rename(self.house.storage)
        self.wait_for_line("The capture goes on")
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())


if __name__ == "__main__":
    house.main()
