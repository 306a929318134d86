#!/usr/bin/env python3
"""What the libraries take of a device: text, constants, relocated data, and the stack of the loggers.

  footprint.py write PROJECT
  footprint.py hold-size PROJECT PROCESSOR ARCHIVE SIZE [TABLE]
  footprint.py hold-stack PROJECT PROCESSOR PROGRAM...

write measures the builds of the four presets that it names below and puts the three tables into
docs/integration.md, between their markers. TABLE is that of the archive, `size` for the loggers' and
`owner-size` for the owner's. hold-size and hold-stack measure one build and compare it
with the table there: the exit code is 1 where they differ by more than what is tolerated, or where a
limit is exceeded. PROCESSOR is x86-64 or ARM, SIZE the binutils' size of that processor, PROGRAM
test_CmdDBLogger with what runs it before it.

text is machine code, constants what lies in read-only data, relocated data the tables of functions
and pointers that a loader has to adjust. The tables that unwind the stack are none of them: they are
no part of a build that leaves them out. The stack is that below the frame that calls the logger:
own is down to where it calls the engine, in all both.
"""
import argparse
import re
import subprocess
import sys
from pathlib import Path

DOCUMENT = "docs/integration.md"
PROCESSORS = ("x86-64", "ARM")

# Where `write` finds the builds, below build/.
SIZE_BUILDS = {"x86-64": ("firmware", "size"), "ARM": ("firmware-arm", "arm-linux-gnueabihf-size")}
STACK_BUILDS = {"x86-64": ("release", []),
                "ARM": ("arm", ["qemu-arm-static", "-L", "/usr/arm-linux-gnueabihf"])}

# Each library's table.
ARCHIVES = {"size": "libecf_dblogger.a", "owner-size": "LogDatabase/libecf_logdatabase.a"}

# At most so many bytes of the loggers' text and constants together.
SIZE_LIMITS = {"x86-64": None, "ARM": 22000}
# At most so many bytes of stack in all, of every logger but the closing that apportions.
STACK_LIMIT = 32 * 1024
APPORTIONMENT = "CmdFechaCupom, rateio"
APPORTIONMENT_LIMIT = 64 * 1024

# What a table may differ from a measurement, in parts of the figure and in bytes: another patch
# level of the compiler or of the engine moves a few.
TOLERANCE = 0.03
TOLERATED_BYTES = 64

SECTIONS = (("text", (".text",)), ("constants", (".rodata",)),
            ("relocated", (".data.rel.ro", ".data")))
TOTAL = "together"


def output_of(command):
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def part_of(section):
    for number, (_, beginnings) in enumerate(SECTIONS):
        if any(section == name or section.startswith(name + ".") for name in beginnings):
            return number
    return None


def sizes_of(archive, size_tool):
    """For each source of the archive and for all: its text, constants and relocated data."""
    sizes, source = {}, None
    for line in output_of([size_tool, "-A", str(archive)]).splitlines():
        member = re.match(r"(\S+)\.cpp\.o\s+\(ex ", line)
        if member:
            source = sizes.setdefault(member.group(1), [0] * len(SECTIONS))
            continue
        section = re.match(r"(\.\S+)\s+(\d+)\s+\d+$", line)
        if section and part_of(section.group(1)) is not None:
            source[part_of(section.group(1))] += int(section.group(2))
    if not sizes:
        sys.exit(f"{archive} holds no object")
    sizes[TOTAL] = [sum(parts) for parts in zip(*sizes.values())]
    return sizes


def stacks_of(program):
    """For each logger: its own stack and that with the engine."""
    stacks = {}
    for line in output_of([*program, "--gtest_filter=StackUse.*"]).splitlines():
        if line.startswith("stack\t"):
            _, name, own, whole = line.split("\t")
            stacks[name] = [int(own), int(whole)]
    if APPORTIONMENT not in stacks:
        sys.exit(f"{' '.join(program)} measured no {APPORTIONMENT}")
    return stacks


# --- The tables -----------------------------------------------------------------------------------

def marker(name):
    return f"<!-- {name}: made by benchmarks/footprint.py -->\n", f"<!-- end of {name} -->\n"


