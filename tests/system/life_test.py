"""How the program starts with its windows, and how it ends: by SIGTERM or SIGINT, with a last pass over the cameras,
which a second signal gives up at once."""

import hashlib
import json
import os
import socket
import sys
import time
import unittest
from pathlib import Path

import house
from answers import fresh, hang
from browser_window import MAIN, TITLE
from camera_server import CameraServer
from desktop import Desktop
from house import GREEN, House, camera_lists
from program import Display, Program
from waiting import until

CAMERAS = 12
AT_ONCE_SECONDS = 3  # of a time-out of thirty


class LifeTest(unittest.TestCase):
    def setUp(self):
        self.paths = [f"/camera{i}.jpg" for i in range(CAMERAS)]
        self.server = CameraServer(self, {path: fresh(20_000) for path in self.paths})
        self.urls = [self.server.url(path) for path in self.paths]
        self.house = House(self)
        self.write_settings()

    def write_settings(self):
        control = {"Control": {"StRep": "C:\\in\\", "Tempo": "60", "TIO": "30"}}
        self.house.write_settings(control, camera_lists(self.urls))

    def start_and_load_all(self, env=None):
        program = self.house.start(*([] if env else ["--capture"]), env=env)
        values = lambda: [self.house.camera_value(i, "lNew") for i in range(CAMERAS)]
        until(lambda: values() == ["1"] * CAMERAS, 30, lambda: f"the first pass ({program.report()})")
        if not env:
            until(lambda: f"pass 1: {CAMERAS} stored, 0 failed, 0 unchanged" in program.out, 30, program.report)
        return program

    def display(self):
        display = Display()
        self.addCleanup(display.close)
        return display.environment()

    def expect_last_pass(self, program):
        self.assertEqual(0, program.wait(30), program.report())
        self.assertEqual([2] * CAMERAS, [self.server.count(path) for path in self.paths])
        self.assertEqual([2] * CAMERAS, [len(self.house.images(url)) for url in self.urls])
        self.assertEqual(["2"] * CAMERAS, [self.house.camera_value(i, "lNew") for i in range(CAMERAS)])
        self.assertEqual([], self.house.work_files())

    def test_starts_without_the_libraries_that_its_windows_do_not_need(self):
        """To load the picture plugins takes as long as to make the windows, to load libcurl half as long."""
        self.house.write_settings({"Control": {"StRep": "C:\\in\\", "Tempo": "60"}})
        desktop = Desktop(self)
        program = self.house.start(env=desktop.environment())
        desktop.window(TITLE)
        maps = Path(f"/proc/{program.process.pid}/maps").read_text()
        self.assertNotIn("/imageformats/", maps)
        self.assertNotIn("/libcurl", maps)
        program.terminate()
        self.assertEqual(0, program.wait(30), program.report())

    def session(self):
        """A session manager that is ended by terminate(), and where it listens."""
        manager = Program([sys.executable, "-B", Path(__file__).with_name("session_manager.py")])
        self.addCleanup(manager.kill)
        [addresses] = until(lambda: manager.out, 10, manager.report)
        return manager, {"SESSION_MANAGER": addresses}

    def test_ends_with_a_last_pass_when_the_user_logs_out(self):
        manager, session = self.session()
        program = self.start_and_load_all(self.display() | session)
        until(lambda: len(manager.out) > 1, 10, manager.report)
        manager.terminate()
        self.expect_last_pass(program)
        self.assertEqual(0, manager.wait(10), manager.report())

    def test_ends_when_the_user_logs_out_with_the_settings_open(self):
        """Closing that window only hides it, which is how the toolkit would end the program."""
        manager, session = self.session()
        self.house.storage.rmdir()
        desktop = Desktop(self)
        program = self.house.start(env=desktop.environment() | session)
        desktop.window(MAIN, at_least=300)
        manager.terminate()
        self.assertEqual(0, program.wait(30), program.report())

    def test_a_restored_session_brings_it_back_in_its_program_folder(self):
        manager, session = self.session()
        environment = self.display() | session
        program = self.start_and_load_all(environment)
        until(lambda: len(manager.out) > 1, 10, manager.report)
        program.terminate()
        self.expect_last_pass(program)
        restored = self.house.start_command(manager.out[1].split("\t"), environment)
        until(lambda: {self.house.camera_value(i, "lNew") for i in range(CAMERAS)} == {"3"}, 30, restored.report)
        restored.terminate()
        self.assertEqual(0, restored.wait(30), restored.report())

    def test_says_so_when_there_is_no_libcurl(self):
        libraries = self.house.root / "libraries"
        libraries.mkdir()
        (libraries / "libcurl.so.4").touch()
        program = self.house.start("--capture", "--passes", "1", env={"LD_LIBRARY_PATH": str(libraries)})
        self.assertEqual(0, program.wait(30), program.report())
        self.assertIn("libcurl.so.4", program.out[0])
        self.assertIn("file too short", program.out[0])
        self.assertIn(f"pass 1: 0 stored, {CAMERAS} failed, 0 unchanged", program.out)

    def test_ends_with_a_last_pass_on_sigterm(self):
        program = self.start_and_load_all()
        program.terminate()
        self.expect_last_pass(program)
        self.assertEqual(f"pass 2: {CAMERAS} stored, 0 failed, 0 unchanged", program.out[-1])

    def test_ends_with_a_last_pass_on_sigint(self):
        program = self.start_and_load_all()
        program.interrupt()
        self.expect_last_pass(program)

    def test_ends_with_a_last_pass_when_its_terminal_is_closed(self):
        program = self.start_and_load_all()
        program.hang_up()
        self.expect_last_pass(program)

    def test_ends_with_a_last_pass_behind_its_windows(self):
        program = self.start_and_load_all(self.display())
        program.terminate()
        self.expect_last_pass(program)

    def expect_given_up_at_once(self, program):
        """The cameras before the one that hangs have their last image, those after it keep their first."""
        self.server.answer(self.paths[5], hang)
        program.terminate()
        until(lambda: self.server.count(self.paths[5]) == 2, 20, "the request that hangs")
        until(lambda: self.house.camera_value(4, "lNew") == "2", 20, "the image before it")
        self.assertTrue(program.runs)
        began = time.monotonic()
        program.terminate()
        self.assertEqual(0, program.wait(20), program.report())
        self.assertLess(time.monotonic() - began, AT_ONCE_SECONDS)
        self.assertEqual(["2"] * 5 + ["1"] * 7, [self.house.camera_value(i, "lNew") for i in range(CAMERAS)])
        self.assertEqual(GREEN, self.house.camera_value(5, "SB"))
        self.assertEqual([], house.ill_formed_lines(self.house.settings_bytes()))
        self.assertEqual([], self.house.work_files())

    def test_gives_the_last_pass_up_on_a_second_signal(self):
        program = self.start_and_load_all()
        self.expect_given_up_at_once(program)
        self.assertEqual("pass 2: 5 stored, 0 failed, 0 unchanged", program.out[-1])

    def test_counts_no_camera_that_is_removed_while_it_is_loaded(self):
        removed = []
        self.server.answer(self.paths[0], lambda connection: until(lambda: removed, 20, "the removal"))
        program = self.house.start("--capture")
        until(lambda: self.server.count(self.paths[0]), 20, program.report)
        remove = [house.VELMORA, "--program-folder", self.house.root, "--remove", "0:0"]
        self.assertEqual(0, self.house.start_command(remove).wait(20))
        removed.append(True)
        until(lambda: f"pass 1: {CAMERAS - 1} stored, 0 failed, 0 unchanged" in program.out, 20, program.report)

    def test_gives_the_last_pass_up_behind_its_windows_on_a_second_signal(self):
        self.expect_given_up_at_once(self.start_and_load_all(self.display()))

    def test_lets_the_running_pass_end_before_the_last(self):
        """Cameras being fetched when the signal comes are stored, and asked once more."""
        release = []

        def wait_for_release(connection):
            until(lambda: release, 20, "the release")
            fresh(20_000)(connection)

        self.server.answer(self.paths[3], wait_for_release)
        program = self.house.start("--capture")
        until(lambda: self.server.count(self.paths[3]) == 1, 20, program.report)
        program.terminate()
        release.append(True)
        self.expect_last_pass(program)

    def test_a_second_start_is_not_promised_the_window_of_one_that_ends(self):
        env = self.display()
        program = self.start_and_load_all(env)
        self.server.answer(self.paths[5], hang)
        program.terminate()
        until(lambda: self.server.count(self.paths[5]) == 2, 20, "the last pass")
        second = self.house.start(env=env)
        self.assertEqual(1, second.wait(20), second.report())
        self.assertTrue(program.runs)
        third = self.house.start(env=env)
        program.terminate()
        self.assertEqual(0, program.wait(20), program.report())
        until(lambda: self.server.count(self.paths[0]) == 3, 20, third.report)
        third.kill()

    def test_a_storage_folder_that_is_gone_does_not_keep_it(self):
        program = self.start_and_load_all()
        self.house.storage.rename(self.house.root / "away")
        program.terminate()
        self.assertEqual(0, program.wait(30), program.report())
        self.assertFalse(self.house.storage.exists())


