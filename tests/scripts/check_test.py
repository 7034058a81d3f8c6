"""The check of the house's rules finds what it looks for, and nothing else."""

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "scripts"))

import check  # noqa: E402


def lock(**package):
    return {"ui/package-lock.json": json.dumps({"packages": {"node_modules/x": package}})}


class Check(unittest.TestCase):
    def test_ranges_of_versions(self):
        for engines in ["*", ">=18", ">= 18.19", "^18.19.0 || >=20.5.0", "18 || 20", "18.x", ">=16 <19", "~18.20.1",
                        "14 - 18.20.4", ">=0.10.0", "^18"]:
            self.assertTrue(check.admits(engines, (18, 20, 4)), engines)
        for engines in [">=20", "^20.0.0 || >=22", ">=18.21", "<18", "16.x", "~18.19.0", ">18.20.4", "20 - 22",
                        "^16 || ^14"]:
            self.assertFalse(check.admits(engines, (18, 20, 4)), engines)

    def test_a_package_that_debians_node_does_not_run(self):
        self.assertEqual(list(check.packages(lock(engines={"node": ">=18"}))), [])
        self.assertEqual(list(check.packages(lock())), [])
        self.assertIn("needs Node >=20", "".join(check.packages(lock(engines={"node": ">=20"}))))

    def test_a_package_that_is_tied_to_a_host(self):
        self.assertIn("tied to the host", "".join(check.packages(lock(resolved="https://host.test/x.tgz"))))

    def test_includes_against_the_plan(self):
        self.assertEqual(list(check.against_the_plan({"host/A.h": ["platform/B.h"]})), [])
        self.assertIn("against the plan", "".join(check.against_the_plan({"platform/B.h": ["host/A.h"]})))
        self.assertIn("knows no room", "".join(check.against_the_plan({"attic/B.h": []})))

    def test_modules_that_know_each_other(self):
        self.assertEqual(list(check.modules_apart({
            "modules/forum/A.h": ["modules/forum/B.h", "modules/shared/C.h", "records/D.h"],
            "modules/newsflash/A.h": ["modules/messageBoard/B.h"],
            "modules/SiteModules.cpp": ["modules/newsflash/A.h", "modules/dynamicMenu/B.h"]})), [])
        for name, other in [("modules/forum/A.h", "modules/newsflash/B.h"),
                            ("modules/messageBoard/A.h", "modules/newsflash/B.h"),
                            ("modules/shared/A.h", "modules/forum/B.h"),
                            ("modules/forum/A.h", "modules/SiteModules.h")]:
            self.assertEqual(len(list(check.modules_apart({name: [other]}))), 1, name)

    def test_circles(self):
        self.assertEqual(check.circles({"a": ["b"], "b": ["c"], "c": []}, "files"), [])
        self.assertEqual(check.circles({"a": ["b"], "b": ["c"], "c": ["a"]}, "files"),
                         ["files include each other: a, b, c"])

    def test_names_alike(self):
        self.assertEqual(check.names_alike(["a/B", "a/C"]), [])
        self.assertEqual(check.names_alike(["a/B", "a/b"]), ["names differ in case alone: a/B, a/b"])

    def test_long_functions(self):
        def source(lines):
            return {"A.cpp": "int f() {\n" + "    g();\n" * (lines - 2) + "}\n"}

        self.assertEqual(list(check.functions(source(check.LONGEST_FUNCTION))), [])
        self.assertEqual(len(list(check.functions(source(check.LONGEST_FUNCTION + 1)))), 1)

    def test_long_files(self):
        self.assertEqual(list(check.sizes({"A.cpp": "\n" * check.LONGEST_FILE})), [])
        self.assertEqual(len(list(check.sizes({"A.cpp": "\n" * (check.LONGEST_FILE + 1)}))), 1)

    def test_work_left_undone(self):
        self.assertEqual(check.undone({"a": "All is done; a todo list is no fault."}), [])
        self.assertEqual(len(check.undone({"a": "fine\n// TO" "DO: more"})), 1)

    def test_what_does_not_belong_here(self):
        self.assertEqual(list(check.out_of_place({"a": "The part of a session that issues 3 tasks"})), [])
        for words in ["see Par" "t 3.4", "the specific" "ation says", "as issu" "e 12 asks", "in /wor" "k/main"]:
            self.assertEqual(len(list(check.out_of_place({"a": words}))), 1, words)

    def test_a_finding_shows_in_the_exit_code(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["git", "init", "-q"], cwd=folder, check=True)
            run = [sys.executable, str(ROOT / "scripts/check.py")]
            self.assertEqual(subprocess.run(run, cwd=folder).returncode, 0)
            (Path(folder) / "a").touch()
            (Path(folder) / "A").touch()
            found = subprocess.run(run, cwd=folder, text=True, capture_output=True)
            self.assertEqual((found.returncode, found.stdout), (1, "names differ in case alone: A, a\n"))


if __name__ == "__main__":
    unittest.main()
