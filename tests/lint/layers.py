"""The drawing of the layers in docs/architecture.md, the links in CMake and the includes must agree."""

import re
from pathlib import Path


def listed(root):
    """The layers, from the lowest up: src/CMakeLists.txt is the one list of them."""
    text = Path(root, "src/CMakeLists.txt").read_text(encoding="utf-8")
    return re.findall(r"^add_subdirectory\((\w+)\)", text, re.M)


def drawn(root):
    """Arrows of the drawing, as pairs from an upper layer to one below it."""
    text = Path(root, "docs/architecture.md").read_text(encoding="utf-8")
    picture = re.search(r"^```mermaid\n(.*?)^```", text, re.M | re.S)
    return set(re.findall(r"^ +(\w+) --> (\w+)$", picture.group(1), re.M)) if picture else set()


def linked(root):
    """The layers that each layer's CMakeLists.txt lists after DEPENDS."""
    arrows = set()
    for path in Path(root, "src").glob("*/CMakeLists.txt"):
        module = re.search(r"velmora_module\((\w+)(.*?)\)", path.read_text(encoding="utf-8"), re.S)
        depends = re.search(r"\bDEPENDS((?:\s+[a-z]+)+)", module.group(2))
        arrows |= {(module.group(1), below) for below in (depends.group(1).split() if depends else [])}
    return arrows


def included(root):
    """Pairs of layers where one includes a header of the other, with a file that does."""
    found = {}
    for path in sorted(Path(root, "src").glob("*/*.[hc]*")):
        if path.suffix in (".h", ".cpp"):
            for below in re.findall(r'^#include "(\w+)/', path.read_text(encoding="utf-8"), re.M):
                if below != path.parent.name:
                    found.setdefault((path.parent.name, below), path)
    return found


def reachable(arrows, layer):
    below = {b for a, b in arrows if a == layer}
    return below.union(*(reachable(arrows, b) for b in below))


def check(root):
    """The drawing's arrows are CMake's links; each include follows them, and each is used."""
    picture, links, uses = drawn(root), linked(root), included(root)
    found = [f"docs/architecture.md: {a} --> {b} is drawn, but not linked" for a, b in sorted(picture - links)]
    found += [f"src/{a}/CMakeLists.txt: {a} --> {b} is linked, but not drawn" for a, b in sorted(links - picture)]
    found += [
        f"{file}: includes {b}, to which no arrow leads from {a}"
        for (a, b), file in sorted(uses.items())
        if b not in reachable(picture, a)
    ]
    # A link may stand for the layers below it too: app works with what ui shows.
    found += [
        f"docs/architecture.md: {a} --> {b} is drawn, but {a} includes nothing of it"
        for a, b in sorted(picture)
        if (a, b) not in uses
    ]
    return found, "Draw in docs/architecture.md what CMake links, and link what is included."
