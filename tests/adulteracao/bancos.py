"""The clean databases of the tampering program, made by the bench itself.

Each is a folder entry NAME.db with, where the firmware log explains lost rows, NAME.log.
"""
import json
import os
import pathlib
import sqlite3
import subprocess

EXAMPLES = ("mercearia", "oficina", "primeira_semana")


class Banco:
    def __init__(self, name, path, log=None):
        self.name = name
        self.path = path
        self.log = log


class Bancada:
    """Makes databases in a folder with the bench's program."""

    def __init__(self, program, source, folder):
        self.program = program
        self.source = pathlib.Path(source)
        self.folder = pathlib.Path(folder)

    def file(self, name):
        return str(self.folder / name)

    def write(self, name, lines):
        path = self.folder / name
        path.write_text("".join(line + "\n" for line in lines), "utf-8")
        return str(path)

    def generated(self, days, receipts, seed):
        done = subprocess.run([self.program, "generate", "--days", str(days), "--receipts",
                               str(receipts), "--seed", str(seed)], check=True,
                              stdout=subprocess.PIPE)
        return done.stdout.decode().splitlines()

    def run(self, name, tape, *arguments):
        database = self.file(name + ".db")
        log = self.file(name + ".log")
        subprocess.run([self.program, "run", tape, "--db", database, "--log", log, *arguments],
                       check=True, stdout=subprocess.DEVNULL)
        return Banco(name, database, log)

    def cut(self, name, lines, at):
        """The power fails behind the line `at`; the next run goes on from the memory."""
        tape = self.write(name + ".jsonl", lines)
        memory = self.file(name + ".memoria")
        database = self.file(name + ".db")
        log = self.file(name + ".log")
        command = [self.program, "run", "-", "--db", database, "--log", log, "--memory", memory,
                   "--replies"]
        with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            for line in lines[:at]:
                process.stdin.write(line.encode() + b"\n")
                process.stdin.flush()
                process.stdout.readline()
            process.kill()
            process.stdin.close()
        return self.run(name, tape, "--memory", memory)


def line(cmd, **fields):
    return json.dumps({"cmd": cmd, **fields}, ensure_ascii=False)


def sale(price, em=None, **closing):
    """A receipt of one item, paid with a note."""
    opening = {"em": em} if em else {}
    return [line("abre_cupom", **opening),
            line("vende_item", codigo="77", descricao="CAFE 500G", quantidade="1",
                 valor_unitario=price, tributacao="T", indice=1),
            line("efetua_pagamento", meio=1, valor="200.00"), line("fecha_cupom", **closing)]


def with_day(tape, extra):
    """The generated tape with `extra` behind its first closed receipt."""
    place = next(i for i, text in enumerate(tape) if '"fecha_cupom"' in text) + 1
    return tape[:place] + extra + tape[place:]


def reprogrammed(tape):
    """Interventions, and the programming changed between two days."""
    place = next(i for i, text in enumerate(tape) if '"reducao_z"' in text) + 1
    return tape[:place] + [
        line("entrada_mil_interno"), line("leitura_x"), line("saida_mil_interno"),
        line("entrada_mit_interno"),
        line("programa_nr_serie", num_serie="BN0000000000000099", marca="BANCADA",
             modelo="REGISTRO 3", tipo="ECF-IF"),
        line("programa_usuario", razao_social="OUTRA EMPRESA LTDA", nome_fantasia="OUTRA",
             endereco="RUA NOVA, 2"),
        line("programa_cnpj_ie_im", cnpj="71420593000193", ie="1234567", im="99", uf="PR"),
        line("insere_aliquota", tributacao="T", indice=9, percentual="8.80"),
        line("insere_meio_pagamento", indice=9, descricao="VALE"),
        line("insere_meio_pagamento", indice=1, descricao="DINHEIRO VIVO"),
        line("insere_reg_ope_nf", indice=5, descricao="RECARGA"),
        line("saida_mit_interno"),
    ] + tape[place:]


def wrapped():
    """A register at the end of its counters."""
    return {"formato": "ecf-bancada memoria", "versao": 1,
            "registro": {"contadores": {"coo": 999970, "ccf": 999985, "gnf": 999993,
                                        "crz": 999997, "cro": 2, "grg": 999999, "cdc": 999998}}}


def make(program, source, folder):
    """All the clean databases, by their names."""
    bench = Bancada(program, source, folder)
    made = [bench.run(name, str(bench.source / "examples" / (name + ".jsonl")))
            for name in EXAMPLES]
    made.append(bench.run("gerado", bench.write("gerado.jsonl", bench.generated(4, 10, 11))))
    made.append(bench.cut("interrompido", bench.generated(3, 8, 12), 150))
    made.append(bench.run("rateado", bench.write(
        "rateado.jsonl", [line("configura", ratear_subtotal=True, aplicativo="PDV 1",
                               versao_sb="01.00.00")] +
        [text for text in bench.generated(3, 12, 13) if '"configura"' not in text])))
    memory = pathlib.Path(bench.file("volta.memoria"))
    memory.write_text(json.dumps(wrapped()), "utf-8")
    made.append(bench.run("volta", bench.write("volta.jsonl", bench.generated(5, 7, 14)),
                          "--memory", str(memory)))
    made.append(bench.run("reprogramado", bench.write(
        "reprogramado.jsonl", reprogrammed(bench.generated(3, 8, 15)))))
    losses = sale("13.00", mensagem="Volte sempre", adicional=True) + [
        line("abre_cupom", nome="JOANA D'ARC")] + sale("21.00")[1:] + sale("9.90")[:1] + [
            line("vende_item_detalhado", codigo="9", descricao="COPO D'AGUA", quantidade="2",
                 valor_unitario="1.25", tributacao="T", indice=1, unidade="UN")
        ] + sale("9.90")[1:]
    made.append(bench.run("perdas", bench.write(
        "perdas.jsonl", with_day(bench.generated(3, 8, 16), losses))))
    older = bench.run("antigo", bench.write("antigo.jsonl", bench.generated(3, 6, 17)))
    with sqlite3.connect(older.path) as db:
        db.execute("PRAGMA application_id = 0")
    db.close()
    made.append(older)
    for banco in made:
        if os.path.getsize(banco.log) == 0:
            banco.log = None
    return made
