"""Limits what a monkey can reach: a network with nothing but a loopback of its own, displays of its own, and a program
that can write to one folder only, whatever is typed into its boxes or deleted in its dialogs.

    confined.py FOLDER COMMAND...    runs a command, in a mount name space of its own, that writes to FOLDER alone"""

import fcntl
import os
import socket
import struct
import subprocess
import sys
from pathlib import Path

INSIDE = "VELMORA_TEST_OWN_NETWORK"
DISPLAYS = Path("/tmp/.X11-unix")  # the sockets of all X servers that share this folder
SET_FLAGS, UP = 0x8914, 1  # SIOCSIFFLAGS, IFF_UP
REMEMBERED = ("nosuid", "nodev", "noexec", "noatime", "nodiratime", "relatime")


def enter_own_network():
    """Restarts this file where no other machine can be reached and mounts may be changed."""
    if INSIDE in os.environ:
        with socket.socket() as any_socket:
            fcntl.ioctl(any_socket, SET_FLAGS, struct.pack("16sh22x", b"lo", UP))
        keep_displays_apart()
        return
    for options in (["-nm"], ["-rnm"]):
        if subprocess.run(["unshare", *options, "true"], check=False, stderr=subprocess.DEVNULL).returncode == 0:
            os.environ[INSIDE] = "1"
            os.execvp("unshare", ["unshare", *options, sys.executable, "-B", *sys.argv])
    sys.exit("this test needs a network of its own, which neither root's rights nor a user name space give here")


def keep_displays_apart():
    """An X server takes the first number that is free in its own network, and would put its socket in the place of one
    of the same number elsewhere, which another test is using."""
    if not DISPLAYS.exists():
        DISPLAYS.mkdir()
        DISPLAYS.chmod(0o1777)
    subprocess.run(["mount", "-t", "tmpfs", "-o", "mode=1777", "none", DISPLAYS], check=True)


def command(folder):
    """A command prefix that lets a command change nothing but the folder."""
    return ["unshare", "-m", "--propagation", "private", sys.executable, "-B", __file__, str(folder)]


def mounts():
    """(place, options) of every mount."""
    for line in Path("/proc/self/mountinfo").read_text(encoding="utf-8").splitlines():
        fields = line.split(" ")
        place = fields[4].encode().decode("unicode_escape").encode("latin-1").decode()
        yield place, fields[5].split(",")


def make_read_only(folder):
    subprocess.run(["mount", "--bind", folder, folder], check=True)
    for place, options in list(mounts()):
        if place != folder and "ro" not in options:
            kept = [option for option in options if option in REMEMBERED]
            subprocess.run(["mount", "-o", ",".join(["remount", "bind", "ro", *kept]), place], check=False)


def refuse_to_go_on(folder):
    """Nothing is run where a mistake above would cost someone's files."""
    visible = [place for place, options in mounts() if "rw" in options and place != folder]
    open_places = [place for place in visible if os.access(place, os.W_OK)]
    named = ("/", "/tmp", os.path.dirname(folder), os.path.dirname(os.path.abspath(__file__)))
    open_places += [place for place in named if os.access(place, os.W_OK)]
    if open_places or not os.access(folder, os.W_OK):
        sys.exit(f"the program could write outside its folder: {open_places}")


def main():
    folder = os.path.realpath(sys.argv[1])
    make_read_only(folder)
    os.chdir(folder)
    refuse_to_go_on(folder)
    os.execvp(sys.argv[2], sys.argv[2:])


if __name__ == "__main__":
    main()
