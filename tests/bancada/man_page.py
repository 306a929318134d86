"""The manual page as man(1) shows it, against --help.

Usage: man_page.py PROGRAM PAGE LANGUAGE
Exit code 77 where there is no man(1).
"""
import os
import re
import shutil
import subprocess
import sys
import unittest

PROGRAM = sys.argv[1]
PAGE = sys.argv[2]
LANGUAGE = sys.argv[3]

# Words of --help that part its text and are none of it.
HEADINGS = {"en": {"Options:", "Positionals:", "Subcommands:"},
            "pt": {"Opções:", "Posicionais:", "Subcomandos:"}}[LANGUAGE]
USAGE = {"en": "Usage: ", "pt": "Uso: "}[LANGUAGE]
SUBCOMMANDS = {"en": "\nSubcommands:\n", "pt": "\nSubcomandos:\n"}[LANGUAGE]
TAKES = {"en": "[OPTIONS]", "pt": "[OPÇÕES]"}[LANGUAGE]


def run(*command, **settings):
    return subprocess.run(command, capture_output=True, text=True, encoding="utf-8", timeout=60,
                          **settings)


def words(text):
    return " ".join(text.split())


def help_of(*subcommand):
    done = run(PROGRAM, "--language", LANGUAGE, *subcommand, "--help")
    if done.returncode != 0:
        raise AssertionError(done.stderr)
    return done.stdout


def subcommands():
    listed = help_of().split(SUBCOMMANDS)[1].split("\n\n")[0]
    return [line.split()[0] for line in listed.splitlines() if re.match(r"  \S", line)]


class ManPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # One long line a paragraph, words neither broken nor spaced out.
        done = run("man", "--warnings", "-E", "UTF-8", "--no-hyphenation", "--no-justification", "-l",
                   PAGE, env={**os.environ, "MANWIDTH": "4000",
                              "LC_ALL": "C.UTF-8"})
        if done.returncode != 0:
            raise AssertionError(done.stderr)
        cls.warnings = done.stderr
        cls.page = words(done.stdout)

    def test_it_renders_without_warnings(self):
        self.assertEqual(self.warnings, "")

    def test_it_is_what_the_program_tells(self):
        with open(PAGE, encoding="utf-8") as page:
            self.assertEqual(run(PROGRAM, "man-page", "--language", LANGUAGE).stdout, page.read())

    def test_it_tells_all_that_help_tells(self):
        names = subcommands()
        self.assertIn("run", names)
        self.assertIn("man-page", names)
        for subcommand in [(), *((name,) for name in names)]:
            lines = help_of(*subcommand).splitlines()
            self.assertGreater(len(lines), 4, subcommand)
            for line in lines:
                told = words(line.removeprefix(USAGE))
                if told not in HEADINGS and not subcommand_line(line, names):
                    with self.subTest(subcommand=subcommand, line=line):
                        self.assertIn(told, self.page)

    def test_every_subcommand_has_a_part_that_begins_with_its_name(self):
        for name in subcommands():
            with self.subTest(name=name):
                description = help_of(name).splitlines()[0]
                self.assertIn(f"{name} {words(description)} ecf-bancada {name} {TAKES}", self.page)


def subcommand_line(line, names):
    """Whether this is a line of the list of subcommands, which the page's parts stand for."""
    match = re.match(r"  ([a-z-]+) {2,}\S", line)
    return match is not None and match[1] in names


if __name__ == "__main__":
    if shutil.which("man") is None:
        print("there is no man(1): the manual page was not rendered")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
