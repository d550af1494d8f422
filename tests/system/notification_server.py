"""A desktop of the test's own: a message bus, and on it the service that shows notices."""

import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from waiting import until

PYTHON = "/usr/bin/python3"  # the interpreter that the distribution's binding of the bus is made for

SERVICE = """
import sys
import dbus, dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

class Notices(dbus.service.Object):
    @dbus.service.method("org.freedesktop.Notifications", in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, name, replaced, icon, summary, body, actions, hints, timeout):
        with open(sys.argv[1], "a", encoding="utf-8") as out:
            out.write(f"{summary}: {body}\\n")
        return 1

DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
held = dbus.service.BusName("org.freedesktop.Notifications", bus)
notices = Notices(bus, "/org/freedesktop/Notifications")
open(sys.argv[1], "a").close()
GLib.MainLoop().run()
"""


class NotificationServer:
    """hanging: the service exists but never answers."""

    def __init__(self, test, hanging=False):
        self._root = Path(tempfile.mkdtemp(prefix="velmora-bus-"))
        test.addCleanup(shutil.rmtree, self._root, ignore_errors=True)
        self._notices = self._root / "notices"
        command = ["dbus-daemon", "--session", "--nofork", "--print-address=1", f"--address=unix:dir={self._root}"]
        self._bus = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        test.addCleanup(self._end, self._bus)
        self.address = self._bus.stdout.readline().strip()
        environment = os.environ | self.environment()
        self._service = subprocess.Popen([PYTHON, "-c", SERVICE, self._notices], env=environment)
        test.addCleanup(self._end, self._service)
        until(self._notices.exists, 20, "the notification service")
        if hanging:
            self._service.send_signal(19)

    @staticmethod
    def _end(process):
        process.kill()
        process.wait(10)
        if process.stdout:
            process.stdout.close()

    def environment(self):
        return {"DBUS_SESSION_BUS_ADDRESS": self.address}

    def notices(self):
        return self._notices.read_text(encoding="utf-8").splitlines()
