#!/usr/bin/env python3
"""Builds the project as its users do, who have settings of their own: as a folder of another project,
and by itself, the library alone.

Usage: users_build.py --cmake CMAKE --cxx COMPILER --generator GENERATOR --root ROOT --work FOLDER
                      [--toolchain FILE --emulator COMMAND --libraries FOLDER]
"""

import argparse
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

PARENT = Path(__file__).resolve().parent / "parent"
CONSUMER = PARENT.parent / "consumer"
tools = argparse.Namespace()


def run(*command, env=None):
    command = [str(part) for part in command]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=env, timeout=300)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(command)}: exit code {done.returncode}\n{done.stdout}")
    return done.stdout


def configure(source, name, *options):
    build = tools.work / name
    compiler = f"-DCMAKE_TOOLCHAIN_FILE={tools.toolchain}" if tools.toolchain else \
        f"-DCMAKE_CXX_COMPILER={tools.cxx}"
    run(tools.cmake, "-S", source, "-B", build, "-G", tools.generator, compiler,
        "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", f"-DECF_ROOT={tools.root}", *options)
    return build


def commands(build):
    """The compiler's command of every source of the project."""
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    return {Path(entry["file"]).relative_to(tools.root).as_posix(): entry["command"].split()
            for entry in entries}


class UsersBuild(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(tools.work, ignore_errors=True)

    def assert_the_library_alone(self, compiled):
        self.assertIn("CmdDBLogger/VendaItem.cpp", compiled)
        self.assertEqual([name for name in compiled
                          if name.startswith(("bancada/", "tests/", "benchmarks/")) and
                          not name.startswith("tests/casa/consumer/")], [])

    def assert_flags(self, compiled, standard):
        for name, command in compiled.items():
            with self.subTest(source=name):
                self.assertEqual([re.sub("=gnu", "=c", flag) for flag in command
                                  if flag.startswith("-std=")], [standard])
                self.assertFalse([flag for flag in command if flag.startswith("-Werror")])

    def assert_programs_run(self, build):
        env = {**os.environ, "LD_LIBRARY_PATH": tools.libraries} if tools.libraries else None
        self.assertEqual(run(*shlex.split(tools.emulator), build / "consumer", env=env),
                         "5 ESTACIONAMENTO\n")
        self.assertEqual(run(*shlex.split(tools.emulator), build / "owner", build / "owner.db",
                             env=env), "kept\n")

    def test_a_folder_of_another_project(self):
        build = configure(PARENT, "parent", "-DCMAKE_CXX_STANDARD=20",
                          "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wnon-virtual-dtor -Wno-psabi")
        compiled = commands(build)
        self.assert_the_library_alone(compiled)
        self.assert_flags(compiled, "-std=c++20")
        output = run(tools.cmake, "--build", build)
        self.assertNotIn("warning:", output)
        self.assert_programs_run(build)
        # What is installed is the other project's to say.
        run(tools.cmake, "--install", build, "--prefix", tools.work / "prefix")
        self.assertEqual([path for path in (tools.work / "prefix").rglob("*") if path.is_file()], [])

    def test_the_library_by_itself(self):
        alone = ("-DECF_BANCADA=OFF", "-DECF_TESTS=OFF")
        for name, options, standard in (("alone", (), "-std=c++17"),
                                        ("alone-20", ("-DCMAKE_CXX_STANDARD=20",), "-std=c++20")):
            build = configure(tools.root, name, *alone, *options)
            compiled = commands(build)
            self.assert_the_library_alone(compiled)
            self.assert_flags(compiled, standard)
            run(tools.cmake, "--build", build)
            prefix = tools.work / f"{name}-prefix"
            run(tools.cmake, "--install", build, "--prefix", prefix)
            package = next(prefix.rglob("ecf_dblogger-config.cmake")).parent
            user = configure(CONSUMER, f"{name}-user", f"-Decf_dblogger_DIR={package}", *options)
            run(tools.cmake, "--build", user)
            self.assert_programs_run(user)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("cmake", "cxx", "generator"):
        parser.add_argument("--" + name, required=True)
    for name in ("root", "work"):
        parser.add_argument("--" + name, required=True, type=Path)
    for name in ("toolchain", "emulator", "libraries"):
        parser.add_argument("--" + name, default="")
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
