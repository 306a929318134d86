"""The exit codes and messages of `ecf-bancada show`.

Usage: show_cli.py PROGRAM SOURCE_DIR
"""
import json
import os
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv[1])
SOURCE = pathlib.Path(sys.argv[2])


def sample(path):
    """Makes the sample database."""
    db = sqlite3.connect(path)
    db.executescript("BEGIN;" + (SOURCE / "sqlite/schema.sql").read_text("utf-8") +
                     (SOURCE / "tests/bancada/relatorio/sample.sql").read_text("utf-8") +
                     "COMMIT")
    db.close()


class Show(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.db = os.path.join(self.folder.name, "registro.db")
        sample(self.db)

    def show(self, *arguments, stdout=subprocess.PIPE):
        done = subprocess.run([PROGRAM, "show", *arguments], stdout=stdout, stderr=subprocess.PIPE,
                              timeout=60)
        return done.returncode, (done.stdout or b"").decode(), done.stderr.decode()

    def test_list(self):
        code, out, err = self.show(self.db)
        self.assertEqual((code, err), (0, ""))
        self.assertEqual(out.splitlines()[2], "  000102  15/03/2024 09:12:44  CUPOM FISCAL        "
                         "           CCF 000051           29,32")

    def test_document(self):
        code, out, err = self.show(self.db, "--coo", "102")
        self.assertEqual((code, err), (0, ""))
        self.assertIn("TOTAL R$                                   29,32\n", out)

    def test_reduction_as_json(self):
        code, out, err = self.show(self.db, "--crz", "1", "--json")
        self.assertEqual((code, err), (0, ""))
        self.assertEqual(json.loads(out)["reducoes"][0]["vb"], "1330.96")

    def test_a_spreadsheet(self):
        code, out, err = self.show(self.db, "--csv", "reducoes")
        self.assertEqual((code, err), (0, ""))
        lines = out.split("\r\n")
        self.assertEqual(lines[0], "arquivo;crz;coo;gnf;cro;emissao;movimento;gt;vb;base_icms;icms;"
                         "base_issqn;issqn")
        self.assertTrue(lines[1].startswith(self.db + ";1;"), lines[1])
        place = os.path.join(self.folder.name, "itens.csv")
        self.assertEqual(self.show(self.db, "--csv", "itens", "--output", place), (0, "", ""))
        self.assertEqual(pathlib.Path(place).read_bytes().decode(),
                         self.show(self.db, "--csv", "itens")[1])
        self.assertEqual(sorted(os.listdir(self.folder.name)), ["itens.csv", "registro.db"])

    def test_a_spreadsheet_is_no_input_and_what_is_there_stays_until_it_is_whole(self):
        before = pathlib.Path(self.db).read_bytes()
        code, out, err = self.show(self.db, "--csv", "itens", "--output", self.db)
        self.assertEqual((code, out), (2, ""))
        self.assertIn("cannot be written: it is the database", err)
        self.assertEqual(pathlib.Path(self.db).read_bytes(), before)
        old = pathlib.Path(self.folder.name, "old.csv")
        old.write_text("old")
        noise = os.path.join(self.folder.name, "noise")
        pathlib.Path(noise).write_bytes(bytes(range(256)) * 20)
        self.assertEqual(self.show(noise, "--csv", "itens", "--output", str(old))[0], 2)
        self.assertEqual(old.read_text(), "old")

    def test_a_spreadsheet_goes_alone(self):
        for arguments, told in ((("--csv", "itens", "--json"), "excludes --csv"),
                                (("--csv", "itens", "--coo", "1"), "excludes --c"),
                                (("--output", "x"), "--output requires --csv"),
                                (("--csv", "cupons"), "--csv: cupons not in {")):
            code, out, err = self.show(self.db, *arguments)
            self.assertEqual((code, out), (2, ""), arguments)
            self.assertIn(told, err)

    def test_totals(self):
        code, out, err = self.show(self.db, "--totals", "--json", "--to", "2024-03-15")
        self.assertEqual((code, err), (0, ""))
        self.assertEqual([day["vendido"] for day in json.loads(out)["dias"]], ["1269.32"])
        self.assertIn("By tax code", self.show(self.db, "--totals")[1])

    def test_filters(self):
        def shown(*arguments):
            code, out, err = self.show(self.db, "--json", *arguments)
            self.assertEqual((code, err), (0, ""))
            return [d["coo"] for day in json.loads(out)["dias"] for d in day["documentos"]]
        self.assertEqual(shown("--cancelled"), [103, 108])
        self.assertEqual(shown("--consumer", "12.345.678/0001-95"), [105])
        self.assertEqual(shown("--min-value", "50", "--max-value", "100,0"), [101, 110])
        self.assertEqual(shown("--min-value", "1240.00"), [105])
        self.assertEqual(shown("--min-value", "1240,01"), [])
        self.assertEqual(shown("--text", "pilha"), [102])
        self.assertEqual(shown("--from", "2024-03-16"), [112, 113])
        code, out, err = self.show(self.db, "--cancelled", "--csv", "documentos")
        self.assertEqual((code, err, len(out.splitlines())), (0, "", 3))
        self.assertEqual(self.show(self.db, "--text", "nobody"), (0, "No documents.\n", ""))

    def test_a_filter_that_is_none(self):
        for arguments, told in (
                (("--min-value", "1,234"), "an amount such as 12,50 is due, not 1,234"),
                (("--max-value", "-1"), "an amount such as 12,50 is due"),
                (("--max-value", "1."), "an amount such as 12,50 is due"),
                (("--max-value", "12345678901234"), "an amount such as 12,50 is due"),
                (("--min-value", "2", "--max-value", "1,99"), "ends before it begins"),
                (("--from", "2024-02-30"), "there is no day 2024-02-30"),
                (("--from", "15/03/2024"), "a date yyyy-mm-dd is due"),
                (("--from", "2024-03-16", "--to", "2024-03-15"), "ends before it begins"),
                (("--coo", "102", "--cancelled"), "excludes"),
                (("--crz", "1", "--text", "x"), "excludes"),
                (("--totals", "--coo", "1"), "excludes"),
                (("--totals", "--html", "x"), "excludes"),
                (("--totals", "--csv", "dias"), "excludes")):
            code, out, err = self.show(self.db, *arguments)
            self.assertEqual((code, out), (2, ""), arguments)
            self.assertIn(told, err)

    def test_what_is_not_there(self):
        self.assertEqual(self.show(self.db, "--coo", "9"),
                         (1, "", f"{self.db}: no document has the COO 9\n"))
        self.assertEqual(self.show(self.db, "--crz", "9"),
                         (1, "", f"{self.db}: there is no Z reduction 9\n"))

    def test_a_missing_file(self):
        missing = self.db + "x"
        self.assertEqual(self.show(missing), (2, "", f"ecf-bancada: {missing}: no such file\n"))

    def test_binary_noise(self):
        noise = os.path.join(self.folder.name, "noise")
        pathlib.Path(noise).write_bytes(bytes(range(256)) * 20)
        self.assertEqual(self.show(noise),
                         (2, "", f"ecf-bancada: {noise}: file is not a database\n"))

    def test_a_database_of_another_program(self):
        other = os.path.join(self.folder.name, "other.db")
        db = sqlite3.connect(other)
        db.execute("CREATE TABLE songs (name TEXT)")
        db.close()
        self.assertEqual(self.show(other),
                         (2, "", f"ecf-bancada: {other}: not a logging database "
                          "(no such table: cupom_fiscal)\n"))

    def test_a_place_that_cannot_be_written(self):
        page = os.path.join(self.folder.name, "none/page.html")
        self.assertEqual(self.show(self.db, "--html", page),
                         (2, "", f"ecf-bancada: {page}: cannot be written\n"))

    def test_a_full_disk(self):
        with open("/dev/full", "wb") as full:
            code, _, err = self.show(self.db, stdout=full)
        self.assertEqual(code, 2)
        self.assertIn("standard output could not be written", err)

    def test_a_reader_that_went_away(self):
        read, write = os.pipe()
        os.close(read)
        with open(write, "wb") as pipe:
            code, _, err = self.show(self.db, stdout=pipe)
        self.assertEqual((code, err), (0, ""))

    def test_options_that_exclude_each_other(self):
        for options in (("--coo", "1", "--crz", "1"), ("--coo", "1", "--html", "x"),
                        ("--html", "x", "--json"), ("--coo", "1", "--log", "x"),
                        ("--crz", "1", "--log", "x"), ("--pages", "x", "--html", "y"),
                        ("--pages", "x", "--coo", "1"), ("--pages", "x", "--crz", "1"),
                        ("--pages", "x", "--json")):
            with self.subTest(options=options):
                code, out, err = self.show(self.db, *options)
                self.assertEqual((code, out), (2, ""))
                self.assertIn("excludes", err)

    def test_a_folder_of_pages(self):
        folder = os.path.join(self.folder.name, "pages")
        os.mkdir(folder)  # an empty one is taken
        self.assertEqual(self.show(self.db, "--pages", folder + "/"), (0, "", ""))
        self.assertEqual(sorted(os.listdir(folder)),
                         ["dia-00001.html", "dia-00002.html", "index.html"])
        before = sorted(os.listdir(self.folder.name))
        self.assertEqual(self.show(self.db, "--pages", folder),
                         (2, "", f"ecf-bancada: {folder} exists already, and is not empty\n"))
        code, _, err = self.show(self.db, "--pages", self.db)
        self.assertEqual(code, 2)
        self.assertIn(self.db, err)
        none = os.path.join(self.folder.name, "none/pages")
        self.assertEqual(self.show(self.db, "--pages", none),
                         (2, "", f"ecf-bancada: {none}: cannot be written\n"))
        # What cannot be shown leaves nothing behind.
        code, _, _ = self.show(self.db, "--pages", os.path.join(self.folder.name, "more"),
                               "--log", os.path.join(self.folder.name, "none.log"))
        self.assertEqual(code, 2)
        self.assertEqual(sorted(os.listdir(self.folder.name)), before)

    def test_numbers_that_are_none(self):
        for option, most in (("--coo", 999999), ("--crz", 1000000)):
            for number in ("12x", "0", "-1", str(most + 1), "9" * 20):
                with self.subTest(option=option, number=number):
                    code, out, err = self.show(self.db, option, number)
                    self.assertEqual((code, out), (2, ""))
                    self.assertIn(option, err)
            self.assertEqual(self.show(self.db, option, str(most))[0], 1)

    def test_a_read_only_place(self):
        # A database in WAL needs files beside it unless nothing can have changed.
        db = sqlite3.connect(self.db)
        db.execute("PRAGMA journal_mode = WAL")
        db.close()
        os.chmod(self.folder.name, 0o500)
        self.addCleanup(os.chmod, self.folder.name, 0o700)
        before = sorted(os.listdir(self.folder.name))
        code, out, err = self.show(self.db)
        self.assertEqual((code, err), (0, ""))
        self.assertIn("CUPOM FISCAL", out)
        if os.geteuid() != 0:  # root writes anywhere
            self.assertEqual(sorted(os.listdir(self.folder.name)), before)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
