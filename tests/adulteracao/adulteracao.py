"""Tampers with clean logging databases and counts what `ecf-bancada check` finds of it.

Usage: adulteracao.py PROGRAM SOURCE_DIR [--seed N] [--per N] [--kinds N] [--clean N] [--least PERCENT]
                      [--report FILE] [--missed FILE]

Every kind of tampering is tried on every clean database, `--per` times with draws of its own. One
is found when `check` tells a finding, not explained by the log, that it does not tell of the clean
database, or cannot read the file. `--kinds` tries so many kinds alone, drawn; `--clean` asks for no
false alarm on so many generated databases more. Exits with 1 for a false alarm, for a `check` that
ends in another way than by its exit codes, and where less is found than `--least`.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile

import bancos
import mudancas

# What a lost row alone is told as: it names the loss and accuses nobody.
LOSSES = ("linha-perdida", "comando-perdido")


class Broken(Exception):
    """The program ended as it never should."""


def unexplained(program, banco, path):
    """The findings that no loss explains, or None where the file cannot be read."""
    command = [program, "check", "--json", path] + (["--log", banco.log] if banco.log else [])
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=300)
    if done.returncode == 2:
        return None
    if done.returncode not in (0, 1):
        raise Broken(f"exit code {done.returncode}: {' '.join(command)}: {done.stderr.decode()}")
    found = collections.Counter()
    for finding in json.loads(done.stdout)["findings"]:
        del finding["file"] # each copy has its own
        if finding["weight"] == "finding" and not finding["explained"]:
            found[json.dumps(finding, sort_keys=True)] += 1
    return found


def draw(seed, banco, kind, number):
    """The same for the same names, whatever else is tried."""
    return random.Random(f"{seed} {banco.name} {kind.name} {number}")


def tamper(kind, path, source):
    """Answers whether there was anything to change."""
    if kind.on_file:
        return kind.change(path, source)
    db = sqlite3.connect(path, isolation_level=None)
    try:
        db.execute("PRAGMA synchronous = OFF")
        db.execute("BEGIN")
        changed = kind.change(db, source)
        db.execute("COMMIT" if changed else "ROLLBACK")
        return changed
    finally:
        db.close()


def attempt(program, folder, banco, clean, kind, seed, number):
    """True found, False missed, None nothing to change."""
    path = os.path.join(folder, f"{os.getpid()}.db")
    for name in (path, path + "-wal", path + "-shm"):
        if os.path.exists(name):
            os.remove(name)
    shutil.copyfile(banco.path, path)
    if not tamper(kind, path, draw(seed, banco, kind, number)):
        return None
    found = unexplained(program, banco, path)
    return found is None or bool(found - clean)


def work(job):
    program, folder, banco, clean, kind_index, seed, number = job
    kind = KINDS[kind_index]
    return kind_index, banco.name, attempt(program, folder, banco, clean, kind, seed, number)


KINDS = []


def false_alarms(program, banco):
    found = unexplained(program, banco, banco.path)
    if found is None:
        return [f"{banco.name}: cannot be read"], collections.Counter()
    return [f"{banco.name}: {text}" for text in found
            if json.loads(text)["kind"] not in LOSSES], found


def generated_alarms(program, source, folder, count, seed):
    """Of so many generated databases, each removed behind its check."""
    bench = bancos.Bancada(program, source, folder)
    alarms = []
    for number in range(count):
        lines = bench.generated(1 + number % 7, number % 23, seed + number)
        if number % 3 == 0:
            lines = [bancos.line("configura", ratear_subtotal=True)] + lines
        if number % 5 == 0:
            lines = bancos.reprogrammed(lines)
        banco = bench.run(f"limpo-{number}", bench.write("limpo.jsonl", lines))
        banco.log = None
        alarms += false_alarms(program, banco)[0]
        for path in pathlib.Path(folder).glob("limpo*"):
            path.unlink()
    return alarms


def share(found, tried):
    return f"{100 * found / tried:.1f} %" if tried else "-"


def report(results, seed, per):
    """The figures as a table of Markdown, and the share of the kinds."""
    groups = collections.OrderedDict()
    by_kind = collections.defaultdict(lambda: [0, 0])
    for index, _, found in results:
        if found is not None:
            by_kind[index][0] += found
            by_kind[index][1] += 1
    for index, kind in enumerate(KINDS):
        if by_kind[index][1]:
            groups.setdefault(kind.of, []).append(by_kind[index])
    lines = ["| kind of tampering | kinds | tamperings | found, of the kinds | found, of the tamperings |",
             "|---|---|---|---|---|"]
    for name, counts in groups.items():
        kinds = sum(found / tried for found, tried in counts)
        found, tried = (sum(column) for column in zip(*counts))
        lines.append(f"| {name} | {len(counts)} | {tried} | {share(kinds, len(counts))} |"
                     f" {share(found, tried)} |")
    counts = [count for group in groups.values() for count in group]
    kinds = sum(found / tried for found, tried in counts)
    found, tried = (sum(column) for column in zip(*counts))
    lines.append(f"| **all** | {len(counts)} | {tried} | **{share(kinds, len(counts))}** |"
                 f" **{share(found, tried)}** |")
    lines.append("")
    lines.append(f"Seed {seed}, {per} a kind and database.")
    return "\n".join(lines), 100 * kinds / len(counts)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("source")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--per", type=int, default=1)
    parser.add_argument("--kinds", type=int)
    parser.add_argument("--clean", type=int, default=0)
    parser.add_argument("--least", type=float, default=0)
    parser.add_argument("--report")
    parser.add_argument("--missed")
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    with tempfile.TemporaryDirectory() as folder:
        made = bancos.make(program, options.source, folder)
        with sqlite3.connect(made[0].path) as db:
            KINDS.extend(mudancas.every_kind(db))
        db.close()
        chosen = list(range(len(KINDS)))
        if options.kinds:
            chosen = random.Random(options.seed).sample(chosen, min(options.kinds, len(chosen)))
        alarms = []
        clean = {}
        for banco in made:
            told, clean[banco.name] = false_alarms(program, banco)
            alarms += told
        alarms += generated_alarms(program, options.source, folder, options.clean, options.seed)
        jobs = [(program, folder, banco, clean[banco.name], kind, options.seed, number)
                for kind in chosen for banco in made for number in range(options.per)]
        with concurrent.futures.ProcessPoolExecutor(os.cpu_count()) as pool:
            results = list(pool.map(work, jobs, chunksize=16))
    text, found = report(results, options.seed, options.per)
    print(text)
    print(f"{len(alarms)} false alarms on {len(made) + options.clean} clean databases")
    for alarm in alarms:
        print("false alarm: " + alarm)
    if options.report:
        pathlib.Path(options.report).write_text(text + "\n", "utf-8")
    if options.missed:
        missed = sorted(f"{KINDS[index].name}: {name}" for index, name, was in results
                        if was is False)
        pathlib.Path(options.missed).write_text("\n".join(missed) + "\n", "utf-8")
    if found < options.least:
        print(f"less than {options.least} % of the kinds is found")
    return 1 if alarms or found < options.least else 0


if __name__ == "__main__":
    sys.exit(main())
