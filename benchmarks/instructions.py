#!/usr/bin/env python3
"""Counts the instructions of every logger, module, data model and engine apart, as a Markdown table.

  instructions.py x86 PROGRAM [--hold]
  instructions.py arm PROGRAM --plugin FILE --nm TOOL --emulator COMMAND [--hold]

PROGRAM is bench_instructions, built for the processor that is named. On x86-64 callgrind counts, on
32-bit ARM QEMU's user emulator with the plugin count_regions. With --hold the exit code is 1 where a
limit is exceeded.

The engine is what the library's calls of SQLite execute, a counting query's included; the data model
what its calls of FiscalDataController, GetRatearSubtotal and Vindral_GravaLog do; the module all
else: its own code and the C library's on its behalf.

callgrind counts each round of a string instruction (rep stos, rep movs), which the processor does
not: they run many bytes a cycle. In the columns that are judged each counts as one instruction; the
raw count of the module stands beside.
"""
import argparse
import concurrent.futures
import re
import subprocess
import sys
import tempfile
from pathlib import Path

# In percent of executing, for the cases that the engine does not reject: all of them, and three
# quarters of them.
LIMITS = {"x86": (4.0, 3.0), "arm": (9.0, None)}

RUN = "CountedRun"
MARK = "CountedCase"
ENGINE = ["__wrap_sqlite3_"]
MODEL = ["FixedModel::", "GetRatearSubtotal", "Vindral_GravaLog"]


