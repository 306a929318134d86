#!/usr/bin/env python3
"""Counts the instructions of `show` and `check` while the database grows, as a Markdown table.

  reading.py PROGRAM SCHEMA [--days N] [--receipts N] [--times N] [--limit RATIO] [--judge COMMAND...]

Makes databases of N, 2 N and 4 N days of a generated tape, and of one document number that was given
N, 2 N and 4 N times, and counts with callgrind what reading each of them takes. Counts repeat exactly
for the same program. What is judged is growth: what the second doubling adds, divided by what the
first one does, is 2 where the cost is linear. The page of one day is judged by its cost in the
largest database, divided by that in the smallest: 1 where the rest is not read.

With --limit the exit code is 1 where a linear command is above 2 x RATIO, or the page of one day
above RATIO; with --judge of the commands named there alone.
"""
import argparse
import concurrent.futures
import pathlib
import re
import sqlite3
import subprocess
import sys
import tempfile

DAY = 2
COMMANDS = [("show", "show", []), ("show --html", "show", ["--html", "-"]), ("check", "check", [])]
OF_ONE_DAY = [("show --crz --html", "show", ["--crz", str(DAY), "--html", "-"])]


def instructions(program, name, database, options):
    command = [program, name, database, *options]
    done = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                           *command], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                          text=True, errors="replace", check=False)
    found = re.search(r"Collected : (\d+)", done.stderr)
    # check answers 1 where it finds something, as it does of a number that came again.
    if done.returncode > (1 if name == "check" else 0) or not found:
        sys.exit(f"{' '.join(map(str, command))}: {done.returncode}\n{done.stderr}")
    return int(found.group(1))


def make_days(program, path, days, receipts):
    tape = path.with_suffix(".jsonl")
    with open(tape, "wb") as file:
        subprocess.run([program, "generate", "--days", str(days), "--receipts", str(receipts),
                        "--seed", "1"], stdout=file, check=True)
    subprocess.run([program, "run", tape, "--db", path], stdout=subprocess.DEVNULL, check=True)


def make_repeated(path, times, schema):
    """So many receipts of each kind with items and payments, and Z reductions, of one number."""
    db = sqlite3.connect(path)
    db.executescript(schema.read_text("utf-8"))
    for i in range(times):
        em = f"2024-03-15 {i // 3600:02}:{i // 60 % 60:02}:{i % 60:02}"
        db.execute("INSERT INTO cupom_fiscal VALUES (7, ?, 2, ?, '', '', ',', 'c2ln', 3, 3, 'V', 0,"
                   " 'V', 0, 0, 0, ' ', 'N', 'N', 0, 0, ' ', ' ')", (i + 1, em))
        for item in (1, 2):
            db.execute("INSERT INTO item_cupom_fiscal VALUES (?, 7, '9', 'Item', 1, 'F1', 'UN', 1.5,"
                       " 'V', 0, 'V', 0, 0, 1.5, 0, 2, 'T', 'N', 0, 0)", (item,))
        db.execute("INSERT INTO pagamento_cupom VALUES (7, ?, 3, 1, '', 1, 'N', 0)", (i + 1,))
        db.execute("INSERT INTO cupom_nf VALUES (7, 2, ?, 1, ?, 4, 4, 'V', 0, 'V', 0, 0, 'N', '',"
                   " '', 0, 0)", (1000000 + i, em))
        db.execute("INSERT INTO item_cupom_nf VALUES (1, 7, 3, 4, 4, 'V', 0, 'V', 0, 0, 'N', 0, 0)")
        db.execute("INSERT INTO pagamento_cupom VALUES (7, ?, 4, 1, '', 1, 'N', 0)", (1000000 + i,))
        for kind in ("CN", "RZ"):
            db.execute("INSERT INTO outros_documentos VALUES (7, 1, ?, 0, 0, 1, ?, ?, ?)",
                       (1000000 + i, em, em, kind))
        db.execute("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao) VALUES (1, 7, ?)",
                   (em,))
    db.commit()
    db.close()


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("schema", type=pathlib.Path)
    parser.add_argument("--days", type=int, default=10, help="of the smallest database [10]")
    parser.add_argument("--receipts", type=int, default=20, help="a day [20]")
    parser.add_argument("--times", type=int, default=250, help="that the number came [250]")
    parser.add_argument("--limit", type=float, metavar="RATIO")
    parser.add_argument("--judge", nargs="+", metavar="COMMAND",
                        help='as the table names them, e.g. "show --html"; [all]')
    options = parser.parse_args()

    faults = []
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(2) as pool:

        def measure(kind, make, smallest, commands):
            paths = []
            for factor in (1, 2, 4):
                path = pathlib.Path(folder, f"{kind}{factor}.db")
                make(path, smallest * factor)
                paths.append(path)
            for title, name, given in commands:
                counts = list(pool.map(
                    lambda path, n=name, g=given: instructions(options.program, n, path, g), paths))
                yield title, counts

        def row(title, what, counts, ratio, due):
            print(f"| {title} | {what} | " + " | ".join(f"{count / 1e6:,.1f}" for count in counts)
                  + f" | {ratio:.2f} | {due} |", flush=True)
            judged = options.judge is None or title in options.judge
            if options.limit is not None and judged and ratio > due * options.limit:
                faults.append(f"{title}, {what}: {ratio:.2f}, above {due * options.limit:g}")

        print("| command | database | N | 2 N | 4 N | ratio | linear is |")
        print("|---|---|---:|---:|---:|---:|---:|")
        for what, kind, make, smallest in (
                (f"{options.days} days of {options.receipts} receipts", "days",
                 lambda path, n: make_days(options.program, path, n, options.receipts),
                 options.days),
                (f"one number {options.times} times", "number",
                 lambda path, n: make_repeated(path, n, options.schema), options.times)):
            commands = COMMANDS + (OF_ONE_DAY if kind == "days" else [])
            for title, counts in measure(kind, make, smallest, commands):
                if "--crz" in title:
                    row(title, what, counts, counts[2] / counts[0], 1)
                else:
                    row(title, what, counts,
                        (counts[2] - counts[1]) / (counts[1] - counts[0]), 2)
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
