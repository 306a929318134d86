#!/usr/bin/env python3
"""Changes sources in one place at a time and runs the tests that reach that place: a mutant that no
test notices is a test that is missing, or a change that changes nothing.

  mutate.py PLACE... [--number N] [--seed S] [--build DIR] [--killed PERCENT]

PLACE is a source or a folder of sources, from the project's root. --number mutants are drawn from all
of them with the seed, which is printed, or all are tried with --number 0. DIR is a build of the test
programs (build/release); its compiler commands are used, its files are not touched, and neither is
a source: a mutant is compiled beside, and linked before the library. Of a header every source of the
library that includes it is compiled anew.

What has been tried is kept in build/mutacao, by place, seed and number: the same command goes on where
it was interrupted. Survivors are printed as diffs, but those that equivalents.txt lists with their
reason. The exit code is 1 where fewer than PERCENT of those that could be built were killed (100).
"""
import argparse
import concurrent.futures
import difflib
import hashlib
import json
import os
import random
import re
import shlex
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from mutants import mutants_of, schema_mutants_of

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
STATE = ROOT / "build" / "mutacao"
EQUIVALENTS = HERE / "equivalents.txt"

# Which test programs try what lies where, the first that matches; the quicker ones first.
PROGRAMS = (("libs/", ("test_libs", "test_CmdDBLogger")),
            ("RtcClasses", ("test_libs", "test_CmdDBLogger")),
            ("LogDatabase/", ("test_LogDatabase", "test_dono")),
            ("sqlite/", ("test_LogDatabase", "test_CmdDBLogger")),
            ("bancada/", ("test_bancada",)),
            ("", ("test_CmdDBLogger",)))
# Of the calls that fail in test_dono each 31st.
FAULTS = {"ECF_FALHAS_PASSO": "31"}
# What a mutant reads or writes past an array ends it; no runtime library is needed for that.
TRAPS = ("-fsanitize=undefined", "-fno-sanitize=vptr", "-fsanitize-undefined-trap-on-error")
# A mutant may run for ever, but not the tests: as often as they take unchanged, and seconds beside.
PATIENCE = 10
PATIENCE_SECONDS = 30


def run(command, timeout=None, **options):
    try:
        done = subprocess.run(command, capture_output=True, text=True, errors="replace",
                              timeout=timeout, check=False, **options)
    except subprocess.TimeoutExpired:
        return None, "took too long"
    return done.returncode, done.stdout + done.stderr


SCHEMA = "sqlite/schema.sql"


def mutants_in(path, text):
    return list(schema_mutants_of(text) if path == SCHEMA else mutants_of(text))


SUITE = re.compile(r"^TEST(?:_F)?\((\w+),|^INSTANTIATE_TEST_SUITE_P\(\s*(\w+),\s*(\w+),", re.MULTILINE)


def suites_in(places):
    """The test suites that these sources hold; one of values by the name of its instance."""
    return sorted({match.group(1) or f"{match.group(2)}/{match.group(3)}"
                   for place in places if place.exists()
                   for match in SUITE.finditer(place.read_text("utf-8"))})


def filters_of(path):
    """What to run for a mutant, the likeliest to notice it first: the tests of its source, of its
    folder, and all others. Each test runs once."""
    folder = ROOT / "tests" / Path(path).parent
    own = suites_in([folder / f"{Path(path).stem}Test.cpp"])
    near = [suite for suite in suites_in(sorted(folder.glob("*.cpp"))) if suite not in own]
    stages = [":".join(f"{suite}.*" for suite in suites) for suites in (own, near) if suites]
    return stages + ["-" + ":".join(f"{suite}.*" for suite in own + near)]


def programs_of(path):
    return next(programs for beginning, programs in PROGRAMS if path.startswith(beginning))


