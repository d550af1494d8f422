"""Runs clang-tidy over the program's own sources: tidy.py SOURCE_FOLDER BUILD_FOLDER.

A source whose text, headers and configuration are as they were when it last passed is not read again.
"""

import hashlib
import json
import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path


def fingerprint(root):
    """One hash over all that a finding can depend on but the source itself."""
    digest = hashlib.sha256(Path(root, ".clang-tidy").read_bytes())
    for path in sorted(Path(root, "src").rglob("*.h")) + sorted(Path(root, "src").rglob("*.ui")):
        digest.update(path.read_bytes())
    return digest


def check(source, build, digest, passed):
    mine = digest.copy()
    mine.update(Path(source).read_bytes())
    mark = Path(passed, mine.hexdigest())
    if mark.exists():
        return ""
    run = subprocess.run(
        ["clang-tidy-19", "-p", build, "--quiet", source], capture_output=True, text=True, check=False
    )
    if run.returncode == 0:
        mark.touch()
        return ""
    return run.stdout


def main():
    root, build = sys.argv[1:]
    commands = json.loads(Path(build, "compile_commands.json").read_text(encoding="utf-8"))
    own = sorted({c["file"] for c in commands if c["file"].startswith(str(Path(root, "src")) + os.sep)})
    passed = Path(build, "tidy")
    passed.mkdir(exist_ok=True)
    digest = fingerprint(root)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        found = [text for text in pool.map(lambda source: check(source, build, digest, passed), own) if text]
    print("\n".join(found))
    print(f"{len(own)} sources, {len(found)} with findings")
    if found:
        print("Mend what is found; a rule that does not fit the project is changed in .clang-tidy, with a reason.")
    sys.exit(1 if found or not own else 0)


main()
