#!/usr/bin/env python3
"""Counts what `check` takes, part by part, beside a plain program that reads every column of every
row as the engine gives it, as a Markdown table.

  check.py PROGRAM PLAIN [--days N] [--receipts N] [--limit RATIO] [--most TIMES]
           [--judge PART...]

PROGRAM is ecf-bancada, PLAIN bench_plain, both built for release. Makes databases of N, 2 N and 4 N
days of a generated tape and counts both with callgrind; counts repeat exactly for the same binaries
and libraries. The parts: the signatures of the receipts recomputed, the engine's integrity check, the
digest of the file, and the reconciliation, which is all the rest, the program's start included.

What the second doubling adds, divided by what the first one does, is 2 where the cost is linear; what
it adds stands beside what it adds to plain reading, so that no program's start is in it. With --limit
the exit code is 1 where a part grows above 2 x RATIO, with --judge one of those named alone; with
--most where the reconciliation takes more than TIMES what plain reading does.
"""
import argparse
import concurrent.futures
import pathlib
import re
import subprocess
import sys
import tempfile

from reading import make_days

# The functions that are a part each; what they call is theirs.
PARTS = {"signatures": "bancada::conferencia::CheckAssinaturas(",
         "integrity check": "bancada::conferencia::CheckArquivo(",
         "digest of the file": "bancada::conferencia::(anonymous namespace)::DigestOf("}


def counted(command, profile):
    done = subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile}",
                           *map(str, command)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          text=True, errors="replace", check=False)
    found = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode != 0 or not found:
        sys.exit(f"{' '.join(map(str, command))}: {done.returncode}\n{done.stdout}{done.stderr}")
    return int(found.group(1))


def parts_of(program, database):
    """What check takes of the database: each of PARTS, and the reconciliation."""
    profile = database.with_suffix(".callgrind")
    total = counted([program, "check", database], profile)
    listing = subprocess.run(["callgrind_annotate", "--inclusive=yes", "--threshold=100",
                              str(profile)], stdout=subprocess.PIPE, text=True, errors="replace",
                             check=True).stdout
    parts = {}
    for part, function in PARTS.items():
        found = re.search(r"^ *([\d,]+) .*:" + re.escape(function), listing, re.MULTILINE)
        if not found:
            sys.exit(f"{function} is not in the profile: is it called something else now?")
        parts[part] = int(found.group(1).replace(",", ""))
    return {"reconciliation": total - sum(parts.values()), **parts}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("plain", type=pathlib.Path)
    parser.add_argument("--days", type=int, default=15, help="of the smallest database [15]")
    parser.add_argument("--receipts", type=int, default=40, help="a day [40]")
    parser.add_argument("--limit", type=float, metavar="RATIO")
    parser.add_argument("--most", type=float, metavar="TIMES")
    parser.add_argument("--judge", nargs="+", metavar="PART", help="as the table names them [all]")
    options = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(2) as pool:
        paths = [pathlib.Path(folder, f"days{factor}.db") for factor in (1, 2, 4)]
        for path, factor in zip(paths, (1, 2, 4)):
            make_days(options.program, path, options.days * factor, options.receipts)
        checks = list(pool.map(lambda path: parts_of(options.program, path), paths))
        plain = list(pool.map(
            lambda path: counted([options.plain, "rows", path], path.with_suffix(".plain")), paths))

    faults = []
    print(f"| {options.receipts} receipts a day | {options.days} days | {2 * options.days} days "
          f"| {4 * options.days} days | growth, linear is 2 | beside plain reading |")
    print("|---|---:|---:|---:|---:|---:|")
    for part, counts in [("plain reading", plain),
                         *((part, [check[part] for check in checks]) for part in checks[0])]:
        growth = (counts[2] - counts[1]) / (counts[1] - counts[0])
        beside = (counts[2] - counts[1]) / (plain[2] - plain[1])
        print(f"| {part} | " + " | ".join(f"{count / 1e6:,.1f}" for count in counts)
              + f" | {growth:.2f} | {beside:.2f} |")
        judged = options.judge is None or part in options.judge
        if options.limit is not None and judged and growth > 2 * options.limit:
            faults.append(f"{part}: grows {growth:.2f}, above {2 * options.limit:g}")
        if options.most is not None and part == "reconciliation" and beside > options.most:
            faults.append(f"{part}: {beside:.2f} times plain reading, above {options.most:g}")
    for fault in faults:
        print(fault, file=sys.stderr)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
