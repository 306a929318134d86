#!/usr/bin/env python3
"""Runs clang-tidy over the project's sources with the rules of .clang-tidy, each finding told once.
A source that was clean is looked at again only when it, a header of the project that it includes or
the rules changed.

Usage: tidy.py ROOT BUILD [FILE...]
BUILD is a build folder with its compile_commands.json. Without FILE: every source of the firmware
half, the bench and the benchmarks that the build knows; the tests', by the rules of their own folder,
are looked at where they are named. Exit code 1 when there is a finding.
"""

import hashlib
import json
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TIDY = "clang-tidy-14"
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
FINDING = re.compile(r"(?P<place>[^\s:]+:\d+:\d+): (?:warning|error): .*")


def included(root, path, seen):
    """Adds to `seen` the file and the project's files that it includes, directly or not."""
    if path in seen or not path.is_file():
        return seen
    seen.add(path)
    for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
        included(root, root / name, seen)
    return seen


def rules(root, path):
    """The .clang-tidy files that apply to a file."""
    return [folder / ".clang-tidy" for folder in path.parents
            if folder.is_relative_to(root) and (folder / ".clang-tidy").is_file()]


def key(root, path, command):
    """A name for everything that decides what is found in a source."""
    files = included(root, path, set())
    files |= {rule for file in files for rule in rules(root, file)}
    digest = hashlib.sha256(command.encode())
    for file in sorted(files):
        digest.update(f"\0{file}\0".encode() + file.read_bytes())
    return digest.hexdigest()


def sources(root, build):
    """{source: its command}, what is generated left out."""
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    found = {}
    for entry in commands:
        path = Path(entry["directory"], entry["file"]).resolve()
        if path.is_relative_to(root) and not path.is_relative_to(root / "build"):
            found[path] = entry["command"]
    return found


def findings(output):
    """The findings of one run, each with the lines that belong to it."""
    found = []
    for line in output.splitlines():
        if FINDING.fullmatch(line):
            found.append([line])
        elif found:
            found[-1].append(line)
    return ["\n".join(lines) for lines in found]


def look_at(build, path):
    """(findings, the reason for which clang-tidy could not look)"""
    done = subprocess.run([TIDY, "-p", str(build), "--quiet", str(path)], capture_output=True,
                          text=True)
    found = findings(done.stdout)
    return found, None if found or done.returncode == 0 else done.stdout + done.stderr


def main(root, build, files):
    known = sources(root, build)
    unknown = [str(file) for file in files if file not in known]
    if unknown or not known:
        sys.exit(f"no source of {build}: {' '.join(unknown)}")
    clean = build / "tidy"
    clean.mkdir(exist_ok=True)
    named = files or [file for file in known if not file.is_relative_to(root / "tests")]
    stamps = {file: clean / key(root, file, known[file]) for file in named}
    # Those that include most take longest, and are begun first.
    due = sorted((file for file in stamps if not stamps[file].exists()),
                 key=lambda file: -len(included(root, file, set())))
    told = set()
    failed = 0
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for file, (found, reason) in zip(due, pool.map(lambda file: look_at(build, file), due)):
            if reason is not None:
                failed += 1
                print(f"{file.relative_to(root)}: {TIDY} failed\n{reason}", flush=True)
            elif not found:
                stamps[file].touch()
            for finding in found:
                if finding not in told:
                    told.add(finding)
                    print(finding.replace(f"{root}/", ""), flush=True)
    for stamp in clean.iterdir():  # of sources as they were
        if not files and stamp not in stamps.values():
            stamp.unlink()
    print(f"{len(stamps)} sources, {len(stamps) - len(due)} of them clean before; "
          f"{len(told)} findings, {failed} failures")
    return 1 if told or failed else 0


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(main(Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve(),
                  [Path(name).resolve() for name in sys.argv[3:]]))
