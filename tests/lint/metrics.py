"""Measures of the code: metrics.py SOURCE_FOLDER prints them as the rows of docs/metrics.md. Headers and sources are
read as text: the functions and members of a class are the declarations at its own level."""

import re
import sys
from pathlib import Path

MAX_FUNCTIONS = 15  # public, without constructors and destructor; signals are emitted, not called
MAX_MEMBERS = 12
MAX_LINES = 36  # of a function's body


def sources(root, *endings):
    return sorted(p for p in Path(root, "src").glob("*/*") if p.name.endswith(endings))


def bare(text):
    """Without comments, and with emptied strings."""
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
    return re.sub(r'"(?:\\.|[^"\\])*"', '""', text)


def closing(text, at):
    """Position after the bracket that closes the one at `at`."""
    depth = 0
    for place in range(at, len(text)):
        depth += {"{": 1, "}": -1}.get(text[place], 0)
        if depth == 0:
            return place + 1
    return len(text)


def own_level(body):
    """The text of a class's body with all inner braces emptied; a function's body ends its declaration."""
    level, at = "", 0
    while at < len(body):
        if body[at] == "{":
            level += "{};" if level.rstrip().endswith((")", "const", "override", "noexcept")) else "{}"
            at = closing(body, at)
        else:
            level += body[at]
            at += 1
    return level


def declarations(body, access):
    """(access, declaration) of each at the class's own level."""
    plain = re.sub(r"\bQ_(?!SIGNALS)[A-Z_]+(?:\([^)]*\))?", "", own_level(body))
    for piece in plain.split(";"):
        while label := re.match(r"\s*(public|protected|private|Q_SIGNALS)(?: Q_SLOTS)?\s*:(?!:)", piece):
            access = label.group(1)
            piece = piece[label.end():]
        piece = " ".join(piece.split())
        if piece:
            yield access, piece


def is_function(piece):
    # Initialisers and types such as std::function<void()> have brackets too.
    head = re.sub(r"<[^<>]*(?:<[^<>]*>[^<>]*)*>", "", piece.partition("=")[0] if "operator" not in piece else piece)
    return "(" in head


def measure(name, body, access):
    functions = members = 0
    for level, piece in declarations(body, access):
        if re.match(r"(using|friend|typedef|enum|class|struct|template <[^>]*> (class|struct)|static_assert)\b", piece):
            continue
        if is_function(piece):
            special = re.search(rf"(~|\b){name}\(", piece) or "operator" in piece or "= delete" in piece
            functions += level == "public" and not special
        elif not re.match(r"(static|inline static|constexpr)\b", piece):
            members += 1
    return functions, members


def classes(text):
    """(name, public functions, members) of each class in a file, inner ones too."""
    text = bare(text)
    for head in re.finditer(r"\b(?<!enum )(class|struct) (?:\w+::)*(\w+)(?: final)?(?:\s*:[^;{]*)?\s*\{", text):
        body = text[head.end():closing(text, head.end() - 1) - 1]
        access = "public" if head.group(1) == "struct" else "private"
        yield head.group(2), *measure(head.group(2), body, access)


def all_classes(root):
    """(file, name, public functions, members)."""
    for path in sources(root, ".h", ".cpp"):
        for name, functions, members in classes(path.read_text(encoding="utf-8")):
            yield path.relative_to(root), name, functions, members


def beyond(root):
    return [row for row in all_classes(root) if row[2] > MAX_FUNCTIONS or row[3] > MAX_MEMBERS]


def transitive_headers(root):
    """For each header of the project, how many others of the project it includes."""
    direct = {}
    for path in sources(root, ".h"):
        read = re.findall(r'^#include "(\w+/[\w.]+)"', path.read_text(encoding="utf-8"), re.M)
        direct[f"{path.parent.name}/{path.name}"] = [name for name in read if Path(root, "src", name).is_file()]
    counts = {}
    for header in direct:
        seen, waiting = set(), [header]
        while waiting:
            for name in direct.get(waiting.pop(), []):
                if name not in seen:
                    seen.add(name)
                    waiting.append(name)
        counts[header] = len(seen)
    return counts


