"""A small Debian system in a folder, with nothing but Debian's essential packages and those that the package under
test depends on, and a package database of its own. It is copied from the packages of this machine, so it needs no
network; whatever a package forgets to depend on is missing.

A program runs in it in one of three ways, which look the same from inside: root changes its root folder, and
any other user does so in a user name space or, where these are refused, by tracing the program's calls."""

import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from debian_package import output
from program import Program

USER_ID = 1000
HOME = "home/guard"
MERGED = ("bin", "sbin", "lib", "lib32", "lib64", "libx32")  # links into usr
# Things that a slim system leaves out too.
LEFT_OUT = re.compile(r"/usr/(share/(doc|man|info|locale|lintian)|include)/")
TOOLS = "/usr/sbin:/usr/bin:/sbin:/bin"
# Written by dpkg, and by the font library, which keeps its own cache where it can.
BOOKKEEPING = ("var/lib/dpkg", "var/log", "var/cache", "tmp")


class Installed:
    """This machine's packages: name -> the packages it needs, each as a list of alternatives."""

    FORM = "${Package}\t${Essential}\t${db:Status-Status}\t${Provides}\t${Pre-Depends}, ${Depends}\n"

    def __init__(self):
        self.needs, self.essential, self._provider = {}, [], {}
        for line in output("dpkg-query", "--show", f"--showformat={self.FORM}").splitlines():
            name, essential, status, provides, needs = line.split("\t")
            if status == "installed":
                self.needs[name] = needs
                self.essential += [name] if essential == "yes" else []
                self._provider |= {virtual: name for [virtual] in alternatives(provides)}

    def _found(self, choices):
        return next((n for c in choices for n in (c, self._provider.get(c)) if n in self.needs), None)

    def closure(self, needs):
        """The names of all packages that these (the text of a field) need, directly or indirectly."""
        found, open_needs = set(), [needs, ", ".join(self.essential)]
        while open_needs:
            for choices in alternatives(open_needs.pop()):
                name = self._found(choices)
                if name is None:
                    raise AssertionError(f"none of {choices} is installed on this machine")
                if name not in found:
                    found.add(name)
                    open_needs.append(self.needs[name])
        return sorted(found)


def alternatives(field):
    """A field of packages: for each, the names of its alternatives."""
    parts = [part.strip() for part in field.split(",") if part.strip()]
    return [[re.split(r"[ (:]", name.strip())[0] for name in part.split("|")] for part in parts]


