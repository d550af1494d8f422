"""The Debian package before it is installed: its contents, what Debian's and the desktops' own checkers say about
it, and whether its manual and the shells know the program's options."""

import json
import re
import struct
import unittest
from pathlib import Path

import house
from debian_package import BUILD, DebianPackage, output

PRESETS = Path(__file__).parents[2] / "CMakePresets.json"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
SHARE = "usr/share"
ICONS = f"{SHARE}/icons/hicolor"
FILES = {
    "usr/bin/velmora",
    "usr/lib/velmora/parts/libvelmora-greys.so",
    "usr/lib/velmora/parts/libvelmora-windows.so",
    "usr/lib/systemd/user/velmora.service",
    "usr/lib/systemd/user/velmora@.service",
    f"{SHARE}/applications/velmora.desktop",
    f"{SHARE}/bash-completion/completions/velmora",
    f"{SHARE}/doc/velmora/changelog.gz",
    f"{SHARE}/doc/velmora/copyright",
    f"{SHARE}/fish/vendor_completions.d/velmora.fish",
    f"{SHARE}/man/man1/velmora.1.gz",
    f"{SHARE}/metainfo/velmora.metainfo.xml",
    f"{SHARE}/zsh/vendor-completions/_velmora",
    f"{ICONS}/scalable/apps/velmora.svg",
    f"{ICONS}/symbolic/apps/velmora-symbolic.svg",
} | {f"{ICONS}/{size}x{size}/apps/velmora.png" for size in SIZES}
RECOMMENDED = {"ca-certificates", "ffmpeg", "qt6-image-formats-plugins", "qt6-wayland", "xdg-utils"}
CODE = sorted(path for path in FILES if path == "usr/bin/velmora" or path.endswith(".so"))
COMPLETE = """
compopt() { :; }  # acts on a completion that the shell itself has begun
. "$1"; shift
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
_velmora
printf '%s\\n' "${COMPREPLY[@]}"
"""
OPTION = r"(?<![\w-])--?[a-z][a-z-]*"


def setUpModule():
    global PACKAGE, FOLDER
    PACKAGE = DebianPackage(unittest.addModuleCleanup)
    FOLDER = PACKAGE.unpacked()


def text(path):
    return (FOLDER / path).read_text(encoding="utf-8")


def unzipped(path):
    return output("zcat", FOLDER / path)


def keys_of(entry):
    """The keys of a desktop entry or a unit."""
    return dict(line.split("=", 1) for line in entry.splitlines() if "=" in line and not line.startswith("#"))


def guide_files():
    """The page that the program opens, and the pictures on it."""
    guide = f"{SHARE}/velmora/guide"
    return {f"{guide}/index.html"} | {f"{guide}/{src}" for src in re.findall(r'src="([^"]+)"', text(f"{guide}/index.html"))}