def output_of(command, **options):
    done = subprocess.run(command, capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def cases_of(listed):
    """The cases as bench_instructions has printed them."""
    cases = []
    for line in listed.splitlines():
        name, variant, texts, result = line.split("\t")
        cases.append({"class": name, "name": f"{name}, {variant}" if variant else name,
                      "texts": int(texts), "rejected": result == "rejected"})
    return cases


# --- x86-64 ---------------------------------------------------------------------------------------

STRING_INSTRUCTION = re.compile(r"^\s*([0-9a-f]+):\s+rep[a-z]* (stos|movs|cmps|scas|lods)")
INSTRUCTION = re.compile(r"^\s*([0-9a-f]+):\s")


class StringInstructions:
    """The string instructions of an object, each with the address of the instruction behind it."""

    def __init__(self):
        self._of_object = {}

    def behind(self, path):
        if path not in self._of_object:
            found = {}
            if Path(path).is_file():
                lines = output_of(["objdump", "-d", "--no-show-raw-insn", path]).splitlines()
                pending = None
                for line in lines:
                    here = INSTRUCTION.match(line)
                    if here and pending is not None:
                        found[pending] = int(here.group(1), 16)
                        pending = None
                    string = STRING_INSTRUCTION.match(line)
                    if string:
                        pending = int(string.group(1), 16)
            self._of_object[path] = found
        return self._of_object[path]


def callgrind_parts(path):
    """For each part of a profile, in order: cost by object and address."""
    parts, costs, inclusive = [], None, False
    with open(path, encoding="utf-8") as profile:
        for line in profile:
            if line.startswith("part:"):
                costs = {}
                parts.append(costs)
            elif line.startswith("ob="):
                costs_here = costs.setdefault(line[3:].rstrip(), {})
            elif line.startswith("calls="):
                inclusive = True
            elif line.startswith("0x"):
                if inclusive:
                    inclusive = False
                    continue
                address, cost = line.split()
                address = int(address, 16)
                costs_here[address] = costs_here.get(address, 0) + int(cost)
    return parts


def count_part(costs, strings):
    """The instructions of a part: with each string instruction as one, and as callgrind has them."""
    raw = sum(sum(of_object.values()) for of_object in costs.values())
    repeated = 0
    for path, of_object in costs.items():
        for address, behind in strings.behind(path).items():
            if address in of_object:
                repeated += max(0, of_object[address] - of_object.get(behind, 0))
    return raw - repeated, raw


def count_on_x86(program):
    regions = {"module": [RUN, *ENGINE, *MODEL], "engine": ENGINE, "model": MODEL}
    strings = StringInstructions()
    with tempfile.TemporaryDirectory() as folder:

        def run(region):
            profile = Path(folder, region)
            listed = output_of(
                ["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile}",
                 "--collect-atstart=no", "--dump-instr=yes", "--dump-line=no",
                 "--combine-dumps=yes", "--compress-pos=no", "--compress-strings=no",
                 *(f"--toggle-collect={name}*" for name in regions[region]), program])
            return cases_of(listed), callgrind_parts(profile)

        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            ran = dict(zip(regions, pool.map(run, regions)))
    cases = ran["module"][0]
    for region, (_, parts) in ran.items():
        # The profile ends with a part of what came after the last case.
        if len(parts) < len(cases):
            sys.exit(f"{len(parts)} parts of {region} for {len(cases)} cases")
        for case, costs in zip(cases, parts):
            case[region], case[f"{region}, raw"] = count_part(costs, strings)
    return cases


# --- 32-bit ARM -----------------------------------------------------------------------------------

def count_on_arm(program, plugin, nm, emulator):
    letters = []
    for line in output_of([nm, "-C", program]).splitlines():
        address, _, name = line[:8], line[9:10], line[11:]
        for letter, names in (("M", [RUN]), ("R", [MARK]), ("E", ENGINE), ("D", MODEL)):
            if address.strip() and any(name.startswith(wanted) for wanted in names):
                letters.append(f"{int(address, 16):x} {letter}\n")
    with tempfile.TemporaryDirectory() as folder:
        functions, log = Path(folder, "functions"), Path(folder, "log")
        functions.write_text("".join(letters), encoding="utf-8")
        listed = output_of([*emulator.split(), "-d", "plugin", "-D", log,
                            "-plugin", f"{plugin},functions={functions}", program])
        reported = log.read_text(encoding="utf-8").splitlines()
    cases = cases_of(listed)
    if len(reported) != len(cases):
        sys.exit(f"{len(reported)} counts for {len(cases)} cases")
    for case, line in zip(cases, reported):
        counts = re.fullmatch(r"counts (\d+) (\d+) (\d+)", line)
        if not counts:
            sys.exit(f"{case['name']}: {line}")
        case["module"], case["engine"], case["model"] = map(int, counts.groups())
    return cases


# --- Table and limits -----------------------------------------------------------------------------

def print_table(cases):
    raw = "module, raw" in cases[0]
    print("| case | statements | module |" + (" module, raw |" if raw else "")
          + " data model | engine | module / engine |")
    print("|---|---:|---:|" + ("---:|" if raw else "") + "---:|---:|---:|")
    for case in cases:
        share = f"{case['percent']:.2f} %" if case["texts"] else "nothing executed"
        print(f"| {case['name']}{' (rejected)' if case['rejected'] else ''} | {case['texts']} "
              f"| {case['module']:,} |" + (f" {case['module, raw']:,} |" if raw else "")
              + f" {case['model']:,} | {case['engine']:,} | {share} |")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("processor", choices=LIMITS)
    parser.add_argument("program")
    parser.add_argument("--plugin")
    parser.add_argument("--nm")
    parser.add_argument("--emulator")
    parser.add_argument("--hold", action="store_true", help="exit code 1 beyond a limit")
    options = parser.parse_args()

    if options.processor == "x86":
        cases = count_on_x86(options.program)
    else:
        cases = count_on_arm(options.program, options.plugin, options.nm, options.emulator)
    for case in cases:
        case["percent"] = 100 * case["module"] / case["engine"] if case["texts"] else 0
    print_table(cases)

    judged = sorted((case["percent"], case["name"]) for case in cases
                    if case["texts"] and not case["rejected"])
    classes = {case["class"] for case in cases if case["texts"]}
    every, most = LIMITS[options.processor]
    three_quarters = judged[-(-3 * len(judged) // 4) - 1][0]
    print(f"\n{len(cases)} cases, {len(judged)} of them judged; {len(classes)} classes execute "
          f"statements. The most is {judged[-1][0]:.2f} % ({judged[-1][1]}), half of the cases are "
          f"at {judged[(len(judged) - 1) // 2][0]:.2f} % or below, three quarters at "
          f"{three_quarters:.2f} %.")

    over = [f"{name}: {percent:.2f} %, the limit is {every:.0f} %"
            for percent, name in judged if percent > every]
    if most is not None and three_quarters > most:
        over.append(f"three quarters of the cases are to be at {most:.0f} %")
    for line in over:
        print(line, file=sys.stderr)
    return 1 if options.hold and over else 0


if __name__ == "__main__":
    sys.exit(main())