class Build:
    """How a build compiles its sources and links its test programs."""

    def __init__(self, folder):
        self.folder = folder
        self.compiles = {}
        for entry in json.loads((folder / "compile_commands.json").read_text()):
            path = Path(entry["file"])
            if path.is_relative_to(ROOT):
                self.compiles[path.relative_to(ROOT).as_posix()] = shlex.split(entry["command"])
        self.links = {}
        self.includes = {}
        source = None
        for line in self.ninja("-t", "deps").splitlines():
            if not line.startswith(" "):
                source = None
                match = re.match(r"(?:.*CMakeFiles/[^/]+\.dir/)(.+)\.o: #deps", line)
                if match:
                    folder_of = line.split("CMakeFiles/")[0]
                    source = (folder_of + match.group(1)).rstrip("/")
            elif source is not None:
                header = os.path.normpath(folder / line.strip())
                self.includes.setdefault(os.path.relpath(header, ROOT), set()).add(source)

    def ninja(self, *arguments):
        code, output = run(["ninja", "-C", str(self.folder), *arguments])
        if code != 0:
            sys.exit(output)
        return output

    def sources_of(self, path):
        """The sources to be compiled for a mutant of `path`."""
        if path == SCHEMA:
            return [os.path.relpath(self.folder / "LogDatabase" / "SchemaText.cpp", ROOT)]
        if path.endswith(".cpp"):
            return [path]
        return sorted(source for source in self.includes.get(path, ())
                      if source in self.compiles and not source.startswith("tests/"))

    def link_of(self, program):
        if program not in self.links:
            commands = self.ninja("-t", "commands", "-s", f"tests/{program}").splitlines()
            command = next(line for line in reversed(commands) if f"-o tests/{program}" in line)
            # What CMake puts around: the link, and the listing of the tests behind it.
            part = next(part for part in command.split(" && ") if f"-o tests/{program}" in part)
            self.links[program] = shlex.split(part)
        return self.links[program]

    def compile(self, source, mutated, overlay, result):
        command = list(self.compiles[source])
        command[command.index("-o") + 1] = str(result)
        command[command.index("-c") + 1] = str(mutated)
        first = next(i for i, word in enumerate(command) if word.startswith("-I"))
        # What a test cannot see, a debugger need not either.
        command = [word for word in command if word not in ("-g", "-Werror")]
        command[first:first] = [f"-I{overlay}", *TRAPS]
        # Nobody waits for what the bench does, but for its compiler; the firmware half's stack is measured.
        if source.startswith("bancada/"):
            command.append("-O0")
        return run(command, cwd=self.folder)

    def link(self, program, objects, result):
        command = list(self.link_of(program))
        command[command.index("-o") + 1] = str(result)
        first = next(i for i, word in enumerate(command) if word.endswith(".o"))
        # Definitions of the mutant stand before the library's, which is then not asked for them.
        return run(command[:first] + [str(path) for path in objects] + command[first:],
                   cwd=self.folder)


class Tests:
    """The test programs, and how long each may take."""

    def __init__(self, build):
        self.build = build
        self.takes = {}

    def patience(self, program):
        if program not in self.takes:
            started = time.monotonic()
            code, output = run([str(self.build.folder / "tests" / program), "--gtest_brief=1"],
                               env=dict(os.environ, **FAULTS))
            if code != 0:
                sys.exit(f"{program} fails unchanged\n{output}")
            self.takes[program] = time.monotonic() - started
        return PATIENCE_SECONDS + PATIENCE * self.takes[program]


def try_mutant(build, tests, path, text, mutant):
    """killed, survived or unbuilt."""
    changed = text[:mutant.begin] + mutant.text + text[mutant.end:]
    with tempfile.TemporaryDirectory() as folder:
        overlay = Path(folder, "overlay")
        place = overlay / path
        place.parent.mkdir(parents=True)
        place.write_text(changed, encoding="utf-8")
        objects = []
        for source in build.sources_of(path):
            result = Path(folder, f"{len(objects)}.o")
            mutated = place if source == path else ROOT / source
            if path == SCHEMA:
                mutated = Path(folder, "SchemaText.cpp")
                run(["cmake", "-D", f"INPUT={place}", "-D", f"OUTPUT={mutated}", "-P",
                     str(ROOT / "LogDatabase" / "EmbedSchema.cmake")])
            code, _ = build.compile(source, mutated, overlay, result)
            if code != 0:
                return "unbuilt"
            objects.append(result)
        for program in programs_of(path):
            binary = Path(folder, program)
            code, output = build.link(program, objects, binary)
            if code != 0:
                return "unbuilt"
            environment = dict(os.environ, TMPDIR=folder, **FAULTS)
            for chosen in filters_of(path):
                code, _ = run([str(binary), "--gtest_brief=1", "--gtest_fail_fast",
                               f"--gtest_filter={chosen}"],
                              timeout=tests.patience(program), env=environment)
                if code != 0:
                    return "killed"
    return "survived"


def lines_around(text, mutant):
    begin = text.rfind("\n", 0, mutant.begin) + 1
    end = text.find("\n", mutant.end)
    return text[begin:end if end >= 0 else len(text)], begin


