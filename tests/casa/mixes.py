#!/usr/bin/env python3
"""Builds, links and runs a caller of the library with exceptions and RTTI on and off, by the C++ and
by the C compiler driver, against one build of the library.

Usage: mixes.py --cxx COMPILER --cc COMPILER --root ROOT --library ARCHIVE --sqlite LIBRARY
                --include FOLDER [--no-runtime] [--emulator COMMAND --libraries FOLDER]
With --no-runtime the library is one that was built without exceptions and RTTI.
"""

import argparse
import itertools
import os
import shlex
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(__file__).resolve().parent / "mixes.cpp"
EXPECTED = "5 ESTACIONAMENTO\n"
EXCEPTIONS = ("-fexceptions", "-fno-exceptions")
RTTI = ("-frtti", "-fno-rtti")
tools = argparse.Namespace()


def run(*command, env=None):
    done = subprocess.run([str(c) for c in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, env=env, timeout=300)
    return done.returncode, done.stdout


def build(folder, driver, *flags):
    """(exit code of compiling and linking, its output, the program)"""
    program = Path(folder, "caller")
    code, output = run(tools.cxx, "-std=c++17", "-Wall", "-Wextra", "-Werror", *flags, "-I", tools.root,
                       "-I", tools.include, f'-DSCHEMA="{tools.root / "sqlite/schema.sql"}"',
                       "-c", SOURCE, "-o", f"{program}.o")
    if code != 0:
        raise AssertionError(output)
    code, output = run(driver, f"{program}.o", tools.library, tools.sqlite, "-Wl,-rpath-link",
                       tools.sqlite.parent, "-o", program)
    return code, output, program


class Mixes(unittest.TestCase):
    def assert_runs(self, driver, *flags):
        with self.subTest(driver=driver, flags=flags), tempfile.TemporaryDirectory() as folder:
            code, output, program = build(folder, driver, *flags)
            self.assertEqual(code, 0, output)
            env = {**os.environ, "LD_LIBRARY_PATH": tools.libraries} if tools.libraries else None
            self.assertEqual(run(*shlex.split(tools.emulator), program, env=env), (0, EXPECTED))

    def assert_does_not_link(self, needed, driver, *flags):
        with self.subTest(driver=driver, flags=flags), tempfile.TemporaryDirectory() as folder:
            code, output, _ = build(folder, driver, *flags)
            self.assertNotEqual(code, 0)
            self.assertIn(needed, output)

    def test_a_caller_of_any_flags(self):
        for exceptions, rtti in itertools.product(EXCEPTIONS, RTTI):
            self.assert_runs(tools.cxx, exceptions, rtti)

    def test_a_caller_without_type_information_that_derives(self):
        for exceptions in EXCEPTIONS:
            self.assert_runs(tools.cxx, exceptions, "-fno-rtti", "-DWITH_DERIVED")

    def test_a_caller_with_type_information_that_derives(self):
        for exceptions in EXCEPTIONS:
            flags = (exceptions, "-frtti", "-DWITH_DERIVED")
            if tools.no_runtime:
                self.assert_does_not_link("typeinfo for CmdInsereRegOpeNF", tools.cxx, *flags)
            else:
                self.assert_runs(tools.cxx, *flags)

    def test_without_the_runtime(self):
        for derived in ((), ("-DWITH_DERIVED",)):
            flags = ("-fno-exceptions", "-fno-rtti", *derived)
            if tools.no_runtime:
                self.assert_runs(tools.cc, *flags)
            else:
                self.assert_does_not_link("vtable for __cxxabiv1::", tools.cc, *flags)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("cxx", "cc"):
        parser.add_argument("--" + name, required=True)
    for name in ("root", "library", "sqlite", "include"):
        parser.add_argument("--" + name, required=True, type=Path)
    for name in ("toolchain", "emulator", "libraries"):
        parser.add_argument("--" + name, default="")
    parser.add_argument("--no-runtime", action="store_true")
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
