#!/usr/bin/env python3
"""Installs the build into a folder, and builds and runs a small user of the library against it, as a
CMake project and with pkg-config; then moves the folder elsewhere and does it again.

Usage: install.py --cmake CMAKE --build BUILD --work FOLDER --cxx COMPILER --generator GENERATOR
                  [--flags FLAGS] [--toolchain FILE --emulator COMMAND --libraries FOLDER] [--bench]
"""

import argparse
import os
import re
import shlex
import shutil
import sqlite3
import subprocess
import sys
import unittest
from pathlib import Path

CONSUMER = Path(__file__).resolve().parent / "consumer"
EXPECTED = "5 ESTACIONAMENTO\n"

# Includes are written from this folder, see DOORS.
HEADERS = "include/ecf_dblogger"
DOORS = {
    "FiscalCommands.h", "Interpreter.h", "RtcClasses.h",
    "FiscalData/Cupom.h", "FiscalData/FiscalDataController.h", "FiscalData/FiscalDataTypes.h",
    "FiscalData/RateioSubtotal.h", "LogDatabase/LogDatabase.h", "MfdServices/GravaLog.h",
    "libs/BigInt.h", "libs/CharTools.h", "libs/Financial.h", "libs/FirmwareTypes.h",
}

tools = argparse.Namespace()


def run(*command, env=None):
    command = [str(part) for part in command]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=env, timeout=300)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(command)}: exit code {done.returncode}\n{done.stdout}")
    return done.stdout


