"""Disks as users plug them in, with the file systems of other platforms. They have no files without a name, some
no hard links, no rename that refuses to replace, and no distinction between capital and small letters. Each is a
file mounted where no other process sees it, by a program of its own (FUSE)."""

import subprocess
from pathlib import Path

SIZE = 64_000_000


def run(*command):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True).stdout.strip()


def image(test, house):
    path = Path(house.root) / "disk.image"
    with open(path, "wb") as file:
        file.truncate(SIZE)
    return path


def unmount_later(test, folder):
    test.addCleanup(subprocess.run, ["umount", "-l", folder], check=True)


def mount_ntfs(test, house):
    disk = image(test, house)
    run("mkntfs", "-F", "-Q", "-q", disk)
    run("ntfs-3g", disk, house.storage)
    unmount_later(test, house.storage)


def mount_exfat(test, house):
    disk = image(test, house)
    run("mkfs.exfat", disk)
    device = run("losetup", "--find", "--show", disk)
    test.addCleanup(subprocess.run, ["losetup", "--detach", device], check=True)
    run("mount.exfat-fuse", device, house.storage)
    unmount_later(test, house.storage)


DISKS = {"ntfs": mount_ntfs, "exfat": mount_exfat}
