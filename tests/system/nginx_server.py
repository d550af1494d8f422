"""A real web server as a set of cameras: Debian's nginx as a process of the test, with a configuration, a
folder and a port of its own."""

import os
import shutil
import socket
import subprocess
import tempfile
from collections import namedtuple
from pathlib import Path

from waiting import until

# One line of the access log; `authorization` is "-" when none was sent.
Request = namedtuple("Request", "protocol path status authorization")

CONFIGURATION = """
{user}
daemon off;
worker_processes 1;
pid {root}/nginx.pid;
error_log {root}/error.log;
events {{ worker_connections 512; }}
http {{
    log_format plain '$server_protocol $request_uri $status $http_authorization';
    access_log {root}/access.log plain;
    client_body_temp_path {root}/t1; proxy_temp_path {root}/t2; fastcgi_temp_path {root}/t3;
    uwsgi_temp_path {root}/t4; scgi_temp_path {root}/t5;
    types {{ image/jpeg jpg jpeg; image/png png; }}
    default_type application/octet-stream;
    server {{
        listen 127.0.0.1:{port};
        root {root}/www;
        location /private/ {{ auth_basic "camera"; auth_basic_user_file {root}/users; }}
        location = /moved.jpg {{ return 302 /cam/0.jpg; }}
        location = /moved-away.png {{ return 301 /snap/1; }}
    }}
}}
"""


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def is_listening(port):
    try:
        socket.create_connection(("127.0.0.1", port), 1).close()
    except OSError:
        return False
    return True


class NginxServer:
    """Serves the folder `www`. user, password: what /private/ asks for."""

    def __init__(self, test, user, password):
        self.root = Path(tempfile.mkdtemp(prefix="velmora-nginx-"))
        self.www = self.root / "www"
        self.www.mkdir()
        test.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        (self.root / "users").write_text(f"{user}:{{PLAIN}}{password}\n")
        self.port, self._process = self._started()
        test.addCleanup(self._end)

    def _started(self):
        for _ in range(5):  # another process may take the port meanwhile
            port = free_port()
            process = self._start(port)
            until(lambda: process.poll() is not None or is_listening(port), 20, "nginx")
            if process.poll() is None:
                return port, process
        raise RuntimeError("nginx does not start:\n" + (self.root / "error.log").read_text())

    def _start(self, port):
        # Its workers would otherwise change to a user who may not read the temporary folder.
        user = "user root;" if os.geteuid() == 0 else ""
        configuration = self.root / "nginx.conf"
        configuration.write_text(CONFIGURATION.format(user=user, root=self.root, port=port))
        program = shutil.which("nginx", path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
        if program is None:
            raise RuntimeError("nginx is not installed")
        command = [program, "-p", self.root, "-c", configuration, "-e", self.root / "error.log"]
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def _end(self):
        self._process.terminate()
        self._process.wait(20)

    def requests(self):
        lines = (self.root / "access.log").read_text(encoding="utf-8").splitlines()
        return [Request(*line.split(" ", 3)) for line in lines]

    def forget_requests(self):
        os.truncate(self.root / "access.log", 0)
