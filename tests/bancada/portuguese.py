"""What check, show, run, compare, recover and --help print in Portuguese, looked through for English
that was left over: a text that nobody marked for translation.

English is told by the words that stand in the messages' English and nowhere in their Portuguese.

Usage: portuguese.py ROOT PROGRAM
"""
import html
import os
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(sys.argv.pop(1)).resolve()
PROGRAM = os.path.abspath(sys.argv.pop(1))

# What the engine says of a statement, which it quotes, and the parser of JSON.
ENGINE = [r'near ".*?": syntax error', r"no such table: \w+", r"unrecognized token: .*",
          r"(?<=não é JSON: ).*"]
# What is typed and what is logged is the same in every language: commands, options, words that an
# option takes, the schema's words.
WORDS = {"check", "show", "run", "export", "import", "compare", "copy", "recover", "generate",
         "commands", "help", "column", "index", "trigger", "view", "clause", "table", "on", "to"}


def catalogue():
    """The words of the messages' English and of their Portuguese."""
    text = (ROOT / "bancada/po/pt.po").read_text("utf-8")
    words = {"msgid": set(), "msgstr": set()}
    kind = ""
    for line in text.splitlines():
        found = re.match(r'(msgid|msgstr)\S* "|"', line)
        if found is None:
            kind = ""
            continue
        kind = found.group(1) or kind
        if kind:
            words[kind] |= set(words_of(line[line.index('"'):].replace("\\n", " ")))
    return words["msgid"], words["msgstr"]


def words_of(text):
    """The words of a text in small letters; names with digits, points or lines are none."""
    return re.findall(r"(?<![\w./-])[a-zà-ÿ]{2,}(?![\w/-]|\.\w)", text)


ENGLISH, PORTUGUESE = catalogue()
FOREIGN = ENGLISH - PORTUGUESE - WORDS


def left_over(text):
    for pattern in ENGINE:
        text = re.sub(pattern, "", text)
    return sorted(set(words_of(text)) & FOREIGN)


def seen(page):
    """What a reader of the page sees, titles and what its script says included."""
    page = re.sub(r"<(style|script)>.*?</\1>", " ", page, flags=re.S)
    page = re.sub(r'<pre(?! class="bobina").*?</pre>', " ", page, flags=re.S)  # statements
    told = re.findall(r' (?:data-[a-z]+|aria-label)="([^"]*)"', page)
    return html.unescape(" ".join([re.sub(r"<[^>]*>", " ", page)] + told))


