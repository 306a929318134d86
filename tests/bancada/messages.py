"""The Portuguese messages against the sources: none is missing, fuzzy or left over, and the places of
values agree.

Usage: messages.py ROOT PROGRAM
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(sys.argv.pop(1)).resolve()
PROGRAM = sys.argv.pop(1)
PORTUGUESE = ROOT / "bancada/po/pt.po"

# As bancada/Messages.h declares them; its texts have the places %1, %2 ... of Qt.
KEYWORDS = ["--qt", "--keyword", "--keyword=Tr:1", "--keyword=TrLater:1", "--keyword=TrCount:1,2",
            "--flag=Tr:1:qt-format", "--flag=TrLater:1:pass-qt-format",
            "--flag=TrCount:1:qt-format", "--flag=TrCount:2:qt-format"]


def run(*command):
    done = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, encoding="utf-8", timeout=120)
    return done.returncode, done.stdout


class Messages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory(prefix="ecf-messages-")
        cls.addClassCleanup(scratch.cleanup)
        cls.folder = Path(scratch.name)
        cls.marked = cls.folder / "marked.pot"
        sources = sorted(path for path in (ROOT / "bancada").rglob("*")
                         if path.suffix in (".cpp", ".h"))
        code, told = run("xgettext", "--from-code=UTF-8", "--language=C++", *KEYWORDS, "-o",
                         cls.marked, *sources)
        if code != 0 or told:
            raise AssertionError(told)

    def compare(self, definitions, references):
        return run("msgcmp", definitions, references)

    def test_the_catalogue_is_well_formed(self):
        code, told = run("msgfmt", "--check", "--statistics", "-o",
                         self.folder / "pt.mo", PORTUGUESE)
        self.assertEqual(code, 0, told)
        self.assertRegex(told, r"\A\d+ translated messages\.\n\Z")

    def test_no_message_is_missing_or_left_over(self):
        code, told = self.compare(PORTUGUESE, self.marked)
        self.assertEqual((code, told), (0, ""))

    def test_a_message_without_a_translation_is_seen(self):
        text = PORTUGUESE.read_text(encoding="utf-8")
        one = 'msgstr "Lê a página de manual"'
        self.assertIn(one, text)
        changed = self.folder / "changed.po"
        for change in ('msgstr ""', 'msgstr "x"\n\nmsgid "nobody says this"\nmsgstr "x"'):
            changed.write_text(text.replace(one, change), encoding="utf-8")
            code, told = self.compare(changed, self.marked)
            self.assertNotEqual((code, told), (0, ""), change)

    def test_the_instructions_tell_every_kind_of_finding(self):
        code, told = run(PROGRAM, "--language", "pt", "check", "--help")
        self.assertEqual(code, 0, told)
        kinds = told.split("\nTipos de achados:\n")[1].split("\n\n")[0].splitlines()
        self.assertGreater(len(kinds), 50)
        rows = ["| `{}` | {} |".format(*line.split(maxsplit=1)) for line in kinds]
        page = (ROOT / "docs/instrucoes.md").read_text(encoding="utf-8")
        table = page.split("| tipo | quer dizer |\n|---|---|\n")[1].split("\n\n")[0]
        self.assertEqual(table.splitlines(), rows)

    def test_a_place_that_is_left_out_is_seen(self):
        text = PORTUGUESE.read_text(encoding="utf-8")
        one = 'msgstr "Lista todos os achados, também além dos primeiros %1 de cada causa"'
        self.assertIn(one, text)
        changed = self.folder / "places.po"
        changed.write_text(text.replace(one, one.replace("%1", "100")), encoding="utf-8")
        code, told = run("msgfmt", "--check", "-o", self.folder / "places.mo", changed)
        self.assertNotEqual(code, 0, told)


if __name__ == "__main__":
    unittest.main()