class PackageTest(unittest.TestCase):
    def test_holds_the_program_and_what_goes_with_it(self):
        self.assertEqual(FILES | guide_files(), {entry.path for entry in PACKAGE.entries() if not entry.path.endswith("/")})

    def test_is_open_to_all_users_and_belongs_to_root(self):
        modes = {"usr/bin/velmora": "-rwxr-xr-x"}
        for entry in PACKAGE.entries():
            usual = "drwxr-xr-x" if entry.path.endswith("/") else "-rw-r--r--"
            self.assertEqual((modes.get(entry.path, usual), "root/root"), (entry.mode, entry.owner), entry.path)

    def test_runs_no_script_when_it_is_installed_or_removed(self):
        self.assertEqual({"control", "md5sums"}, set(PACKAGE.control_files()))

    def test_is_packed_as_small_as_debian_packs(self):
        self.assertIn("data.tar.xz", output("ar", "t", PACKAGE.path).split())

    def test_has_a_check_sum_for_every_file(self):
        summed = {line.split("  ", 1)[1] for line in PACKAGE.control_files()["md5sums"].splitlines()}
        self.assertEqual(FILES | guide_files(), summed)

    def test_depends_on_the_libraries_that_the_program_calls(self):
        needed = {"libc6", "libcurl4", "libqt6core6", "libqt6gui6", "libqt6network6", "libqt6widgets6"}
        needed |= {"zlib1g", "libjpeg62-turbo", "libpng16-16", "libssl3", "libstdc++6", "libwebp7", "libxcb1", "libxxhash0"}
        depends = set(PACKAGE.packages("Depends"))
        self.assertLessEqual(needed, depends)
        self.assertLessEqual(depends - needed, {"libgcc-s1", "libqcoro6core0"})
        self.assertIn("libqt6widgets6 (>= ", PACKAGE.field("Depends"))
        self.assertIn("libcurl4 (>= 7.88)", PACKAGE.field("Depends"))

    def test_recommends_what_it_also_works_without(self):
        self.assertEqual(RECOMMENDED, set(PACKAGE.packages("Recommends")))

    def test_describes_itself_in_a_line_and_at_length(self):
        synopsis, *text = PACKAGE.field("Description").splitlines()
        self.assertEqual("capture and show still images from network cameras", synopsis)
        self.assertGreater(len(text), 5)
        self.assertTrue(all(re.fullmatch(r" (\.|\S.{0,78})", line) for line in text), text)

    def test_says_of_what_kind_it_is(self):
        fields = ("Package", "Section", "Priority", "Maintainer")
        own = ["velmora", "graphics", "optional", "Velmora developers <velmora@example.org>"]
        self.assertEqual(own, [PACKAGE.field(name) for name in fields])

    def test_says_in_a_form_for_machines_who_holds_which_rights(self):
        stanzas = text(f"{SHARE}/doc/velmora/copyright").split("\n\n")
        form = "https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/"
        self.assertEqual(f"Format: {form}", stanzas[0].splitlines()[0])
        named = [re.search(r"^License: (.*)$", s, re.M).group(1) for s in stanzas if s.startswith("Files: ")]
        explained = {re.match(r"License: (.*)\n ", s).group(1) for s in stanzas if s.startswith("License: ")}
        self.assertEqual(explained, {name for names in named for name in names.split(" and ")})
        for stanza in stanzas:
            if stanza.startswith("Files: "):
                self.assertRegex(stanza, r"\nCopyright: \d{4}")

    def test_carries_the_program_without_its_debug_symbols(self):
        for code in CODE:
            sections = output("readelf", "--section-headers", "--wide", FOLDER / code)
            self.assertIn(".text", sections)
            self.assertNotRegex(sections, r"\.(symtab|debug_\w+)\b")

    def test_carries_a_program_that_is_hard_to_misuse(self):
        """Loaded anywhere in memory, its tables of calls read-only, its stack never executed."""
        for code in CODE:
            loading = output("readelf", "--dynamic", "--wide", FOLDER / code)
            self.assertRegex(loading, r"FLAGS_1\).* NOW" + ("" if code.endswith(".so") else " PIE") + r"\n")
            self.assertNotRegex(loading, "R(UN)?PATH")
            segments = output("readelf", "--program-headers", "--wide", FOLDER / code)
            self.assertIn("GNU_RELRO", segments)
            self.assertRegex(segments, r"GNU_STACK +(0x0+ ){3}(0x0+ ){2}RW ")

    def test_does_not_tell_where_it_was_built(self):
        for code in CODE:
            self.assertNotIn(str(BUILD), output("strings", FOLDER / code))

    def test_is_made_of_programs_that_do_not_look_for_libraries_where_they_were_built(self):
        presets = json.loads(PRESETS.read_text())["configurePresets"]
        [package] = [preset for preset in presets if preset["name"] == "deb"]
        self.assertEqual("OFF", package["cacheVariables"]["VELMORA_REMEMBER_BUILD"])

    def test_says_the_same_version_everywhere(self):
        version = output(house.VELMORA, "--version").split()[1]
        self.assertEqual(version, PACKAGE.field("Version"))
        changes = unzipped(f"{SHARE}/doc/velmora/changelog.gz")
        self.assertRegex(changes, rf"\Avelmora \({re.escape(version)}\) ")
        about = text(f"{SHARE}/metainfo/velmora.metainfo.xml")
        self.assertEqual(version, re.search(r'<release version="([^"]+)"', about).group(1))
        manual = unzipped(f"{SHARE}/man/man1/velmora.1.gz")
        self.assertIn(f'"Velmora {version}"', manual)

    def test_is_the_same_byte_for_byte_when_it_is_made_again(self):
        first, second = (DebianPackage(self.addCleanup, epoch=1_700_000_000) for _ in range(2))
        self.assertEqual(first.path.read_bytes(), second.path.read_bytes())


