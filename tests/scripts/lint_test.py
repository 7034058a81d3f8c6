"""The lint looks at what has changed since it was found clean, and only there."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LINT = Path(__file__).resolve().parent.parent.parent / "scripts/lint.py"

# Stands in for the real one: what it minds is the word "bad", in a source or in a header beside it.
TIDY = """#!/bin/bash
[ "$1" != --version ] || { cat "$(dirname "$0")/version"; exit; }
! grep -n bad "${@: -1}" "$(dirname "${@: -1}")"/*.h
"""
BUILD = """rule compile
  command = g++ -MD -MF $out.d -o $out -c $in
  deps = gcc
  depfile = $out.d
build a.o: compile ../src/a.cpp
build b.o: compile ../src/b.cpp
"""


class Lint(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve()
        for name, content in {"bin/clang-tidy-14": TIDY, "bin/version": "14.0.6", ".clang-tidy": "Checks: x",
                              "src/a.h": "int f();", "src/a.cpp": '#include "a.h"\n', "src/b.cpp": "int g();\n",
                              "build/build.ninja": BUILD}.items():
            self.write(name, content)
        (self.root / "bin/clang-tidy-14").chmod(0o755)
        self.write("build/compile_commands.json", json.dumps(
            [{"directory": str(self.root / "build"), "file": str(self.root / f"src/{name}.cpp"),
              "command": f"g++ -o {name}.o -c {self.root}/src/{name}.cpp"} for name in "ab"]))

    def write(self, name, content):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content)

    def lint(self):
        """The exit code, and what is said last."""
        subprocess.run(["ninja", "-C", "build"], cwd=self.root, check=True, capture_output=True)
        done = subprocess.run([sys.executable, str(LINT), "build"], cwd=self.root, text=True, capture_output=True,
                              env={**os.environ, "PATH": f"{self.root}/bin:{os.environ['PATH']}",
                                   "XDG_CACHE_HOME": str(self.root / "cache")})
        self.assertEqual(done.stderr, "")
        return done.returncode, done.stdout.splitlines()[-1]

    def test_what_was_clean_is_not_looked_at_again(self):
        self.assertEqual(self.lint(), (0, "2 of 2 sources looked at, 0 with findings"))
        self.assertEqual(self.lint(), (0, "0 of 2 sources looked at, 0 with findings"))

    def test_a_changed_source_or_header_is(self):
        self.lint()
        self.write("src/b.cpp", "int h();\n")
        self.assertEqual(self.lint(), (0, "1 of 2 sources looked at, 0 with findings"))
        self.write("src/a.h", "int h();")
        self.assertEqual(self.lint(), (0, "1 of 2 sources looked at, 0 with findings"))

    def test_other_checks_or_another_linter_look_at_all(self):
        self.lint()
        self.write(".clang-tidy", "Checks: y")
        self.assertEqual(self.lint(), (0, "2 of 2 sources looked at, 0 with findings"))
        self.write("bin/version", "15.0.0")
        self.assertEqual(self.lint(), (0, "2 of 2 sources looked at, 0 with findings"))

    def test_a_finding_fails_until_it_is_mended(self):
        self.write("src/a.h", "int bad();")
        self.assertEqual(self.lint(), (1, "2 of 2 sources looked at, 2 with findings"))
        self.assertEqual(self.lint(), (1, "2 of 2 sources looked at, 2 with findings"))
        self.write("src/a.h", "int good();")
        self.assertEqual(self.lint(), (0, "2 of 2 sources looked at, 0 with findings"))


if __name__ == "__main__":
    unittest.main()
