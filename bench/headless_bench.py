#!/usr/bin/env python3
"""What the capture without windows costs a machine that it runs on for months: eight cameras, one tick a second.
Prints one line of JSON: resident memory, wake-ups and processor time for each second, and which of the windows'
libraries are loaded. 61 seconds are one round of ticks, with one pass over the cameras in it.

    bench/headless_bench.py BIN_FOLDER [SECONDS]"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "system"))
sys.dont_write_bytecode = True

from house import camera_lists, settings_text  # noqa: E402

CAMERAS, PICTURE_BYTES, DELAY_MS = 8, 200 * 1024, 50
FIRST_PASS_SECONDS = 30
WINDOW_LIBRARIES = ("libQt6Widgets", "libQt6Gui")
LIMIT_MB = 20


def tasks(process, name):
    """The text of that file for each thread."""
    return [path.read_text() for path in Path(f"/proc/{process}/task").glob(f"*/{name}")]


def wake_ups(process):
    return sum(
        int(line.split()[1])
        for status in tasks(process, "status")
        for line in status.splitlines()
        if line.startswith("voluntary_ctxt_switches")
    )


def processor_ms(process):
    return sum(int(text.split()[0]) for text in tasks(process, "schedstat")) / 1e6


def resident_mb(process):
    return int(Path(f"/proc/{process}/statm").read_text().split()[1]) * os.sysconf("SC_PAGESIZE") / 2**20


def window_libraries(process):
    maps = Path(f"/proc/{process}/maps").read_text()
    return [name for name in WINDOW_LIBRARIES if name in maps]


def await_first_pass(storage):
    end = time.monotonic() + FIRST_PASS_SECONDS
    while len(list(storage.glob("*/2*"))) < CAMERAS:
        if time.monotonic() > end:
            raise RuntimeError("the cameras were not captured")
        time.sleep(0.2)
    time.sleep(1)


def measure(process, seconds):
    wakes, busy, begun = wake_ups(process), processor_ms(process), time.monotonic()
    time.sleep(seconds)
    passed = time.monotonic() - begun
    mb = resident_mb(process)
    return {
        "resident_mb": round(mb, 1),
        "resident_mb_limit": LIMIT_MB,
        "resident_mb_met": mb <= LIMIT_MB,
        "wake_ups_a_second": round((wake_ups(process) - wakes) / passed, 2),
        "processor_ms_a_second": round((processor_ms(process) - busy) / passed, 2),
        "window_libraries": window_libraries(process),
    }


def capture(binary, root, seconds):
    """Measures the program on that folder from its first pass on."""
    program = subprocess.Popen([binary, "--program-folder", root, "--capture"], stdout=subprocess.DEVNULL)
    try:
        await_first_pass(root / "drives" / "c" / "in")
        return measure(program.pid, seconds)
    finally:
        program.terminate()
        program.wait(60)


def main():
    binaries = Path(sys.argv[1]).resolve()
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 61
    root = Path(tempfile.mkdtemp(prefix="velmora-headless-"))
    words = [binaries / "bench_camera_server", str(DELAY_MS), str(PICTURE_BYTES)]
    server = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="ascii")
    try:
        (root / "drives" / "c" / "in").mkdir(parents=True)
        port = int(server.stdout.readline())
        urls = [f"http://127.0.0.1:{port}/cam0/{row}.png" for row in range(CAMERAS)]
        (root / "Velmora.ini").write_text(settings_text({"Control": {"Tempo": "1"}}, camera_lists(urls)), newline="")
        figures = capture(binaries / "velmora", root, seconds)
        print(json.dumps({"bench": "headless", "cameras": CAMERAS, "seconds": seconds, **figures}))
    finally:
        server.communicate()
        shutil.rmtree(root)


main()
