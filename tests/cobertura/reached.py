#!/usr/bin/env python3
"""Reads what instrumented programs have reached of the sources, and holds it to limits.

  reached.py --build DIR --profile RAW... --programs PROGRAM... [--missing]
             --hold TITLE PATTERN LINES BRANCHES [--hold ...]

DIR is the build folder (preset coverage); the programs in it have been run, and left the RAW profiles.
Of the sources whose path from the project's root PATTERN matches (from its beginning) at least LINES
percent of the lines and BRANCHES percent of the branches must be reached. A branch is an outcome of a
condition that stands in the source: what the compiler adds, for exceptions above all, is none.

What cannot be reached is listed in unreached.txt, by its text and with its reason, and not counted.
An entry that fits nothing any more, since its text is gone or reached, fails as well. --missing prints
what is left, as entries would name it.
"""
import argparse
import collections
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
UNREACHED = HERE / "unreached.txt"
ENTRY = re.compile(r"(?P<source>\S+): (?P<text>.+)")
# Of a branch as the export has it; of a segment: where it begins, and what it says of the text behind.
BRANCH_COUNTS = slice(4, 6)
FIRST_FILE = 6
# What an entry says of a function that is never called, behind the line that names it.
BODY = " => its body"
# A line that is none.
BRACES = re.compile(r"[\s{};]*")


def squeezed(text):
    return " ".join(text.split())


class Source:
    """A source of the project, and how often what stands in it was reached."""

    def __init__(self, path):
        self.text = path.read_text(encoding="utf-8").split("\n")
        self.lines = {}     # line -> count
        self.branches = {}  # (line, column, line, column) -> [times true, times false]
        self.bodies = {}    # (first line, last line) of a function -> how often it was called

    def between(self, line, column, last_line, last_column):
        if line == last_line:
            return squeezed(self.text[line - 1][column - 1:last_column - 1])
        return squeezed("\n".join([self.text[line - 1][column - 1:], *self.text[line:last_line - 1],
                                   self.text[last_line - 1][:last_column - 1]]))

    def drop_bodies(self, entries):
        """Takes out the functions that are listed whole, and answers how many."""
        dropped = 0
        for (first, last), count in self.bodies.items():
            text = squeezed(self.text[first - 1].split("{")[0] or self.text[first - 2]) + BODY
            if count != 0 or entries[text] == 0:
                continue
            entries[text] -= 1
            dropped += 1
            self.lines = {line: count for line, count in self.lines.items()
                          if not first <= line <= last}
            self.branches = {place: counts for place, counts in self.branches.items()
                             if not first <= place[0] <= last}
        return dropped

    def missing(self):
        """What was not reached, as unreached.txt names it: lines, and outcomes of conditions."""
        lines = [squeezed(self.text[line - 1])
                 for line, count in sorted(self.lines.items()) if count == 0]
        outcomes = [f"{self.between(*place)} => {outcome}"
                    for place, counts in sorted(self.branches.items())
                    for outcome, count in zip(("true", "false"), counts) if count == 0]
        return lines, outcomes


def count_lines(source, segments):
    """A line counts as often as the most frequent piece of code that begins or goes on in it."""
    if segments[-1][0] > len(source.text):
        sys.exit("a source has changed since it was compiled: build anew")
    wrapped = None
    at = 0
    for line in range(segments[0][0], segments[-1][0] + 1):
        begun = []
        while at < len(segments) and segments[at][0] == line:
            begun.append(segments[at])
            at += 1
        starts = [one for one in begun if one[3] and one[4] and not one[5]]
        skipped = begun and not begun[0][3] and begun[0][4]
        code = not BRACES.fullmatch(source.text[line - 1])
        if code and not skipped and (starts or (wrapped is not None and wrapped[3])):
            counts = [one[2] for one in starts]
            if wrapped is not None and wrapped[3]:
                counts.append(wrapped[2])
            source.lines[line] = max(source.lines.get(line, 0), *counts, 0)
        if begun:
            wrapped = begun[-1]


def count_branches(source, function, file):
    # Where a condition is known while it is compiled, its own text was reached, and no outcome.
    reached = {tuple(one[:2]) for one in function["regions"] if one[5] == file and one[4] != 0}
    for branch in function["branches"]:
        if branch[FIRST_FILE] != file:
            continue
        counts = branch[BRANCH_COUNTS]
        if counts == [0, 0] and tuple(branch[:2]) in reached:
            continue
        known = source.branches.setdefault(tuple(branch[:4]), [0, 0])
        known[0] += counts[0]
        known[1] += counts[1]


