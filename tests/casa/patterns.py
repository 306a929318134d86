#!/usr/bin/env python3
"""Checks that a literal that is no pattern of its form is found: an optimized build does not compile
it, and one without optimization stops where it is made.

Usage: patterns.py --cxx COMPILER --root ROOT
"""

import argparse
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = """#include "CmdDBLogger/Pattern.h"
#include <cstdio>
int main()
{{
    const {form} pattern("{literal}");
    std::printf("%zu\\n", pattern.before);
}}
"""
FITS = [("IntegerPattern", "%d,", 0), ("TextPattern", "nome = '%s' ", 8),
        ("CharacterPattern", "'%c',", 1), ("PercentPattern", "perc = %.2f", 7),
        ("TaxCodePattern", "'%02dT%02d.%02d',", 1)]
DOES_NOT_FIT = [("IntegerPattern", "%s,"), ("IntegerPattern", "12,"), ("IntegerPattern", "%d,%d,"),
                ("TextPattern", "'%d',"), ("TextPattern", "'s',"),
                ("CharacterPattern", "'%s',"), ("PercentPattern", "%.1f,"),
                ("TaxCodePattern", "'%02dT%02d',"), ("TaxCodePattern", "'%02dT%02d.%d',")]
tools = argparse.Namespace()


def build(folder, form, literal, *flags):
    """(exit code of compiling and linking, its output, the program)"""
    source = Path(folder, "pattern.cpp")
    source.write_text(SOURCE.format(form=form, literal=literal), encoding="utf-8")
    program = Path(folder, "pattern")
    done = subprocess.run([tools.cxx, "-std=c++17", *flags, "-I", tools.root, source, "-o", program],
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=120)
    return done.returncode, done.stdout, program


def run(program):
    done = subprocess.run([program], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=60)
    return done.returncode, done.stdout


class Patterns(unittest.TestCase):
    def test_one_that_fits_compiles_and_knows_its_conversion(self):
        for form, literal, before in FITS:
            for flags in (("-O2", "-DNDEBUG"), ("-O0",)):
                with self.subTest(form=form, literal=literal, flags=flags), \
                        tempfile.TemporaryDirectory() as folder:
                    code, output, program = build(folder, form, literal, *flags)
                    self.assertEqual(code, 0, output)
                    self.assertEqual(run(program), (0, f"{before}\n"))

    def test_one_that_does_not_fit_does_not_compile_with_optimization(self):
        for form, literal in DOES_NOT_FIT:
            if form == "TaxCodePattern":
                continue  # three conversions: not every compiler follows them to the end
            with self.subTest(form=form, literal=literal), tempfile.TemporaryDirectory() as folder:
                code, output, _ = build(folder, form, literal, "-O2", "-DNDEBUG")
                self.assertNotEqual(code, 0)
                self.assertIn("this literal lacks its conversion, or has another form's", output)

    def test_one_that_does_not_fit_is_asserted_without_optimization(self):
        for form, literal in DOES_NOT_FIT:
            with self.subTest(form=form, literal=literal), tempfile.TemporaryDirectory() as folder:
                code, output, program = build(folder, form, literal, "-O0")
                self.assertEqual(code, 0, output)
                code, output = run(program)
                self.assertNotEqual(code, 0)
                self.assertIn("fits", output)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cxx", required=True)
    parser.add_argument("--root", required=True)
    tools, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])
