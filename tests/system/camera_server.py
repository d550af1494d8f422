"""Cameras of the test's own on the loopback address: each path is answered by its own function, on its own thread,
so that one that hangs holds up no other."""

import itertools
import socket
import struct
import threading

REQUEST_LIMIT_SECONDS = 10
SEND_LIMIT_SECONDS = 60


class Connection:
    """One request; an answer may write to it whatever it likes."""

    def __init__(self, server, sock, path):
        self.server = server
        self.path = path
        self._sock = sock

    def send(self, data):
        self._sock.sendall(data)

    def head(self, status, *lines):
        """The status line and header lines, followed by the empty line."""
        text = "".join(f"{line}\r\n" for line in (f"HTTP/1.1 {status}", *lines, "Connection: close", ""))
        self.send(text.encode())

    def pause(self, seconds):
        """True when the server ends meanwhile."""
        return self.server.closing.wait(seconds)

    def wait_for_hang_up(self):
        """Lives on when the caller has gone."""
        self._sock.settimeout(SEND_LIMIT_SECONDS)
        while self._sock.recv(4096):
            pass

    def reset(self):
        """Resets the connection instead of closing it properly."""
        self._sock.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))


class CameraServer:
    """answers: path without query -> function of a Connection. requests: the paths asked for, in order."""

    def __init__(self, test, answers=None):
        self.answers = dict(answers or {})
        self.requests = []
        self.closing = threading.Event()
        self.serial = itertools.count(1)
        self._listener = socket.create_server(("127.0.0.1", 0), backlog=256)
        self.port = self._listener.getsockname()[1]
        self._open = set()
        threading.Thread(target=self._accept, daemon=True).start()
        test.addCleanup(self.close)

    def url(self, path):
        return f"http://127.0.0.1:{self.port}{path}"

    def answer(self, path, function):
        self.answers[path] = function

    def count(self, path):
        return self.requests.count(path)

    def close(self):
        self.closing.set()
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        for sock in list(self._open):
            try:
                sock.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass  # it has already gone

    def _accept(self):
        while True:
            try:
                sock, _ = self._listener.accept()
            except OSError:
                return  # closed
            threading.Thread(target=self._serve, args=(sock,), daemon=True).start()

    def _serve(self, sock):
        self._open.add(sock)
        try:
            with sock:
                self._answer(sock)
        except OSError:
            pass  # the caller was killed or gave up, which it may
        finally:
            self._open.discard(sock)

    def _answer(self, sock):
        sock.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        sock.settimeout(REQUEST_LIMIT_SECONDS)
        head = b""
        while b"\r\n\r\n" not in head:
            got = sock.recv(4096)
            if not got:
                return
            head += got
        path = head.split(b" ", 2)[1].decode().split("?")[0]
        self.requests.append(path)
        sock.settimeout(SEND_LIMIT_SECONDS)
        self.answers[path](Connection(self, sock, path))