def table(heads, measured):
    """Rows of measured[PROCESSOR][row], side by side."""
    columns = [f"{processor} {head}" for processor in PROCESSORS for head in heads]
    lines = [f"| | {' | '.join(columns)} |", "|---|" + "---:|" * len(columns)]
    rows = sorted({row for of in measured.values() for row in of},
                  key=lambda row: (row == TOTAL, row))
    for row in rows:
        figures = [f"{figure:,}" for processor in PROCESSORS
                   for figure in measured[processor].get(row, [0] * len(heads))]
        lines.append(f"| {row} | {' | '.join(figures)} |")
    return "\n".join(lines) + "\n"


def rows_of(document, name, processor, heads):
    """What the document's table says of a processor."""
    begin, end = marker(name)
    if begin not in document or end not in document:
        sys.exit(f"{DOCUMENT} has no table {name}")
    first = PROCESSORS.index(processor) * heads
    rows = {}
    for line in document.split(begin)[1].split(end)[0].splitlines()[2:]:
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        rows[cells[0]] = [int(cell.replace(",", "")) for cell in cells[1:]][first:first + heads]
    return rows


def differences(told, measured):
    found = []
    for row in sorted(told.keys() | measured.keys()):
        if row not in told or row not in measured:
            found.append(f"{row}: {'measured, not told' if row in measured else 'told, not there'}")
            continue
        for said, is_there in zip(told[row], measured[row]):
            if abs(said - is_there) > max(TOLERATED_BYTES, TOLERANCE * said):
                found.append(f"{row}: {DOCUMENT} says {told[row]}, measured {measured[row]}")
                break
    return found


def size_excess(processor, sizes):
    text, constants, _ = sizes[TOTAL]
    limit = SIZE_LIMITS[processor]
    if limit is not None and text + constants > limit:
        return [f"text and constants are {text + constants} bytes, the limit is {limit}"]
    return []


def stack_excess(stacks):
    return [f"{name}: {whole} bytes of stack" for name, (_, whole) in stacks.items()
            if whole > (APPORTIONMENT_LIMIT if name == APPORTIONMENT else STACK_LIMIT)]


def hold(found):
    for line in found:
        print(line)
    if found:
        print("Where the change is meant: benchmarks/footprint.py write makes the tables anew.")
    return 1 if found else 0


def write(project):
    build = project / "build"
    document = (project / DOCUMENT).read_text(encoding="utf-8")
    sizes = {name: {processor: sizes_of(build / folder / archive, tool)
                    for processor, (folder, tool) in SIZE_BUILDS.items()}
             for name, archive in ARCHIVES.items()}
    stacks = {processor: stacks_of([*emulator, str(build / folder / "tests/test_CmdDBLogger")])
              for processor, (folder, emulator) in STACK_BUILDS.items()}
    heads = [head for head, _ in SECTIONS]
    for name, text in (*((name, table(heads, of)) for name, of in sizes.items()),
                       ("stack", table(["own", "in all"], stacks))):
        begin, end = marker(name)
        before, rest = document.split(begin)
        document = before + begin + text + end + rest.split(end)[1]
    (project / DOCUMENT).write_text(document, encoding="utf-8")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = parser.add_subparsers(dest="command", required=True)
    commands.add_parser("write").add_argument("project", type=Path)
    for name in ("hold-size", "hold-stack"):
        of_name = commands.add_parser(name)
        of_name.add_argument("project", type=Path)
        of_name.add_argument("processor", choices=PROCESSORS)
        of_name.add_argument("measured", nargs=argparse.REMAINDER)
    options = parser.parse_args()
    if options.command == "write":
        return write(options.project)
    document = (options.project / DOCUMENT).read_text(encoding="utf-8")
    if options.command == "hold-size":
        archive, size_tool, *name = options.measured
        name = name[0] if name else "size"
        sizes = sizes_of(archive, size_tool)
        told = rows_of(document, name, options.processor, len(SECTIONS))
        excess = size_excess(options.processor, sizes) if name == "size" else []
        return hold(differences(told, sizes) + excess)
    stacks = stacks_of(options.measured)
    return hold(differences(rows_of(document, "stack", options.processor, 2), stacks) +
                stack_excess(stacks))


if __name__ == "__main__":
    sys.exit(main())
