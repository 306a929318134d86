"""Kills `ecf-bancada run --memory --replies` at random moments and lets it go on.

After each kill the memory with its journal, the database and the replies are held against each other and against
runs that nobody interrupted: no replied command may be missing, none may be there twice, none in
part. A tape that reached its end must have left the same rows and the same memory file as in one
go. The seed is printed; give it as the second argument to repeat a run's choices.

Usage: kill_test.py PROGRAM [SEED]
"""
import collections
import copy
import hashlib
import json
import os
import pathlib
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

PROGRAM = os.path.abspath(sys.argv[1])
SEED = int(sys.argv[2]) if len(sys.argv) > 2 else random.SystemRandom().randrange(1 << 32)

KILLS = 220

TAPE = """\
{"cmd":"configura","aplicativo":"PDV 7"}
{"cmd":"programa_nr_serie","em":"2026-03-02 07:50:00","marca":"M","modelo":"X-1","tipo":"ECF-IF","num_serie":"MX0100260300000007"}
{"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"}

{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
{"cmd":"insere_meio_pagamento","indice":2,"descricao":"CARTAO","vinculado_ccd":true}
{"cmd":"fecha_cupom"}
{"cmd":"sangria","operacao":"fundo_troco","valor":"50.00"}
{"cmd":"abre_cupom","em":"2026-03-02 08:00:00","nome":"JOANA D'ARC"}
{"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2","valor_unitario":"3.00","tributacao":"T","indice":1}
{"cmd":"vende_item","codigo":"2","descricao":"GOTA D'AGUA","quantidade":"1.500","valor_unitario":"2.99","tributacao":"T","indice":1}
{"cmd":"vende_item","codigo":"3","descricao":"SAL","quantidade":"1","valor_unitario":"1.10","tributacao":"T","indice":2}
{"cmd":"cancela_item","item":1}
{"cmd":"configura","ratear_subtotal":true}
{"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"3","valor_unitario":"3.00","tributacao":"T","indice":1}
{"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor","valor":"1.00"}
{"cmd":"efetua_pagamento","meio":2,"valor":"5.00"}
{"cmd":"efetua_pagamento","meio":1,"valor":"20.00"}
{"cmd":"fecha_cupom"}
{"cmd":"abre_ccd","meio":2}
{"cmd":"fecha_ccd_gerencial"}
{"cmd":"abre_gerencial"}
{"cmd":"fecha_ccd_gerencial"}
{"cmd":"leitura_x"}
{"cmd":"abre_cupom"}
{"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2","valor_unitario":"3.00","tributacao":"T","indice":1}
{"cmd":"efetua_pagamento","meio":1,"valor":"6.00"}
{"cmd":"fecha_cupom"}
{"cmd":"cancela_cupom"}
{"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":2}
{"cmd":"reducao_z","em":"2026-03-02 18:00:00"}
{"cmd":"abre_cupom"}
{"cmd":"entrada_mit_interno"}
{"cmd":"saida_mit_interno"}
{"cmd":"abre_cupom","em":"2026-03-03 08:00:00"}
{"cmd":"cancela_cupom_em_emissao"}
"""


def check(holds, what):
    if not holds:
        raise AssertionError(what)


