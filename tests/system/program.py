"""The programs under test as separate processes, and a display for their windows. Each is ended by its own
handle."""

import os
import re
import signal
import subprocess
import threading
from pathlib import Path

from waiting import PATIENCE, until

DISPLAY_KEYS = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")


def bare_environment():
    """The environment without anything that would give the program a display, a session or a folder of this user."""
    kept = {k: v for k, v in os.environ.items() if k not in DISPLAY_KEYS}
    for key in ("windir", "VELMORA_PROGRAM_FOLDER", "XDG_DATA_HOME", "SESSION_MANAGER"):
        kept.pop(key, None)
    return kept


class Program:
    """A running process whose lines on both outputs are collected as they arrive."""

    def __init__(self, command, env=None):
        self.process = subprocess.Popen(
            [str(word) for word in command],
            env=bare_environment() if env is None else env,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            encoding="utf-8",
            errors="replace",
        )
        self.out, self.err = [], []
        self._readers = [
            threading.Thread(target=self._gather, args=pair, daemon=True)
            for pair in ((self.process.stdout, self.out), (self.process.stderr, self.err))
        ]
        for reader in self._readers:
            reader.start()

    @staticmethod
    def _gather(stream, lines):
        with stream:
            for line in stream:
                lines.append(line.rstrip("\n"))

    @property
    def runs(self):
        return self.process.poll() is None

    def libraries(self):
        """The names of those that it has loaded, without their versions."""
        maps = Path(f"/proc/{self.process.pid}/maps").read_text(encoding="utf-8", errors="replace")
        return sorted({found.group(1) for found in re.finditer(r"/([^/\n]+?)\.so\b", maps)})

    def terminate(self):
        self.process.send_signal(signal.SIGTERM)

    def interrupt(self):
        self.process.send_signal(signal.SIGINT)

    def hang_up(self):
        self.process.send_signal(signal.SIGHUP)

    def kill(self):
        if self.runs:
            self.process.kill()
        return self.wait(10)

    def end(self):
        """Ends a test's helper, with everything it started."""
        if self.runs:
            self.terminate()
        if not self.ends_within(5):
            self.kill()

    def ends_within(self, seconds):
        """True when it ends on its own in that time; otherwise it keeps running."""
        try:
            self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            return False
        return True

    def wait(self, seconds):
        """The exit status; a process that does not end is killed and fails the test."""
        seconds *= PATIENCE
        try:
            status = self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise AssertionError(f"the program still ran after {seconds} s\n{self.report()}") from None
        for reader in self._readers:
            reader.join(10)
        return status

    def report(self):
        return "\n".join(["--- output", *self.out[-40:], "--- errors", *self.err[-40:]])


def session_bus(test, environment):
    """What leads to a bus of the test's own; what it starts ends with it."""
    bus = Program(["dbus-daemon", "--session", "--nofork", "--print-address"], environment)
    test.addCleanup(bus.end)
    [address, *_] = until(lambda: bus.out, 10, bus.report)
    return {"DBUS_SESSION_BUS_ADDRESS": address}


class Display:
    """An X server without a screen, with a number that it chooses itself."""

    def __init__(self, size="1280x1024x24", options=()):
        read_end, write_end = os.pipe()
        self._process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", size, "-nolisten", "tcp", "-noreset", *options],
            pass_fds=[write_end],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            self.name = ":" + numbers.readline().strip()
        if self.name == ":":
            self._process.wait()
            raise RuntimeError("Xvfb does not start")

    def environment(self):
        return {"DISPLAY": self.name, "QT_QPA_PLATFORM": "xcb"}

    def close(self):
        self._process.terminate()
        self._process.wait(10)