def functions(text):
    """(line, head, lines of the body) of each function, also of those in a class. A body's "{" is alone in its line, as
    clang-format puts it; a head may go on over several lines, which are indented more than the first."""
    lines = text.splitlines()
    for at, line in enumerate(lines):
        if line.strip() != "{":
            continue
        margin = line.index("{")
        first = at - 1
        while first > 0 and len(lines[first]) - len(lines[first].lstrip()) > margin:
            first -= 1
        head = " ".join(part.strip() for part in lines[first:at])
        if "(" in head:
            end = next((n for n in range(at, len(lines)) if lines[n].rstrip(";") == " " * margin + "}"), len(lines))
            yield first + 1, head, end - at - 1


def all_functions(root):
    """(file, line, head, lines of the body)."""
    for path in sources(root, ".h", ".cpp"):
        for line, head, length in functions(path.read_text(encoding="utf-8")):
            yield path.relative_to(root), line, head, length


def middle(values):
    return values[len(values) // 2] if values else 0


def table(root):
    files = sources(root, ".h", ".cpp")
    lines = [len(p.read_text(encoding="utf-8").splitlines()) for p in files]
    lengths = sorted(row[3] for row in all_functions(root))
    found = list(all_classes(root))
    public = sorted(row[2] for row in found)
    members = sorted(row[3] for row in found)
    headers = transitive_headers(root)
    heaviest = max(headers, key=headers.get)
    long_files = [p for p, count in zip(files, lines) if count > 300]
    return [
        ("files (headers and sources)", len(files)),
        ("lines", sum(lines)),
        ("lines a file: median, longest", f"{middle(sorted(lines))}, {max(lines)}"),
        ("files over 300 lines", len(long_files)),
        ("functions written over several lines", len(lengths)),
        ("lines a function: median, longest", f"{middle(lengths)}, {max(lengths)}"),
        ("classes", len(found)),
        ("public functions a class: median, most", f"{middle(public)}, {max(public)}"),
        ("members a class: median, most", f"{middle(members)}, {max(members)}"),
        (f"classes over {MAX_FUNCTIONS} public functions", sum(n > MAX_FUNCTIONS for n in public)),
        (f"classes over {MAX_MEMBERS} members", sum(n > MAX_MEMBERS for n in members)),
        ("project headers behind a header: median, most",
         f"{middle(sorted(headers.values()))}, {headers[heaviest]} ({heaviest})"),
    ]


def check(root):
    """No function is longer than others. A class that is larger must say why, in docs/metrics.md."""
    text = Path(root, "docs/metrics.md").read_text(encoding="utf-8")
    reasons = dict(re.findall(r"^\| `(\w+)` \| ([^|\n]*\w{3}[^|\n]*) \|$", text, re.M))
    large = {name: row for row in beyond(root) for name in [row[1]]}
    found = [
        f"{file}: {name} has {functions} public functions and {members} members, and no reason in docs/metrics.md"
        for file, name, functions, members in large.values()
        if name not in reasons
    ]
    found += [f"docs/metrics.md: {name} is not that large any more" for name in reasons if name not in large]
    found += [
        f"{file}:{line}: {lines} lines: {head}" for file, line, head, lines in all_functions(root) if lines > MAX_LINES
    ]
    return found, (
        f"Split a function of more than {MAX_LINES} lines. Split a class of more than {MAX_FUNCTIONS} public "
        f"functions or {MAX_MEMBERS} members, or say in a sentence in docs/metrics.md why it is better whole."
    )


if __name__ == "__main__":
    for what, count in table(sys.argv[1]):
        print(f"| {what} | {count} |")
    for file, name, functions, members in beyond(sys.argv[1]):
        print(f"beyond: {file} {name}: {functions} public functions, {members} members")
