"""The completion in bash, as bash calls it.

Usage: completion.py SCRIPT PROGRAM
"""
import os
import re
import subprocess
import sys
import tempfile
import unittest

SCRIPT = os.path.abspath(sys.argv.pop(1))
PROGRAM = os.path.abspath(sys.argv.pop(1))

# The words behind the program's name, the last of which is completed, as bash cuts them.
CALL = r"""
source "$1" || exit 1
program=$2
shift 2
COMP_WORDS=("$program" "$@")
COMP_CWORD=$(( ${#COMP_WORDS[@]} - 1 ))
_ecf_bancada "$program" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
printf '%s\n' "${COMPREPLY[@]}"
"""


def run(*command, **more):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          timeout=60, **more)
    return done.returncode, done.stdout, done.stderr


class Completion(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="ecf-completion-")
        self.addCleanup(scratch.cleanup)
        self.folder = scratch.name
        for name in ("loja.db", "loja.db.log", "outra com espaço.db"):
            with open(os.path.join(self.folder, name), "w", encoding="utf-8"):
                pass

    def complete(self, *words):
        code, told, errors = run("bash", "--norc", "-c", CALL, "bash", SCRIPT, PROGRAM, *words,
                                 cwd=self.folder, env={**os.environ, "LC_ALL": "C.UTF-8"})
        self.assertEqual((code, errors), (0, ""))
        return sorted(told.splitlines()) if told != "\n" else []

    def test_subcommands(self):
        self.assertEqual(self.complete("c"), ["check", "commands", "compare", "copy"])
        self.assertEqual(self.complete("--language", "pt", "sh"), ["show"])
        self.assertEqual(self.complete("--language", "=", "pt", "sh"), ["show"])
        self.assertEqual(self.complete("x"), [])

    def test_options(self):
        self.assertEqual(self.complete("check", "--"),
                         ["--all", "--help", "--help-all", "--json", "--language", "--log",
                          "--memory", "--until"])
        self.assertEqual(self.complete("show", "loja.db", "--h"), ["--help", "--help-all", "--html"])
        self.assertEqual(self.complete("--v"), ["--version"])

    def test_what_an_option_takes(self):
        self.assertEqual(self.complete("check", "--language", ""), ["en", "pt"])
        self.assertEqual(self.complete("check", "--language", "=", "p"), ["pt"])
        self.assertEqual(self.complete("check", "--language", "="), ["en", "pt"])
        self.assertEqual(self.complete("show", "loja.db", "--log", "loja"),
                         ["loja.db", "loja.db.log"])
        self.assertEqual(self.complete("show", "loja.db", "--coo", ""), [])
        self.assertEqual(self.complete("check", "loja.db", "--until", ""), [])

    def test_files(self):
        self.assertEqual(self.complete("check", "o"), ["outra com espaço.db"])
        self.assertEqual(self.complete("check", "--json", "loja.db."), ["loja.db.log"])

    # The manual page lists the options by itself, from the program's own definitions.
    def test_no_option_and_no_subcommand_is_missing(self):
        code, page, _ = run(PROGRAM, "man-page", "--language", "en")
        self.assertEqual(code, 0)
        page = page.replace("\\-", "-")
        sections = re.split(r"^\.S[SH] ", page, flags=re.M)
        subcommands = set(self.complete(""))
        documented = set()
        for section in sections:
            name = re.match(r"([a-z-]+)\n", section)
            if name is None or name.group(1) not in subcommands:
                continue
            documented.add(name.group(1))
            listed = set(re.findall(r"^\\fB(?:-\w,)?(--[a-z-]+)\\fR", section, flags=re.M))
            offered = set(self.complete(name.group(1), "--"))
            self.assertTrue(listed, name.group(1))
            self.assertEqual(listed - offered, set(), name.group(1))
        self.assertEqual(subcommands, documented)


if __name__ == "__main__":
    unittest.main()