class CheckerTest(unittest.TestCase):
    """What Debian's and the desktops' own checkers say."""

    def test_lintian_finds_nothing(self):
        found = output(
            "lintian", "--pedantic", "--fail-on", "error,warning,pedantic", "--allow-root", PACKAGE.path
        )
        self.assertEqual("", found)

    def test_the_desktop_entry_is_valid_and_starts_the_program(self):
        entry = FOLDER / f"{SHARE}/applications/velmora.desktop"
        self.assertEqual("", output("desktop-file-validate", entry))
        keys = keys_of(entry.read_text(encoding="utf-8"))
        self.assertEqual(["velmora"] * 3, [keys[name] for name in ("Exec", "TryExec", "Icon")])
        for name in ("GenericName", "Comment", "Keywords"):
            self.assertNotEqual(keys[name], keys[f"{name}[fr]"])

    def test_the_software_centres_description_is_valid(self):
        about = FOLDER / f"{SHARE}/metainfo/velmora.metainfo.xml"
        self.assertIn("successful", output("appstreamcli", "validate", "--no-net", "--pedantic", about))
        self.assertIn('<launchable type="desktop-id">velmora.desktop</launchable>', about.read_text(encoding="utf-8"))

    def test_the_service_is_valid_and_not_switched_on(self):
        unit = text("usr/lib/systemd/user/velmora.service")
        own = {"ExecStart": "velmora --capture", "Restart": "on-failure", "RestartPreventExitStatus": "2"}
        self.assertEqual(own, {key: keys_of(unit)[key] for key in own})
        # On this machine the program and its manual page are elsewhere.
        placed = FOLDER / "velmora.service"
        self.addCleanup(placed.unlink)
        placed.write_text(unit.replace("ExecStart=", f"ExecStart={FOLDER}/usr/bin/"), encoding="utf-8")
        env = {"XDG_RUNTIME_DIR": str(FOLDER), "MANPATH": str(FOLDER / SHARE / "man")}
        self.assertEqual("", output("systemd-analyze", "--user", "verify", placed, env=env))
        self.assertEqual([], [p for p in FOLDER.rglob("*") if p.name.endswith((".wants", ".preset"))])

    def test_each_picture_of_the_icon_has_its_size_and_colours(self):
        for size in SIZES:
            picture = (FOLDER / f"{ICONS}/{size}x{size}/apps/velmora.png").read_bytes()
            self.assertEqual(b"\x89PNG\r\n\x1a\n", picture[:8])
            self.assertEqual((size, size, 8, 6), struct.unpack(">IIBB", picture[16:26]), size)
        drawing = text(f"{ICONS}/symbolic/apps/velmora-symbolic.svg")
        self.assertEqual(1, len(set(re.findall(r'(?:fill|stroke)="(#\w+)"', drawing))))


class OptionTextTest(unittest.TestCase):
    """The options in the manual and the shells, compared with the program's own help."""

    @classmethod
    def setUpClass(cls):
        found = re.search(r"Options:\n(.*)", output(house.VELMORA, "--help"), re.S).group(1)
        named = re.findall(r"^  (-.*?)(?:  |$)", found, re.M)
        cls.options = set(re.findall(OPTION, "\n".join(named)))

    def test_the_help_is_read_right(self):
        self.assertLessEqual({"-h", "--help", "--capture", "--passes", "--program-folder"}, self.options)

    def manual(self, *options):
        page = FOLDER / f"{SHARE}/man/man1/velmora.1.gz"
        return output("man", "--warnings", "-E", "UTF-8", *options, "-l", page, env={"MANWIDTH": "80"})

    def test_the_manual_is_set_without_a_warning(self):
        self.assertNotIn("warning", self.manual("-Tutf8", "-Z"))

    def test_the_manual_explains_every_option(self):
        chapter = re.search(r"^OPTIONS$(.*?)^EXIT STATUS$", self.manual(), re.S | re.M).group(1)
        explained = re.findall(r"^ {7}(-\S.*)$", chapter, re.M)
        self.assertEqual(self.options, set(re.findall(OPTION, "\n".join(explained))))

    def test_the_manual_has_every_chapter(self):
        chapters = re.findall(r"^[A-Z][A-Z ]+$", self.manual(), re.M)
        wanted = ["NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "ENVIRONMENT", "FILES", "SIGNALS"]
        self.assertEqual([*wanted, "EXAMPLES", "SEE ALSO"], chapters)

    def completed(self, *words):
        script = FOLDER / f"{SHARE}/bash-completion/completions/velmora"
        found = output("bash", "-c", COMPLETE, "bash", script, "velmora", *words).splitlines()
        return {word for word in found if word}

    def test_bash_completes_every_option(self):
        self.assertEqual(self.options, self.completed("-"))
        self.assertEqual({"--passes", "--program-folder"}, self.completed("--capture", "--p"))
        self.assertEqual(set(), self.completed("--none"))

    def test_bash_completes_folders_where_one_is_wanted_and_no_number(self):
        self.assertEqual({f"{FOLDER}/usr"}, self.completed("--program-folder", f"{FOLDER}/u"))
        self.assertEqual(set(), self.completed("--program-folder", f"{FOLDER}/usr/bin/vel"))
        self.assertEqual(set(), self.completed("--passes", ""))

    def test_the_other_shells_know_every_option(self):
        zsh = (FOLDER / f"{SHARE}/zsh/vendor-completions/_velmora").read_text(encoding="utf-8")
        self.assertEqual(self.options, set(re.findall(r"(?<=['{,*])--?[a-z][a-z-]*(?=[\[,}])", zsh)))
        fish = (FOLDER / f"{SHARE}/fish/vendor_completions.d/velmora.fish").read_text(encoding="utf-8")
        known = {f"-{o}" for o in re.findall(r" -s (\w)", fish)} | {f"--{o}" for o in re.findall(r" -l (\S+)", fish)}
        self.assertEqual(self.options, known)


if __name__ == "__main__":
    house.main()
