"""Which cameras deliver and which do not: reported by the built program on its output, on the desktop, by mail and
to a monitoring system."""

import json
import socket
import time

import house
from answers import fresh
from exim_server import EximServer
from health_case import CAMERAS, EVERY_PASS, HealthCase
from notification_server import NotificationServer
from program import Display
from waiting import until


class LateTest(HealthCase):
    def test_tells_once_of_a_camera_that_stopped_and_once_when_it_is_back(self):
        desktop = NotificationServer(self)
        self.write_settings()
        for camera in range(CAMERAS):
            self.store(camera, 60 if camera == 3 else 1)
        self.stop(3)
        program = self.house.start("--capture", env=desktop.environment())
        self.wait_for(program, "Camera 0:3")
        [late] = until(desktop.notices, 20, "the notice")
        self.assertIn("Camera 0:3", late)
        self.assertIn("is late", late)
        self.expect_status(program, 3, True)
        self.server.answer(self.paths[3], fresh(20_000))
        until(lambda: len(desktop.notices()) == 2, 90, program.report)
        self.assertIn("is back", desktop.notices()[1])
        self.expect_status(program, 3, False)
        self.end(program)

    def expect_status(self, program, camera, late):
        code, status = self.status()
        self.assertTrue(status["running"], program.report())
        found = {c["row"]: (c["late"], c["since"] is not None) for c in status["cameras"]}
        self.assertEqual({c: (late and c == camera,) * 2 for c in range(CAMERAS)}, found)
        self.assertIn("full_in_days", status)
        self.assertEqual(1 if late else 0, code)

    def test_mails_once_of_ten_cameras_that_fail_together(self):
        server = EximServer(self)
        mail = {"Server": f"127.0.0.1:{server.port}", "To": "guard@example.org"}
        back = self.add_camera_that_was_late()
        self.write_settings(Mail=mail, Health={"Mail": "1"}, Groupe1={f"{key}0": value for key, value in EVERY_PASS.items()})
        for camera in range(CAMERAS):
            self.store(camera, 60)
        self.stop(*range(CAMERAS))
        program = self.house.start("--capture")
        self.wait_for(program, "10 cameras are late")
        [letter] = until(server.mails, 60, lambda: f"the mail ({server.log()}{program.report()})")
        for camera in range(CAMERAS):
            self.assertIn(f"0:{camera} ", letter.get_content())
        self.assertIn(f"Camera 1:0 {back} is back", letter.get_content())
        self.end(program)

    def add_camera_that_was_late(self):
        """An eleventh, in group 1, which delivers again; its address as it is shown."""
        path = "/back.jpg"
        self.server.answer(path, fresh(20_000))
        self.urls.append(self.server.url(path))
        hour_ago = int(time.time()) - 3600
        late = {"folder": str(self.house.folder(self.urls[-1])), "newest": hour_ago, "lateSince": hour_ago + 900}
        book = {"version": 1, "cameras": [{}] * CAMERAS + [late]}
        (self.house.root / "Velmora.health").write_text(json.dumps(book))
        return self.urls[-1].removeprefix("http://")

    def test_never_calls_a_camera_late_that_is_not_to_be(self):
        self.write_settings(Health={"Never03": "1"})
        for camera in (3, 4):
            self.store(camera, 60)
        self.stop(3, 4)
        program = self.house.start("--capture")
        self.wait_for(program, "Camera 0:4")
        self.assertFalse([line for line in program.out if "0:3" in line and "late" in line])
        self.end(program)

    def test_goes_on_when_the_desktop_hangs(self):
        desktop = NotificationServer(self, hanging=True)
        self.write_settings()
        self.store(0, 60)
        self.stop(0)
        program = self.house.start("--capture", env=desktop.environment())
        self.wait_for(program, "Camera 0:0")
        passes = len(self.server.requests)
        until(lambda: len(self.server.requests) > passes, 90, program.report)
        self.end(program)

    def test_goes_on_when_the_bus_takes_nobody_in(self):
        display = Display()
        self.addCleanup(display.close)
        hanging = self.hanging_bus()
        self.write_settings()
        self.store(0, 60)
        self.stop(0)
        program = self.house.start("--capture", env=hanging)
        self.wait_for(program, "Camera 0:0")
        passes = len(self.server.requests)
        until(lambda: len(self.server.requests) > passes, 40, program.report)
        self.end(program)
        passes = len(self.server.requests)
        program = self.house.start(env=hanging | display.environment())
        until(lambda: len(self.server.requests) > passes, 40, program.report)
        self.end(program)

    def hanging_bus(self):
        """The environment of a desktop whose bus is not served: only the system accepts connections."""
        path = self.house.root / "bus"
        bus = socket.socket(socket.AF_UNIX)
        self.addCleanup(bus.close)
        bus.bind(str(path))
        bus.listen()
        return {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={path}"}

    def test_knows_again_what_it_knew_and_counts_what_is_damaged(self):
        self.write_settings()
        self.store(0, 60)
        self.stop(0)
        for damage in (None, b"no such thing", b'{"version":99}', bytes(100_000)):
            book = self.house.root / "Velmora.health"
            if damage is not None:
                book.write_bytes(damage)
            program = self.house.start("--capture")
            if damage is not None:
                self.wait_for(program, "Camera 0:0")
            self.wait_for(program, "failed 0:0")
            self.end(program)
            if damage == b'{"version":99}':
                self.assertEqual(damage, book.read_bytes())
            else:
                self.assertEqual(1, json.loads(book.read_bytes())["version"])


if __name__ == "__main__":
    house.main()