class CommandDuringTheStartTest(unittest.TestCase):
    """Sends a command's line the moment the program listens, while its windows are being made."""

    def setUp(self):
        self.house = House(self)

    def connected(self):
        name = hashlib.sha1(f"{os.getuid()}:desk:{os.path.realpath(self.house.root)}".encode()).hexdigest()
        caller = socket.socket(socket.AF_UNIX)
        if caller.connect_ex(f"\0velmora-desk-{name}".encode()) == 0:
            return caller
        caller.close()
        return None

    def ask(self, line):
        with until(self.connected, 20, "the program that listens") as caller:
            caller.sendall(line + b"\n")
            return json.loads(caller.recv(65536))

    def start(self, *sections):
        self.house.write_settings({"Control": {"StRep": "C:\\in\\", "Debug": "1", "Tempo": "60"}}, *sections)
        self.program = self.house.start(env={"QT_QPA_PLATFORM": "offscreen"})

    def end(self):
        until(lambda: "Ajout de" in self.house.log() or "TestSA" in self.house.log(), 20, self.program.report)
        self.program.terminate()
        self.assertEqual(0, self.program.wait(30), self.program.report())

    def test_changes_that_are_told_then_are_read_by_the_start(self):
        self.start()
        self.ask(b"changed")
        until(lambda: "Fin Init" in self.house.log(), 20, self.program.report)
        log = self.house.log()
        self.assertNotIn("Interface TestSA", log[: log.index("Fin Init")])
        self.end()

    def test_a_camera_that_was_late_before_is_late_then(self):
        server = CameraServer(self, {"/a.jpg": hang})
        url = server.url("/a.jpg")
        now = int(time.time())
        record = {"folder": str(self.house.folder(url)), "counted": True, "lateSince": now - 3600}
        self.house.root.joinpath("Velmora.health").write_text(json.dumps({"cameras": [record] + [{}] * 99, "version": 1}))
        self.start(camera_lists([url]))
        early = self.ask(b"status")
        until(lambda: "Load 0:0" in self.house.log(), 20, self.program.report)
        later = self.ask(b"status")
        self.assertEqual({"0:0": now - 3600}, later.get("late"))
        self.assertIn(early.get("late", "unknown"), ("unknown", later["late"]))
        self.program.kill()


if __name__ == "__main__":
    house.main()
