#!/usr/bin/env python3
"""The real program while calls of the system fail and the power is cut, below the engine.

  calls.py PROGRAM LAYER [--whole] [--seed S] [--sample N]

LAYER is FailingCalls.cpp as a shared object. A short tape, each of its commands a document of its own,
runs with and without a memory file:

 - a fault: the n-th open, write, sync, truncation, renaming, mapping, removal or closing of the run's
   files fails, once or for ever. What was answered as executed is in the database, whole and once; what
   was answered as lost is not. A run that goes on from the memory has every other command once.
 - a power cut behind each call that changes a file: of what no sync had followed all, nothing, every
   other call or half of the last one is there, with or without the names that were not synced. What was
   answered is there; nothing is half; a run that goes on from the memory has every command once.
 - a pair: a power cut behind each call that follows a fault that came once, with one damage, drawn.

--whole tries every one; otherwise N of each (60), and fewer pairs, are drawn by the seed, which is
printed."""
import argparse
import collections
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
from pathlib import Path

TAPE = """{"cmd":"leitura_x","em":"2026-01-01 08:00:00"}
{"cmd":"sangria","operacao":"fundo_troco","valor":"100.00"}
{"cmd":"leitura_mf"}
{"cmd":"sangria","operacao":"sangria","valor":"30.00"}
{"cmd":"leitura_x"}
"""
COMMANDS = TAPE.count("\n")
KINDS = {"open": 24, "write": 28, "sync": 5, "truncate": 5, "rename": 5, "map": 12, "unlink": 5,
         "close": 5}
CONTENTS = ("lost", "kept", "odd", "torn")
NAMES = ("kept", "lost")


class Wrong(Exception):
    pass


def require(claim, text):
    if not claim:
        raise Wrong(text)


class Bench:
    def __init__(self, program, layer, place):
        self.program, self.layer, self.place = program, layer, place
        self.tape = place / "tape.jsonl"
        self.tape.write_text(TAPE)
        self.expected = self.rows_of_each_command()

    def folder(self):
        return Path(tempfile.mkdtemp(dir=self.place))

    def run(self, folder, memory, fail=None, trace=None, tape=None):
        """Exit code and output of a run in the folder."""
        command = [self.program, "run", str(tape or self.tape), "--db", str(folder / "r.db"), "--log",
                   str(folder / "r.log"), "--replies"]
        command += ["--memory", str(folder / "r.memory")] if memory else ["--append"]
        environment = dict(os.environ)
        if fail or trace:
            environment.update(LD_PRELOAD=self.layer, ECF_CALLS_FOLDER=str(folder))
        if fail:
            environment["ECF_CALLS_FAIL"] = fail
        if trace:
            environment["ECF_CALLS_TRACE"] = str(trace)
        done = subprocess.run(command, env=environment, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, timeout=60, check=False)
        require(done.returncode in (0, 2), f"exit code {done.returncode}: {done.stderr}")
        return done.returncode, done.stdout

    def rows_of_each_command(self):
        """What each command adds; none changes a row of another."""
        added, before = [], collections.Counter()
        for count in range(1, COMMANDS + 1):
            folder = self.folder()
            tape = folder / "tape"
            tape.write_text("".join(TAPE.splitlines(True)[:count]))
            self.run(folder, False, tape=tape)
            now = rows_in(folder)
            added.append(now - before)
            before = now
            shutil.rmtree(folder)
        return added

    def commands_in(self, folder):
        """Which commands' rows the database has. Each has all of its rows, or none, and nothing else
        is there."""
        rows, there = rows_in(folder), []
        for number, added in enumerate(self.expected, 1):
            if all(rows[row] >= times for row, times in added.items()):
                rows = rows - added
                there.append(number)
        require(not rows, f"more than the rows of the commands {there}: {rows}")
        return there


