#!/usr/bin/env python3
"""A film of a range of images made by the program, compared with ffmpeg given the same files directly, alternating
in one run. Prints one line of JSON; the pace, which must not be below its limit, is ffmpeg's time to the program's.

    bench/film_export.py BUILD_FOLDER [IMAGES] [ROUNDS]"""

import json
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "system"))
sys.dont_write_bytecode = True

from house import encode_folder_name  # noqa: E402

URL = "http://127.0.0.1:9/snap.jpg"
SIZE = "1280x720"


def make_images(folder, count):
    folder.mkdir(parents=True)
    words = f"-loglevel error -f lavfi -i testsrc2=size={SIZE}:rate=25 -frames:v {count} -q:v 4".split()
    subprocess.run(["ffmpeg", *words, "%06d.jpg"], cwd=folder, check=True)
    for number, path in enumerate(sorted(folder.iterdir())):
        clock = f"{number // 3600:02}{number // 60 % 60:02}{number % 60:02}"
        path.rename(folder / f"20060301_{clock}0101.jpg")


def seconds(command, folder):
    begun = time.monotonic()
    subprocess.run(command, cwd=folder, check=True, stdout=subprocess.DEVNULL)
    return time.monotonic() - begun


def main():
    binary = Path(sys.argv[1]).resolve() / "bin" / "velmora"
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 3
    root = Path(tempfile.mkdtemp(prefix="velmora-film-bench-"))
    try:
        folder = root / "drives" / "c" / "in" / encode_folder_name(URL)
        make_images(folder, count)
        (root / "Velmora.ini").write_text(f"[Liste0]\r\nlst0={URL}\r\n", encoding="ascii")
        ours = [binary, "--program-folder", root, "--film", "0:0", "2006-03-01", "2006-03-01", root / "ours.mp4"]
        words = "-loglevel error -nostdin -y -f image2 -pattern_type glob -framerate 25 -i".split()
        fitted = SIZE.replace("x", ":")
        filters = f"scale={fitted}:force_original_aspect_ratio=decrease,pad={fitted}:(ow-iw)/2:(oh-ih)/2:black,setsar=1"
        coder = "-c:v libx264 -crf 23 -movflags +faststart".split()
        by_hand = ["ffmpeg", *words, "*.jpg", "-vf", filters + ",format=yuv420p", *coder, root / "hand.mp4"]
        times = {"ours": [], "hand": []}
        for _ in range(rounds):
            times["hand"].append(seconds(by_hand, folder))
            times["ours"].append(seconds(ours, folder))
        ours_s, hand_s = statistics.median(times["ours"]), statistics.median(times["hand"])
        print(json.dumps({
            "bench": "film_export", "images": count, "size": SIZE, "seconds": round(ours_s, 2),
            "by_hand_seconds": round(hand_s, 2),
            "pace_to_hand": round(hand_s / ours_s, 3), "pace_to_hand_limit": 0.95,
            "pace_to_hand_met": hand_s / ours_s >= 0.95,
        }))
    finally:
        shutil.rmtree(root)


main()
