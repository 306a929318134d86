#!/usr/bin/env python3
"""Checks what the library's archive needs from whoever links it.

Usage: check_symbols.py --cxx COMPILER --nm NM [--no-runtime] ARCHIVE
With --no-runtime it may not need the C++ runtime's support of the language either.
Names every symbol that it may not need and the object that does; exit code 1 when there is one.
"""

import argparse
import re
import subprocess
import sys
from pathlib import Path

# What the library leaves to its user, as linked. The third thing, the implementation of
# FiscalDataController, is reached through virtual calls alone and needs no symbol.
LEFT_TO_THE_USER = {"Vindral_GravaLog(char*)", "GetRatearSubtotal()"}

# The objects that allocate: the error message's block (an optimizer makes one calloc of a malloc and
# the clearing of its block), and, while a database is opened, what its journal would roll back.
ALLOCATES = {"RejectedStatement.cpp.o": {"malloc", "calloc"}, "LookLayer.cpp.o": {"sqlite3_malloc64"}}

SQLITE = re.compile(r"sqlite3_\w+")
ALLOCATION = re.compile(
    r"(malloc|calloc|realloc|reallocarray|aligned_alloc|posix_memalign|strn?dup|v?asprintf|getline"
    r"|sqlite3_(malloc|realloc|mprintf|vmprintf|str_new)\w*|operator (new|delete).*)")
# Of the C++ runtime: the language's own support, without throwing. What lies in namespace std is
# left out on purpose: it allocates and throws where nobody sees it.
LANGUAGE_SUPPORT = re.compile(
    r"__gxx_personality_v0|__cxa_(pure_virtual|begin_catch|end_catch|begin_cleanup|end_cleanup"
    r"|guard_acquire|guard_release|guard_abort|call_unexpected|call_terminate)|std::terminate\(\)"
    r"|vtable for __cxxabiv1::\w+")
# Made by the linker itself.
LINKER = {"_GLOBAL_OFFSET_TABLE_", "__dso_handle"}
# The runtimes whose symbols are the library's for the asking: C, mathematics, the compiler's own.
RUNTIMES = ("libc.so.6", "libm.so.6", "libgcc_s.so.1", "libgcc.a")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def archive_symbols(nm, archive):
    """(the symbols that the archive defines, the undefined ones as {symbol: objects})"""
    defined = set()
    undefined = {}
    for line in run(nm, "-C", "-A", archive).splitlines():
        match = re.fullmatch(r".*?:([^:]+):[0-9a-f ]* ([A-Za-z]) (.*)", line)
        if match is None:
            continue
        member, kind, symbol = match.groups()
        if kind in "Uwv":
            undefined.setdefault(symbol, set()).add(member)
        else:
            defined.add(symbol)
    return defined, {s: m for s, m in undefined.items() if s not in defined}


def runtime_symbols(cxx, nm):
    symbols = set()
    for name in RUNTIMES:
        path = Path(run(cxx, f"-print-file-name={name}").strip())
        if not path.is_file():
            sys.exit(f"{cxx} does not know where {name} is")
        dynamic = ["-D"] if ".so" in name else []
        for line in run(nm, *dynamic, "--defined-only", str(path)).splitlines():
            match = re.fullmatch(r"[0-9a-f]+ [A-Za-z] (.*)", line)
            if match is not None:
                symbols.add(match[1].split("@")[0])
    return symbols


def fault(symbol, member, runtime, support):
    """Why `member` may not need `symbol`, or None."""
    if ALLOCATION.fullmatch(symbol):
        return None if symbol in ALLOCATES.get(member, ()) else "allocates"
    if symbol in LEFT_TO_THE_USER or symbol in LINKER:
        return None
    if SQLITE.fullmatch(symbol) or symbol in runtime:
        return None
    if LANGUAGE_SUPPORT.fullmatch(symbol):
        return None if support else "is the C++ runtime's"
    return "is neither SQLite's, nor the runtimes', nor one that the library leaves to its user"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cxx", required=True)
    parser.add_argument("--nm", required=True)
    parser.add_argument("--no-runtime", action="store_true")
    parser.add_argument("archive")
    arguments = parser.parse_args()

    defined, undefined = archive_symbols(arguments.nm, arguments.archive)
    runtime = runtime_symbols(arguments.cxx, arguments.nm)
    faults = [f"{symbol}, needed by {member}, {reason}"
              for symbol, members in sorted(undefined.items()) for member in sorted(members)
              if (reason := fault(symbol, member, runtime, not arguments.no_runtime)) is not None]
    faults += [f"{symbol} is the user's to define, not the library's"
               for symbol in sorted(LEFT_TO_THE_USER & defined)]
    if not defined:
        faults.append(f"{arguments.archive} defines nothing")
    for line in faults:
        print(line)
    print(f"{len(defined)} symbols defined, {len(undefined)} needed: "
          f"{', '.join(sorted(undefined))}; {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
