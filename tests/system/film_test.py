"""Films made by the built program from stored images, judged by ffprobe and by their pictures."""

import json
import os
import pty
import random
import shutil
import signal
import subprocess
import tempfile
import threading
import unittest
from pathlib import Path

import hostile_pictures
import house
from house import House, VELMORA, camera_lists
from pictures import plain
from waiting import until

URL = "http://127.0.0.1:9/snap.jpg"
COLOURS = [(20 + 13 * i, 235 - 13 * i, 60 + 45 * (i % 4)) for i in range(16)]
MANY = 10_000
COUNT_AT_END = 1000
WIDTH, HEIGHT = 64, 48
INTERRUPTED = 130


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, timeout=60, **options).stdout


def jpeg(colour, width=WIDTH, height=HEIGHT):
    """A picture of one colour, followed by noise, as some cameras send it."""
    return encoded(b"P6 %d %d 255\n" % (width, height) + bytes(colour) * (width * height)) + bytes(1000)


def encoded(ppm):
    command = ["ffmpeg", "-loglevel", "error", "-f", "ppm_pipe", "-i", "pipe:0", "-q:v", "1", "-f", "mjpeg", "pipe:1"]
    return run(*command, input=ppm)


def moment(number, every=60):
    """Date and time of an image by its number, one a minute from a midnight on."""
    seconds = number * every
    day, rest = divmod(seconds, 86400)
    return f"200603{1 + day:02}_{rest // 3600:02}{rest // 60 % 60:02}{rest % 60:02}"


def probe(path):
    words = "-v error -count_frames -select_streams v:0 -show_entries stream -show_entries format -of json".split()
    found = json.loads(run("ffprobe", *words, str(path)))
    return found["streams"][0] | {"duration": found["format"].get("duration")}


