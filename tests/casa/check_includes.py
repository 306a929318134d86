#!/usr/bin/env python3
"""Checks that includes point downward: each layer includes itself and the layers named here.

Usage: check_includes.py ROOT
Names every offending line; exit code 1 when there is one.
"""

import re
import sys
from pathlib import Path

# A layer is a folder, or a header and source of one name in the root. The order is the house's,
# lowest first. The firmware half ends with CmdDBLogger and LogDatabase, which do not know each
# other, and never includes what stands below it here.
FIRMWARE = {
    "libs": [],
    "RtcClasses": ["libs"],
    "MfdServices": ["libs"],
    "FiscalData": ["libs", "RtcClasses"],
    "Interpreter": ["libs", "RtcClasses", "FiscalData"],
    "FiscalCommands": ["libs", "RtcClasses", "FiscalData", "Interpreter"],
    "CmdDBLogger": ["libs", "RtcClasses", "MfdServices", "FiscalData", "Interpreter",
                    "FiscalCommands"],
    "LogDatabase": ["libs", "MfdServices"],
}
LAYERS = {
    **FIRMWARE,
    "bancada": list(FIRMWARE),
    "tests": [*FIRMWARE, "bancada"],
    "benchmarks": [*FIRMWARE, "bancada", "tests"],
    "examples": list(FIRMWARE),
}

# Projects of their own below the root, whose files include one another by their bare names.
PROJECTS = ("examples/firmware/",)

# The folders of the bench, likewise. What stands in bancada/ itself is everyone's, main.cpp aside.
BENCH = {
    "registro": [],
    "tape": ["registro"],
    "log": [],
    "banco": ["log"],
    "comandos": ["registro", "tape", "banco"],
    "memoria": ["registro", "tape"],
    "caixa": ["registro", "tape", "log", "banco", "comandos", "memoria"],
    "leitura": [],
    "relatorio": ["log", "leitura"],
    "conferencia": ["log", "leitura"],
    "arquivo": ["leitura"],
    "copia": ["leitura"],
    "recuperacao": [],
    "gerador": ["registro"],
}
BENCH["cli"] = list(BENCH)

# The command line is the program's: what else is measured or tested lies below it.
CLI = "bancada/cli/"
TESTS_OF_CLI = ("tests/bancada/cli/", "tests/bancada/check_Comando.cpp")

# The layers of the firmware half that talk to the engine.
SEES_SQLITE = {"CmdDBLogger", "LogDatabase"}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?P<open>[<"])(?P<path>[^>"]*)[>"]')
STANDARD_HEADER = re.compile(r"[a-z_]+")


def layer_of(path):
    """The layer of a path relative to the root."""
    first = path.split("/", 1)[0]
    return first if "/" in path else Path(first).stem


def project_files(root):
    for entry in sorted(root.iterdir()):
        if entry.name.startswith(".") or entry.name in ("build", "out"):
            continue
        candidates = sorted(entry.rglob("*")) if entry.is_dir() else [entry]
        for path in candidates:
            if path.suffix in (".h", ".cpp"):
                yield path


def bench_folder(path):
    """The folder of a file in the bench, or None for one in bancada/ itself."""
    parts = path.split("/")
    return parts[1] if len(parts) > 2 else None


def bench_fault(name, included):
    """Why a file of the bench may not include another, or None."""
    folder = bench_folder(name)
    other = bench_folder(included)
    if name == "bancada/main.cpp" or other is None or folder == other:
        return None
    if folder not in BENCH:
        return f"bancada/{folder or ''} has no rule here"
    return None if other in BENCH[folder] else f"bancada/{folder} may not include bancada/{other}"


def fault(root, name, opening, included):
    """Why the file `name` may not include `included`, or None."""
    layer = layer_of(name)
    other = layer_of(included)
    if opening == "<":
        if layer not in FIRMWARE:
            return None
        if included == "sqlite3.h":
            return None if layer in SEES_SQLITE else "this layer does not talk to the engine"
        if not STANDARD_HEADER.fullmatch(included):
            return "the firmware half needs SQLite and the C++ runtime alone"
        return None
    if name.startswith(PROJECTS) and (root / name).parent.joinpath(included).is_file():
        return None
    if not (root / included).is_file():
        return "no such file below the project's root"
    if layer == other == "bancada":
        return bench_fault(name, included)
    if included.startswith(CLI) and not name.startswith(TESTS_OF_CLI):
        return f"{CLI} is for {TESTS_OF_CLI[0]} alone"
    if other == layer or other in LAYERS[layer]:
        return None
    return f"{layer} may not include {other}"


def main(root):
    faults = 0
    files = 0
    for path in project_files(root):
        files += 1
        name = path.relative_to(root).as_posix()
        layer = layer_of(name)
        if layer not in LAYERS:
            print(f"{name}: a layer that has no rule here")
            faults += 1
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if match is None:
                continue
            reason = fault(root, name, match["open"], match["path"])
            if reason is not None:
                print(f"{name}:{number}: {line.strip()}: {reason}")
                faults += 1
    if files == 0:
        print(f"{root}: no sources found")
        return 1
    print(f"{files} files, {faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(Path(sys.argv[1]).resolve()))
