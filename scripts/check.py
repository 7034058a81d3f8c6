#!/usr/bin/env python3
"""What the rules of the house see without compiling: includes against the plan, circles of includes, sizes of
files, names that differ in case alone, and words of work left undone. Prints a line for each finding; the exit
code is 1 when there is one."""

import re
import subprocess
import sys
from collections import defaultdict

# Each room may use those before it, never those after it.
ROOMS = ("platform installation records replication accounts templates media delivery search modules authoring "
         "administration desk operations pages host cli").split()
LONGEST_FILE = 600
UNDONE = re.compile(r"\b(TODO|FIXME|XXX)\b|GTEST_SKIP|DISABLED_|not implemented yet|placeholder implementation")
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


def names_alike(names):
    seen = defaultdict(list)
    for name in names:
        seen[name.lower()].append(name)
    return [f"names differ in case alone: {', '.join(group)}" for group in seen.values() if len(group) > 1]


def undone(sources):
    for name, content in sources.items():
        for number, line in enumerate(content.split("\n"), 1):
            if UNDONE.search(line):
                yield f"{name}:{number}: {line.strip()}"


def main():
    sources = {name: read(name) for name in tracked("src/*.cpp", "src/*.h")}
    own = {name[len("src/"):]: INCLUDE.findall(content) for name, content in sources.items()}
    known = set(own)
    includes = {name: [other for other in others if other in known] for name, others in own.items()}
    written = {**sources, **{name: read(name) for name in tracked("tests/*.cpp", "tests/*.h", "ui/src/*.ts")}}
    findings = [*against_the_plan(includes), *circles(includes, "files"),
                *circles(folder_graph(includes), "folders"), *sizes(sources), *names_alike(tracked()),
                *undone(written)]
    for finding in findings:
        print(finding)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
