#!/usr/bin/env python3
"""What the rules of the house see without compiling: includes against the plan, circles of includes, sizes of
files and functions, names that differ in case alone, packages that Debian's Node doesn't run or that are tied to a
host, and words that don't belong into the repository. Prints a line for each finding; the exit code is 1 when there is
one."""

import json
import os
import re
import subprocess
import sys
from collections import defaultdict

# Each room may use those before it, never those after it.
ROOMS = ("platform installation records replication accounts templates media delivery search modules authoring "
         "administration desk operations pages host cli").split()
# The modules don't know each other but for these; all may use what they share.
MODULES_TOGETHER = {("newsflash", "messageBoard"), ("forum", "mail")}
LONGEST_FILE = 600
LONGEST_FUNCTION = 100
BIGGEST_FILE = 1024 * 1024
DEBIANS_NODE = (18, 20, 4)
# None of these patterns matches itself.
UNDONE = re.compile(r"\b(TOD[O]|FIXM[E]|XX[X])\b|GTEST_SKI[P]|DISABLE[D]_|not implemented ye[t]|placeholder implementatio[n]")
# A reader has the code and its docs: what they are made from, by whom and on which machine means nothing to them.
OUT_OF_PLACE = re.compile(r"\b[Pp]art \d+\.\d|\b(?i:specificatio[n])\b|\b(?i:issue|session|task) #?\d+\b"
                          r"|\b(spec|DESIGN|AUTHORING)\.md\b|(?<![\w.])/(work|home|root)/\w")
FUNCTION = re.compile(r"^( {0,4})(?!namespace|class|struct|enum|union|using|return|constexpr|const |[}#/ ])\S.*\{$")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def tracked(*patterns):
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "--", *patterns], text=True,
                           capture_output=True, check=True).stdout.split("\n")
    return [name for name in names if name]


def read(name):
    try:
        with open(name, encoding="utf-8", errors="replace") as file:
            return file.read()
    except (FileNotFoundError, IsADirectoryError):
        return ""


def room_of(path):
    return path.split("/", 1)[0]


def module_of(path):
    parts = path.split("/")
    return parts[1] if parts[0] == "modules" and len(parts) > 2 else None


def modules_apart(includes):
    """Each module is a room of its own; what stands beside their folders puts them together."""
    for name, others in includes.items():
        for other in others:
            one, its = module_of(name), module_of(other)
            inward = one and other.startswith("modules/") and not its
            if inward or (one and its and its not in (one, "shared") and (one, its) not in MODULES_TOGETHER):
                yield f"src/{name}: includes {other}; modules don't know each other"


def against_the_plan(includes):
    for name, others in includes.items():
        room = room_of(name)
        if room not in ROOMS:
            yield f"src/{name}: the plan knows no room {room}"
            continue
        for other in others:
            if room_of(other) in ROOMS and ROOMS.index(room_of(other)) > ROOMS.index(room):
                yield f"src/{name}: includes {other}, against the plan"


def circles(graph, what):
    """Each strongly connected set of more than one node, once (Tarjan)."""
    index, low, on_stack, stack, found = {}, {}, set(), [], []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        on_stack.add(node)
        for other in graph.get(node, ()):
            if other not in index:
                visit(other)
                low[node] = min(low[node], low[other])
            elif other in on_stack:
                low[node] = min(low[node], index[other])
        if low[node] == index[node]:
            group = []
            while True:
                member = stack.pop()
                on_stack.discard(member)
                group.append(member)
                if member == node:
                    break
            if len(group) > 1:
                found.append(sorted(group))

    sys.setrecursionlimit(10000)
    for node in list(graph):
        if node not in index:
            visit(node)
    return [f"{what} include each other: {', '.join(group)}" for group in found]


def folder_graph(includes):
    graph = defaultdict(set)
    for name, others in includes.items():
        for other in others:
            own, its = name.rsplit("/", 1)[0], other.rsplit("/", 1)[0]
            # A folder and the folders in it are one room.
            if not f"{own}/".startswith(f"{its}/") and not f"{its}/".startswith(f"{own}/"):
                graph[own].add(its)
    return graph


def sizes(sources):
    for name, content in sources.items():
        lines = content.count("\n")
        if lines > LONGEST_FILE:
            yield f"{name}: {lines} lines; split it"


