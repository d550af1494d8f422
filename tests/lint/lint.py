"""Checks of the source tree: lint.py RULE SOURCE_FOLDER. Prints what breaks the rule and how to fix it."""

import re
import subprocess
import sys
from pathlib import Path

import layers
import metrics

# The calls that hand libcurl its work; TransferLoop makes them.
CURL_USERS = [
    "Authorities.cpp", "ConnectedStream.cpp", "Curl.cpp", "HttpClient.cpp", "SmtpClient.cpp", "TransferLoop.cpp",
]
MAX_LINES = 500


def tracked(root, *endings):
    """The project's files that git tracks or would add, by extension."""
    listed = subprocess.run(
        ["git", "-C", root, "ls-files", "-co", "--exclude-standard"], capture_output=True, text=True, check=False
    ).stdout.splitlines()
    names = listed or [str(p.relative_to(root)) for p in Path(root).rglob("*") if "build" not in p.parts]
    return [Path(root, name) for name in names if name.endswith(endings) and Path(root, name).is_file()]


def lines_matching(files, pattern):
    for path in files:
        for number, line in enumerate(path.read_text(encoding="utf-8", errors="replace").splitlines(), 1):
            if re.search(pattern, line):
                yield f"{path}:{number}: {line.strip()[:120]}"


def words(root):
    """No rule is explained by where it was written down, and nothing is left open."""
    ends = (".h", ".cpp", ".py", ".sh", ".md", ".txt", ".cmake", ".ui", "run", "test")
    # In pieces, so that this file does not contain the words itself.
    pattern = r"(?i)\bspeci" r"fications?\b|\bTO" r"DO\b|\bFIX" r"ME\b|GTEST_" r"SKIP|DIS" r"ABLED_"
    return list(lines_matching(tracked(root, *ends), pattern)), "State the rule and its reason; finish what is open."


def keys(root):
    """Keys and sections of the settings stand in one table. Controls of windows have some of their names."""
    table = Path(root, "src", "settings", "Keys.h")
    names = "|".join(sorted(set(re.findall(r'\bu"([A-Za-z]\w*)"', table.read_text(encoding="utf-8")))))
    files = [p for p in tracked(root, ".h", ".cpp") if p.is_relative_to(Path(root, "src")) and p != table]
    below_windows = [p for p in files if p.parent.name not in ("ui", "app")]
    found = list(lines_matching(below_windows, rf'(\bu|QStringLiteral\(|QLatin1String\()"({names})"'))
    return found, "Take the key from settings/Keys.h."


def sleeps(root):
    """No test waits for time to pass."""
    files = [p for p in tracked(root, ".cpp", ".h") if "tests" in p.parts]
    pattern = r"\b(sleep_for|sleep_until|usleep|nanosleep|qSleep|qWait\(|msleep)\b"
    return list(lines_matching(files, pattern)), "Use the fake clock, a signal spy, or a bounded wait for a condition."


def includes(root):
    """libcurl stays where it belongs; which layer includes which is for the rule "layers"."""
    files = [p for p in tracked(root, ".h", ".cpp") if p.parent.parent == Path(root, "src")]
    others = [p for p in files if p.name not in CURL_USERS]
    found = list(lines_matching(others, r'#include "net/Curl.h"'))
    found += lines_matching([p for p in files if p.name != "Curl.h"], r"#include <curl/")
    return found, f"Only {', '.join(CURL_USERS)} use libcurl, by the functions of Curl.h."


def sizes(root):
    """No file grows until it should be several."""
    found = []
    for path in tracked(root, ".h", ".cpp", ".py"):
        count = len(path.read_text(encoding="utf-8", errors="replace").splitlines())
        if count > MAX_LINES:
            found.append(f"{path}: {count} lines")
    return found, f"Split it: a file has {MAX_LINES} lines at most."


def vocabulary(root):
    """The table of names agrees with the code and with clang-tidy's exceptions."""
    table = Path(root, "docs/vocabulary.md").read_text(encoding="utf-8")
    rows = re.findall(r"^\| `(\w+)` \| [^|]+ \| ([\w ]+) \| `([^`]+)` \|$", table, re.M)
    found = [
        f"docs/vocabulary.md: {name} is not in {file}"
        for name, _, file in rows
        if not Path(root, file).is_file() or not re.search(rf"\b{name}\b", Path(root, file).read_text(encoding="utf-8"))
    ]
    tidy = Path(root, ".clang-tidy").read_text(encoding="utf-8")
    for option, kind, rule in (
        ("FunctionIgnoredRegexp", "function", r"[A-Z].*|.*_.*"),
        ("ClassIgnoredRegexp", "class", r"[a-z].*"),
        ("PrivateMemberIgnoredRegexp", "row control", r".*"),
    ):
        excepted = set(re.search(rf"{option}, value: '\^\(([^)]*)\)", tidy).group(1).split("|"))
        named = {name for name, k, _ in rows if k == kind and re.fullmatch(rule, name)}
        found += [f".clang-tidy {option}: {name} is in only one of the two" for name in sorted(excepted ^ named)]
    return found, "Give each name one row in docs/vocabulary.md and one place in .clang-tidy."


def behaviour(root):
    """Every rule in the list of behaviour names tests that exist."""
    text = Path(root, "docs/behaviour.md").read_text(encoding="utf-8")
    tests = set()
    for path in tracked(root, "_test.cpp"):
        source = path.read_text(encoding="utf-8")
        tests |= {".".join(m) for m in re.findall(r"^(?:TEST|TEST_F|TEST_P|TYPED_TEST)\((\w+), (\w+)\)", source, re.M)}
    for path in tracked(root, "_test.py", "_case.py"):
        group = ""
        for name, case in re.findall(r"^class (\w+)|^    def (test_\w+)", path.read_text(encoding="utf-8"), re.M):
            group = name or group
            tests |= {f"{group}.{case}"} if case else set()
    found = []
    for rule in re.findall(r"^- .*(?:\n  .*)*", text, re.M):
        named = re.findall(r"`(\w+\.\w+)`", rule.partition(" → ")[2])
        found += [] if named else [f"no test: {rule}"]
        found += [f"no such test {name}: {rule}" for name in named if name not in tests]
    return found, "Give each rule, after an arrow, the tests that hold it: `Suite.Case`."


def format(root):
    """Every C++ file is formatted by clang-format."""
    files = [str(p) for p in tracked(root, ".h", ".cpp")]
    run = subprocess.run(
        ["clang-format-19", "--dry-run", "--Werror", *files], capture_output=True, text=True, check=False
    )
    found = re.findall(r"^\S+?:\d+:\d+: error", run.stderr, re.M)
    return found, "Run clang-format-19 -i on these files."


def main():
    rule, root = sys.argv[1:]
    rules = {f.__name__: f for f in (words, keys, sleeps, includes, sizes, vocabulary, behaviour, format)}
    rules |= {"layers": layers.check, "metrics": metrics.check}
    found, mend = rules[rule](root)
    print("\n".join(found))
    if found:
        print(f"\n{len(found)} found. {mend}")
    sys.exit(1 if found else 0)


main()
