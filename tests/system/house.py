"""A temporary program folder: its settings, its storage folder, the names in both, and the program started on it.
All of it is removed with the test."""

import os
import re
import shutil
import sys
import tempfile
import time
import unittest
from pathlib import Path

from program import Program, bare_environment

VELMORA = os.environ.get("VELMORA_BIN", "")
DEMO_CAMERAS = os.environ.get("VELMORA_DEMO_CAMERAS", "")
GREEN = "65280"
RED = "255"
# Central Europe, spelled out so that no time zone database is needed.
TIME_ZONE = "CET-1CEST,M3.5.0,M10.5.0/3"

IMAGE_NAME = re.compile(r"\d{8}_\d{10}")
SECTION_LINE = re.compile(r"\[[^\[\]\r\n]+\]")
KEY_LINE = re.compile(r"[^\[;=\r\n][^=\r\n]*=[^\r\n]*")
COMMENT_LINE = re.compile(r";[^\r\n]*")
LINE_FORMS = (SECTION_LINE, KEY_LINE, COMMENT_LINE)


def encode_folder_name(url):
    """The folder of a camera: letters stay, any other byte is "%" and its hexadecimal code."""
    encoded = "".join(
        chr(b) if chr(b).isascii() and chr(b).isalpha() else f"%{b:X}" for b in url.encode("cp1252")
    )
    return encoded[:255]


def parse_settings(text):
    """Sections with their keys; the first of a name counts, as it does for the program."""
    sections, keys = {}, {}
    for line in text.split("\r\n"):
        if SECTION_LINE.fullmatch(line):
            keys = sections.setdefault(line[1:-1], {})
        elif "=" in line:
            name, value = line.split("=", 1)
            keys.setdefault(name, value)
    return sections


def ill_formed_lines(raw):
    """Lines of a settings file that are not a section, key or comment, or do not end in CR LF."""
    if not raw.endswith(b"\r\n"):
        return [raw[-80:]]
    lines = raw.decode("cp1252").removesuffix("\r\n").split("\r\n")
    return [line for line in lines if not any(form.fullmatch(line) for form in LINE_FORMS)]


def comment_lines(size):
    """Comment lines with that many bytes in total, 3 or more."""
    long_lines, rest = divmod(size - 3, 80)
    return (";" + "-" * 77 + "\r\n") * long_lines + ";" + "-" * rest + "\r\n"


def camera_lists(urls):
    """Sections for up to a hundred addresses, ten to a group; every group that has one is switched on."""
    sections = {}
    for index, url in enumerate(urls):
        section = sections.setdefault(f"Liste{index // 10}", {"LstAct": "1"})
        section[f"lst{index % 10}"] = url
    return sections


def settings_text(*parts):
    """parts: sections with their keys."""
    return "".join(
        f"[{section}]\r\n" + "".join(f"{key}={value}\r\n" for key, value in keys.items())
        for part in parts
        for section, keys in part.items()
    )


class House:
    """The program folder; the storage folder C:\\in is drives/c/in in it."""

    def __init__(self, test, root=None):
        self.root = Path(root) if root else Path(tempfile.mkdtemp(prefix="velmora-house-"))
        self._test = test
        self.storage = self.root / "drives" / "c" / "in"
        self.settings_path = self.root / "Velmora.ini"
        self.storage.mkdir(parents=True)
        test.addCleanup(shutil.rmtree, self.root, ignore_errors=True)

    def write_settings(self, *parts, comments=""):
        self.settings_path.write_bytes((comments + settings_text(*parts)).encode("cp1252"))

    def settings_bytes(self):
        return self.settings_path.read_bytes()

    def settings(self):
        return parse_settings(self.settings_bytes().decode("cp1252"))

    def camera_value(self, index, word):
        """A stored value of a camera by its position among all groups, 0 to 99."""
        return self.settings().get(f"Groupe{index // 10}", {}).get(f"{word}{index % 10}")

    def folder(self, url):
        return self.storage / encode_folder_name(url)

    def images(self, url):
        folder = self.folder(url)
        return sorted(folder.iterdir()) if folder.is_dir() else []

    def image_count(self):
        return sum(1 for p in self.storage.rglob("*") if p.is_file() and IMAGE_NAME.match(p.name))

    def work_files(self):
        return [p for p in self.root.rglob(".velmora-*.part")]

    def log(self):
        """The event log, preceded by its earlier generation."""
        files = [self.root / name for name in ("Velmora.old", "Velmora.log")]
        return "".join(f.read_text(encoding="utf-8") for f in files if f.exists())

    def environment(self):
        """A home of its own, without a desktop that would be started on behalf of the windows."""
        own = {"HOME": str(self.root), "XDG_RUNTIME_DIR": str(self.root), "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
        return bare_environment() | {"TZ": TIME_ZONE} | own

    def start(self, *options, env=None):
        """Starts the program on this folder; it does not outlive the test."""
        command = [VELMORA, "--program-folder", self.root, *options]
        return self.start_command(command, env)

    def start_command(self, command, env=None):
        program = Program(command, self.environment() | (env or {}))
        self._test.addCleanup(program.kill)
        return program

    def capture(self, *options, seconds=60):
        """Captures without windows to the end; returns the finished program, whose status must be 0."""
        program = self.start("--capture", *options)
        status = program.wait(seconds)
        self._test.assertEqual(0, status, program.report())
        return program


def main():
    """Runs a file's tests in the time zone in which the program is started."""
    os.environ["TZ"] = TIME_ZONE
    time.tzset()
    for name, path in (("VELMORA_BIN", VELMORA), ("VELMORA_DEMO_CAMERAS", DEMO_CAMERAS)):
        if not path:
            sys.exit(f"{name} must name the built program; start these tests by ctest")
    unittest.main(verbosity=2)