def start(program, *arguments):
    # An installed program knows no sysroot, where a cross build's libraries are.
    env = {**os.environ, "LD_LIBRARY_PATH": tools.libraries} if tools.libraries else None
    return run(*shlex.split(tools.emulator), program, *arguments, env=env)


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(tools.work, ignore_errors=True)
        cls.prefix = tools.work / "first"
        run(tools.cmake, "--install", tools.build, "--prefix", cls.prefix)

    def by_cmake(self, prefix):
        build = Path(f"{prefix}-cmake")
        options = [f"-DCMAKE_CXX_COMPILER={tools.cxx}"]
        if tools.toolchain:
            # Packages are looked for in the sysroot alone, so this one's folder is told.
            package = next(prefix.rglob("ecf_dblogger-config.cmake")).parent
            options = [f"-DCMAKE_TOOLCHAIN_FILE={tools.toolchain}", f"-Decf_dblogger_DIR={package}"]
        run(tools.cmake, "-S", CONSUMER, "-B", build, "-G", tools.generator, *options,
            f"-DCMAKE_CXX_FLAGS={tools.flags}", f"-DCMAKE_PREFIX_PATH={prefix}")
        found = re.search("ecf_dblogger_DIR:[A-Z]+=(.*)", (build / "CMakeCache.txt").read_text())
        self.assertEqual(Path(found[1]).relative_to(prefix).name, "ecf_dblogger")
        run(tools.cmake, "--build", build)
        return build / "consumer", build / "owner"

    def by_pkg_config(self, prefix):
        programs = []
        for package, source in (("ecf_dblogger", "consumer"), ("ecf_logdatabase", "owner")):
            files = list(prefix.rglob(f"{package}.pc"))
            self.assertEqual(len(files), 1)
            env = {**os.environ, "PKG_CONFIG_PATH": str(files[0].parent)}
            flags = shlex.split(run("pkg-config", "--cflags", "--libs", package, env=env))
            schema = run("pkg-config", "--variable=schema", package, env=env).strip()
            programs.append(Path(f"{prefix}-pkg-config-{source}"))
            run(tools.cxx, "-std=c++17", *shlex.split(tools.flags), f'-DSCHEMA="{schema}"',
                CONSUMER / f"{source}.cpp", *flags, "-o", programs[-1])
        return programs

    def assert_usable(self, prefix):
        built = [self.by_cmake(prefix)]
        if not tools.toolchain:  # a sysroot's pkg-config knows nothing outside it
            built.append(self.by_pkg_config(prefix))
        for consumer, owner in built:
            self.assertEqual(start(consumer), EXPECTED)
            database = Path(f"{owner}.db")
            self.assertEqual(start(owner, database), "kept\n")
            with sqlite3.connect(database) as db:
                self.assertEqual(db.execute("SELECT * FROM totalizador_nao_fiscal").fetchall(),
                                 [(5, "X")])

    def test_a_user_builds_and_runs(self):
        self.assert_usable(self.prefix)

    def test_moved_elsewhere(self):
        moved = tools.work / "moved to another place"
        shutil.copytree(self.prefix, moved)
        hidden = self.prefix.rename(tools.work / "hidden")
        self.addCleanup(hidden.rename, self.prefix)
        self.assert_usable(moved)

    def test_the_headers_are_the_doors_alone(self):
        self.assertEqual({path.relative_to(self.prefix / HEADERS).as_posix()
                          for path in (self.prefix / "include").rglob("*") if path.is_file()}, DOORS)

    def test_every_header_needs_no_other_folder(self):
        for door in sorted(DOORS):
            with self.subTest(door=door):
                source = tools.work / "door.cpp"
                source.write_text(f'#include "{door}"\n')
                run(tools.cxx, "-std=c++17", "-Wall", "-Wextra", "-Wnon-virtual-dtor", "-Werror",
                    "-fsyntax-only", "-I", self.prefix / HEADERS, source)

    def test_another_major_version_is_refused(self):
        build = tools.work / "other-version"
        build.mkdir()
        (build / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(other LANGUAGES NONE)\n"
            "find_package(ecf_dblogger 99.0 REQUIRED)\n")
        with self.assertRaisesRegex(AssertionError, 'compatible\\s+with\\s+requested\\s+version'):
            run(tools.cmake, "-S", build, "-B", build / "build", "-G", tools.generator,
                f"-DCMAKE_PREFIX_PATH={self.prefix}")

    def test_no_file_tells_where_it_was_built_or_installed(self):
        told = []
        for path in self.prefix.rglob("*"):
            if path.suffix in (".cmake", ".pc", ".h", ".sql", ".1"):
                text = path.read_text(encoding="utf-8")
                told += [str(path) for place in (tools.work, tools.build, CONSUMER.parents[2])
                         if str(place) in text]
        self.assertEqual(told, [])

    def test_the_bench_and_its_page(self):
        bench = self.prefix / "bin/ecf-bancada"
        page = self.prefix / "share/man/man1/ecf-bancada.1"
        if not tools.bench:
            self.assertFalse(bench.exists() or page.exists())
            return
        self.assertRegex(start(bench, "--version"), r"\Aecf-bancada \d+\.\d+\.\d+\n\Z")
        text = page.read_text(encoding="utf-8")
        self.assertIn(".SH NAME\necf\\-bancada \\- ", text)
        # What it points to is there.
        named = set(re.findall(r"docs/\w+\.md", text))
        self.assertIn("docs/tape.md", named)
        documents = self.prefix / "share/doc/ecf-bancada"
        self.assertEqual([name for name in sorted(named) if not (documents / name).is_file()], [])
        self.assertIn("Lies in share/doc/ecf\\-bancada below", text)
        portuguese = self.prefix / "share/man/pt/man1/ecf-bancada.1"
        self.assertIn(".SH NOME\necf\\-bancada \\- ", portuguese.read_text(encoding="utf-8"))

    def test_the_documents_of_the_library(self):
        documents = self.prefix / "share/doc/libecf-dblogger-dev"
        self.assertTrue((documents / "docs/integration.md").is_file())
        self.assertTrue((documents / "examples/firmware/CMakeLists.txt").is_file())


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("cmake", "cxx", "generator"):
        parser.add_argument("--" + name, required=True)
    for name in ("build", "work"):
        parser.add_argument("--" + name, required=True, type=Path)
    for name in ("flags", "toolchain", "emulator", "libraries"):
        parser.add_argument("--" + name, default="")
    parser.add_argument("--bench", action="store_true")
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
