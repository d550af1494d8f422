"""The Debian package of the built program: made by cpack from the build folder under test, and inspected."""

import os
import re
import shutil
import subprocess
import tempfile
from collections import namedtuple
from pathlib import Path

BUILD = os.environ.get("VELMORA_BUILD", "")
LISTED = re.compile(r"(\S+) (\S+) +(\d+) \S+ \S+ \./(.*?)(?: -> .*)?")

# mode: as ls writes it; owner: name/group; path: without the leading "/"; a folder's ends with "/"
Entry = namedtuple("Entry", "mode owner size path")


def output(*words, env=None):
    """What a tool prints on both outputs; it must exit with status 0."""
    own = {"LC_ALL": "C.UTF-8", **os.environ, **(env or {})}
    run = subprocess.run(
        [str(word) for word in words], env=own, text=True, check=False, timeout=120,
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
    )  # fmt: skip
    if run.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, words))} ends with {run.returncode}:\n{run.stdout}")
    return run.stdout


class DebianPackage:
    """cleanup: a function that takes a function to call at the end, as addCleanup does."""

    def __init__(self, cleanup, epoch=None):
        """epoch: seconds since 1970, for all times in the package."""
        self._folder = Path(tempfile.mkdtemp(prefix="velmora-package-"))
        cleanup(shutil.rmtree, self._folder, ignore_errors=True)
        self.path = self._made({"SOURCE_DATE_EPOCH": str(epoch)} if epoch else {})

    def _made(self, env):
        """Made by a user whose files are closed to others, which must not show."""
        configuration = Path(BUILD, "CPackConfig.cmake")
        usual = os.umask(0o077)
        try:
            output("cpack", "--config", configuration, "-G", "DEB", "-B", self._folder / "made", env=env)
        finally:
            os.umask(usual)
        [package] = (self._folder / "made").glob("*.deb")
        return package

    def entries(self):
        lines = output("dpkg-deb", "--contents", self.path).splitlines()
        return [Entry(*LISTED.fullmatch(line).groups()) for line in lines]

    def field(self, name):
        return output("dpkg-deb", "--field", self.path, name).rstrip("\n")

    def packages(self, name):
        """The names in a field of packages, without their versions."""
        return [re.split(r"[ (:]", part.strip())[0] for part in self.field(name).split(",")]

    def control_files(self):
        folder = self._folder / "control"
        if not folder.exists():
            output("dpkg-deb", "--control", self.path, folder)
        return {path.name: path.read_text(encoding="utf-8") for path in folder.iterdir()}

    def unpacked(self):
        """A folder with all its files."""
        folder = self._folder / "unpacked"
        if not folder.exists():
            output("dpkg-deb", "--extract", self.path, folder)
        return folder
