"""Runs of ecf-bancada that are interrupted, stopped, started twice, or short of room.

Usage: run_signals.py PROGRAM
"""
import os
import re
import pathlib
import resource
import signal
import sqlite3
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))

FIRST = '{"cmd":"leitura_x","em":"2026-03-02 07:50:00"}\n'
NEXT = '{"cmd":"leitura_x"}\n'
HALF = '{"cmd":"lei'

RATE = ('{"cmd":"insere_aliquota","em":"2026-03-02 07:50:00","tributacao":"T","indice":1,'
        '"percentual":"18.00"}\n')
ITEM = ('{"cmd":"vende_item","codigo":"7896000101501","descricao":"' + 20 * "x" + '",'
        '"quantidade":"1","valor_unitario":"1.00","tributacao":"T","indice":1}\n')

DEADLINE_S = 60


class Runs(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="ecf-run-")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def start(self, *arguments, **options):
        process = subprocess.Popen([PROGRAM, "run", *arguments], cwd=self.folder, text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, **options)
        self.addCleanup(self.end, process)
        return process

    @staticmethod
    def end(process):
        if process.poll() is None:
            process.kill()
        process.communicate()

    def run_whole(self, *arguments, tape="", **options):
        return subprocess.run([PROGRAM, "run", *arguments], cwd=self.folder, input=tape, text=True,
                              capture_output=True, timeout=DEADLINE_S, check=False, **options)

    def reply(self, process):
        """The next line of a run's output, which it writes as soon as the line is durable."""
        return process.stdout.readline()

    def rows(self, name="db"):
        with sqlite3.connect(self.folder / name) as database:
            return database.execute("SELECT count(*) FROM outros_documentos").fetchone()[0]

    def begin(self, *options):
        """A run that has executed two commands and waits, within a line, for the rest."""
        process = self.start("-", "--db", "db", "--replies", *options)
        process.stdin.write(FIRST + NEXT + HALF)
        process.stdin.flush()
        self.assertEqual(self.reply(process), "1 leitura_x: executed\n")
        self.assertEqual(self.reply(process), "2 leitura_x: executed\n")
        return process

    def assert_summary(self, out, commands):
        self.assertRegex(out, rf"(?m)^commands run +{commands}$")
        self.assertIn("  outros_documentos ", out)

    def test_a_signal_ends_a_waiting_run_with_its_summary(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number):
                process = self.begin("--append")
                process.send_signal(number)
                out, err = process.communicate(timeout=DEADLINE_S)
                self.assertEqual(process.returncode, -number)
                self.assert_summary(out, 2)
                self.assertEqual(err, f"ecf-bancada: ended by signal {int(number)}; the tape was "
                                      "not run to its end, but to its line 2\n")
                self.assertFalse((self.folder / "db.lock").exists())
        self.assertEqual(self.rows(), 4)

    def test_what_follows_goes_on_behind_an_interrupted_run(self):
        process = self.begin("--memory", "memory")
        process.terminate()
        process.communicate(timeout=DEADLINE_S)
        done = self.run_whole("-", "--db", "db", "--memory", "memory", tape=FIRST + 2 * NEXT)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("continued behind line 2\n", done.stdout)
        self.assertEqual(self.rows(), 3)

    def test_a_signal_ends_a_run_that_never_waits(self):
        (self.folder / "tape").write_text(FIRST + 200000 * NEXT)
        process = self.start("tape", "--db", "db", "--replies")
        process.stdin.close()
        process.stdin = None
        self.reply(process)
        process.terminate()
        out, _ = process.communicate(timeout=DEADLINE_S)
        self.assertEqual(process.returncode, -signal.SIGTERM)
        self.assert_summary(out, self.rows())

    def test_a_signal_that_is_ignored_stays_so(self):
        process = self.start("-", "--db", "db", "--replies", preexec_fn=lambda: signal.signal(
            signal.SIGINT, signal.SIG_IGN))
        process.stdin.write(FIRST)
        process.stdin.flush()
        self.reply(process)
        process.send_signal(signal.SIGINT)
        out, err = process.communicate(NEXT, timeout=DEADLINE_S)
        self.assertEqual((process.returncode, err), (0, ""))
        self.assert_summary(out, 2)

    def test_a_stopped_run_shuts_a_second_one_out(self):
        for options in ((), ("--memory", "memory")):
            with self.subTest(options):
                process = self.begin("--append", *options)
                process.send_signal(signal.SIGSTOP)
                before = self.rows()
                done = self.run_whole("-", "--db", "db", "--append", *options,
                                      tape=FIRST + 2 * NEXT)
                self.assertEqual(done.returncode, 2)
                self.assertRegex(done.stderr, "^ecf-bancada: the database db is in use by another "
                                              "run, which holds .*db.lock\n$")
                self.assertEqual(done.stdout, "")
                self.assertEqual(self.rows(), before)  # a reader is not shut out
                process.send_signal(signal.SIGCONT)
                process.communicate(NEXT[len(HALF):], timeout=DEADLINE_S)
                self.assertEqual(process.returncode, 0)
                self.assertEqual(self.rows(), before + 1)

    def test_one_memory_has_one_run(self):
        process = self.begin("--memory", "memory")
        done = self.run_whole("-", "--db", "other", "--memory", "memory", tape=FIRST)
        self.assertEqual(done.returncode, 2)
        self.assertIn("the memory memory is in use by another run", done.stderr)
        self.assertFalse((self.folder / "other").exists())
        # By whatever name.
        (self.folder / "link").symlink_to("memory")
        done = self.run_whole("-", "--db", "other", "--memory", "link", tape=FIRST)
        self.assertEqual(done.returncode, 2)
        process.communicate(NEXT[len(HALF):], timeout=DEADLINE_S)
        self.assertEqual(process.returncode, 0)

    def test_the_lock_of_a_killed_run_is_none(self):
        process = self.begin()
        process.kill()
        process.communicate(timeout=DEADLINE_S)
        self.assertTrue((self.folder / "db.lock").exists())
        done = self.run_whole("-", "--db", "db", "--append", tape=FIRST)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertFalse((self.folder / "db.lock").exists())
        self.assertEqual(self.rows(), 3)

    def limited(self, size):
        return {"preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))}

    def test_no_room_by_the_size_limit_of_the_process_costs_the_rows(self):
        self.run_whole("-", "--db", "db")
        tape = FIRST + 400 * NEXT
        done = self.run_whole("-", "--db", "db", tape=tape, **self.limited(512 * 1024))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assert_summary(done.stdout, 401)
        lost = int(done.stdout.split("commands lost")[1].split()[0])
        self.assertGreater(lost, 0)
        self.assertEqual(self.rows(), 401 - lost)

    def test_no_room_for_the_memory_ends_the_run_with_its_summary(self):
        # A receipt so long that the memory, and not the database, is what has no room.
        receipt = (RATE + '{"cmd":"abre_cupom"}\n' + 120 * ITEM)
        arguments = ("-", "--db", "db", "--memory", "memory")
        self.assertEqual(self.run_whole(*arguments, tape=receipt).returncode, 0)
        before = (self.folder / "memory").read_bytes()
        size = len(before)

        # At its end, when the memory is written whole.
        done = self.run_whole(*arguments, tape=receipt + ITEM, **self.limited(size + 100))
        self.assertEqual(done.returncode, 2)
        self.assertIn("memory.tmp: File too large\n", done.stderr)
        self.assertRegex(done.stdout, r"(?m)^commands run +1$")
        self.assertEqual(before, (self.folder / "memory").read_bytes())

        # Within it, when the journal has grown; the command is one that was not replied.
        unpaid = 300 * '{"cmd":"fecha_cupom"}\n'
        done = self.run_whole(*arguments, "--replies", tape=receipt + ITEM + unpaid,
                              **self.limited(size + size // 2))
        self.assertEqual(done.returncode, 2)
        self.assertIn("memory.journal: File too large\n", done.stderr)
        refused = int(re.search(r"(?m)^commands refused +(\d+)$", done.stdout)[1])
        self.assertTrue(0 < refused < 300, refused)

        done = self.run_whole(*arguments, tape=receipt + ITEM + unpaid)
        self.assertEqual(done.returncode, 0)
        # The one at hand may have come into the journal, its reply not given.
        rest = int(re.search(r"(?m)^commands refused +(\d+)$", done.stdout)[1])
        self.assertIn(rest, (300 - refused, 300 - refused - 1))
        with sqlite3.connect(self.folder / "db") as database:
            items = database.execute("SELECT count(*) FROM item_cupom_fiscal").fetchone()[0]
        self.assertEqual(items, 121)


if __name__ == "__main__":
    # Started in the background, this would be ignored here and in the runs.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    unittest.main()