def rows_in(folder):
    rows = collections.Counter()
    path = folder / "r.db"
    if not path.exists():
        return rows
    db = sqlite3.connect(path)
    try:
        require(db.execute("PRAGMA integrity_check").fetchone() == ("ok",), "a damaged database")
        for (table,) in db.execute("SELECT name FROM sqlite_schema WHERE type = 'table'").fetchall():
            if not table.startswith("sqlite_"):
                for row in db.execute(f"SELECT * FROM {table}"):
                    rows[(table, *row)] += 1
    finally:
        db.close()
    return rows


def answers_in(output):
    """The commands that were answered as executed, and those whose rows were told to be lost."""
    kept, lost = [], []
    for line in output.splitlines():
        number, _, rest = line.partition(" ")
        if number.isdigit() and ": executed" in rest:
            (lost if "rows lost" in rest else kept).append(int(number))
    return kept, lost


def hold_fault(bench, memory, fail):
    folder = bench.folder()
    code, output = bench.run(folder, memory, fail=fail)
    kept, lost = answers_in(output)
    there = bench.commands_in(folder)
    require(set(kept) <= set(there), f"answered {kept}, there {there}")
    require(not set(lost) & set(there), f"lost {lost}, there {there}")
    if memory:
        _, after = bench.run(folder, memory)
        _, lostAfter = answers_in(after)
        there = bench.commands_in(folder)
        missing = set(range(1, COMMANDS + 1)) - set(there)
        told = set(lost) | set(lostAfter)
        require(missing <= told or "commands lost since the memory began" in after,
                f"missing {missing}, told {told}: {after}")
    elif code == 0:
        require(set(kept) | set(lost) == set(range(1, COMMANDS + 1)), output)
    shutil.rmtree(folder)


