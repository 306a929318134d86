#!/usr/bin/env python3
"""Installs the two Debian packages with dpkg, uses and removes them: into a folder of their own, whose
record of packages begins as this machine's, so that what they depend on is asked for.

Usage: packages.py --cmake CMAKE --packages FOLDER --work FOLDER
"""

import argparse
import os
import re
import shlex
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

CONSUMER = Path(__file__).resolve().parent / "consumer"
LIBRARY = "libecf-dblogger-dev"
BENCH = "ecf-bancada"
tools = argparse.Namespace()


def run(*command, env=None, cwd=None):
    command = [str(part) for part in command]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=env, cwd=cwd, timeout=300)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(command)}: exit code {done.returncode}\n{done.stdout}")
    return done.stdout


def dpkg(*arguments):
    return run("dpkg", f"--root={tools.root}", "--force-not-root", "--force-script-chrootless",
               f"--log={tools.work / 'dpkg.log'}", *arguments)


def package(name):
    found = list(tools.packages.glob(f"{name}_*.deb"))
    if len(found) != 1:
        raise AssertionError(f"{len(found)} packages {name} in {tools.packages}")
    return found[0]


def files_of(name):
    """The files that an installed package owns, below the root."""
    return [path for line in dpkg("-L", name).splitlines()
            if (path := tools.root / line.lstrip("/")).is_file()]


def field(name, wanted):
    return run("dpkg-deb", "-f", package(name), wanted).strip()


class Packages(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(tools.work, ignore_errors=True)
        tools.root = tools.work / "root"
        for folder in ("info", "updates", "triggers"):
            (tools.root / "var/lib/dpkg" / folder).mkdir(parents=True)
        shutil.copy("/var/lib/dpkg/status", tools.root / "var/lib/dpkg/status")

    def removed(self, name):
        """Removes the package, and expects every file of it to be gone."""
        files = files_of(name)
        self.assertTrue(files)
        dpkg("--purge", name)
        self.assertEqual([str(path) for path in files if path.exists()], [])

    def test_the_library(self):
        dpkg("-i", package(LIBRARY))
        owned = {str(path.relative_to(tools.root)) for path in files_of(LIBRARY)}
        self.assertFalse([path for path in owned if "/bin/" in path or "/man/" in path])
        self.assertIn(f"usr/share/doc/{LIBRARY}/docs/integration.md", owned)

        build = tools.work / "consumer"
        run(tools.cmake, "-S", CONSUMER, "-B", build, f"-DCMAKE_PREFIX_PATH={tools.root}/usr")
        run(tools.cmake, "--build", build)
        self.assertEqual(run(build / "consumer"), "5 ESTACIONAMENTO\n")

        info = next(tools.root.rglob("ecf_dblogger.pc"))
        env = {**os.environ, "PKG_CONFIG_PATH": str(info.parent)}
        flags = shlex.split(run("pkg-config", "--cflags", "--libs", "ecf_dblogger", env=env))
        run("g++", "-std=c++17", f'-DSCHEMA="{tools.root}/usr/share/ecf_dblogger/schema.sql"',
            CONSUMER / "consumer.cpp", *flags, "-o", tools.work / "by-pkg-config")
        self.assertEqual(run(tools.work / "by-pkg-config"), "5 ESTACIONAMENTO\n")
        self.removed(LIBRARY)

    def test_the_bench(self):
        dpkg("-i", package(BENCH))
        owned = {str(path.relative_to(tools.root)) for path in files_of(BENCH)}
        self.assertFalse([path for path in owned if "/include/" in path or path.endswith(".a")])

        program = tools.root / "usr/bin/ecf-bancada"
        documents = tools.root / "usr/share/doc" / BENCH
        self.assertEqual(run(program, "--version"), f"ecf-bancada {field(BENCH, 'Version')}\n")
        database = tools.work / "day.db"
        run(program, "run", documents / "examples/mercearia.jsonl", "--db", database)
        self.assertIn("CUPOM FISCAL", run(program, "show", database, "--coo", "5").upper())

        page = (tools.root / "usr/share/man/man1/ecf-bancada.1").read_text(encoding="utf-8")
        named = set(re.findall(r"docs/\w+\.md", page))
        self.assertTrue(named)
        self.assertEqual([name for name in sorted(named) if not (documents / name).is_file()], [])
        self.removed(BENCH)

    def test_both_at_once(self):
        dpkg("-i", package(LIBRARY), package(BENCH))
        self.assertEqual(set(files_of(LIBRARY)) & set(files_of(BENCH)), set())
        self.removed(BENCH)
        self.assertTrue(list(tools.root.rglob("libecf_dblogger.a")))
        self.removed(LIBRARY)

    def test_what_they_need_is_told(self):
        self.assertRegex(field(LIBRARY, "Depends"), r"^libsqlite3-dev \(>= [\d.]+\)$")
        self.assertIn("libsqlite3-0", field(BENCH, "Depends"))
        self.assertIn("libsodium", field(BENCH, "Depends"))


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--cmake", required=True)
    for name in ("packages", "work"):
        parser.add_argument("--" + name, required=True, type=lambda text: Path(text).resolve())
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
