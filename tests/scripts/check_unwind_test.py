"""The check of unwind entries finds what it is for, on programs that are made for it."""

import contextlib
import io
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "scripts"))

import check_unwind  # noqa: E402

# Of two functions that lie beside each other, the first is empty but for its entry: what GCC writes for the cold part
# of a function that has none. The second one is `real`.
SOURCE = """
    .text
    .type empty, @function
empty:
    .cfi_startproc
    .cfi_endproc
    .globl real
    .type real, @function
real:
    .cfi_startproc
    sub $8, %rsp
    .cfi_def_cfa_offset 16
    call thrower
    add $8, %rsp
    .cfi_def_cfa_offset 8
    ret
    .cfi_endproc
    .size real, .-real
    .section .note.GNU-stack,"",@progbits
"""
MAIN = """
#include <cstdio>
extern "C" void real();
extern "C" void thrower() { throw 7; }
int main() {
    try {
        real();
    } catch (int) {
        std::puts("caught");
    }
}
"""


def finds(path):
    said = io.StringIO()
    with contextlib.redirect_stdout(said):
        code = check_unwind.main([str(path)])
    return code, said.getvalue()


class CheckUnwind(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def program(self, linker):
        (self.folder / "main.cpp").write_text(MAIN)
        (self.folder / "real.S").write_text(SOURCE)
        path = self.folder / "program"
        subprocess.run(["g++", f"-fuse-ld={linker}", "-o", path, "main.cpp", "real.S"], cwd=self.folder, check=True)
        return path

    def test_a_program_whose_functions_are_all_found_is_well(self):
        path = self.program("bfd")
        self.assertEqual(finds(path), (0, ""))
        self.assertEqual(subprocess.run([path], capture_output=True, text=True, check=True).stdout, "caught\n")

    def test_a_function_behind_an_empty_entry_is_named(self):
        path = self.program("lld")
        code, said = finds(path)
        self.assertEqual(code, 1)
        self.assertIn("no exception can pass real at 0x", said)
        # And rightly so.
        self.assertNotEqual(subprocess.run([path], capture_output=True).returncode, 0)

    def test_a_program_without_the_table_fails(self):
        path = self.program("bfd")
        subprocess.run(["objcopy", "--remove-section", ".eh_frame_hdr", path], check=True)
        code, said = finds(path)
        self.assertEqual(code, 1)
        self.assertIn("there is no .eh_frame_hdr", said)

    def test_what_is_no_program_fails(self):
        path = self.folder / "text"
        path.write_text("#!/bin/sh\n")
        self.assertEqual(finds(path)[0], 1)
        self.assertEqual(finds(self.folder / "nothing")[0], 1)


if __name__ == "__main__":
    unittest.main()