def key_of(path, text, mutant):
    """What stands in equivalents.txt: the place by its text, not by its number."""
    line, begin = lines_around(text, mutant)
    changed = line[:mutant.begin - begin] + mutant.text + line[mutant.end - begin:]
    squeeze = lambda of: " ".join(of.split())
    return f"{path}: {squeeze(line)} => {squeeze(changed)}"


def equivalents():
    """The listed ones: their text, each followed by its reason in an indented line."""
    listed, last = {}, None
    for line in EQUIVALENTS.read_text(encoding="utf-8").splitlines():
        if line.startswith("    ") and last is not None:
            listed[last] += line.strip() + " "
        elif line and not line.startswith("#"):
            last = line
            listed[last] = ""
    without = [text for text, reason in listed.items() if not reason]
    if without:
        sys.exit(f"{EQUIVALENTS.name} gives no reason for\n" + "\n".join(without))
    return listed


def diff_of(path, text, mutant):
    changed = text[:mutant.begin] + mutant.text + text[mutant.end:]
    return "".join(difflib.unified_diff(text.splitlines(True), changed.splitlines(True), path, path,
                                        n=1))


def places_of(names):
    for name in names:
        place = (ROOT / name).resolve()
        if place.is_file():
            yield place.relative_to(ROOT).as_posix()
            continue
        for path in sorted(place.rglob("*")):
            if path.suffix in (".cpp", ".h", ".sql"):
                yield path.relative_to(ROOT).as_posix()


def draw(every, number, chance):
    """Of every kind as many as there are, in turns: most mutants are letters of literals."""
    kinds = {}
    for path, mutant in every:
        kinds.setdefault(mutant.kind, []).append((path, mutant))
    for of_kind in kinds.values():
        chance.shuffle(of_kind)
    drawn = []
    while len(drawn) < min(number, len(every)):
        for kind in sorted(kinds):
            if kinds[kind] and len(drawn) < number:
                drawn.append(kinds[kind].pop())
    return drawn


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("places", nargs="+")
    parser.add_argument("--number", type=int, default=20)
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--build", type=Path, default=ROOT / "build" / "release")
    parser.add_argument("--killed", type=float, default=100)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    options = parser.parse_args()

    seed = options.seed if options.seed is not None else random.SystemRandom().randrange(1 << 32)
    texts = {path: (ROOT / path).read_text(encoding="utf-8")
             for path in places_of(options.places)}
    every = [(path, mutant) for path, text in texts.items() for mutant in mutants_in(path, text)]
    drawn = draw(every, options.number, random.Random(seed)) if options.number else every
    print(f"{len(drawn)} of {len(every)} mutants of {len(texts)} sources, seed {seed}", flush=True)

    build = Build(options.build.resolve())
    tests = Tests(build)
    listed = equivalents()
    STATE.mkdir(parents=True, exist_ok=True)
    name = hashlib.sha256(repr((options.places, seed, options.number)).encode()).hexdigest()[:16]
    journal = STATE / f"{name}.json"
    tried = json.loads(journal.read_text()) if journal.exists() else {}

    # A result belongs to the text that was tried: a source that has changed since is tried again.
    def id_of(path, mutant):
        digest = hashlib.sha256(texts[path].encode()).hexdigest()[:12]
        return f"{path}@{digest}:{mutant.begin}-{mutant.end}:{mutant.text}"

    for program in sorted({program for path, _ in drawn for program in programs_of(path)}):
        tests.patience(program)

    def work(item):
        path, mutant = item
        if key_of(path, texts[path], mutant) in listed:
            return "equivalent"
        return tried.get(id_of(path, mutant)) or try_mutant(build, tests, path, texts[path], mutant)

    counts, survivors = {}, []
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for (path, mutant), result in zip(drawn, pool.map(work, drawn)):
            counts[result] = counts.get(result, 0) + 1
            if result != "equivalent":
                tried[id_of(path, mutant)] = result
                journal.write_text(json.dumps(tried, indent=0))
            if result == "survived":
                survivors.append((path, mutant))
                print(f"\nsurvived ({mutant.kind})\n{diff_of(path, texts[path], mutant)}", flush=True)

    print(", ".join(f"{count} {result}" for result, count in sorted(counts.items())))
    if survivors:
        print(f"\nAs {EQUIVALENTS.name} would list them, each with its reason:")
        for path, mutant in survivors:
            print(key_of(path, texts[path], mutant))
    built = counts.get("killed", 0) + len(survivors)
    return 1 if built == 0 or 100 * counts.get("killed", 0) < options.killed * built else 0


if __name__ == "__main__":
    sys.exit(main())
