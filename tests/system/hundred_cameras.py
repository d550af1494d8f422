"""The hundred cameras that the tests with real web servers configure: ten groups, with addresses written in a
different way in each row of a group."""

import os
import subprocess
from collections import namedtuple
from pathlib import Path
from urllib.parse import unquote, urlsplit

USER, PASSWORD = "guard", "s3cret-word"

# url; file: where the server keeps the picture; ending: that of the stored name; protocol: of the request
Camera = namedtuple("Camera", "url file ending protocol")


def camera(port, group, row):
    n = group * 10 + row
    host = f"127.0.0.1:{port}"
    old, new = "HTTP/1.0", "HTTP/1.1"
    # The old protocol requests the letter's byte in Windows-1252, so that is the name on the server.
    accented = f"cam/caméra{n}.JPG".encode("cp1252").decode("utf-8", "surrogateescape")
    last = (
        Camera(f"http://{host}/cam/caméra{n}.JPG", accented, ".JPG", old),
        Camera(f"http://{host}/<none:cam>/{n}.jpg", f"cam/{n}.jpg", ".jpg", old),
    )
    return (
        Camera(f"http://{host}/cam/{n}.jpg", f"cam/{n}.jpg", ".jpg", old),
        Camera(f"http://{host}/cam/{n}.JPG", f"cam/{n}.JPG", ".JPG", old),
        Camera(f"http://{host}/cam/{n}.png", f"cam/{n}.png", ".png", new),
        Camera(f"http://{host}/cam/{n}.jpeg", f"cam/{n}.jpeg", ".jpe", new),
        Camera(f"http://{host}/snap/{n}", f"snap/{n}", ".jpg", new),
        Camera(f"http://{host}/cam/{n}.png?quality=80", f"cam/{n}.png", ".png", new),
        Camera(f"http://{USER}:{PASSWORD}@{host}/cam/{n}.jpg", f"cam/{n}.jpg", ".jpg", old),
        Camera(f"http://{USER}:{PASSWORD}@{host}/private/{n}.png", f"private/{n}.png", ".png", new),
        Camera(f"http://{host}/cam/{n}.jpg?scale=0.5", f"cam/{n}.jpg", ".5", new),
        last[group % 2],
    )[row]


def hundred_cameras(port):
    return [camera(port, group, row) for group in range(10) for row in range(10)]


def make_pictures(folder, names):
    """Writes one picture under each name (a path in the folder), making its folders."""
    plain = {name.encode("ascii", "replace").decode("ascii").replace("?", "_"): name for name in names}
    for name in plain:
        Path(folder, name).parent.mkdir(parents=True, exist_ok=True)
    command = [os.environ["VELMORA_MAKE_PICTURES"], str(folder), *plain]
    subprocess.run(command, check=True, timeout=60)
    for name, wanted in plain.items():
        os.rename(Path(folder, name), Path(folder, wanted))


def modified_at(index):
    """Seconds since 1970, UTC: around the night in which Central Europe changes to summer time."""
    return 1_711_843_200 + index * 61


def set_modified(path, seconds):
    os.utime(path, (seconds, seconds))


def path_asked(request):
    return unquote(urlsplit(request.path).path, errors="surrogateescape").lstrip("/")