class Register:
    """A folder with a register's files."""

    def __init__(self, parent, name):
        self.folder = pathlib.Path(parent, name)
        self.folder.mkdir()
        self.memory = self.folder / "memory"
        self.journal = self.folder / "memory.journal"
        self.replied = []  # tape lines, in the order of their replies

    def start(self, tape):
        return subprocess.Popen(
            [PROGRAM, "run", str(tape), "--db", "db", "--memory", "memory", "--replies"],
            cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def take_replies(self, output):
        """Whole lines alone: the last one may have been cut by the kill."""
        for line in output.decode().split("\n")[:-1]:
            number = line.split(" ")[0]
            if number.isdigit() and ": " in line:
                self.replied.append(int(number))

    def contents(self):
        """The number that the database carries, and the digest of its rows. Works on a copy: opening
        the database would finish what the next run has to."""
        copy = self.folder / "copy"
        shutil.rmtree(copy, ignore_errors=True)
        copy.mkdir()
        for name in ("db", "db-wal"):
            if (self.folder / name).exists():
                shutil.copy(self.folder / name, copy / name)
        db = sqlite3.connect(copy / "db")
        check(db.execute("PRAGMA integrity_check").fetchone() == ("ok",), "integrity_check")
        number = db.execute("PRAGMA user_version").fetchone()[0]
        tables = [row[0] for row in db.execute(
            "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name")]
        rows = [(table, db.execute(f'SELECT rowid, * FROM "{table}" ORDER BY rowid').fetchall())
                for table in tables]
        db.close()
        if all(not content for _, content in rows):
            rows = []  # the schema may not be there yet
        return number, hashlib.sha256(repr(rows).encode()).hexdigest()


def sha256(text):
    return hashlib.sha256(text).hexdigest()


def change(state, changes):
    """Applies a record's changes: objects field by field, lists by their length and elements."""
    for name, value in changes.items():
        if not isinstance(value, dict):
            state[name] = value
        elif name in ("itens", "pagamentos"):
            elements = state.setdefault(name, [])
            length = value.pop("tamanho", len(elements))
            del elements[length:]
            elements.extend({} for _ in range(length - len(elements)))
            for number, fields in value.items():
                change(elements[int(number) - 1], fields)
        else:
            change(state.setdefault(name, {}), value)


def read_memory(path):
    """The memory as its file and its journal have it, their digests checked. A command that is
    pending has the state before it in "antes"."""
    memory = json.loads(path.read_text("utf-8"))
    digest = memory.pop("digest")
    text = json.dumps(memory, sort_keys=True, separators=(",", ":"), ensure_ascii=False)
    check(sha256(text.encode()) == digest, "the memory's digest")
    journal = path.with_name(path.name + ".journal")
    lines = [line for line in journal.read_bytes().split(b"\n") if line] if journal.exists() else []
    base = b""
    for number, line in enumerate(lines):
        if line[:64].decode() != sha256(base + line[65:]):
            check(number == len(lines) - 1, "a journal's damaged line before its last")
            break
        record = json.loads(line[65:])
        if number == 0:
            if record["memoria"] != digest:
                break  # all of it has come into the file
            base = digest.encode()
            continue
        before = copy.deepcopy(memory)
        before.pop("antes", None)
        change(memory["execucao"], record["execucao"])
        change(memory["registro"], record["registro"])
        memory.pop("antes", None)
        if record.get("pendente"):
            memory["antes"] = before
    return memory


def factory_values(state):
    """Without what the file leaves out of its lists of totalizers and such: elements that hold
    nothing but what the factory leaves."""
    if isinstance(state, list):
        return [factory_values(element) for element in state]
    if not isinstance(state, dict):
        return state
    fields = {name: factory_values(value) for name, value in state.items()}
    return {name: value for name, value in fields.items()
            if value not in ({}, [], "", 0, False, "0.00", "nenhum", "desconto", "nao_fiscal",
                             "sem_ccd")}


def linger(seconds):
    """Waits without sleeping: a sleep takes longer than a commit."""
    until = time.perf_counter() + seconds
    while time.perf_counter() < until:
        pass


def wait_for_record(path, process):
    """Until the journal is longer, or the process has ended."""
    def which():
        try:
            return os.stat(path).st_size
        except FileNotFoundError:
            return None
    first = which()
    while which() == first and process.poll() is None:
        pass


State = collections.namedtuple("State", "number rows register")


def uninterrupted(parent):
    """The states behind each line of the tape, and the files at its end."""
    lines = TAPE.splitlines(keepends=True)
    states = {}
    for count in range(len(lines) + 1):
        if count > 0 and not lines[count - 1].strip():
            continue
        register = Register(parent, f"whole{count}")
        tape = register.folder / "tape"
        # An empty tape makes nothing; a line that is no command ends a run that has made its files.
        tape.write_text("".join(lines[:count]) or "no command\n")
        process = register.start(tape)
        _, errors = process.communicate(timeout=60)
        check(process.returncode == (0 if count > 0 else 2), errors)
        memory = read_memory(register.memory)
        number, rows = register.contents()
        check(number == memory["execucao"]["sequencia"], "an uninterrupted run's numbers")
        states[count] = State(number, rows, factory_values(memory["registro"]))
    return states, register.memory.read_bytes()


def look(register, states):
    """Checks what a kill has left, and answers where it fell."""
    last_reply = max(register.replied, default=0)
    check(len(set(register.replied)) == len(register.replied), "a command was replied twice")
    if not register.memory.exists():
        check(last_reply == 0, "a reply without a memory")
        return "before the memory's first writing"
    memory = read_memory(register.memory)
    number, rows = register.contents()
    holds = memory
    pending = "antes" in memory
    if pending:
        sequence = memory["execucao"]["sequencia"]
        check(number in (sequence - 1, sequence), f"number {number}, sequence {sequence}")
        if number == sequence - 1:
            holds = memory["antes"]
    line = holds["execucao"]["fita"]["linhas"]
    check(last_reply <= line, f"line {last_reply} was replied, the memory is behind {line}")
    state = states[line]
    check(number == state.number, f"behind line {line}: number {number}, not {state.number}")
    check(rows == state.rows, f"behind line {line}: other rows")
    check(factory_values(holds["registro"]) == state.register, f"behind line {line}: another register")

    if (register.folder / "memory.tmp").exists():
        return "while the memory was written"
    if pending and holds is not memory:
        return "between the memory and the commit"
    if last_reply < line:
        return "between the commit and the reply" if pending else "between the memory and the reply"
    return "after a reply"


def main():
    print(f"seed {SEED}", flush=True)
    choices = random.Random(SEED)
    # In memory, where syncing is free, a kill falls mostly on the program's own work; on a disk it
    # falls mostly on a file's or the database's sync. Tapes take turns.
    shm = "/dev/shm"
    disk = tempfile.mkdtemp(prefix="ecf-kill-")
    parent = tempfile.mkdtemp(prefix="ecf-kill-", dir=shm if os.access(shm, os.W_OK) else None)
    try:
        states, memory_at_end = uninterrupted(parent)
        tape = pathlib.Path(parent, "tape")
        tape.write_text(TAPE)
        began = time.monotonic()

        places = collections.Counter()
        kills = tapes = 0
        register = Register(parent, "killed0")
        while kills < KILLS or register is not None:
            register = register or Register((parent, disk)[tapes % 2], f"killed{tapes}")
            process = register.start(tape)
            output = b""
            if kills < KILLS:
                # At any time from the start, or behind a reply, where the next command is at work,
                # or behind a record of the journal, where its commit is due.
                moment = choices.randrange(4)
                if moment == 0:
                    time.sleep(choices.uniform(0, 0.03))
                else:
                    for _ in range(choices.randrange(1, 8)):
                        output += process.stdout.readline()
                    if moment == 1:
                        time.sleep(choices.uniform(0, 0.003))
                    else:
                        wait_for_record(register.journal, process)
                        linger(choices.uniform(0, 0.0006))
                process.kill()
            rest, errors = process.communicate(timeout=60)
            register.take_replies(output + rest)
            if process.returncode == -9:
                kills += 1
                places[look(register, states)] += 1
                continue
            check(process.returncode == 0, f"exit code {process.returncode}: {errors}")
            number, rows = register.contents()
            end = states[max(states)]
            check((number, rows) == (end.number, end.rows), "other rows at the end of the tape")
            check(register.memory.read_bytes() == memory_at_end, "another memory at the end")
            for name in ("memory.tmp", "memory.journal"):
                check(not (register.folder / name).exists(), f"a {name} at the end")
            shutil.rmtree(register.folder)
            register = None
            tapes += 1
        print(f"{kills} kills, {tapes} tapes run to their end, "
              f"{time.monotonic() - began:.1f} s")
        for place, count in places.most_common():
            print(f"{count:5} {place}")
    finally:
        shutil.rmtree(parent, ignore_errors=True)
        shutil.rmtree(disk, ignore_errors=True)


main()
