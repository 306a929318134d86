#!/usr/bin/env python3
"""Counts the instructions of a tape's commands beside those of a plain program, as a Markdown table.

  owner.py PROGRAM TAPE [--hold]

PROGRAM is bench_owner, built for release; callgrind counts, all passes in one run:

  plain    a program that executes the same texts in the same transactions by sqlite3_exec
  owner    LogDatabase, handed these texts
  device   LogDatabase and the loggers, with the data model that they ask
  bench    the bench's till: device, the register and the counts of rows

The same again with the engine's statistics of memory. As in instructions.py a string instruction
counts as one in what is judged, and the raw count stands beside. With --hold the exit code is 1 where
the limit is exceeded, by the judged count of any pass or by the raw one of the device, or where the
passes did not leave the same rows.
"""
import argparse
import sqlite3
import sys
import tempfile
from pathlib import Path

from instructions import StringInstructions, callgrind_parts, count_part, output_of

PASSES = ("plain", "owner", "device", "bench")
# In times of the plain program.
LIMIT = 1.25


def rows_of(path):
    with sqlite3.connect(path) as db:
        return [row for row in db.iterdump() if row.startswith("INSERT")]


def count(program, tape, *options):
    """What the program says, and {pass: (judged, raw)}."""
    with tempfile.TemporaryDirectory() as folder:
        profile = Path(folder, "profile")
        said = output_of(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile}",
             "--collect-atstart=no", "--dump-instr=yes", "--dump-line=no", "--combine-dumps=yes",
             "--compress-pos=no", "--compress-strings=no",
             *(f"--toggle-collect=Counted{name.capitalize()}" for name in PASSES),
             program, tape, folder, *options]).strip()
        parts = callgrind_parts(profile)
        strings = StringInstructions()
        counts = {name: count_part(costs, strings) for name, costs in zip(PASSES, parts)}
        rows = {name: rows_of(Path(folder, f"{name}.db")) for name in PASSES}
        different = [name for name in PASSES if rows[name] != rows["plain"]]
    if len(counts) != len(PASSES) or not all(raw for _, raw in counts.values()) or not rows["plain"]:
        sys.exit("nothing was counted, or no row was written")
    return said, counts, different


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("tape")
    parser.add_argument("--hold", action="store_true", help="exit code 1 beyond the limit")
    options = parser.parse_args()

    _, counts, different = count(options.program, options.tape)
    said, with_statistics, _ = count(options.program, options.tape, "memory-statistics")
    print(said + "\n")
    print("| | instructions | of the plain program | raw | of the plain program "
          "| with statistics of memory | they take |")
    print("|---|---:|---:|---:|---:|---:|---:|")
    plain, plain_raw = counts["plain"]
    for name, (judged, raw) in counts.items():
        more = with_statistics[name][0]
        print(f"| {name} | {judged:,} | {judged / plain:.2f} | {raw:,} | {raw / plain_raw:.2f} "
              f"| {more:,} | {100 * (more - judged) / more:.1f} % |")

    over = [f"the rows of {name} are not those of the plain program" for name in different]
    ratios = [(name, judged / plain) for name, (judged, _) in counts.items()]
    ratios.append(("device, raw", counts["device"][1] / plain_raw))
    over += [f"{name}: {ratio:.2f} times the plain program, the limit is {LIMIT}"
             for name, ratio in ratios if ratio > LIMIT]
    for line in over:
        print(line, file=sys.stderr)
    return 1 if options.hold and over else 0


if __name__ == "__main__":
    sys.exit(main())
