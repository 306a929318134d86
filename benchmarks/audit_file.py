#!/usr/bin/env python3
"""Counts what import, run, export and compare take for a record of a legal audit file, as Markdown.

  audit_file.py PROGRAM PLAIN [--days N] [--times N] [--receipts N] [--limit RATIO]
                [--untraced COMMAND]

Generates a tape of N days (31) and one of so many TIMES as many (12), runs each, and exports its file.
That file is imported, what comes of it is run and exported, and both files are compared: they must be
the same. Each command is run under callgrind for its instructions, which repeat exactly for the same
program, and thrice by itself for its largest memory and its least processor time. PLAIN, bench_plain,
reads the same input in the same way of counting: the file's lines for import and compare (both files),
the tape's for run, the database's rows for export.

An --untraced COMMAND's instructions are not counted in the longer file, which takes callgrind long: of
it the ratio of processor times is told, which other programs of the machine disturb.

With --limit the exit code is 1 where the instructions of a record in the longer file are above RATIO
times those in the shorter one.
"""
import argparse
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import time


def alone(command, folder):
    """Largest resident memory of a command, KiB, and its processor time. What wait4 tells of memory
    begins with this program's own."""
    most = 0
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with subprocess.Popen(command, cwd=folder, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL) as child:
        while child.poll() is None:
            status = pathlib.Path(f"/proc/{child.pid}/status").read_text("ascii", "replace")
            found = re.search(r"VmHWM:\s*(\d+)", status)
            most = int(found.group(1)) if found else most
            time.sleep(0.002)
    if child.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}: {child.returncode}")
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return most, after.ru_utime - before.ru_utime


def instructions(command, folder):
    done = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
                          cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                          errors="replace", check=False)
    found = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode != 0 or not found:
        sys.exit(f"{' '.join(map(str, command))}: {done.returncode}\n{done.stderr}")
    return int(found.group(1))


def measure(program, plain, folder, days, receipts, untraced):
    """The file's records; by command: instructions, None where they are untraced, those of plain
    reading, KiB, and processor time."""

    def bench(*arguments):
        subprocess.run([program, *arguments], cwd=folder, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=True)

    with open(folder / "tape", "wb") as file:
        subprocess.run([program, "generate", "--days", str(days), "--receipts", str(receipts),
                        "--seed", "1"], stdout=file, check=True)
    bench("run", "tape", "--db", "db", "--memory", "memory")
    bench("export", "db", "--output", "file", "--memory", "memory")
    records = (folder / "file").read_bytes().count(b"\n")

    def clean(*names):
        for name in names:
            (folder / name).unlink(missing_ok=True)

    steps = {
        "import": (["import", "file", "--tape", "tape2", "--memory", "memory2", "--facts", "facts"],
                   lambda: clean("tape2", "memory2", "facts"), ["lines", "file"]),
        "run": (["run", "tape2", "--db", "db2", "--memory", "memory3"],
                lambda: (clean("db2", "memory3"),
                         shutil.copy(folder / "memory2", folder / "memory3")), ["lines", "tape2"]),
        "export": (["export", "db2", "--output", "file2", "--memory", "memory3", "--facts", "facts"],
                   lambda: clean("file2"), ["rows", "db2"]),
        "compare": (["compare", "file", "file2"], lambda: None, ["lines", "file"]),
    }
    result = {}
    for name, (arguments, prepare, reads) in steps.items():
        memory, seconds = 0, []
        for _ in range(3):
            prepare()
            most, taken = alone([program, *arguments], folder)
            memory = max(memory, most)
            seconds.append(taken)
        counted = None
        if name not in untraced:
            prepare()
            counted = instructions([program, *arguments], folder)
        read = instructions([plain, *reads], folder) * (2 if name == "compare" else 1)
        result[name] = (counted, read, memory, min(seconds))
    return records, result


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("plain", type=pathlib.Path)
    parser.add_argument("--days", type=int, default=31, help="of the shorter file [31]")
    parser.add_argument("--times", type=int, default=12, help="as many in the longer one [12]")
    parser.add_argument("--receipts", type=int, default=20, help="a day [20]")
    parser.add_argument("--untraced", action="append", default=[], metavar="COMMAND",
                        choices=("import", "run", "export", "compare"))
    parser.add_argument("--limit", type=float, metavar="RATIO")
    options = parser.parse_args()
    program, plain = options.program.resolve(), options.plain.resolve()

    both = []
    print("| command | days | records | instructions | a record | of plain reading | ratio | "
          "peak KiB |\n|---|---:|---:|---:|---:|---:|---:|---:|")
    for days in (options.days, options.days * options.times):
        with tempfile.TemporaryDirectory() as folder:
            records, result = measure(program, plain, pathlib.Path(folder), days, options.receipts,
                                      options.untraced if both else [])
        both.append((records, result))
        for name, (counted, read, memory, _) in result.items():
            told = ["", "", f"{read / records:,.0f}", ""]
            if counted is not None:
                told = [f"{counted:,}", f"{counted / records:,.0f}", told[2],
                        f"{counted / read:,.1f}"]
            print(f"| {name} | {days} | {records:,} | {' | '.join(told)} | {memory:,} |", flush=True)

    faults = 0
    print("\nA record, longer to shorter:\n\n| command | instructions | processor time | KiB more | "
          "bytes a record more |\n|---|---:|---:|---:|---:|")
    (few, short), (many, long) = both
    for name in short:
        untraced = long[name][0] is None
        of = 3 if untraced else 0
        growth = long[name][of] / many / (short[name][of] / few)
        more = long[name][2] - short[name][2]
        told = f" | {growth:.2f}" if untraced else f"{growth:.3f} | "
        print(f"| {name} | {told} | {more:,} | {more * 1024 / (many - few):,.1f} |")
        if options.limit is not None and not untraced and growth > options.limit:
            print(f"{name}: {growth:.3f}, above {options.limit:g}", file=sys.stderr)
            faults = 1
    return faults


if __name__ == "__main__":
    sys.exit(main())
