#!/usr/bin/env python3
"""Builds the example device against the installed package, and runs it: a day, a power cut, a database
that is locked.

Usage: example.py --cmake CMAKE --build BUILD --work FOLDER --cxx COMPILER --generator GENERATOR
                  --source FOLDER [--without-runtime] [--toolchain FILE --emulator COMMAND
                  --libraries FOLDER]
With --without-runtime the build holds the libraries without exceptions and RTTI, and the device is
linked by the C compiler driver.
"""

import argparse
import os
import shlex
import shutil
import sqlite3
import subprocess
import sys
import unittest
from pathlib import Path

STANDARDS = ("17", "20")
tools = argparse.Namespace()


def run(*command):
    command = [str(part) for part in command]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          timeout=300)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(command)}: exit code {done.returncode}\n{done.stdout}")
    return done.stdout


def build(prefix, standard):
    """Builds the device and answers the program."""
    folder = tools.work / f"cxx{standard}"
    options = [f"-DCMAKE_CXX_COMPILER={tools.cxx}"]
    if tools.toolchain:
        package = next(prefix.rglob("ecf_dblogger-config.cmake")).parent
        options = [f"-DCMAKE_TOOLCHAIN_FILE={tools.toolchain}", f"-Decf_dblogger_DIR={package}"]
    if tools.without_runtime:
        options.append("-DDEVICE_WITHOUT_RUNTIME=ON")
    run(tools.cmake, "-S", tools.source, "-B", folder, "-G", tools.generator, *options,
        f"-DCMAKE_PREFIX_PATH={prefix}", f"-DCMAKE_CXX_STANDARD={standard}",
        "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -Wno-psabi")
    run(tools.cmake, "--build", folder)
    return folder / "device"


class Device:
    """The device at work, its host's commands sent one at a time."""

    def __init__(self, program, folder):
        env = {**os.environ, "LD_LIBRARY_PATH": tools.libraries} if tools.libraries else None
        self.process = subprocess.Popen(
            [*shlex.split(tools.emulator), str(program), str(folder / "day.db"),
             str(folder / "day.log")],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=env)

    def send(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().rstrip("\n")

    def cut_power(self):
        self.process.kill()
        self.process.communicate()

    def end(self):
        self.process.communicate(timeout=60)
        return self.process.returncode


def rows(folder, query):
    db = sqlite3.connect(folder / "day.db")
    try:
        return db.execute(query).fetchall()
    finally:
        db.close()


class Example(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        shutil.rmtree(tools.work, ignore_errors=True)
        prefix = tools.work / "prefix"
        run(tools.cmake, "--install", tools.build, "--prefix", prefix)
        cls.programs = {standard: build(prefix, standard) for standard in STANDARDS}

    def each(self, name):
        """(the program, a folder of its own) for every standard"""
        for standard, program in self.programs.items():
            folder = tools.work / f"{name}-{standard}"
            folder.mkdir()
            yield program, folder

    def test_a_receipt(self):
        for program, folder in self.each("receipt"):
            device = Device(program, folder)
            self.assertEqual(device.send("fecha"), "refused")
            self.assertEqual(device.send("abre 12345678909"), "ok")
            self.assertEqual(device.send("vende 101 PAO 3 125"), "ok")
            self.assertEqual(device.send("vende 102 LEITE 1 499"), "ok")
            self.assertEqual(device.send("fecha"), "refused")
            self.assertEqual(device.send("paga 1000"), "ok")
            self.assertEqual(device.send("fecha"), "ok")
            self.assertEqual(device.send("outro"), "refused")
            self.assertEqual(device.end(), 0)
            self.assertEqual(
                rows(folder, "SELECT cont_coo, cont_ccf, cpf_cnpj_consumidor, valor_subtotal, "
                             "valor_total, valor_troco FROM cupom_fiscal"),
                [(1, 1, "12345678909", 8.74, 8.74, 1.26)])
            self.assertEqual(
                rows(folder, "SELECT seq_item, cod_item, descricao, quantidade, valor_unitario, "
                             "valor_total FROM item_cupom_fiscal"),
                [(1, "101", "PAO", 3, 1.25, 3.75), (2, "102", "LEITE", 1, 4.99, 4.99)])
            self.assertEqual(rows(folder, "SELECT cont_coo, valor_pagamento FROM pagamento_cupom"),
                             [(1, 10)])

    def test_a_power_cut(self):
        for program, folder in self.each("power"):
            for coo in (1, 2, 3):
                device = Device(program, folder)
                self.assertEqual(device.send("abre 12345678909"), "ok")
                self.assertEqual(device.send("vende 101 PAO 3 125"), "ok")
                device.cut_power()
                self.assertEqual(
                    rows(folder, "SELECT cont_coo, count(*) FROM item_cupom_fiscal "
                                 "JOIN cupom_fiscal USING (cont_coo) GROUP BY cont_coo"),
                    [(number, 1) for number in range(1, coo + 1)])

    def test_what_is_lost_is_told(self):
        for program, folder in self.each("lost"):
            device = Device(program, folder)
            self.assertEqual(device.send("abre 12345678909"), "ok")
            other = sqlite3.connect(folder / "day.db", isolation_level=None)
            other.execute("BEGIN IMMEDIATE")
            self.assertRegex(device.send("vende 101 PAO 3 125"), "^lost: .*locked")
            other.execute("ROLLBACK")
            other.close()
            self.assertEqual(device.send("vende 102 LEITE 1 499"), "ok")
            self.assertEqual(device.end(), 0)
            self.assertEqual(rows(folder, "SELECT seq_item, cod_item FROM item_cupom_fiscal"),
                             [(2, "102")])
            self.assertIn("locked", (folder / "day.log").read_text())

    def test_a_file_that_is_no_database(self):
        for program, folder in self.each("other"):
            (folder / "day.db").write_text("no database, and longer than a header of one " * 9)
            before = (folder / "day.db").read_bytes()
            device = Device(program, folder)
            self.assertNotEqual(device.end(), 0)
            self.assertEqual((folder / "day.db").read_bytes(), before)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for name in ("cmake", "cxx", "generator"):
        parser.add_argument("--" + name, required=True)
    for name in ("build", "work", "source"):
        parser.add_argument("--" + name, required=True, type=Path)
    for name in ("toolchain", "emulator", "libraries"):
        parser.add_argument("--" + name, default="")
    parser.add_argument("--without-runtime", action="store_true")
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
