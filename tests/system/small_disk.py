"""A tiny file system of a test's own, mounted where no other process sees it."""

import os
import shutil
import subprocess
import sys

DISK_BYTES = 2_000_000
INSIDE = "VELMORA_TEST_OWN_MOUNTS"


ROOT_OF_ITS_OWN, ROOT = ["-rm"], ["-m"]


def enter_own_mounts(ways=(ROOT_OF_ITS_OWN, ROOT, [*ROOT, "--propagation", "unchanged"])):
    """Restarts this file where it may mount: in a name space of its own, in which it is root."""
    if INSIDE in os.environ:
        return
    for options in ways:
        trial = ["unshare", *options, "mount", "-t", "tmpfs", "none", "/mnt"]
        if subprocess.run(trial, check=False, stderr=subprocess.DEVNULL).returncode == 0:
            os.environ[INSIDE] = "1"
            os.execvp("unshare", ["unshare", *options, sys.executable, "-B", *sys.argv])
    sys.exit("this test mounts a small file system, which neither a user name space nor root's rights allow here")


class Disk:
    """A small file system whose free room the test can fill and free again."""

    def __init__(self, test, folder):
        self._ballast = folder / "ballast"
        self.folder = folder
        options = f"size={DISK_BYTES},nr_inodes=4096"
        subprocess.run(["mount", "-t", "tmpfs", "-o", options, "velmora-test", folder], check=True)
        test.addCleanup(subprocess.run, ["umount", "-l", folder], check=True)

    def leave(self, size):
        """Fills all room but so many bytes."""
        free = shutil.disk_usage(self.folder).free
        with open(self._ballast, "ab") as ballast:
            ballast.write(bytes(free - size))

    def give_back(self):
        self._ballast.unlink()
