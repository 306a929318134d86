"""Fails the program's own allocations, one at a time and from one on, and looks at how it ends.

Whatever fails, the run ends by exit code 2 and says that it is out of memory, or it was not harmed:
it printed what an unharmed one prints. The database is sound either way, holds whole
commands alone, and a run with the memory file goes on from it to the tape's end.

With ECF_FALHAS=longa in the environment every allocation is tried, else a part of them.

Usage: out_of_memory.py STARVED_PROGRAM PROGRAM
"""
import os
import pathlib
import sqlite3
import subprocess
import sys
import tempfile

STARVED, PROGRAM = (os.path.abspath(path) for path in sys.argv[1:3])

TAPE = """\
{"cmd":"configura","aplicativo":"A POINT OF SALE WITH A LONG NAME"}
{"cmd":"insere_aliquota","em":"2026-03-02 07:50:00","tributacao":"T","indice":1,"percentual":"18.00"}
{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
{"cmd":"programa_moeda","simbolo":"R$"}
{"cmd":"efetua_pagamento","meio":1,"valor":"1.00"}
{"cmd":"abre_cupom","nome":"JOANA DA SILVA SAURO"}
{"cmd":"vende_item","codigo":"7896000101501","descricao":"ARROZ","quantidade":"2","valor_unitario":"3.00","tributacao":"T","indice":1}
{"cmd":"efetua_pagamento","meio":1,"valor":"10.00"}
{"cmd":"fecha_cupom"}
{"cmd":"reducao_z"}
"""

EXIT_UNUSABLE = 2
OUT_OF_MEMORY = "ecf-bancada: out of memory\n"

TABLES = ("meio_pagamento", "cupom_fiscal", "item_cupom_fiscal", "pagamento_cupom", "reducao_z",
          "totalizador_reducao", "meio_pagamento_reducao", "outros_documentos")


def run(program, folder, **environment):
    return subprocess.run([program, "run", "tape", "--db", "db", "--memory", "memory", "--replies"],
                          cwd=folder, capture_output=True, text=True, check=False, timeout=60,
                          env={**os.environ, **environment})


def rows(folder):
    with sqlite3.connect(folder / "db") as database:
        sound = database.execute("PRAGMA integrity_check").fetchone()[0]
        return sound, [database.execute(f"SELECT * FROM {table}").fetchall() for table in TABLES]


def new_folder(parent, name):
    folder = parent / name
    folder.mkdir()
    (folder / "tape").write_text(TAPE)
    return folder


def main():
    with tempfile.TemporaryDirectory(prefix="ecf-starved-") as scratch:
        parent = pathlib.Path(scratch)
        folder = new_folder(parent, "unharmed")
        unharmed = run(STARVED, folder)
        assert unharmed.returncode == 0, unharmed.stderr
        total = int(unharmed.stderr.split("allocations: ")[1])
        expected = rows(folder)
        assert expected[0] == "ok" and all(expected[1]), expected

        every = os.environ.get("ECF_FALHAS") == "longa"
        numbers = range(1, total + 1, 1 if every else max(1, total // 60))
        ended = faults = 0
        for kind in ("ECF_FAIL_AT", "ECF_FAIL_FROM"):
            for number in numbers:
                folder = new_folder(parent, f"{kind}{number}")
                done = run(STARVED, folder, **{kind: str(number)})
                harmed = done.returncode == EXIT_UNUSABLE and done.stderr.endswith(OUT_OF_MEMORY)
                ended += harmed
                again = run(PROGRAM, folder)
                good = ((harmed or (done.returncode, done.stdout) == (0, unharmed.stdout))
                        and again.returncode == 0 and rows(folder) == expected)
                if not good:
                    faults += 1
                    print(f"{kind}={number}: exit code {done.returncode}: {done.stderr!r}; then "
                          f"{again.returncode}: {again.stderr!r}")
        print(f"{2 * len(numbers)} of {2 * total} failures tried, {ended} ended the run, "
              f"{faults} faults")
        return 1 if faults or ended == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
