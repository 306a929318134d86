#!/usr/bin/env python3
"""What a tape costs the device by the page size of its database, as a Markdown table.

  pages.py PROGRAM TAPE [SIZE...]

PROGRAM is ecf-bancada, built for release. For each page size the tape runs twice into a new database:
under strace, which sees every write and sync, and under callgrind. Counted are the bytes to the
write-ahead log; the 4 KiB blocks that the file system has to write, each once a sync of its file,
checkpoints included; the syncs; and the instructions of the whole run.
"""
import re
import sqlite3
import subprocess
import sys
import tempfile
from pathlib import Path

BLOCK = 4096
CALL = re.compile(r"^(?:\[pid +\d+\] |\d+ +)?(\w+)\((\d+)<([^>]*)>(.*) = (-?\d+)")


def output_of(command, folder):
    done = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done


def begin(folder, size):
    """An empty database whose pages have that size: its owner finds no tables and makes them."""
    for name in folder.iterdir():
        name.unlink()
    database = sqlite3.connect(folder / "db")
    database.execute(f"PRAGMA page_size = {size}")
    database.execute("VACUUM")
    database.close()


def count_writes(lines):
    log_bytes = blocks = syncs = 0
    dirty = {}
    for line in lines:
        call = CALL.match(line)
        if not call:
            continue
        name, _, path, arguments, result = call.groups()
        file = Path(path).name
        if not file.startswith("db") or file.endswith((".log", ".lock", "-shm")):
            continue
        if name == "pwrite64":
            at, length = int(arguments.rsplit(", ", 1)[1].rstrip(") ")), int(result)
            log_bytes += length if file.endswith("-wal") else 0
            dirty.setdefault(file, set()).update(range(at // BLOCK, (at + length - 1) // BLOCK + 1))
        elif name in ("fdatasync", "fsync"):
            syncs += 1
            blocks += len(dirty.pop(file, ()))
    return log_bytes, blocks + sum(map(len, dirty.values())), syncs


def main():
    program, tape = (str(Path(path).resolve()) for path in sys.argv[1:3])
    sizes = [int(size) for size in sys.argv[3:]] or [4096, 2048, 1024, 512]
    print("| page size | bytes to the log | 4 KiB blocks written, checkpoint included | syncs "
          "| instructions of the run |")
    print("|---:|---:|---:|---:|---:|")
    run = [program, "run", tape, "--db", "db"]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for size in sizes:
            begin(folder, size)
            output_of(["strace", "-f", "-y", "-s", "0", "-e", "trace=pwrite64,fdatasync,fsync",
                       "-o", "calls", *run], folder)
            log_bytes, blocks, syncs = count_writes(
                (folder / "calls").read_text(encoding="utf-8").splitlines())
            with sqlite3.connect(folder / "db") as database:
                made = database.execute("PRAGMA page_size").fetchone()[0]
            if made != size:
                sys.exit(f"the database has pages of {made}, not {size}")
            begin(folder, size)
            counted = output_of(["valgrind", "--tool=callgrind",
                                 "--callgrind-out-file=profile", *run], folder)
            instructions = int(re.search(r"Collected : (\d+)", counted.stderr)[1])
            print(f"| {size} | {log_bytes:,} | {blocks:,} | {syncs} "
                  f"| {instructions / 1e6:.1f} million |", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
