"""A whole run of the program (start, settings, log, capture, deletion of old images, conformity, import, end) with
interference: one of its system calls fails, a different one each time, or it is killed. In any case nothing is
lost, nothing partial is left, and the next run puts everything right.

Without arguments a part drawn by lot; "all" does it to every call in every way ("./test --torture")."""

import errno
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from functools import partial
from pathlib import Path

from house import encode_folder_name, ill_formed_lines, parse_settings

WHOLE_RUN = os.environ.get("VELMORA_WHOLE_RUN", "")
FAILING_CALLS = os.environ.get("VELMORA_FAILING_CALLS", "")

WAYS = {
    "open": ("EIO", "EACCES", "EMFILE", "ENOSPC", "EINTR"),
    "read": ("EIO", "EINTR", "short"),
    "write": ("ENOSPC", "EIO", "EINTR", "short"),
    "pwrite": ("ENOSPC", "EIO", "EINTR", "short"),
    "rename": ("ENOSPC", "EIO", "EACCES"),
    "link": ("ENOSPC", "EIO", "EACCES"),
    "mkdir": ("ENOSPC", "EIO", "EACCES"),
    "unlink": ("EIO", "EACCES"),
    "close": ("EIO", "ENOSPC", "EINTR"),
    "stat": ("EIO", "EACCES", "EMFILE"),
    "getdents": ("EIO", "EACCES"),
    "truncate": ("EIO",),
}
FAILURES_OF_A_PART, KILLS_OF_A_PART = 60, 20
KILLS_OF_ALL = 1000
PROGRESS_EVERY = 200
LONGEST_RUN = 40  # seconds

CAMERAS = [f"http://cam/{name}.jpg" for name in "abc"]
CAPTURED, IMPORTED = CAMERAS[:2], CAMERAS[2]
BODY_BYTES = 50_000
SETTINGS = {
    "Control": {
        "StRep": "C:\\in\\", "Debug": "1", "Tempo": "60", "TIO": "5",
        "Dir": "C:\\card", "Drive": "C:", "Patern": "*.jpg", "ICam": "0", "ILien": "2",
    },
    "Liste0": {"LstAct": "1", **{f"lst{i}": url for i, url in enumerate(CAMERAS)}},
    "Groupe0": {"EffM1": "1", "lNew0": "5", "lNew1": "7", "BestTime1": "00:10:00"},
    "Other": {"kept": "as it is"},
}
COUNTERS = {"lNew0": 5, "lNew1": 7}
CHANGED = {"lNew0", "lNew1", "BestTime1"}  # by the program
SHORT_NAME, OLD_NAME, NEWEST_NAME = "20050607_080910.jpg", "20200101_0000000101.jpg", "20200501_0000000101.jpg"
CARD = {"holiday.jpg": b"one" * 30_000, "20240102_0304050203.jpg": b"two" * 90_000}