def read_sources(export, root, build):
    sources = {}

    def source_of(name):
        # A compiler cache may have named it from where the compiler ran.
        path = (build / name).resolve()
        if not path.is_relative_to(root) or path.is_relative_to(build):
            return None
        key = str(path.relative_to(root))
        if key.startswith("tests/"):
            return None
        if key not in sources:
            sources[key] = Source(path)
        return sources[key]

    for file in export["files"]:
        source = source_of(file["filename"])
        if source is not None and file["segments"]:
            count_lines(source, file["segments"])
    for function in export["functions"]:
        for number, name in enumerate(function["filenames"]):
            source = source_of(name)
            if source is None:
                continue
            count_branches(source, function, number)
            if number == 0:
                first, _, last = function["regions"][0][:3]
                source.bodies[first, last] = (source.bodies.get((first, last), 0)
                                              + function["count"])
    return sources


def listed(path):
    """Source -> what of it is listed, each as often as it stands there. Checks that reasons do."""
    entries = collections.defaultdict(collections.Counter)
    for block in path.read_text(encoding="utf-8").split("\n\n"):
        lines = [line for line in block.split("\n") if line and not line.startswith("#")]
        reasons = [line for line in lines if line.startswith("    ")]
        if lines and (not reasons or lines[-len(reasons):] != reasons or len(reasons) == len(lines)):
            sys.exit(f"{path.name}: an entry stands above its reason, which is indented: {lines[0]}")
        for line in lines[:-len(reasons)]:
            entry = ENTRY.fullmatch(line)
            if entry is None:
                sys.exit(f"{path.name}: no entry: {line}")
            entries[entry["source"]][entry["text"]] += 1
    return entries


def percent(part, whole):
    return 100.0 if whole == 0 else 100 * part / whole


def left_of(missing, entries):
    """What of it is not listed; takes out of the entries what fits."""
    left = []
    for text in missing:
        if entries[text] > 0:
            entries[text] -= 1
        else:
            left.append(text)
    return left


def hold(title, names, sources, entries, limits, shows):
    """Prints the table. Answers whether it holds."""
    print(f"--- {title}")
    totals = [0, 0]
    reached = [0, 0]
    excluded = 0
    stale = []
    for name in names:
        source = sources[name]
        excluded += source.drop_bodies(entries[name])
        wholes = (len(source.lines), 2 * len(source.branches))
        left = []
        for kind, missing in enumerate(source.missing()):
            left.append(left_of(missing, entries[name]))
            excluded += len(missing) - len(left[kind])
            whole = wholes[kind] - (len(missing) - len(left[kind]))
            totals[kind] += whole
            reached[kind] += whole - len(left[kind])
        if left[0] or left[1]:
            print(f"{name:<44} {len(left[0]):>4} of {wholes[0]:>4} lines, {len(left[1]):>4} of "
                  f"{wholes[1]:>4} branches not reached")
        if shows:
            for text in left[0] + left[1]:
                print(f"{name}: {text}")
        stale += [f"{name}: {text}" for text, count in entries[name].items() if count > 0]
    holds = True
    for kind, (what, limit) in enumerate(zip(("lines", "branches"), limits)):
        share = percent(reached[kind], totals[kind])
        print(f"{what}: {reached[kind]} of {totals[kind]}, {share:.1f} % (limit {limit:g})")
        holds = holds and share >= limit
    print(f"listed as unreachable, and not counted: {excluded}")
    for entry in stale:
        print(f"{UNREACHED.name}: reached, or not there any more: {entry}")
    return holds and not stale


def export(profiles, programs):
    """What llvm-cov makes of raw profiles and the programs that left them."""
    with tempfile.NamedTemporaryFile(suffix=".profdata") as merged:
        subprocess.run(["llvm-profdata-14", "merge", "-o", merged.name, *profiles], check=True)
        command = ["llvm-cov-14", "export", "-instr-profile", merged.name,
                   "-ignore-filename-regex", "^/usr/", programs[0]]
        for program in programs[1:]:
            command += ["-object", program]
        done = subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    return json.loads(done.stdout)["data"][0]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--profile", nargs="+", required=True)
    parser.add_argument("--programs", nargs="+", required=True)
    parser.add_argument("--hold", nargs=4, action="append", required=True)
    parser.add_argument("--missing", action="store_true")
    parser.add_argument("--root", type=Path, default=ROOT)
    parser.add_argument("--unreached", type=Path, default=UNREACHED)
    options = parser.parse_args()

    sources = read_sources(export(options.profile, options.programs), options.root.resolve(),
                           options.build.resolve())
    entries = listed(options.unreached)
    holds = True
    for title, pattern, lines, branches in options.hold:
        names = sorted(name for name in sources if re.match(pattern, name))
        if not names:
            sys.exit(f"{title}: nothing of it was measured")
        gone = [name for name in entries if re.match(pattern, name) and name not in sources]
        for name in gone:
            print(f"{options.unreached.name}: no such source: {name}")
        holds = hold(title, names, sources, entries, (float(lines), float(branches)),
                     options.missing) and not gone and holds
    sys.exit(0 if holds else 1)


if __name__ == "__main__":
    main()