class Disk:
    """What a trace has made of the files of a folder, and what a power cut leaves of them."""

    def __init__(self):
        self.now, self.durable, self.unsynced = {}, {}, {}
        self.names, self.durable_names = {}, {}
        self.said = 0  # lines

    def apply(self, line):
        word, *fields = line.split(" ")
        text = lambda at: bytes.fromhex(fields[at][1:])
        if word == "create":
            inode = int(fields[0])
            self.now[inode], self.durable[inode], self.unsynced[inode] = b"", b"", []
            self.names[text(1)] = inode
        elif word in ("write", "truncate"):
            inode = int(fields[0])
            call = (word, int(fields[1]), text(2) if word == "write" else b"")
            if inode in self.now:
                self.now[inode] = changed(self.now[inode], call)
                self.unsynced[inode].append(call)
        elif word == "sync":
            inode = int(fields[0])
            if inode in self.now:
                self.durable[inode], self.unsynced[inode] = self.now[inode], []
        elif word == "rename":
            self.names[text(1)] = self.names.pop(text(0))
        elif word == "unlink":
            self.names.pop(text(0), None)
        elif word == "syncnames":
            self.durable_names = dict(self.names)
        elif word == "say":
            self.said += 1

    def write_cut(self, folder, contents, names):
        for path, inode in (self.names if names == "kept" else self.durable_names).items():
            name = Path(path.decode()).name
            if name.endswith(("-shm", ".lock")):
                continue
            content = self.durable[inode]
            calls = self.unsynced[inode]
            if contents == "odd":
                calls = calls[::2]
            elif contents == "torn" and calls:
                word, at, data = calls[-1]
                calls = calls[:-1] + ([(word, at, data[:len(data) // 2])] if word == "write" else [])
            elif contents == "lost":
                calls = []
            for call in calls:
                content = changed(content, call)
            (folder / name).write_bytes(content)


def changed(content, call):
    word, at, data = call
    content = content + bytes(max(0, at - len(content)))
    return content[:at] + data + content[at + len(data):] if word == "write" else content[:at]


def hold_cut(bench, memory, trace, at, contents, names):
    """The power goes behind the line `at` of the trace."""
    lines, output = trace
    disk = Disk()
    for line in lines[:at]:
        disk.apply(line)
    folder = bench.folder()
    disk.write_cut(folder, contents, names)
    kept, lost = answers_in("\n".join(output.splitlines()[:disk.said]))
    if memory:
        _, after = bench.run(folder, memory)
        _, lostAfter = answers_in(after)
        there = bench.commands_in(folder)
        missing = set(range(1, COMMANDS + 1)) - set(there)
        require(missing <= set(lost) | set(lostAfter), f"missing {missing}, told lost {lost}")
        require(set(kept) <= set(there), f"answered {kept}, there {there}")
    else:
        there = bench.commands_in(folder)
        require(set(kept) <= set(there), f"answered {kept}, there {there}")
        require(not set(lost) & set(there), f"lost {lost}, there {there}")
        require(len(set(there) - set(kept)) <= 1, f"answered {kept}, there {there}")
    shutil.rmtree(folder)


def trace_of(bench, memory, fail=None):
    """The lines of a run's trace, and what it said."""
    folder = bench.folder()
    trace = bench.place / f"{folder.name}.trace"
    trace.write_text("")
    _, output = bench.run(folder, memory, fail=fail, trace=trace)
    shutil.rmtree(folder)
    return trace.read_text().splitlines(), output


def faults_of(lines):
    """Every call that may fail: once, and with all that follow."""
    for line in lines:
        if line.startswith("calls "):
            _, kind, count = line.split(" ")
            for number in range(1, int(count) + 1):
                for often in ("once", "ever"):
                    yield f"{kind}:{number}:{KINDS[kind]}:{often}"


def cuts_of(lines, first=1):
    calls = [at for at, line in enumerate(lines, 1) if not line.startswith(("calls ", "say"))]
    for at in calls:
        if at >= first:
            for contents in CONTENTS:
                for names in NAMES:
                    yield at, contents, names


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("layer")
    parser.add_argument("--whole", action="store_true")
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--sample", type=int, default=60)
    options = parser.parse_args()
    seed = options.seed if options.seed is not None else random.SystemRandom().randrange(1 << 32)
    chance = random.Random(seed)
    print(f"seed {seed}", flush=True)

    def drawn(every):
        every = list(every)
        return every if options.whole else chance.sample(every, min(options.sample, len(every)))

    wrong, tried = 0, collections.Counter()

    def attempt(kind, name, check, *arguments):
        nonlocal wrong
        tried[kind] += 1
        try:
            check(*arguments)
        except (Wrong, sqlite3.Error, subprocess.TimeoutExpired) as error:
            wrong += 1
            print(f"{kind} {name}: {error}", flush=True)

    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.access("/dev/shm", os.W_OK) else None) as at:
        bench = Bench(os.path.abspath(options.program), os.path.abspath(options.layer), Path(at))
        for memory in (False, True):
            kind = "with memory" if memory else "without memory"
            trace = trace_of(bench, memory)
            lines = trace[0]
            require(lines.count("say") >= COMMANDS, "the layer did not see the answers")
            faults = list(faults_of(lines))
            for fail in drawn(faults):
                attempt(f"fault, {kind}", fail, hold_fault, bench, memory, fail)
            for cut in drawn(cuts_of(lines)):
                attempt(f"power cut, {kind}", cut, hold_cut, bench, memory, trace, *cut)
            once = [fail for fail in faults if fail.endswith(":once")]
            for fail in once if options.whole else chance.sample(once, min(6, len(once))):
                after = trace_of(bench, memory, fail=fail)
                same = next((i for i, pair in enumerate(zip(lines, after[0]), 1)
                             if pair[0] != pair[1]), len(after[0]))
                # One damage a place, drawn: all of them would be a day's work.
                every = collections.defaultdict(list)
                for cut in cuts_of(after[0], max(1, same - 1)):
                    every[cut[0]].append(cut)
                places = sorted(every)
                for place in places if options.whole else chance.sample(places, min(8, len(places))):
                    cut = chance.choice(every[place])
                    attempt(f"pair, {kind}", (fail, *cut), hold_cut, bench, memory, after, *cut)
    for kind, number in tried.items():
        print(f"{kind}: {number}")
    print(f"{sum(tried.values())} tried, {wrong} wrong")
    return 1 if wrong or not tried else 0


if __name__ == "__main__":
    sys.exit(main())