class CleanRoot:
    """cleanup: as addCleanup. depends: the field of the package that will be installed."""

    def __init__(self, cleanup, depends):
        self.path = Path(tempfile.mkdtemp(prefix="velmora-root-"))
        cleanup(shutil.rmtree, self.path, ignore_errors=True)
        self.path.chmod(0o755)
        self.home = self.path / HOME
        packages = Installed().closure(depends)
        self._make_folders()
        self._copy_files(packages)
        self._copy_data_base(packages)
        self._way = self._possible_way()

    def _make_folders(self):
        for name in MERGED:
            (self.path / "usr" / name).mkdir(parents=True, exist_ok=True)
            (self.path / name).symlink_to(f"usr/{name}")
        for name in ("root", "tmp", "var/lib/dpkg/info", "var/lib/dpkg/updates", "var/lib/dpkg/triggers", HOME):
            (self.path / name).mkdir(parents=True)
        (self.path / "tmp").chmod(0o1777)
        self.empty_home()

    def empty_home(self):
        """A new home folder for the user; root's is emptied as well."""
        for home in (self.home, self.path / "root"):
            shutil.rmtree(home)
            home.mkdir()
        self._give_to_user(self.home)

    def make_folder(self, relative):
        """A folder in the user's home, with its parents."""
        folder = self.home
        for name in Path(relative).parts:
            folder = folder / name
            folder.mkdir(exist_ok=True)
            self._give_to_user(folder)
        return folder

    def write(self, relative, text):
        """A file in the user's home."""
        path = self.make_folder(Path(relative).parent) / Path(relative).name
        path.write_bytes(text.encode("cp1252"))
        self._give_to_user(path)

    def _give_to_user(self, path):
        if os.geteuid() == 0:
            os.chown(path, USER_ID, USER_ID)

    def _copy_files(self, packages):
        listed = output("dpkg-query", "--listfiles", *packages).splitlines()
        paths = {p for p in listed if p.startswith("/") and not LEFT_OUT.match(p)}
        names = "\n".join(sorted(p for p in paths if os.path.islink(p) or os.path.isfile(p))) + "\n"
        packer = ["tar", "-C", "/", "-cf", "-", "--ignore-failed-read", "--no-recursion", "--verbatim-files-from", "-T", "-"]
        unpacker = ["tar", "-C", self.path, "-xf", "-", "--no-same-owner"]
        with tempfile.TemporaryFile() as archive:
            quiet = {"stderr": subprocess.DEVNULL, "check": True}
            subprocess.run(packer, input=names.encode(), stdout=archive, **quiet)
            archive.seek(0)
            subprocess.run(unpacker, stdin=archive, **quiet)

    def _copy_data_base(self, packages):
        """Without scripts and triggers: installing into this folder runs none of its programs."""
        own, machine = self.path / "var/lib/dpkg", Path("/var/lib/dpkg/info")
        (own / "status").write_text(output("dpkg-query", "--status", *packages) + "\n", encoding="utf-8")
        (own / "info/format").write_text("1\n")
        for name in packages:
            for listing in [*machine.glob(f"{name}.list"), *machine.glob(f"{name}:*.list")]:
                shutil.copy(listing, own / "info")

    def _possible_way(self):
        """The first way of running in which this folder's user turns out not to be root."""
        ways = (_change_root, _change_root_in_name_space, _trace)
        for way in ways[:1] if os.geteuid() == 0 else ways[1:]:
            trial = [*way(self.path, USER_ID), "/bin/true"]
            if subprocess.run(trial, check=False, stdin=subprocess.DEVNULL, capture_output=True).returncode == 0:
                return way
        raise RuntimeError("no way to run a program in another root folder: install the package proot")

    def dpkg(self, *words):
        """Runs this machine's dpkg on the folder's own database."""
        forced = [] if os.geteuid() == 0 else ["--force-not-root"]
        path = f"{os.environ.get('PATH', '')}:{TOOLS}"
        return output("dpkg", f"--root={self.path}", *forced, *words, env={"PATH": path})

    def start(self, test, *words, env=None, user=USER_ID):
        """Runs a command as a user, or as root (0); it does not outlive the test."""
        home = "/root" if user == 0 else f"/{HOME}"
        own = {"HOME": home, "PATH": TOOLS, "LC_ALL": "C.UTF-8", "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
        program = Program([*self._way(self.path, user), *words], own | (env or {}))
        test.addCleanup(program.kill)
        return program

    def run(self, test, *words, seconds=60, **options):
        """The finished command."""
        program = self.start(test, *words, **options)
        program.wait(seconds)
        return program

    def state(self):
        """Everything in it except the bookkeeping: path -> size and times; a folder's time is left out."""
        found = {}
        for folder, folders, files in os.walk(self.path):
            for name in folders + files:
                path = Path(folder, name)
                told = path.lstat()
                relative = str(path.relative_to(self.path))
                if not relative.startswith(BOOKKEEPING):
                    found[relative] = None if path.is_dir() else (told.st_mode, told.st_size, told.st_mtime_ns)
        return found


def _change_root(root, user):
    return [shutil.which("chroot", path=TOOLS), f"--userspec={user}:{user}", "--groups=", root]


def _change_root_in_name_space(root, user):
    return [shutil.which("unshare", path=TOOLS), f"--map-user={user}", f"--map-group={user}", "--root", root, "--wd=/"]


def _trace(root, user):
    as_root = ["-0"] if user == 0 else []
    return [shutil.which("proot", path=TOOLS) or "proot", *as_root, "-r", root, "-w", "/"]
