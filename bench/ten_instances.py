#!/usr/bin/env python3
"""Ten programs with a hundred cameras each on one machine and one storage folder: sets them up from the command
line, has them all capture one pass at the same time, and asks each for its status. Prints one line of JSON.

    bench/ten_instances.py BUILD_FOLDER

The cameras are nginx serving a thousand pictures of 200 KB."""

import json
import os
import resource
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "system"))
sys.dont_write_bytecode = True

from nginx_server import NginxServer  # noqa: E402

INSTANCES, CAMERAS, SIZE = 10, 100, 200_000


class Trial(unittest.TestCase):
    """A unittest.TestCase only for its cleanup."""

    def runTest(self):
        pass


def velmora(binary, folder, *options):
    return subprocess.run([binary, "--program-folder", folder, *options], capture_output=True, encoding="utf-8",
                          check=False)


def set_up(binary, folder, storage, urls):
    folder.mkdir()
    (folder / "list.txt").write_text("\n".join(urls))
    switches = [word for group in range(10) for word in ("--set", f"group.{group}=on")]
    for options in (["--set", f"storage={storage}", "--set", "timeout=30", *switches], ["--import-list", folder / "list.txt"]):
        done = velmora(binary, folder, *options)
        if done.returncode != 0:
            raise RuntimeError(done.stderr)


def main():
    binary = Path(sys.argv[1]).resolve() / "bin" / "velmora"
    trial = Trial()
    root = Path(tempfile.mkdtemp(prefix="velmora-ten-"))
    trial.addCleanup(shutil.rmtree, root, ignore_errors=True)
    server = NginxServer(trial, "user", "secret")
    storage = root / "in"
    storage.mkdir()
    body = os.urandom(SIZE)
    for index in range(INSTANCES * CAMERAS):
        (server.www / f"{index}.png").write_bytes(body)
    folders = [root / f"site{n}" for n in range(INSTANCES)]
    begun = time.monotonic()
    for n, folder in enumerate(folders):
        base = f"http://127.0.0.1:{server.port}"
        set_up(binary, folder, storage, [f"{base}/{n * CAMERAS + i}.png" for i in range(CAMERAS)])
    set_up_seconds = time.monotonic() - begun
    begun = time.monotonic()
    captures = [
        subprocess.Popen([binary, "--program-folder", folder, "--capture", "--passes", "1"], stdout=subprocess.DEVNULL)
        for folder in folders
    ]
    statuses = [capture.wait(300) for capture in captures]
    pass_seconds = time.monotonic() - begun
    begun = time.monotonic()
    told = [json.loads(velmora(binary, folder, "--status", "--json").stdout) for folder in folders]
    status_seconds = time.monotonic() - begun
    print(json.dumps({
        "instances": INSTANCES,
        "cameras": INSTANCES * CAMERAS,
        "good": sum(camera["state"] == "good" for one in told for camera in one["cameras"]),
        "ended_well": statuses.count(0),
        "set_up_seconds": round(set_up_seconds, 2),
        "pass_seconds": round(pass_seconds, 2),
        "status_of_all_seconds": round(status_seconds, 2),
        "largest_process_mb": resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024,
    }))
    trial.doCleanups()


main()
