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
 - a pair: behind a fault that comes once a second one, or a power cut.

--whole tries every fault and every cut; and every pair within the opening and the first three commands,
with every damage, while of those beyond N behind each fault are drawn by the seed, which is printed.
Without it N faults and cuts, and fewer pairs, are drawn. Cuts that leave the same files behind the same
answers are tried once, and told apart in the count.

--part K/M tries the pairs behind each M-th fault alone, from the K-th on: the whole in several runs."""
import argparse
import collections
import hashlib
import os
import random
import re
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
FIRST_COMMANDS = 3  # whose pairs are all tried
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


def hold_told(missing, lost, after):
    """Of the commands whose rows are not there each was told as lost: when it was answered, or by what
    the next run says of the memory, which has their number and the last one."""
    told = re.search(r"^commands lost since the memory began: (\d+); the last: line (\d+)", after,
                     re.MULTILINE)
    require(missing <= lost or
            (told and int(told.group(1)) >= len(missing) and int(told.group(2)) in missing),
            f"missing {missing}, told {lost}: {after}")


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
        hold_told(missing, set(lost) | set(lostAfter), after)
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

    def after_cut(self, contents, names):
        """The files by their names."""
        files = {}
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
            files[name] = content
        return files


def changed(content, call):
    word, at, data = call
    content = content + bytes(max(0, at - len(content)))
    return content[:at] + data + content[at + len(data):] if word == "write" else content[:at]


class Trace:
    """What a run has changed, call by call, and what it said."""

    def __init__(self, lines, output):
        self.lines, self.output = lines, output.splitlines()
        self.counts = self.counts_before(len(lines))

    def counts_before(self, at):
        """How many calls of each kind there had been when that was told last."""
        counts = {}
        for line in self.lines[:at]:
            if line.startswith("calls "):
                _, kind, count = line.split(" ")
                counts[kind] = int(count)
        return counts

    def first_commands(self):
        """The line that ends the opening and the first commands."""
        said = [at for at, line in enumerate(self.lines, 1) if line == "say"]
        return said[FIRST_COMMANDS - 1] if len(said) >= FIRST_COMMANDS else len(self.lines)

    def places(self, first=1):
        """The lines behind which the power can go."""
        return [at for at, line in enumerate(self.lines, 1)
                if at >= first and not line.startswith(("calls ", "say"))]

    def states(self, cuts):
        """What each cut of (line, contents, names) leaves, in the order of the lines: the cut, the
        files, and the commands answered as kept and as lost."""
        disk, at = Disk(), 0
        for cut in sorted(cuts):
            for line in self.lines[at:cut[0]]:
                disk.apply(line)
            at = cut[0]
            kept, lost = answers_in("\n".join(self.output[:disk.said]))
            yield cut, disk.after_cut(*cut[1:]), kept, lost


def hold_cut(bench, memory, files, kept, lost):
    """The power has gone and left these files, behind these answers."""
    folder = bench.folder()
    for name, content in files.items():
        (folder / name).write_bytes(content)
    if memory:
        _, after = bench.run(folder, memory)
        _, lostAfter = answers_in(after)
        there = bench.commands_in(folder)
        missing = set(range(1, COMMANDS + 1)) - set(there)
        hold_told(missing, set(lost) | set(lostAfter), after)
        require(set(kept) <= set(there), f"answered {kept}, there {there}")
    else:
        there = bench.commands_in(folder)
        require(set(kept) <= set(there), f"answered {kept}, there {there}")
        require(not set(lost) & set(there), f"lost {lost}, there {there}")
        require(len(set(there) - set(kept)) <= 1, f"answered {kept}, there {there}")
    shutil.rmtree(folder)


def trace_of(bench, memory, fail=None):
    folder = bench.folder()
    trace = bench.place / f"{folder.name}.trace"
    trace.write_text("")
    _, output = bench.run(folder, memory, fail=fail, trace=trace)
    shutil.rmtree(folder)
    lines = trace.read_text().splitlines()
    trace.unlink()
    return Trace(lines, output)


def faults_of(before, counts):
    """The calls that may fail, from behind some to so many of each kind."""
    for kind, count in sorted(counts.items()):
        for number in range(before.get(kind, 0) + 1, count + 1):
            yield f"{kind}:{number}:{KINDS[kind]}"


def cuts_at(places):
    return [(at, contents, names) for at in places for contents in CONTENTS for names in NAMES]


class Work:
    """Tries what it is given, counts it, and prints what is wrong."""

    def __init__(self, bench):
        self.bench = bench
        self.tried = collections.Counter()
        self.same = 0
        self.wrong = 0
        self.known = set()

    def attempt(self, kind, name, check, *arguments):
        self.tried[kind] += 1
        try:
            check(self.bench, *arguments)
        except (Wrong, sqlite3.Error, subprocess.TimeoutExpired) as error:
            self.wrong += 1
            print(f"{kind} {name}: {error}", flush=True)

    def cut(self, kind, memory, trace, cuts, fail=None):
        for cut, files, kept, lost in trace.states(cuts):
            digest = hashlib.sha256(repr((memory, kept, lost)).encode())
            for name, content in sorted(files.items()):
                digest.update(repr((name, len(content))).encode() + content)
            if digest.digest() in self.known:
                self.tried[kind] += 1
                self.same += 1
                continue
            self.known.add(digest.digest())
            self.attempt(kind, cut if fail is None else (fail, *cut), hold_cut, memory, files, kept,
                         lost)


def pairs(work, memory, fail, trace, whole, drawn):
    """Behind a fault that comes once: `whole`, every second fault and every cut within the first
    commands; `drawn` of those that are left."""
    kind = "with memory" if memory else "without memory"
    after = trace_of(work.bench, memory, fail=fail)
    # Up to the fault both traces are the same.
    same = next((i for i, pair in enumerate(zip(trace.lines, after.lines), 1)
                 if pair[0] != pair[1]), len(after.lines))
    end = after.first_commands() if whole else 0
    places = after.places(max(1, same - 1))
    cuts = cuts_at([at for at in places if at <= end])
    beyond = cuts_at([at for at in places if at > end])
    work.cut(f"cut behind a fault, {kind}", memory, after, cuts + drawn(beyond), fail)
    fired = after.counts_before(next((at for at in range(same, len(after.lines))
                                      if not after.lines[at].startswith("calls ")),
                                     len(after.lines)))
    early = {name: count for name, count in after.counts_before(end).items() if whole}
    seconds = list(faults_of(fired, early))
    reached = {name: max(fired.get(name, 0), early.get(name, 0)) for name in after.counts}
    seconds += drawn(list(faults_of(reached, after.counts)))
    for second in seconds:
        work.attempt(f"fault behind a fault, {kind}", (fail, second), hold_fault, memory,
                     f"{fail},{second}:once")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("layer")
    parser.add_argument("--whole", action="store_true")
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--sample", type=int, default=60)
    parser.add_argument("--part", default="1/1")
    options = parser.parse_args()
    seed = options.seed if options.seed is not None else random.SystemRandom().randrange(1 << 32)
    first, every = (int(number) for number in options.part.split("/"))
    print(f"seed {seed}", flush=True)

    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.access("/dev/shm", os.W_OK) else None) as at:
        work = Work(Bench(os.path.abspath(options.program), os.path.abspath(options.layer), Path(at)))
        for memory in (False, True):
            chance = random.Random(seed)

            def sample(of, number):
                of = list(of)
                return chance.sample(of, min(number, len(of)))

            kind = "with memory" if memory else "without memory"
            trace = trace_of(work.bench, memory)
            require(trace.lines.count("say") >= COMMANDS, "the layer did not see the answers")
            faults = list(faults_of({}, trace.counts))
            if first == 1:
                single = [f"{fault}:{often}" for fault in faults for often in ("once", "ever")]
                for fail in single if options.whole else sample(single, options.sample):
                    work.attempt(f"fault, {kind}", fail, hold_fault, memory, fail)
                cuts = cuts_at(trace.places())
                work.cut(f"power cut, {kind}", memory, trace,
                         cuts if options.whole else sample(cuts, options.sample))
            early = set(faults_of({}, trace.counts_before(trace.first_commands())))
            beyond = options.sample if options.whole else 8
            for fail in faults[first - 1::every] if options.whole else sample(faults, 6):
                pairs(work, memory, f"{fail}:once", trace, options.whole and fail in early,
                      lambda of: sample(of, beyond))
    for kind, number in work.tried.items():
        print(f"{kind}: {number}")
    print(f"{sum(work.tried.values())} tried, of which {work.same} cuts left what another had; "
          f"{work.wrong} wrong")
    return 1 if work.wrong or not work.tried else 0


if __name__ == "__main__":
    sys.exit(main())
