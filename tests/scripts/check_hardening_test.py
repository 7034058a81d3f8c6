"""The check of a release's hardening finds each thing that is missing."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "scripts"))

import check_hardening  # noqa: E402
import elf  # noqa: E402

SOURCE = """
#include <cstdio>
#include <cstring>
#include <vector>
int main(int count, char** arguments) {
    std::vector<char*> all(arguments, arguments + count);
    std::puts(all[static_cast<unsigned>(count) / 2]);
    char copy[64];
    std::strcpy(copy, arguments[count - 1]);
    std::printf("%s", copy);
}
"""
COMPILING = ["-O2", "-fPIE", "-fstack-protector-strong", "-U_FORTIFY_SOURCE", "-D_FORTIFY_SOURCE=3",
             "-D_GLIBCXX_ASSERTIONS"]
LINKING = ["-pie", "-Wl,-z,relro,-z,now,-z,noexecstack"]


class CheckHardening(unittest.TestCase):
    def lacks(self, *further):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "main.cpp").write_text(SOURCE)
            subprocess.run(["g++", *COMPILING, *LINKING, *further, "-w", "-o", "program", "main.cpp"], cwd=folder,
                           check=True, capture_output=True)
            return " ".join(check_hardening.lacks(elf.Elf(Path(folder) / "program")))

    def test_nothing_is_missing_of_what_is_built_so(self):
        self.assertEqual(self.lacks(), "")

    def test_what_is_missing_is_named(self):
        for flag, lack in [("-no-pie", "PIE"), ("-Wl,-z,lazy", "RELRO"), ("-Wl,-z,norelro", "RELRO"),
                           ("-Wl,-z,execstack", "holds no code"), ("-fno-stack-protector", "stack protectors"),
                           ("-D_FORTIFY_SOURCE=0", "FORTIFY"), ("-U_GLIBCXX_ASSERTIONS", "ASSERTIONS")]:
            with self.subTest(flag):
                self.assertIn(lack, self.lacks(flag))


if __name__ == "__main__":
    unittest.main()