class Portuguese(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory(prefix="ecf-portuguese-")
        cls.addClassCleanup(scratch.cleanup)
        cls.folder = Path(scratch.name)
        for name in ("mercearia", "oficina", "primeira_semana"):
            subprocess.run([PROGRAM, "run", ROOT / "examples" / (name + ".jsonl"), "--db",
                            cls.folder / (name + ".db")], check=True, stdout=subprocess.DEVNULL,
                           timeout=120)

    def told(self, *arguments, language="pt"):
        environment = {**os.environ, "LC_ALL": "C"}
        done = subprocess.run([PROGRAM, *map(str, arguments), "--language", language],
                              cwd=self.folder, env=environment, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=120)
        return done.stdout.decode("utf-8", "replace")

    def expect_portuguese(self, *arguments):
        told = self.told(*arguments)
        self.assertTrue(told, arguments)
        for line in told.splitlines():
            self.assertEqual(left_over(line), [], (arguments, line))
        return told

    def changed(self, name, *statements):
        copy = self.folder / "changed.db"
        copy.unlink(missing_ok=True)
        source = sqlite3.connect(self.folder / (name + ".db"))
        target = sqlite3.connect(copy)
        source.backup(target)
        for statement in statements:
            target.execute(statement)
        target.commit()
        for one in (source, target):
            one.close()
        return copy

    def test_what_is_english_is_seen(self):
        self.assertGreater(len(FOREIGN), 300)
        for line in ("a document is missing between them", "the rows end at 21",
                     "no such file", "not closed", "the receipts of the day"):
            self.assertNotEqual(left_over(line), [], line)
        english = self.told("check", self.changed("oficina", "UPDATE reducao_z SET valor_gt = 1"),
                            language="en")
        self.assertGreater(sum(1 for line in english.splitlines() if left_over(line)), 3, english)

    def test_help(self):
        self.expect_portuguese("--help-all")
        for name in ("check", "show"):
            self.expect_portuguese(name, "--help")

    def test_examples(self):
        for name in ("mercearia", "oficina", "primeira_semana"):
            database = name + ".db"
            self.expect_portuguese("check", database, "--log", database + ".log", "--until",
                                   "COO=999,CRZ=99,GT=1.00")
            told = self.told("show", database)
            self.assertIn("movimento ", told)
            self.assertEqual(left_over(told), [])
            self.expect_portuguese("show", database, "--totals")
            for page in (self.told("show", database, "--html", "-", "--log", database + ".log"),
                         self.told("show", database, "--html", "-", "--cancelled", "--text", "a",
                                   "--max-value", "9", "--min-value", "0", "--consumer", "0",
                                   "--from", "2020-01-01", "--to", "2030-01-01"),
                         self.told("show", database, "--html", "-", "--crz", "1")):
                self.assertIn("<h2>Vendas por hora</h2>", page)
                self.assertEqual(left_over(seen(page)), [])
        self.expect_portuguese("check", "oficina.db", "primeira_semana.db")
        self.told("show", "oficina.db", "primeira_semana.db", "--pages", "pages")
        pages = sorted((self.folder / "pages").iterdir())
        self.assertGreater(len(pages), 5)
        for page in pages:
            self.assertEqual(left_over(seen(page.read_text("utf-8"))), [], page.name)

    def test_findings(self):
        kinds = set()
        changes = ["UPDATE {t} SET {c} = NULL WHERE rowid = 2", "UPDATE {t} SET {c} = 'XYZ'"
                   " WHERE rowid = 2", "UPDATE {t} SET {c} = {c} + 1 WHERE rowid = 2"]
        db = sqlite3.connect(self.folder / "oficina.db")
        tables = [row[0] for row in db.execute("SELECT name FROM sqlite_schema WHERE type ="
                                               " 'table' ORDER BY name")]
        columns = {table: [row[1] for row in db.execute(f"PRAGMA table_info({table})")]
                   for table in tables}
        db.close()
        statements = [[f"DELETE FROM {table} WHERE rowid = 2"] for table in tables]
        statements += [[f"INSERT OR IGNORE INTO {table} SELECT * FROM {table} WHERE rowid = 1"]
                       for table in tables]
        statements += [["DROP INDEX " + index] for index in self.indexes()]
        # One column each, of every table in turn, so that it does not take long.
        for table in tables:
            for place, column in enumerate(columns[table]):
                statements.append([changes[place % 3].format(t=table, c=column)])
        for name in ("oficina", "primeira_semana"):
            for one in statements:
                told = self.expect_portuguese("check", self.changed(name, *one))
                kinds |= set(re.findall(r"^(?:nota: )?([a-z-]+): ", told, flags=re.M))
        self.assertGreater(len(kinds), 45, sorted(kinds))

    def indexes(self):
        db = sqlite3.connect(self.folder / "oficina.db")
        names = [row[0] for row in db.execute("SELECT name FROM sqlite_schema WHERE type = 'index'"
                                              " AND name NOT LIKE 'sqlite%' LIMIT 2")]
        db.close()
        return names

    def test_a_run(self):
        told = self.expect_portuguese("run", ROOT / "examples/primeira_semana.jsonl", "--db",
                                      "nova.db")
        self.assertRegex(told, r"(?m)^comandos executados +\d+$")
        self.assertRegex(told, r"(?m)^instruções rejeitadas +\d+$")
        # A letter with an accent takes one column.
        self.assertEqual(len({len(line) for line in told.splitlines()
                              if re.match(r"(comandos|instruções) ", line)}), 1, told)

    def test_faults_of_a_tape(self):
        lines = ['{"cmd": "leitura_x", "x": 1}', '{"cmd": "abre_cupom", "em": "2024-01-01"}', "[]",
                 "{", '{"cmd": 1}', '{"em": "2024-01-02 08:00:00"}', '{"cmd": "", "cmd": ""}',
                 '{"cmd": "leitura_x", "obs": null}', '{"cmd": "leitura_x", "em": {}}',
                 '{"cmd": "programa_nr_serie", "marca": "' + "M" * 50 + '", "modelo": true}',
                 '{"cmd": "pagamento", "meio": 900000, "valor": "1.234"}',
                 '{"cmd": "efetua_desc_acres_item", "operacao": "x", "tipo": 1, "valor": false}',
                 '{"cmd": "leitura_x", "em": "2024-01-02 08:00:00", "fim": "2024-01-01 08:00:00"}',
                 '{"cmd": "leitura_x", "obs": "\\u0000"}', "\ufeff{}", '{"cmd": "nada"}']
        (self.folder / "faltas.jsonl").write_text("\n".join(lines) + "\n", "utf-8")
        told = self.expect_portuguese("run", "--lint", "faltas.jsonl")
        self.assertGreater(len(told.splitlines()), 15, told)
        self.expect_portuguese("run", "faltas.jsonl", "--db", "faltas.db")

    def test_what_is_refused(self):
        lines = """
            {"cmd": "abre_cupom", "cpf_cnpj": "123", "em": "2024-01-02 08:00:00"}
            {"cmd": "abre_cupom", "cpf_cnpj": "12345678901"}
            {"cmd": "abre_cupom", "cpf_cnpj": "12345678901234"}
            {"cmd": "fecha_cupom"} {"cmd": "fecha_cupom_nf"} {"cmd": "cancela_cupom"}
            {"cmd": "cancela_cupom_em_emissao"} {"cmd": "fecha_ccd_gerencial"}
            {"cmd": "saida_mil_interno"} {"cmd": "saida_mit_interno"}
            {"cmd": "acerta_relogio", "em": "2024-01-02 09:00:00"}
            {"cmd": "abre_ccd", "meio": 1} {"cmd": "abre_ccd", "meio": 1, "coo": 9}
            {"cmd": "abre_estorno_ccd"}
            {"cmd": "reimprime_mfd", "coo_inicial": 2, "coo_final": 1}
            {"cmd": "reimprime_mfd", "coo_inicial": 1, "coo_final": 999}
            {"cmd": "estorna_meio_pagamento", "origem": 1, "destino": 1, "valor": "1.00"}
            {"cmd": "desabilita_totalizadores", "codigo": "F", "numero": 2}
            {"cmd": "insere_aliquota", "tributacao": "T", "percentual": "18.00"}
            {"cmd": "insere_meio_pagamento", "indice": 1, "descricao": "DINHEIRO"}
            {"cmd": "insere_meio_pagamento", "indice": 2, "descricao": "CARTAO", "vinculado_ccd": true}
            {"cmd": "insere_meio_pagamento", "indice": 3, "descricao": ""}
            {"cmd": "programa_cnpj_ie_im", "cnpj": "1", "ie": "", "im": "", "uf": "SP"}
            {"cmd": "programa_cnpj_ie_im", "cnpj": "11222333000181", "ie": "", "im": "", "uf": "XX"}
            {"cmd": "programa_moeda", "simbolo": ""}
            {"cmd": "sangria", "operacao": "sangria", "valor": "1.00", "meio": 1}
            {"cmd": "sangria", "operacao": "fundo_troco", "valor": "1.00", "meio": 2}
            {"cmd": "abre_cupom"} {"cmd": "abre_cupom"} {"cmd": "insere_aliquota",
             "tributacao": "T", "percentual": "17.00"} {"cmd": "fecha_cupom"}
            {"cmd": "efetua_pagamento", "meio": 1, "valor": "1.00"}
            {"cmd": "vende_item_nf", "totalizador": 3, "valor": "1.00"}
            {"cmd": "vende_item", "codigo": "", "descricao": "", "quantidade": "1",
             "valor_unitario": "1", "tributacao": "T", "indice": 1}
            {"cmd": "vende_item", "codigo": "1", "descricao": "A", "quantidade": "1",
             "valor_unitario": "1", "tributacao": "T", "indice": 9}
            {"cmd": "vende_item", "codigo": "1", "descricao": "A", "quantidade": "0",
             "valor_unitario": "1", "tributacao": "T", "indice": 1}
            {"cmd": "vende_item", "codigo": "1", "descricao": "A", "quantidade": "1",
             "valor_unitario": "0", "tributacao": "T", "indice": 1}
            {"cmd": "vende_item", "codigo": "1", "descricao": "A", "quantidade": "1",
             "valor_unitario": "10", "tributacao": "T", "indice": 1}
            {"cmd": "cancela_item", "item": 7} {"cmd": "fecha_cupom"}
            {"cmd": "cancela_desc_acres_item", "operacao": "desconto", "item": 1}
            {"cmd": "cancela_desc_acres_item", "operacao": "acrescimo", "item": 1}
            {"cmd": "cancela_desc_acres_subtotal", "operacao": "desconto"}
            {"cmd": "cancela_desc_acres_subtotal", "operacao": "acrescimo"}
            {"cmd": "efetua_desc_acres_item", "operacao": "desconto", "tipo": "valor",
             "valor": "99.00"}
            {"cmd": "efetua_desc_acres_item", "operacao": "desconto", "tipo": "percentual",
             "valor": "0.00"}
            {"cmd": "efetua_desc_acres_item", "operacao": "desconto", "tipo": "valor",
             "valor": "0.00"}
            {"cmd": "efetua_desc_acres_item", "operacao": "desconto", "tipo": "valor",
             "valor": "1.00"}
            {"cmd": "efetua_desc_acres_item", "operacao": "desconto", "tipo": "valor",
             "valor": "1.00"}
            {"cmd": "efetua_desc_acres_subtotal", "operacao": "acrescimo", "tipo": "valor",
             "valor": "1.00"} {"cmd": "cancela_item", "item": 1}
            {"cmd": "efetua_pagamento", "meio": 9, "valor": "1.00"}
            {"cmd": "efetua_pagamento", "meio": 1, "valor": "0.00"}
            {"cmd": "efetua_pagamento", "meio": 2, "valor": "99.00"}
            {"cmd": "efetua_pagamento", "meio": 1, "valor": "99.00"}
            {"cmd": "efetua_pagamento", "meio": 1, "valor": "1.00"} {"cmd": "cancela_item", "item": 1}
            {"cmd": "fecha_cupom"} {"cmd": "cancela_cupom", "coo": 1} {"cmd": "abre_ccd", "meio": 1}
            {"cmd": "abre_ccd", "meio": 2}
            {"cmd": "estorna_meio_pagamento", "origem": 1, "destino": 2, "valor": "99.00"}
            {"cmd": "estorna_meio_pagamento", "origem": 2, "destino": 1, "valor": "1.00"}
            {"cmd": "abre_gerencial"} {"cmd": "abre_cupom"} {"cmd": "fecha_ccd_gerencial"}
            {"cmd": "cancela_cupom"} {"cmd": "cancela_cupom"}
            {"cmd": "entrada_mil_interno"} {"cmd": "abre_cupom"}
            {"cmd": "saida_mil_interno"} {"cmd": "entrada_mit_interno"} {"cmd": "abre_cupom"}
            {"cmd": "saida_mit_interno"} {"cmd": "reducao_z"} {"cmd": "abre_cupom"}
            {"cmd": "abre_cupom", "em": "2024-01-01 08:00:00"}"""
        commands = re.findall(r"\{.*?\}", lines, re.S)
        (self.folder / "recusas.jsonl").write_text(
            "\n".join(" ".join(one.split()) for one in commands) + "\n", "utf-8")
        told = self.expect_portuguese("run", "recusas.jsonl", "--db", "recusas.db", "--replies")
        reasons = {line.split("recusado: ", 1)[1] for line in told.splitlines()
                   if re.match(r"\d+ \w+: recusado: ", line)}
        self.assertGreater(len(reasons), 45, sorted(reasons))

    def test_what_is_exported_and_imported(self):
        for name in ("mercearia", "primeira_semana"):
            told = self.expect_portuguese("export", name + ".db", "--output", name + ".tdm")
            self.assertIn("neutro: E11 ", told)
            self.expect_portuguese("import", name + ".tdm", "--tape", name + ".jsonl", "--memory",
                                   name + ".memoria", "--facts", name + ".json")
        whole = (self.folder / "mercearia.tdm").read_text("ascii").splitlines()
        reasons = set()
        for number, line in enumerate(whole):
            for changed in (line[:5], line[3:], line[:60] + "9X" + line[62:],
                            line[:-3] + "ZZZ", "E99" + line[3:], line + "\n" + whole[0]):
                if number % 7:
                    continue
                text = "\n".join(whole[:number] + [changed] + whole[number + 1:])
                (self.folder / "dano.tdm").write_text(text, "ascii")
                for told in self.told("import", "dano.tdm", "--tape", "d.jsonl", "--memory",
                                      "d.memoria", "--facts", "d.json").splitlines():
                    # What stands between quotation marks is the file's.
                    told = re.sub(r'".*?"', '""', told)
                    self.assertEqual(left_over(told), [], told)
                    reasons.add(re.sub(r"[\d\"]+", "", told))
        self.assertGreater(len(reasons), 20, sorted(reasons))
        for facts in ("", "[]", "{}", '{"formato": "ecf-bancada fatos", "versao": 1, "x": 1}',
                      '{"formato": "ecf-bancada fatos", "versao": 1, "extracao": 1}',
                      '{"formato": "ecf-bancada fatos", "versao": 1, "cifras_gt": 1}'):
            (self.folder / "fatos.json").write_text(facts)
            for option in ("--facts", "--memory"):
                self.expect_portuguese("export", "mercearia.db", "--output", "x.tdm", option,
                                       "fatos.json")
        for arguments in (["--crz", "2-1"], ["--crz", "x"], ["--command", "x"],
                          ["--from", "2024-02-02", "--to", "2024-02-01"]):
            self.expect_portuguese("export", "mercearia.db", "--output", "x.tdm", *arguments)

    def test_a_memory_that_cannot_be_used(self):
        tape = ROOT / "examples/mercearia.jsonl"
        self.told("run", tape, "--db", "guardada.db", "--memory", "guardada.memoria")
        whole = (self.folder / "guardada.memoria").read_text("utf-8")
        reasons = set()
        for old, new in (('"versao"', '"versoes"'), ('"gt":"', '"gt":"x'), ('"aberta":', '"aberta":1'),
                         (r'"versao":\d', '"versao":99'), (r'"versao":\d', '"versao":0'),
                         (r'"formato":"[^"]*"', '"formato":"x"'), (r"\{", "["), (r"\A", "x"),
                         (r'"coo":\d+', '"coo":-1'), (r'"digest":"..', '"digest":"00'),
                         (r'"data":"[^"]*"', '"data":"x"'), (r'"modo":"[^"]*"', '"modo":"x"'),
                         (r'"itens":\[', '"itens":{"x":['), (r"\A\{", '{"formato":1,')):
            changed = re.sub(old, new, whole, count=1)
            if "digest" not in old:
                changed = re.sub(r'"digest":"[^"]*",?', "", changed)
            (self.folder / "mudada.memoria").write_text(changed, "utf-8")
            told = self.told("run", tape, "--db", "guardada.db", "--memory", "mudada.memoria",
                             "--append")
            told = re.sub(r"(?<=não é JSON: ).*|(?<=: )[\w.]+(?=: )", "", told)  # the field's name
            self.assertEqual(left_over(told), [], told)
            reasons |= set(re.findall(r"não é possível usar a memória \S+: (.*)", told))
        self.assertGreater(len(reasons), 8, sorted(reasons))

    def test_a_database_that_the_owner_refuses(self):
        tape = ROOT / "examples/mercearia.jsonl"
        (self.folder / "ruido").write_bytes(b"no database " * 500)
        (self.folder / "vazia").mkdir(exist_ok=True)
        other = sqlite3.connect(self.folder / "outro.db")
        other.execute("PRAGMA application_id = 77")
        other.execute("CREATE TABLE t (a)")
        other.close()
        column = self.changed("oficina", "ALTER TABLE moeda DROP COLUMN simbolo_moeda")
        for arguments in (["ruido"], ["vazia"], ["nada/x.db"], ["outro.db"], [column],
                          ["oficina.db"], ["x" * 200 + "/" + "y" * 200]):
            told = self.expect_portuguese("run", tape, "--db", *arguments)
            self.assertIn("não é possível usar o banco de dados ", told)

    def test_the_commands_of_a_tape(self):
        # What stands between backquotes is typed, and so are the examples.
        told = re.sub(r"```.*?```|`.*?`|(?<=registra em )[\w, ]+", "", self.told("help-tape"),
                      flags=re.S)
        self.assertGreater(len(told.splitlines()), 150)
        for line in told.splitlines():
            self.assertEqual(left_over(line.replace("true ou false", "").replace("true:", "")
                                       .replace("false:", "")), [], line)
        table = re.sub(r"`.*?`", "", self.told("commands"))
        self.assertEqual(left_over(table), [], table)
        document = self.folder / "fita.md"
        document.write_text((ROOT / "docs/tape.md").read_text("utf-8"), "utf-8")
        self.told("help-tape", "--into", document)
        self.assertEqual(document.read_text("utf-8"), (ROOT / "docs/tape.md").read_text("utf-8"))

    def test_files_compared(self):
        for name in ("mercearia", "primeira_semana"):
            subprocess.run([PROGRAM, "export", name + ".db", "--output", name + ".txt"],
                           cwd=self.folder, check=True, stderr=subprocess.DEVNULL, timeout=60)
        told = self.told("compare", "mercearia.txt", "primeira_semana.txt")
        self.assertIn("Os arquivos diferem.", told)
        # What stands between quotation marks is the files'.
        self.assertEqual(left_over(re.sub(r'"[^"]*"', '""', told)), [])
        same = self.expect_portuguese("compare", "mercearia.txt", "mercearia.txt")
        self.assertIn("Os arquivos são iguais.", same)

    def test_what_is_recovered(self):
        whole = (self.folder / "mercearia.db").read_bytes()
        size = int.from_bytes(whole[16:18], "big")
        reasons = set()
        for page in range(1, len(whole) // size, 3):
            damaged = bytearray(whole)
            damaged[page * size:page * size + 200] = bytes([page % 7]) * 200
            (self.folder / "dano.db").write_bytes(damaged)
            (self.folder / "salvo.db").unlink(missing_ok=True)
            told = self.expect_portuguese("recover", "dano.db", "salvo.db")
            reasons |= set(re.findall(r"(?m)^página \d+(?: de \w+)?: (.*)$", told))
        self.assertTrue(reasons)

    def test_what_cannot_be_run(self):
        (self.folder / "pasta").mkdir(exist_ok=True)
        tape = ROOT / "examples/oficina.jsonl"
        for arguments in (["run", "ausente.jsonl", "--db", "x.db"],
                          ["run", "pasta", "--db", "x.db"],
                          ["copy", "ausente", "copia.db"],
                          ["recover", "ausente", "y.db"]):
            self.expect_portuguese(*arguments)

    def test_what_cannot_be_used(self):
        (self.folder / "ruido").write_bytes(b"no database " * 500)
        (self.folder / "texto.log").write_text("no log\n")
        (self.folder / "vazia").mkdir(exist_ok=True)
        for arguments in (["check", "ausente"], ["check", "ruido"], ["check", "vazia"],
                          ["check", "oficina.db", "--log", "texto.log"],
                          ["check", "oficina.db", "--until", "x"],
                          ["check", "oficina.db", "mercearia.db", "--log", "mercearia.db.log"],
                          ["check"], ["check", "oficina.db", "--lag", "1"], ["chek"],
                          ["show", "ausente"], ["show", "oficina.db", "--coo", "999"],
                          ["show", "oficina.db", "--crz", "999"], ["show", "oficina.db", "--coo", "x"],
                          ["show", "oficina.db", "--crz", "9", "--html", "-"],
                          ["show", "oficina.db", "--html", "oficina.db"],
                          ["show", "oficina.db", "--html", "oficina.db-wal"],
                          ["show", "oficina.db", "--html", "nada/pagina.html"],
                          ["show", "oficina.db", "--pages", "ruido"],
                          ["show", "oficina.db", "--coo", "1", "--crz", "1"],
                          ["show", "oficina.db", "--from", "x"],
                          ["show", "oficina.db", "--from", "2024-02-31"],
                          ["show", "oficina.db", "--min-value", "1,234"],
                          ["show", "oficina.db", "--from", "2024-02-02", "--to", "2024-02-01"],
                          ["show", "oficina.db", "--crz", "1", "--log", "texto.log"]):
            self.expect_portuguese(*arguments)


if __name__ == "__main__":
    unittest.main()