def colours_in(path, size=(WIDTH, HEIGHT)):
    """The colour in the middle of each picture of a film."""
    width, height = size
    words = ["-f", "rawvideo", "-pix_fmt", "rgb24", "-vsync", "passthrough", "pipe:1"]
    raw = run("ffmpeg", "-loglevel", "error", "-i", str(path), *words)
    step = width * height * 3
    middle = (height // 2 * width + width // 2) * 3
    return [tuple(raw[at + middle : at + middle + 3]) for at in range(0, len(raw), step)]


class FilmCase(unittest.TestCase):
    def setUp(self):
        self.house = House(self)
        self.house.write_settings({"Control": {"StRep": "C:\\in\\"}}, camera_lists([URL]))
        self.folder = self.house.folder(URL)
        self.folder.mkdir()
        self.out = Path(tempfile.mkdtemp(prefix="velmora-film-"))
        self.addCleanup(shutil.rmtree, self.out, ignore_errors=True)

    def store(self, count, every=60, pictures=None):
        """Image number n has colour n of sixteen."""
        pictures = pictures or [jpeg(colour) for colour in COLOURS]
        for kind, data in enumerate(pictures):
            (self.out / f"kind{kind}").write_bytes(data)
        for number in range(count):
            target = self.folder / f"{moment(number, every)}0101.jpg"
            os.link(self.out / f"kind{number % len(pictures)}", target)
        for kind in range(len(pictures)):
            (self.out / f"kind{kind}").unlink()

    def film(self, *words, env=None):
        return self.house.start("--film", "0:0", *words, env=env)

    def make(self, name, *words, first="2006-03-01", last="2006-03-31"):
        target = self.out / name
        program = self.film(first, last, str(target), *words)
        self.assertEqual(0, program.wait(60), program.report())
        self.expect_nothing_else(name)
        return program, target

    def expect_nothing_else(self, *names):
        self.assertEqual(sorted(names), sorted(p.name for p in self.out.iterdir()))

    def expect_failure(self, program, text, status=1):
        self.assertEqual(status, program.wait(60), program.report())
        self.assertIn(text, "\n".join(program.err))
        self.expect_nothing_else()

    def expect_colours(self, expected, found):
        self.assertEqual(len(expected), len(found))
        for number, (wanted, seen) in enumerate(zip(expected, found)):
            distance = max(abs(a - b) for a, b in zip(wanted, seen))
            self.assertLess(distance, 24, f"picture {number}: {wanted}, there is {seen}")


class FilmTest(FilmCase):
    def test_shows_ten_thousand_images_in_order(self):
        self.store(MANY)
        program, target = self.make("all.mp4", "--fps", "50")
        found = probe(target)
        self.assertEqual((str(MANY), WIDTH, HEIGHT), (found["nb_read_frames"], found["width"], found["height"]))
        self.assertEqual("h264", found["codec_name"])
        self.assertAlmostEqual(MANY / 50, float(found["duration"]), delta=0.2)
        picked = range(0, MANY, 997)
        colours = colours_in(target)
        self.expect_colours([COLOURS[n % 16] for n in picked], [colours[n] for n in picked])
        self.assertEqual([], program.err)

    def test_shows_a_single_image(self):
        self.store(1)
        for name in ("a.mp4", "a.webm", "a.gif", "a.webp"):
            _, target = self.make(name, "--size", "64x48")
            if name == "a.webp":
                self.assertEqual((b"RIFF", b"WEBP"), (target.read_bytes()[:4], target.read_bytes()[8:12]))
            else:
                self.assertEqual("1", probe(target)["nb_read_frames"], name)
                self.expect_colours(COLOURS[:1], colours_in(target))
            target.unlink()

    def test_takes_whole_days_and_minutes_at_both_ends(self):
        self.store(3 * 1440 // 60, every=3600)
        _, day = self.make("film.mp4", first="2006-03-02", last="2006-03-02")
        self.assertEqual("24", probe(day)["nb_read_frames"])
        _, part = self.make("film.mp4", first="2006-03-01T22:00", last="2006-03-02T03:00")
        self.assertEqual("6", probe(part)["nb_read_frames"])

    def test_keeps_certain_hours_and_every_nth_image(self):
        self.store(48, every=3600)
        _, target = self.make("film.mp4", "--hours", "6-20")
        expected = [COLOURS[n % 16] for n in range(48) if 6 <= n % 24 < 20]
        self.expect_colours(expected, colours_in(target))
        _, target = self.make("film.mp4", "--hours", "20-6", "--every", "3")
        expected = [COLOURS[n % 16] for n in range(48) if not 6 <= n % 24 < 20][::3]
        self.expect_colours(expected, colours_in(target))

    def test_lasts_as_long_as_it_is_asked_to(self):
        self.store(300)
        _, target = self.make("film.mp4", "--seconds", "4", "--fps", "10")
        self.assertEqual("40", probe(target)["nb_read_frames"])
        self.assertAlmostEqual(4, float(probe(target)["duration"]), delta=0.2)
        _, target = self.make("film.mp4", "--seconds", "60")
        self.assertEqual("300", probe(target)["nb_read_frames"])
        self.assertAlmostEqual(60, float(probe(target)["duration"]), delta=0.5)

    def test_has_the_form_of_its_ending(self):
        self.store(8)
        for name, codecs in (("a.webm", ("vp9", "vp8")), ("a.gif", ("gif",)), ("a.MP4", ("h264",))):
            target = self.out / name
            program = self.film("2006-03-01", "2006-03-01", str(target), "--fps", "5")
            self.assertEqual(0, program.wait(60), program.report())
            self.assertIn(probe(target)["codec_name"], codecs)
            self.expect_colours([COLOURS[n] for n in range(8)], colours_in(target))
        program = self.film("2006-03-01", "2006-03-01", str(self.out / "a.webp"))
        self.assertEqual(0, program.wait(60), program.report())
        webp = (self.out / "a.webp").read_bytes()
        self.assertEqual((b"RIFF", b"WEBP", 8), (webp[:4], webp[8:12], webp.count(b"ANMF")))

    def test_can_be_in_4k(self):
        self.store(3, pictures=[jpeg(colour, 3840, 2160) for colour in COLOURS[:3]])
        for name in ("a.mp4", "a.webm"):
            _, target = self.make(name)
            found = probe(target)
            self.assertEqual(("3", 3840, 2160), (found["nb_read_frames"], found["width"], found["height"]))
            target.unlink()

    def test_leaves_out_a_picture_that_is_too_large_to_be_shown(self):
        """Nor has the film its size, though it is the first."""
        self.store(3, pictures=[hostile_pictures.jpeg(9000, 9000), jpeg(COLOURS[1]), jpeg(COLOURS[2])])
        for words in ([], ["--stamp"]):
            program, target = self.make("all.mp4", *words)
            self.assertIn("1 left out", program.out[-1])
            found = probe(target)
            self.assertEqual(("2", WIDTH, HEIGHT), (found["nb_read_frames"], found["width"], found["height"]))

    def test_leaves_out_what_is_no_picture(self):
        whole = [jpeg(colour) for colour in COLOURS]
        page = b"<html><body>Please log in</body></html>" * 40
        hostile = b"\xff\xd8\xff\xe0" + bytes(range(256)) * 8
        self.store(32, pictures=[whole[0], page, whole[2], whole[3][:-1200], whole[4], b"", whole[6], hostile])
        program, target = self.make("film.mp4")
        self.expect_colours([COLOURS[n] for n in (0, 2, 4, 6)] * 4, colours_in(target))
        self.assertIn("16 left out", program.out[-1])

    def test_fits_other_sizes_in_on_black(self):
        self.store(1)
        wide = jpeg((200, 30, 30), 128, 32)
        (self.folder / f"{moment(1)}0101.jpg").write_bytes(wide)
        (self.folder / f"{moment(2)}0101.png").write_bytes(plain((30, 30, 200), 20, 40))
        _, target = self.make("film.mp4")
        self.assertEqual((WIDTH, HEIGHT), (probe(target)["width"], probe(target)["height"]))
        self.expect_colours([COLOURS[0], (200, 30, 30), (30, 30, 200)], colours_in(target))
        raw = run("ffmpeg", "-loglevel", "error", "-i", str(target), "-f", "rawvideo", "-pix_fmt", "rgb24", "pipe:1")
        corners = [tuple(raw[n * WIDTH * HEIGHT * 3 :][:3]) for n in (1, 2)]
        self.expect_colours([(0, 0, 0)] * 2, corners)
        _, target = self.make("film.mp4", "--size", "101x33")
        self.assertEqual((100, 32), (probe(target)["width"], probe(target)["height"]))

    def test_writes_date_and_camera_into_the_pictures(self):
        self.store(2, pictures=[jpeg((0, 0, 120), 640, 360)])
        _, target = self.make("film.mp4", "--stamp")
        raw = run("ffmpeg", "-loglevel", "error", "-i", str(target), "-f", "rawvideo", "-pix_fmt", "gray", "pipe:1")
        lower, upper = raw[640 * 330 : 640 * 360], raw[: 640 * 300]
        self.assertGreater(sum(1 for value in lower if value > 200), 300)
        self.assertEqual(0, sum(1 for value in upper if value > 200))

    def test_takes_the_place_of_an_older_film_only_when_whole(self):
        self.store(4)
        target = self.out / "film.mp4"
        target.write_bytes(b"old")
        program = self.film("2007-01-01", "2007-01-02", str(target))
        self.assertEqual(1, program.wait(60))
        self.assertEqual(b"old", target.read_bytes())
        self.make("film.mp4")
        self.assertEqual("4", probe(target)["nb_read_frames"])

    def test_touches_neither_settings_nor_images(self):
        self.store(4)
        before = {p: p.stat().st_mtime_ns for p in self.house.root.rglob("*")}
        self.make("film.mp4")
        self.assertEqual(before, {p: p.stat().st_mtime_ns for p in self.house.root.rglob("*")})


class RefusalTest(FilmCase):
    def path_with(self, **programs):
        """A PATH that has only these programs, which are shell scripts."""
        folder = Path(tempfile.mkdtemp(prefix="velmora-path-"))
        self.addCleanup(shutil.rmtree, folder)
        for name, text in programs.items():
            (folder / name).write_text(f"#!/bin/sh\n{text}\n")
            (folder / name).chmod(0o755)
        return {"PATH": str(folder)}

    def test_says_what_is_missing(self):
        self.store(3)
        out = str(self.out / "film.mp4")
        days = ("2006-03-01", "2006-03-02")
        self.expect_failure(self.film("2005-01-01", "2005-01-02", out), "no images")
        self.expect_failure(self.film(*reversed(days), out), "no images")
        self.expect_failure(self.house.start("--film", "0:1", *days, out), "no camera 0:1")
        self.expect_failure(self.film(*days, str(self.out / "film.avi")), ".webm")
        away = self.house.storage.with_name("away")
        self.house.storage.rename(away)
        self.expect_failure(self.film(*days, out), "storage folder C:\\in\\ is not there")
        away.rename(self.house.storage)
        self.expect_failure(self.film(*days, str(self.out / "none" / "film.mp4")), "No such file")
        self.expect_failure(self.film(*days, out, env=self.path_with()), "not installed")
        no_h264 = self.path_with(ffmpeg="echo ' V....D gif   GIF'")
        self.expect_failure(self.film(*days, out, env=no_h264), "H.264")
        self.expect_failure(self.film(*days, out, env=self.path_with(ffmpeg="exit 0")), "H.264")

    def test_says_why_ffmpeg_failed(self):
        self.store(3)
        broken = "case \"$*\" in *encoders) echo ' V....D libx264  x';; *) echo 'No space left' >&2; exit 1;; esac"
        program = self.film("2006-03-01", "2006-03-02", str(self.out / "a.mp4"), env=self.path_with(ffmpeg=broken))
        self.expect_failure(program, "No space left")

    def test_bounds_the_memory_of_ffmpeg(self):
        self.store(3)
        limits = self.house.root / "limits"
        tells = f"/bin/cat /proc/self/limits >'{limits}'; exit 1"
        nosy = f"case \"$*\" in *encoders) echo ' V....D libx264  x';; *) {tells};; esac"
        target = str(self.out / "a.mp4")
        program = self.film("2006-03-01", "2006-03-02", target, env=self.path_with(ffmpeg=nosy))
        self.expect_failure(program, "ffmpeg failed")
        [line] = [line for line in limits.read_text().splitlines() if line.startswith("Max data size")]
        machine = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGESIZE")
        self.assertEqual(max(4 << 30, machine // 4 * 3), int(line.split()[3]))

    def test_is_not_made_when_its_end_could_not_be_written(self):
        self.store(3)
        fault = "Error writing trailer of file:/proc/self/fd/9: No space left on device"
        writes = f"for out; do :; done; /bin/cat >/dev/null; echo x >\"${{out#file:}}\"; echo '{fault}' >&2"
        full = f"case \"$*\" in *encoders) echo ' V....D libx264  x';; *) {writes};; esac"
        target = str(self.out / "a.mp4")
        program = self.film("2006-03-01", "2006-03-02", target, env=self.path_with(ffmpeg=full))
        self.expect_failure(program, f"{target} cannot be written: No space left on device")

    def test_fails_when_no_image_is_a_picture(self):
        self.store(3, pictures=[b"<html>" * 300])
        self.expect_failure(self.film("2006-03-01", "2006-03-02", str(self.out / "a.mp4")), "3 left out")

    def test_refuses_what_cannot_be_meant(self):
        good = ["2006-03-01", "2006-03-02", "a.mp4"]
        wrong = [
            ["--film", "0:0"],
            ["--film", "0:10", *good],
            ["--film", "garage", *good],
            ["--film", "0:0", "yesterday", *good[1:]],
            ["--film", "0:0", "2006-02-30", *good[1:]],
            ["--film", "0:0", *good, "more"],
        ]
        options = ("--hours=6", "--hours=6-6", "--hours=6-25", "--every=0", "--seconds=x", "--fps=0", "--size=10")
        wrong += [["--film", "0:0", *good, option] for option in options]
        wrong += [["--film", "0:0", *good, "--every=2", "--seconds=3"]]
        for words in wrong:
            program = self.house.start(*words)
            self.assertEqual(2, program.wait(20), words)
            self.assertIn("--help", program.err[-1])


class EndTest(FilmCase):
    """Stops in the middle, where the encoder is held up with its pipe full."""

    def setUp(self):
        super().setUp()
        noise = random.Random(8).randbytes(160 * 120 * 3)
        self.store(COUNT_AT_END, pictures=[encoded(b"P6 160 120 255\n" + noise)])

    def begin(self):
        program = self.film("2006-03-01", "2006-03-31", str(self.out / "film.mp4"), "--size", "64x48")
        [encoder] = until(lambda: self.encoders(program), 20, program.report)
        os.kill(encoder, signal.SIGSTOP)
        return program, encoder

    def encoders(self, program):
        """The program's child processes that are writing a film."""
        found = []
        for stat in Path("/proc").glob("[0-9]*/stat"):
            try:
                parent = stat.read_text().rsplit(")", 1)[1].split()[1]
                words = (stat.parent / "cmdline").read_bytes()
            except OSError:
                continue
            if parent == str(program.process.pid) and b"image2pipe" in words:
                found.append(int(stat.parent.name))
        return found

    def expect_gone(self, pid):
        until(lambda: not Path(f"/proc/{pid}").exists(), 20, f"the end of {pid}")
        self.expect_nothing_else()

    def test_leaves_nothing_when_interrupted(self):
        for how in (signal.SIGINT, signal.SIGTERM):
            program, encoder = self.begin()
            program.process.send_signal(how)
            self.assertEqual(INTERRUPTED, program.wait(20), program.report())
            self.expect_gone(encoder)

    def test_leaves_nothing_when_killed(self):
        program, encoder = self.begin()
        program.kill()
        self.expect_gone(encoder)

    def test_fails_when_ffmpeg_is_killed(self):
        program, encoder = self.begin()
        os.kill(encoder, signal.SIGKILL)
        self.expect_failure(program, "ffmpeg was ended")

    def test_goes_on_when_images_are_deleted(self):
        program, encoder = self.begin()
        for path in sorted(self.folder.iterdir())[COUNT_AT_END // 2 :]:
            path.unlink()
        os.kill(encoder, signal.SIGCONT)
        self.assertEqual(0, program.wait(60), program.report())
        shown = int(probe(self.out / "film.mp4")["nb_read_frames"])
        self.assertIn(f"{shown} images", program.out[-1])
        self.assertGreater(COUNT_AT_END, shown)
        self.assertIn(f"{COUNT_AT_END - shown} left out", program.out[-1])

    def test_fails_when_images_are_renamed(self):
        """As a program on this storage folder does with names of the older form."""
        older = [path.rename(path.with_name(path.name.replace("0101.", "."))) for path in self.folder.iterdir()]
        program, encoder = self.begin()
        for path in older:
            path.rename(path.with_name(path.name.replace(".", "0101.")))
        os.kill(encoder, signal.SIGCONT)
        self.expect_failure(program, "The images are being renamed. Begin again when that is done.")


class TerminalTest(FilmCase):
    def test_shows_its_progress_on_a_terminal_only(self):
        self.store(50)
        ours, theirs = pty.openpty()
        command = [VELMORA, "--program-folder", self.house.root, "--film", "0:0", "2006-03-01", "2006-03-02"]
        process = subprocess.Popen([*command, self.out / "film.mp4"], env=self.house.environment(), stderr=theirs)
        self.addCleanup(process.kill)
        os.close(theirs)
        seen = []
        reader = threading.Thread(target=self.read, args=(ours, seen), daemon=True)
        reader.start()
        self.assertEqual(0, process.wait(30))
        reader.join(10)
        self.assertIn(b"50 / 50 (100 %)", b"".join(seen))

    @staticmethod
    def read(terminal, seen):
        with open(terminal, "rb", buffering=0) as stream:
            try:
                while data := stream.read(4096):
                    seen.append(data)
            except OSError:
                pass  # the other end is closed


if __name__ == "__main__":
    house.main()