def functions(sources):
    """Long ones, told by the indentation that the formatter gives."""
    for name, content in sources.items():
        lines, begins = content.split("\n"), {}
        for number, line in enumerate(lines, 1):
            if FUNCTION.match(line):
                begins.setdefault(len(line) - len(line.lstrip()), number)
            for indent in [indent for indent in begins if line.startswith(" " * indent + "}")]:
                length = number - begins.pop(indent) + 1
                if length > LONGEST_FUNCTION:
                    yield f"{name}:{number - length + 1}: a function of {length} lines; split it"


def weights(names):
    for name in names:
        if os.path.isfile(name) and os.path.getsize(name) > BIGGEST_FILE:
            yield f"{name}: {os.path.getsize(name)} bytes; what is so big is made, not kept"


def names_alike(names):
    seen = defaultdict(list)
    for name in names:
        seen[name.lower()].append(name)
    return [f"names differ in case alone: {', '.join(group)}" for group in seen.values() if len(group) > 1]


def lines_with(pattern, texts):
    for name, content in texts.items():
        if pattern.search(content):
            yield from ((name, number, line) for number, line in enumerate(content.split("\n"), 1)
                        if pattern.search(line))


def undone(texts):
    return [f"{name}:{number}: left undone: {line.strip()}" for name, number, line in lines_with(UNDONE, texts)]


def out_of_place(texts):
    for name in texts:
        if OUT_OF_PLACE.search(name):
            yield f"{name}: the name doesn't belong here"
    for name, number, line in lines_with(OUT_OF_PLACE, texts):
        yield f"{name}:{number}: doesn't belong here: {line.strip()}"


def compare(version, operator, wanted):
    """One condition of npm's; `wanted` may leave its last numbers out."""
    own = version[:len(wanted)]
    if operator in ("", "="):
        return own == wanted
    if operator == "^":
        return own[0] == wanted[0] and own >= wanted
    if operator == "~":
        return own[:2] == wanted[:2] and own >= wanted
    return {">=": own >= wanted, ">": own > wanted, "<=": own <= wanted, "<": own < wanted}[operator]


def admits(engines, version):
    """Whether a range of npm's, such as "^18.19.0 || >=20", holds the version."""
    for alternative in engines.split("||"):
        low_to_high = re.fullmatch(r"\s*(\S+) - (\S+)\s*", alternative)
        if low_to_high:
            alternative = ">={} <={}".format(*low_to_high.groups())
        conditions = re.findall(r"(>=|<=|>|<|=|\^|~)?\s*v?([\d.]+|[*xX])(?:\.[*xX])*", alternative)
        if all(number in "*xX" or compare(version, operator, tuple(map(int, number.strip(".").split("."))))
               for operator, number in conditions):
            return True
    return False


def packages(texts):
    for name, content in texts.items():
        if not name.endswith("package-lock.json"):
            continue
        for package, its in json.loads(content).get("packages", {}).items():
            engines = its.get("engines", {})
            needed = engines.get("node", "*") if isinstance(engines, dict) else "*"
            if not admits(needed, DEBIANS_NODE):
                yield f"{name}: {package} needs Node {needed}; Debian's is {'.'.join(map(str, DEBIANS_NODE))}"
            if "resolved" in its and not its.get("link"):
                yield f"{name}: {package} is tied to the host it was taken from"


def main():
    sources = {name: read(name) for name in tracked("src/*.cpp", "src/*.h")}
    own = {name[len("src/"):]: INCLUDE.findall(content) for name, content in sources.items()}
    known = set(own)
    includes = {name: [other for other in others if other in known] for name, others in own.items()}
    written = {**sources, **{name: read(name) for name in tracked("tests/*.cpp", "tests/*.h", "ui/src/*.ts")}}
    files = tracked()
    texts = {name: content for name in files if "\0" not in (content := read(name))}
    findings = [*against_the_plan(includes), *modules_apart(includes), *circles(includes, "files"),
                *circles(folder_graph(includes), "folders"), *sizes({**sources, **written}), *functions(sources),
                *weights(files), *names_alike(files), *undone(texts), *out_of_place(texts), *packages(texts)]
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
