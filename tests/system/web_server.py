"""A real web server as a set of cameras: a process of the test, with its own configuration, folder and port. What
differs between makes is in the classes derived from this one."""

import os
import shutil
import socket
import subprocess
import tempfile
from collections import namedtuple
from pathlib import Path

from waiting import until

# One line of the access log; `authorization` is "-" when none was sent.
Request = namedtuple("Request", "method path protocol status authorization")


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def is_listening(port):
    try:
        socket.create_connection(("127.0.0.1", port), 1).close()
    except OSError:
        return False
    return True


class WebServer:
    """Serves the folder `www`. user, password: what /private/ asks for. A make gives its NAME, that of its
    program, and the two functions below; its access log has lines of the form

        GET /path HTTP/1.1 200 AUTHORIZATION

    in the order of the requests."""

    NAME = ""

    def __init__(self, test, user, password):
        self.root = Path(tempfile.mkdtemp(prefix=f"velmora-{self.NAME}-"))
        self.www = self.root / "www"
        self.www.mkdir()
        test.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.write_users(user, password)
        self.port, self._process = self._started()
        test.addCleanup(self._end)

    def write_users(self, user, password):
        raise NotImplementedError

    def command(self, program, port):
        """The command line that starts the program in the foreground."""
        raise NotImplementedError

    def _started(self):
        for _ in range(5):  # another process may take the port meanwhile
            port = free_port()
            process = self._start(port)
            until(lambda: process.poll() is not None or is_listening(port), 20, self.NAME)
            if process.poll() is None:
                return port, process
        raise RuntimeError(f"{self.NAME} does not start:\n" + (self.root / "error.log").read_text())

    def _start(self, port):
        program = shutil.which(self.NAME, path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
        if program is None:
            raise RuntimeError(f"{self.NAME} is not installed")
        nowhere = {name: subprocess.DEVNULL for name in ("stdin", "stdout", "stderr")}
        return subprocess.Popen(self.command(program, port), **nowhere)

    def _end(self):
        self._process.terminate()
        self._process.wait(20)

    def requests(self):
        return [Request(*line.split(" ", 4)) for line in self.log_lines("access.log")]

    def log_lines(self, name):
        return (self.root / name).read_text(encoding="utf-8").splitlines()

    def forget_requests(self):
        os.truncate(self.root / "access.log", 0)
