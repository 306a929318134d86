"""The Portuguese messages against the sources: none is missing, fuzzy or left over, the places of
values agree, and no text stands in a source without a mark.

Usage: messages.py ROOT PROGRAM
"""
import re
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


# A string of C++, or what may hold quotation marks and is none.
TOKEN = re.compile(r'//[^\n]*|R"(\w*)\(.*?\)\1"|\'(?:[^\'\\\n]|\\.)\'|"((?:[^"\\\n]|\\.)*)"', re.S)
MARK = re.compile(r'\b(?:Tr|TrLater|TrCount)\($|'
                  r'\bTrCount\(\s*(?:"(?:[^"\\]|\\.)*"\s*)+,$')
# What no person reads, by how it is said: faults of the program itself, assertions.
INTERNAL = re.compile(r"\b(?:logic_error|static_assert|assert)\(")
# What nobody translates: queries, pieces of pages and of JSON, marks in documents, and what is typed.
NO_TEXT = re.compile(r"\b(?:SELECT|FROM|WHERE|ORDER BY|AS|typeof)\b|[<>]|=\\\"|\{\\\"|^ecf-bancada \w")
# Texts that stay, and why.
STAY = {
    # The layouts' names, of which docs/audit-file.md has the table and a test.
    "bancada/arquivo/Leiautes.cpp": None,
    # Not told: whether there is one is all that is asked.
    "bancada/conferencia/CheckCupons.cpp": None,
    "bancada/conferencia/CheckCuponsNf.cpp": None,
    # What the firmware log holds, in one language.
    "bancada/log/Losses.cpp": {"LogDatabase: the rows of this command are lost: "},
    # Before a language is chosen, and where nothing may allocate.
    "bancada/main.cpp": {r"ecf-bancada: out of memory\n"},
    # Parts of the parser's messages that are looked for.
    "bancada/tape/LineParser.cpp": {"parse error at ", "; last read: "},
    # Of the memory, which programs read.
    "bancada/caixa/TapeRun.cpp": {"line "},
    # The section of a document.
    "bancada/cli/CommandTable.cpp": {"command table"},
}


def english_words():
    """The words that stand in the messages' English and nowhere in their Portuguese."""
    words = {"msgid": set(), "msgstr": set()}
    kind = ""
    for line in PORTUGUESE.read_text("utf-8").splitlines():
        found = re.match(r'(msgid|msgstr)\S* "|"', line)
        kind = (found.group(1) or kind) if found else ""
        if kind:
            words[kind] |= set(words_of(line[line.index('"'):]))
    return words["msgid"] - words["msgstr"]


def words_of(text):
    return re.findall(r"(?<![\w./%\\-])[a-zà-ÿ]{2,}(?![\w/-]|\.\w)", text.replace("\\n", " "))


def unmarked_in(text, english):
    """The texts of a source that have no mark: of two words or more, one of them English."""
    unmarked = []
    begin = end = 0  # of the text that the one at hand may go on
    whole, marked = "", True
    for token in [*TOKEN.finditer(text), None]:
        if token is not None and token.group(2) is None:
            continue
        if token is not None and end and not text[end:token.start()].strip():
            whole, end = whole + token.group(2), token.end()
            continue
        if not marked and " " in whole.strip() and set(words_of(whole)) & english:
            unmarked.append((text.count("\n", 0, begin) + 1, whole))
        if token is None:
            break
        begin, end, whole = token.start(), token.end(), token.group(2)
        before = text[:begin].rstrip()
        statement = before[max(before.rfind(";"), before.rfind("{"), before.rfind("}")) + 1:]
        marked = bool(MARK.search(before) or INTERNAL.search(statement) or NO_TEXT.search(whole) or
                      statement.lstrip().startswith("#include"))
    return unmarked


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

    def test_no_text_is_left_without_a_mark(self):
        english = english_words()
        self.assertGreater(len(english), 500)
        known = set(re.findall(r'^msgid "(.*)"$', PORTUGUESE.read_text("utf-8"), re.M))
        found = []
        for path in sorted((ROOT / "bancada").rglob("*")):
            name = path.relative_to(ROOT).as_posix()
            if path.suffix in (".cpp", ".h") and STAY.get(name, set()) is not None:
                found += [f"{name}:{line}: {text}"
                          for line, text in unmarked_in(path.read_text("utf-8"), english)
                          if text not in STAY.get(name, set()) and text not in known]
        self.assertEqual(found, [], "mark them: Tr, TrCount or TrLater of bancada/Messages.h")

    def test_a_text_without_a_mark_is_seen(self):
        english = english_words()
        for code, lines in (
                ('throw Unusable("the file " + path + " is missing");', 2),
                ('return "no receipt is open";', 1), ('return Tr("no receipt is open");', 0),
                ('f(TrCount("%1 receipt is there",\n  "%1 receipts are there", n), "the receipts");', 1),
                ('throw std::logic_error("the receipt is not open");', 0),
                ('return "no receipt "\n    "is open";', 1), ('Tr("no receipt "\n "is open")', 0),
                ('"SELECT number FROM the_receipts"', 0), ("// the receipt is \"not open\"\n", 0),
                ('char c = \'"\'; f("the receipt is open");', 1)):
            self.assertEqual(len(unmarked_in(code, english)), lines, code)

    def test_every_reason_of_the_owner_has_its_form(self):
        forms = set(re.findall(r'TrLater\("(.*)"\)', (ROOT / "bancada/ForeignTexts.cpp").read_text()))
        self.assertGreater(len(forms), 40)
        self.assertFalse([form for form in forms if "%3" in form])
        told = []
        for path in sorted((ROOT / "LogDatabase").glob("*.cpp")):
            text = path.read_text("utf-8")
            for found in re.finditer(
                    r"\b(?:Fail|Lose)\([\w:]+,\s*\"(.*?)\"\)|"
                    r"\bsnprintf\((?:reason\.text|reason|m_text|m_loss|m_refusal)\b.*?\"(.*?)\"|"
                    r"\bCopyText\((?:m_text|m_loss|m_refusal|reason\.text),\s*\"(.*?)\"\)", text, re.S):
                told.append(next(one for one in found.groups() if one is not None))
        self.assertGreater(len(told), 15)
        for one in told:
            number = iter(range(1, 10))
            form = re.sub(r"%[.\d]*(?:ll?)?[dsu]", lambda _: f"%{next(number)}", one)
            if form != "%1%2" and form != "%1 (%2)":
                self.assertIn(form, forms)

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
