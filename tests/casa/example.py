#!/usr/bin/env python3
"""Builds the example device against the installed package, and runs it: a day, a power cut, a database
that is locked, kills at any moment, calls of its disk that fail.

Usage: example.py --cmake CMAKE --build BUILD --work FOLDER --cxx COMPILER --generator GENERATOR
                  --source FOLDER [--without-runtime] [--toolchain FILE --emulator COMMAND
                  --libraries FOLDER]
With --without-runtime the build holds the libraries without exceptions and RTTI, and the device is
linked by the C compiler driver.
"""

import argparse
import contextlib
import os
import random
import shlex
import shutil
import sqlite3
import subprocess
import sys
import time
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

    def __init__(self, program, folder, **environment):
        env = {**os.environ, **environment}
        if tools.libraries:
            env["LD_LIBRARY_PATH"] = tools.libraries
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

    def send_all(self, commands):
        """Does not wait for the replies."""
        self.process.stdin.write("".join(command + "\n" for command in commands))
        self.process.stdin.flush()

    def replies(self):
        """What it still answers until it ends; the last line may have been cut by a kill."""
        output, _ = self.process.communicate(timeout=60)
        return output.split("\n")[:-1]

    def end(self):
        self.process.communicate(timeout=60)
        return self.process.returncode


RECEIPT = ("abre 12345678909", "vende 101 PAO 3 125", "vende 102 LEITE 1 499", "paga 1000", "fecha")
KILLS = 40
# What fails, and each how-many-th of them alone is tried: there are many writes.
CALLS = (("pwrite64", 7), ("pread64", 7), ("fdatasync", 1), ("ftruncate64", 1))


def effects(folder):
    """How much each command has left in the database."""
    receipts, closed = rows(folder, "SELECT count(*), total(valor_total > 0) FROM cupom_fiscal")[0]
    items = rows(folder, "SELECT count(*) FROM item_cupom_fiscal")[0][0]
    payments = rows(folder, "SELECT count(*) FROM pagamento_cupom")[0][0]
    return {"abre": receipts, "vende": items, "paga": payments, "fecha": int(closed)}


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

    def test_kills_at_any_moment(self):
        seed = random.SystemRandom().randrange(1 << 32)
        choices = random.Random(seed)
        folder = tools.work / "kills"
        folder.mkdir()
        program = self.programs[STANDARDS[0]]
        before = {"abre": 0, "vende": 0, "paga": 0, "fecha": 0}
        within = 0
        for kill in range(KILLS):
            with self.subTest(seed=seed, kill=kill):
                device = Device(program, folder)
                commands = RECEIPT * 20
                # Behind a reply, where the next commands are at work.
                self.assertEqual(device.send(commands[0]), "ok")
                device.send_all(commands[1:])
                time.sleep(choices.uniform(0, 0.02))
                device.process.kill()
                kept = 1 + len(device.replies())
                found = effects(folder)
                possible = []
                for count in (kept, kept + 1):
                    after = dict(before)
                    for command in commands[:count]:
                        after[command.split()[0]] += 1
                    possible.append(after)
                # All that was acknowledged, and the command at work whole or not at all.
                self.assertIn(found, possible)
                self.assertEqual(rows(folder, "PRAGMA integrity_check"), [("ok",)])
                within += kept < len(commands)
                before = found
        self.assertGreater(within, 0, "every kill came too late")
        print(f"{KILLS} kills, {within} of them within the commands", flush=True)

    @unittest.skipIf("--emulator" in " ".join(sys.argv), "the emulator loads its own libraries")
    def test_calls_of_the_disk_that_fail(self):
        shim = tools.work / "failing_calls.so"
        run("cc", "-shared", "-fPIC", Path(__file__).with_name("failing_calls.c"), "-o", shim, "-ldl")
        program = self.programs[STANDARDS[0]]
        for call, step in CALLS:
            faults = 0
            for forever in ("0", "1"):
                at = 1
                while self.one_call_fails(program, shim, call, str(at), forever):
                    faults += 1
                    at += step
            self.assertGreater(faults, 0, call)
            print(f"{call}: {faults} faults", flush=True)

    def one_call_fails(self, program, shim, call, at, forever):
        """Answers whether there was such a call."""
        folder = tools.work / "fault"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        told = folder / "told"
        with self.subTest(call=call, at=at, forever=forever):
            device = Device(program, folder, LD_PRELOAD=str(shim), FAIL_CALL=call, FAIL_AT=at,
                            FAIL_FOREVER=forever, FAIL_TOLD=str(told))
            with contextlib.suppress(BrokenPipeError):
                device.send_all(RECEIPT)
            replies = device.replies()
            if device.process.returncode == 0:
                self.assertEqual(len(replies), len(RECEIPT))
                expected = {"abre": 0, "vende": 0, "paga": 0, "fecha": 0}
                for command, reply in zip(RECEIPT, replies):
                    self.assertRegex(reply, "^(ok$|lost: .)")
                    # A closing changes the receipt's row, where there is one.
                    if reply == "ok" and (not command == "fecha" or expected["abre"]):
                        expected[command.split()[0]] += 1
                self.assertEqual(effects(folder), expected)
                log = (folder / "day.log").read_text()
                self.assertEqual(log.count("LogDatabase: the rows of this command are lost: "),
                                 len(RECEIPT) - replies.count("ok"))
            else:
                # It could not open the database, and has said so at once.
                self.assertEqual((device.process.returncode, replies), (1, []))
            # Whatever has failed, the next run goes on.
            again = Device(program, folder)
            self.assertEqual([again.send(command) for command in RECEIPT], ["ok"] * len(RECEIPT))
            self.assertEqual(again.end(), 0)
            self.assertEqual(rows(folder, "PRAGMA integrity_check"), [("ok",)])
        return told.exists()

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
        # CMake takes a relative prefix from the folder of the device, not from this one.
        parser.add_argument("--" + name, required=True, type=lambda path: Path(path).resolve())
    for name in ("toolchain", "emulator", "libraries"):
        parser.add_argument("--" + name, default="")
    parser.add_argument("--without-runtime", action="store_true")
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