def body(url):
    line = url.encode() + b"\n"
    return line * (BODY_BYTES // len(line))


class Stage:
    """A program folder with some of everything in it."""

    def __init__(self, log):
        self.log = log
        self.root = Path(tempfile.mkdtemp(prefix="velmora-torture-"))
        self.storage = self.root / "drives" / "c" / "in"
        self.card = self.storage.parent / "card"
        for folder in (self.root / "windows", self.card, *(self.folder(url) for url in CAMERAS)):
            folder.mkdir(parents=True)
        text = "".join(
            f"[{section}]\r\n" + "".join(f"{key}={value}\r\n" for key, value in keys.items())
            for section, keys in self.settings().items()
        )
        (self.root / "windows" / "Velmora.ini").write_bytes(text.encode())
        (self.root / "Velmora.ini").write_bytes(b"[Control]\r\nStRep=C:\\before\r\n")
        (self.root / "Velmora.log").write_bytes(b"12:00:00 whole\n12:00:01 cut by a ki")
        self.images = {}  # path -> bytes of what was there before
        for url, name in ((CAMERAS[0], SHORT_NAME), (CAMERAS[1], OLD_NAME), (CAMERAS[1], NEWEST_NAME)):
            self.put(self.folder(url) / name, f"{url} {name}".encode() * 100)

    def settings(self):
        return SETTINGS | {"Control": SETTINGS["Control"] | {"Debug": "1" if self.log else "0"}}

    def folder(self, url):
        return self.storage / encode_folder_name(url)

    def put(self, path, content):
        path.write_bytes(content)
        self.images[path] = content

    def remove(self):
        shutil.rmtree(self.root, ignore_errors=True)

    def run(self, **environment):
        """(exit status, what it printed); the status of one that hangs is 3."""
        given = {"VELMORA_FAIL_UNDER": str(self.root), "LD_PRELOAD": FAILING_CALLS} if environment else {}
        done = subprocess.run(
            [WHOLE_RUN, self.root], env=os.environ | {"TZ": "UTC"} | given | environment, capture_output=True,
            timeout=LONGEST_RUN, check=False,
        )
        return done.returncode, done.stderr.decode(errors="replace")

    def kill_after(self, seconds):
        """True when the kill came before the end."""
        program = subprocess.Popen([WHOLE_RUN, self.root], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            program.wait(seconds)
        except subprocess.TimeoutExpired:
            program.kill()
        return program.wait() == -signal.SIGKILL

    def faults(self):
        """What is lost or partial, at any time."""
        return [*self.faults_of_images(), *self.faults_of_settings(), *self.faults_of_card()]

    def faults_of_images(self):
        for url in CAMERAS:
            whole = {body(url)} if url in CAPTURED else set(CARD.values())
            whole |= {content for path, content in self.images.items() if path.parent == self.folder(url)}
            for path in self.folder(url).iterdir():
                if not path.name.startswith(".velmora-") and path.read_bytes() not in whole:
                    yield f"{path} is not whole"
        names = {path.name for path in self.folder(CAMERAS[0]).iterdir()}
        if not any(name.startswith(SHORT_NAME[:15]) for name in names):
            yield f"{SHORT_NAME} is gone"
        if not (self.folder(CAMERAS[1]) / NEWEST_NAME).exists():
            yield f"{NEWEST_NAME} is gone"

    def faults_of_settings(self):
        old = self.root / "windows" / "Velmora.ini"
        now = (self.root / "Velmora.ini").read_bytes() if (self.root / "Velmora.ini").exists() else b""
        if old.exists():
            now = old.read_bytes()  # the one that counts at the next start
        if ill_formed_lines(now):
            yield f"settings with lines of no form: {ill_formed_lines(now)[:3]}"
        values = parse_settings(now.decode("cp1252"))
        for section, keys in self.settings().items():
            for key, value in keys.items():
                found = values.get(section, {}).get(key)
                if found != value and key not in CHANGED:
                    yield f"[{section}] {key}={value} became {found}"
        for key, least in COUNTERS.items():
            found = values.get("Groupe0", {}).get(key, "0")
            if int(found) < least:
                yield f"the counter {key} fell from {least} to {found}"

    def faults_of_card(self):
        for name, content in CARD.items():
            if (self.card / name).read_bytes() != content:
                yield f"the source {name} has changed"

    def faults_after_a_clean_run(self):
        yield from self.faults()
        for path in (self.root / "windows" / "Velmora.ini", self.root / "Velmora.lock"):
            if path.exists():
                yield f"{path.name} still stands in {path.parent.name}"
        yield from (f"{path} was left" for path in self.root.rglob(".velmora-*"))
        for url in CAPTURED:
            if body(url) not in [path.read_bytes() for path in self.folder(url).iterdir()]:
                yield f"no image of {url}"
        imported = {path.read_bytes() for path in self.folder(IMPORTED).iterdir()}
        yield from (f"{name} was not imported" for name, content in CARD.items() if content not in imported)
        if (self.folder(CAMERAS[0]) / SHORT_NAME).exists():
            yield f"{SHORT_NAME} has its short name still"
        if (self.root / "Velmora.ini").stat().st_mode & 0o077 and not self.settings_were_there:
            yield "others may read the settings"
        log = b"".join((self.root / name).read_bytes() for name in ("Velmora.log",))
        if self.log and (not log.endswith(b"\n") or b"cut by a ki\n" not in log):
            yield "the log has a line without its end"

    settings_were_there = True


def filled_stage(log):
    stage = Stage(log)
    for name, content in CARD.items():
        (stage.card / name).write_bytes(content)
    return stage


def counts(log):
    """How often a whole run makes a call of each kind."""
    stage = filled_stage(log)
    with tempfile.NamedTemporaryFile() as report:
        status, said = stage.run(VELMORA_FAIL_REPORT=report.name, VELMORA_FAIL_AT="0")
        lines = Path(report.name).read_text(encoding="utf-8").split("\n")
    faults = list(stage.faults_after_a_clean_run())
    stage.remove()
    if status != 0 or faults:
        raise AssertionError(f"a run to which nothing is done ends with {status}: {faults}\n{said}")
    return {kind: int(count) for kind, count in (line.split() for line in lines if line)}


def make_fail(log, case):
    """What went wrong after one call failed in one way; an empty text if nothing did."""
    kind, number, way = case
    stage = filled_stage(log)
    as_number = way if way == "short" else str(getattr(errno, way))
    try:
        status, said = stage.run(VELMORA_FAIL_CALL=kind, VELMORA_FAIL_AT=str(number), VELMORA_FAIL_AS=as_number)
        faults = [] if status in (0, 1) else [f"it ended with {status}"]
        faults += stage.faults()
        clean_status, clean_said = stage.run()
        faults += [] if clean_status == 0 else [f"the next run ended with {clean_status}"]
        faults += [f"after the next run: {fault}" for fault in stage.faults_after_a_clean_run()]
    except (subprocess.TimeoutExpired, OSError, ValueError) as error:
        return f"{kind} {number} {way}: {error}"
    finally:
        stage.remove()
    return f"{kind} {number} {way}: " + "; ".join(faults) + f"\n{said}{clean_said}" if faults else ""


def every_case(calls):
    return [(kind, number, way) for kind, ways in WAYS.items() for number in range(1, calls[kind] + 1) for way in ways]


def kill_at(log, seconds):
    """(whether the kill came in time, what went wrong)."""
    stage = filled_stage(log)
    try:
        killed = stage.kill_after(seconds)
        faults = stage.faults()
        status, said = stage.run()
        faults += [] if status == 0 else [f"the next run ended with {status}: {said}"]
        faults += [f"after the next run: {fault}" for fault in stage.faults_after_a_clean_run()]
    finally:
        stage.remove()
    return killed, f"killed after {seconds:.3f} s: " + "; ".join(faults) if faults else ""


class TortureTest(unittest.TestCase):
    """With the log on each camera's values are stored by themselves, without it those of a turn together."""

    ALL = False
    LOG = True
    maxDiff = None

    def setUp(self):
        self.lot = random.Random(20_011_109)
        self.workers = ThreadPoolExecutor(os.cpu_count())
        self.addCleanup(self.workers.shutdown)

    def results(self, work, cases):
        """The results as they arrive. A run of an hour reports its progress, and what it has found so far."""
        found = 0
        for number, result in enumerate(self.workers.map(work, cases), 1):
            found += 1 if result else 0
            if self.ALL and (result or number % PROGRESS_EVERY == 0):
                print(f"{number} of {len(cases)}, {found} with a fault", result, flush=True)
            yield result

    def test_loses_nothing_whichever_call_fails(self):
        calls = counts(self.LOG)
        for kind in WAYS:
            self.assertGreater(calls[kind], 0, f"no call of the kind {kind} was seen")
        cases = every_case(calls)
        chosen = self.lot.sample(cases, len(cases) if self.ALL else FAILURES_OF_A_PART)
        faults = [fault for fault in self.results(partial(make_fail, self.LOG), chosen) if fault]
        print(f"{len(chosen)} of {len(cases)} failures, {len(faults)} with a fault;", end=" ", flush=True)
        print(", ".join(f"{kind} {count}" for kind, count in Counter(kind for kind, _, _ in chosen).items()))
        self.assertEqual([], faults)

    def test_loses_nothing_whenever_it_is_killed(self):
        stage = filled_stage(self.LOG)
        began = time.monotonic()
        stage.run()
        whole = time.monotonic() - began
        stage.remove()
        moments = [self.lot.uniform(0, whole) for _ in range(KILLS_OF_ALL if self.ALL else KILLS_OF_A_PART)]
        ended = list(self.workers.map(partial(kill_at, self.LOG), moments))
        print(f"{len(moments)} kills, {sum(killed for killed, _ in ended)} before the end of the run")
        self.assertEqual([], [fault for _, fault in ended if fault])
        self.assertGreater(sum(killed for killed, _ in ended), len(moments) // 4)


class TortureWithoutLogTest(TortureTest):
    LOG = False


if __name__ == "__main__":
    if not (WHOLE_RUN and FAILING_CALLS):
        sys.exit("VELMORA_WHOLE_RUN and VELMORA_FAILING_CALLS must name what was built; start this test by ctest")
    if re.fullmatch("all", " ".join(sys.argv[1:])):
        TortureTest.ALL = True
        del sys.argv[1:]
    unittest.main(verbosity=2)
