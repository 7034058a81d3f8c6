#!/usr/bin/env python3
"""lint.py BUILD [JOBS]: clang-tidy over the sources in src/, as BUILD compiles them; from the root. A source that was found clean is
not looked at again until it, a header of ours that it includes, its compile command, the checks or clang-tidy change:
its stamp, an empty file named by the hash of all these, lies in the user's cache and so serves every checkout."""

import hashlib
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TIDY = "clang-tidy-14"
ROOT = Path.cwd()
STAMPS = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache") / "torvex" / "lint"


def output(*command):
    return subprocess.run(command, text=True, capture_output=True, check=True).stdout


def dependencies(build):
    """What each object was made of, as the build has noted it; ours alone."""
    files, current = {}, None
    for line in output("ninja", "-C", str(build), "-t", "deps").splitlines():
        if not line.startswith(" "):
            current = files.setdefault(line.split(":")[0], []) if line else None
        elif current is not None:
            path = (build / line.strip()).resolve()
            if path.is_relative_to(ROOT) and not path.is_relative_to(ROOT / "build"):
                current.append(path)
    return files


def object_of(command):
    words = shlex.split(command)
    return words[words.index("-o") + 1]


class Stamps:
    def __init__(self, build):
        self.common = output(TIDY, "--version") + (ROOT / ".clang-tidy").read_text()
        self.dependencies = dependencies(build)
        self.hashes = {}

    def hash_of(self, path):
        if path not in self.hashes:
            self.hashes[path] = hashlib.sha256(path.read_bytes()).hexdigest()
        return self.hashes[path]

    def path(self, entry):
        """None for a source whose headers aren't known."""
        own = self.dependencies.get(object_of(entry["command"]))
        if not own:
            return None
        key = hashlib.sha256((self.common + entry["command"].replace(str(ROOT), "")).encode())
        for path in sorted(own):
            key.update(f"{path.relative_to(ROOT)} {self.hash_of(path)}\n".encode())
        return STAMPS / key.hexdigest()


def lint(build, source):
    """What is to be said of a source; "" when it is clean."""
    done = subprocess.run([TIDY, "-p", str(build), "--quiet", source], text=True, capture_output=True)
    return "" if done.returncode == 0 else (done.stdout or done.stderr)


def main(build, jobs):
    entries = [entry for entry in json.loads((build / "compile_commands.json").read_text())
               if Path(entry["file"]).is_relative_to(ROOT / "src")]
    if not entries:
        sys.exit(f"{build} compiles no source of src/")
    stamps = Stamps(build)
    waiting = [(entry["file"], stamp) for entry in entries
               if (stamp := stamps.path(entry)) is None or not stamp.exists()]
    STAMPS.mkdir(parents=True, exist_ok=True)
    findings = 0
    with ThreadPoolExecutor(jobs) as pool:
        for (_, stamp), said in zip(waiting, pool.map(lambda work: lint(build, work[0]), waiting)):
            if said:
                print(said)
                findings += 1
            elif stamp:
                stamp.touch()
    print(f"{len(waiting)} of {len(entries)} sources looked at, {findings} with findings")
    return 1 if findings else 0


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(f"usage: {sys.argv[0]} BUILD [JOBS]")
    sys.exit(main(Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else os.cpu_count()))
