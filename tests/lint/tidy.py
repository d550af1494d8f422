"""Runs clang-tidy over the program's own sources: tidy.py SOURCE_FOLDER BUILD_FOLDER.

Nearly all of its time goes into the toolkit's headers, so many sources are checked at once, as one unit that
includes them: sources whose local names do not clash, from all the layers, compiled as the topmost one is, which sees
the others. A constant that several sources of a unit have gets another name in all but one. A unit is not checked
again while its sources, headers and configuration are as they were when it last passed.
"""

import hashlib
import json
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import layers

MOST = 60  # sources of a unit
CONSTANT = r"\bk[A-Z]\w*"
CLASH = "[clang-diagnostic-error"
LAYERS_OWN = r" -(?:DVELMORA_\w+=|I)\S+"  # what a layer defines, and where its headers are


def fingerprint(root):
    """One hash over everything that a finding can depend on except the sources themselves."""
    digest = hashlib.sha256(Path(root, ".clang-tidy").read_bytes())
    for path in sorted(Path(root, "src").rglob("*.h")) + sorted(Path(root, "src").rglob("*.ui")):
        digest.update(path.read_bytes())
    return digest


def local_names(source):
    """The local names that a source declares: since all sources are formatted, a declaration starts its line."""
    text = Path(source).read_text(encoding="utf-8")
    blocks = "\n".join(re.findall(r"^namespace \{$(.*?)^\} // namespace$", text, re.M | re.S))
    no_names = ("using ", "template ", "public:", "protected:", "private:")
    lines = [line for line in blocks.splitlines() if line[:1].isalpha() and not line.startswith(no_names)]
    bare = [re.sub(r"<[^<>]*>|\w+::| final\b", "", line) for line in lines]
    found = [re.search(r"(\w+)\s*(?:$|[({=;:\[])", line) for line in bare]
    aliases = re.findall(r"^using (\w+) =", blocks, re.M)
    return {match.group(1) for match in found if match} | set(aliases)


def shared_constants(root):
    """Constants that headers know, and that must therefore keep their name."""
    texts = (path.read_text(encoding="utf-8") for path in Path(root, "src").rglob("*.h"))
    return {name for text in texts for name in re.findall(CONSTANT, text)}


def units(sources, shared):
    """As few units as the sources' local names allow. shared: names that cannot be changed."""
    found = []
    for source in sources:
        names = {name for name in local_names(source) if name in shared or not re.fullmatch(CONSTANT, name)}
        for unit in found:
            if len(unit["sources"]) < MOST and not unit["names"] & names:
                break
        else:
            unit = {"sources": [], "names": set()}
            found.append(unit)
        unit["sources"].append(source)
        unit["names"] |= names
    return [unit["sources"] for unit in found]


def compiling(root, commands):
    """How a source of the topmost layer is compiled, with what belongs to the others: source, folder, command."""
    top = Path(root, "src", layers.listed(root)[-1])
    source = next(file for file in commands if Path(file).parent == top)
    own = sorted({word for c in commands.values() for word in re.findall(LAYERS_OWN, c["command"])})
    command = commands[source]
    words = re.sub(LAYERS_OWN, "", command["command"]).replace(" -isystem", f"{''.join(own)} -isystem", 1)
    return source, command["directory"], words


def constants_of(source):
    """The constants that it declares, those of a function too: they would hide another source's."""
    text = Path(source).read_text(encoding="utf-8")
    inner = re.findall(rf"^ +(?:static )?const(?:expr)? [\w:<>, ]+? ({CONSTANT})[ {{=;(]", text, re.M)
    return {name for name in local_names(source) if re.fullmatch(CONSTANT, name)} | set(inner)


def included(sources):
    """The lines that include the sources, with new names for constants that another one has."""
    known = set()
    for number, source in enumerate(sources):
        constants = constants_of(source)
        again = sorted(constants & known)
        known |= constants
        yield from (f"#define {name} {name}{number}\n" for name in again)
        yield f'#include "{source}" // NOLINT(bugprone-suspicious-include)\n'
        yield from (f"#undef {name}\n" for name in again)


def write_unit(number, sources, model, folder):
    """The compile command of a file that includes the sources. model: how it is compiled."""
    path = folder / f"unit{number}.cpp"
    path.write_text("".join(included(sources)))
    source, directory, words = model
    return {"directory": directory, "command": words.replace(source, str(path)), "file": str(path)}


def check(unit, sources, build, digest, passed):
    mine = digest.copy()
    for source in sources:
        mine.update(Path(source).read_bytes())
    mark = Path(passed, mine.hexdigest())
    if mark.exists():
        return ""
    run = subprocess.run(["clang-tidy-19", "-p", passed, "--quiet", unit], capture_output=True, text=True, check=False)
    if CLASH in run.stdout:
        # Perhaps only in the unit, whose rule overlooked a name: compiled alone, each source tells.
        alone = ["clang-tidy-19", "-p", build, "--quiet", *sources]
        run = subprocess.run(alone, capture_output=True, text=True, check=False)
    if run.returncode == 0:
        mark.touch()
        return ""
    return run.stdout


def main():
    root, build = sys.argv[1:]
    os.nice(19)  # runs beside all other tests and uses only the time in which they wait
    commands = {c["file"]: c for c in json.loads(Path(build, "compile_commands.json").read_text(encoding="utf-8"))}
    own = sorted(file for file in commands if file.startswith(str(Path(root, "src")) + os.sep))
    passed = Path(build, "tidy")
    passed.mkdir(exist_ok=True)
    work = units(own, shared_constants(root))
    model = compiling(root, {file: commands[file] for file in own})
    written = [write_unit(number, sources, model, passed) for number, sources in enumerate(work)]
    Path(passed, "compile_commands.json").write_text(json.dumps(written), encoding="utf-8")
    digest = fingerprint(root)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = [pool.submit(check, w["file"], s, build, digest, passed) for w, s in zip(written, work)]
        found = [text for text in (job.result() for job in jobs) if text]
    print("\n".join(found))
    print(f"{len(own)} sources in {len(work)} units, {len(found)} units with findings")
    if found:
        print("Mend what is found; a rule that does not fit the project is changed in .clang-tidy, with a reason.")
    sys.exit(1 if found or not own else 0)


main()
