#!/usr/bin/env python3
"""Counts what one command costs a run that keeps a memory, its commit included: syncs, instructions.

  memory.py PROGRAM TAPE [--hold]

PROGRAM is ecf-bancada, built for release. The tape runs twice under callgrind, to one line and to a
later one between two Z reductions, behind which the device rests; what the later run has more is of
the commands between. With --hold the exit code is 1 where a command costs more syncs or instructions
than docs/memory.md promises.
"""
import argparse
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from instructions import output_of

LINES = (115, 154)
SYNCS = 2
INSTRUCTIONS = 450_000


def count(program, lines):
    """Commands, syncs and instructions of a run."""
    with tempfile.TemporaryDirectory() as folder:
        Path(folder, "tape").write_text("".join(lines), encoding="utf-8")
        said = output_of(
            ["valgrind", "--tool=callgrind", "--callgrind-out-file=profile", "--trace-syscalls=yes",
             "--log-file=calls", str(Path(program).resolve()), "run", "tape", "--db", "db",
             "--memory", "memory", "--log", "log"], cwd=folder)
        commands = re.search(r"^commands run +(\d+)$", said, re.MULTILINE)
        lost = re.search(r"^commands lost +0$", said, re.MULTILINE)
        total = re.search(r"^totals: (\d+)$", Path(folder, "profile").read_text(), re.MULTILINE)
        syncs = len(re.findall(r"\bsys_f(?:data)?sync ?\(", Path(folder, "calls").read_text()))
    if not (commands and lost and total and syncs):
        sys.exit(f"nothing was counted, or a command was lost\n{said}")
    return int(commands[1]), syncs, int(total[1])


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("tape", type=Path)
    parser.add_argument("--hold", action="store_true", help="exit code 1 beyond a limit")
    options = parser.parse_args()

    tape = options.tape.read_text(encoding="utf-8").splitlines(keepends=True)
    if any("reducao_z" in line for line in tape[LINES[0]:LINES[1]]):
        sys.exit("the tape has a Z reduction between the lines")
    first, last = (count(options.program, tape[:end]) for end in LINES)
    commands, syncs, instructions = (more - less for less, more in zip(first, last))
    if commands <= 0:
        sys.exit("no command between the lines")
    print(f"{commands} commands: {syncs / commands:.2f} syncs and "
          f"{instructions / commands:,.0f} instructions each")
    over = []
    if syncs > SYNCS * commands:
        over.append(f"more than {SYNCS} syncs a command")
    if instructions > INSTRUCTIONS * commands:
        over.append(f"more than {INSTRUCTIONS:,} instructions a command")
    for line in over:
        print(line, file=sys.stderr)
    return 1 if options.hold and over else 0


if __name__ == "__main__":
    sys.exit(main())
