#!/usr/bin/env python3
"""Tries reached.py on a small source: what it counts, what the list takes out, and when it fails."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

REACHED = Path(__file__).resolve().parent / "reached.py"
SOURCE = """\
#include <cstdio>

constexpr int Twice(int value)
{
    return value * 2;
}

constexpr int FOUR = Twice(2);

int Sign(int value, bool whole)
{
    if (value < 0 && whole) {
        return -1;
    }
    switch (value) {
    case 7:
        return 7;
    default:
        break;
    }
    if (sizeof(int) == 4) {
        return value == 0 ? 0 : 1;
    }
    return FOUR;
}

int main()
{
    std::printf("%d", Sign(1, true) + Sign(-1, true));
}
"""
BODY = "src/a.cpp: constexpr int Twice(int value) => its body\n    The compiler's.\n\n"
LEFT = ("src/a.cpp: case 7:\n"
        "src/a.cpp: return 7;\n"
        "src/a.cpp: return FOUR;\n"
        "src/a.cpp: whole => false\n"
        "src/a.cpp: case 7 => true\n"
        "src/a.cpp: default => false\n"
        "src/a.cpp: value == 0 => true\n")


class Reached(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = Path(cls.folder.name).resolve()
        cls.build = cls.root / "build"
        cls.build.mkdir()
        (cls.root / "src").mkdir()
        (cls.root / "src" / "a.cpp").write_text(SOURCE)
        # Named from where the compiler runs, as a compiler cache names it.
        subprocess.run(["clang++", "-std=c++17", "-fprofile-instr-generate", "-fcoverage-mapping",
                        "../src/a.cpp", "-o", "a"], cwd=cls.build, check=True)
        subprocess.run([cls.build / "a"], check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, "LLVM_PROFILE_FILE": str(cls.build / "a.profraw")})

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def hold(self, entries, lines="100", branches="100", pattern="src/"):
        listed = self.root / "unreached.txt"
        listed.write_text(entries)
        done = subprocess.run(
            [sys.executable, REACHED, "--root", self.root, "--build", self.build, "--profile",
             self.build / "a.profraw", "--programs", self.build / "a", "--unreached", listed,
             "--missing", "--hold", "it", pattern, lines, branches],
            capture_output=True, text=True, check=False)
        return done.returncode, done.stdout + done.stderr

    def test_what_is_missing_is_counted_and_named(self):
        code, told = self.hold("")
        self.assertEqual(code, 1)
        self.assertIn("lines: 8 of 12, 66.7 % (limit 100)\nbranches: 6 of 10, 60.0 % (limit 100)\n",
                      told)
        for line in LEFT.splitlines() + ["src/a.cpp: return value * 2;"]:
            self.assertEqual(told.count(line + "\n"), 1, line)

    def test_the_limits_hold(self):
        self.assertEqual(self.hold("", "66", "60")[0], 0)
        self.assertEqual(self.hold("", "67", "60")[0], 1)
        self.assertEqual(self.hold("", "66", "60.1")[0], 1)

    def test_what_is_listed_is_not_counted(self):
        code, told = self.hold(BODY + LEFT + "    Why not.\n")
        self.assertEqual(code, 0, told)
        self.assertIn("branches: 6 of 6, 100.0 %", told)
        self.assertIn("not counted: 8\n", told)

    def test_an_entry_that_fits_nothing_fails(self):
        for stale in ("src/a.cpp: return -1;", "src/a.cpp: whole => true", "src/a.cpp: gone;",
                      "src/a.cpp: return 7;", "src/b.cpp: gone;",
                      "src/a.cpp: int Sign(int value, bool whole) => its body"):
            code, told = self.hold(BODY + LEFT + stale + "\n    Why not.\n")
            self.assertEqual(code, 1, stale)
            self.assertIn(stale.split(": ")[0], told)
        self.assertEqual(self.hold(BODY + LEFT + "    Why not.\n")[0], 0)

    def test_an_entry_has_a_reason(self):
        for entries in (LEFT, LEFT + "    Why.\nsrc/a.cpp: more\n", "    Why.\n",
                        "no entry\n    Why.\n"):
            code, told = self.hold(entries)
            self.assertEqual(code, 1, entries)
            self.assertIn("unreached.txt: ", told)

    def test_what_was_not_measured_fails(self):
        self.assertEqual(self.hold("", "0", "0", "other/")[0], 1)


if __name__ == "__main__":
    unittest.main()
