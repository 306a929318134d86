#!/usr/bin/env python3
"""Plants names and statements that the project's clang-tidy rules must find, and required names that
they must let pass, each in the folder that it concerns.

Usage: test_tidy.py ROOT
Exit code 77 where there is no clang-tidy.
"""

import json
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(sys.argv[1]).resolve()


class Tidy(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name).resolve()
        for rules in ROOT.glob("**/.clang-tidy"):
            if "build" not in rules.relative_to(ROOT).parts:
                copy = self.root / rules.relative_to(ROOT)
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(rules, copy)

    def tidy(self, files, named=()):
        """(exit code, what was found as [(file, check)], the last line)"""
        commands = []
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
            if name.endswith(".cpp"):
                commands.append({"directory": str(self.root), "file": str(path),
                                 "command": f"c++ -std=c++17 -I{self.root} -c {path}"})
        build = self.root / "build"
        build.mkdir(exist_ok=True)
        (build / "compile_commands.json").write_text(json.dumps(commands))
        done = subprocess.run([sys.executable, str(ROOT / "cmake/tidy.py"), str(self.root),
                               str(build), *(str(self.root / name) for name in named)],
                              capture_output=True, text=True)
        found = re.findall(r"^([^\s:]+):\d+:\d+: error: .*\[([\w.-]+),", done.stdout, re.MULTILINE)
        return done.returncode, found, (done.stdout + done.stderr).splitlines()[-1]

    def assert_found(self, files, *expected):
        code, found, last = self.tidy(files)
        self.assertEqual((code, found), (1, list(expected)), last)

    def assert_clean(self, files):
        code, found, last = self.tidy(files)
        self.assertEqual((code, found), (0, []), last)

    def test_names(self):
        lines = ["void soma() {}", "class item {};", "int Total = 0;", "namespace Bancada {}",
                 "enum Kind { one };", "const int fixo = 1;", "constexpr int limite = 1;",
                 "class A { int total; };", "struct B { int m_total; };"]
        files = {f"{folder}/A.cpp": "\n".join(lines) + "\n" for folder in ("bancada", "libs")}
        code, found, last = self.tidy(files)
        self.assertEqual(code, 1, last)
        for name in files:
            self.assertEqual([check for file, check in found if file == name],
                             ["readability-identifier-naming"] * len(lines))

    def test_braces(self):
        self.assert_found({"libs/A.cpp": "int F(int a) { if (a > 1) return 1; return 0; }\n"},
                          ("libs/A.cpp", "readability-braces-around-statements"))

    def test_tests_are_held_to_names_and_braces_alone_where_they_are_named(self):
        files = {"tests/A.cpp":
                 "int Sum(int* a) { if (a == 0) return 1; return 0; }\nvoid soma();\n"}
        code, found, last = self.tidy(files, named=["tests/A.cpp"])
        self.assertEqual((code, found), (1, [("tests/A.cpp", check) for check in
                                             ("readability-braces-around-statements",
                                              "readability-identifier-naming")]), last)
        self.assert_clean(files)

    def test_required_names(self):
        self.assert_clean({
            "FiscalData/A.h": "enum FD_TIPO_CUPOM { CUPOM };\n"
                              "struct A { virtual int Cupom_GetCOO() = 0; int m_iTotal; };\n",
            "Interpreter.h": "void Vindral_GravaLog(char*);\nextern const int matlong[1];\n"
                             "struct B { int m_sCPF_CNPJ; int* FDController; };\n"
                             "class CmdProgramaCNPJ_IE_IM : B {};\n",
            "CmdDBLogger/C.cpp": '#include "FiscalData/A.h"\n#include "Interpreter.h"\n'
                                 "int F(int t_nNumeroItemIndex) { return t_nNumeroItemIndex; }\n"
                                 "class C { int sql; int aux2; };\n",
        })

    def test_required_names_are_the_firmware_halfs_alone(self):
        name = ("bancada/A.cpp", "readability-identifier-naming")
        self.assert_found({"bancada/A.cpp": "struct B { int m_iTotal; };\nclass C { int sql; };\n"
                                            "int F(int t_nNumeroItemIndex);\n"}, name, name, name)

    def test_finding_in_a_header_is_told_once(self):
        self.assert_found({"libs/A.h": "#pragma once\nvoid soma();\n",
                           "libs/A.cpp": '#include "libs/A.h"\n',
                           "libs/B.cpp": '#include "libs/A.h"\n'},
                          ("libs/A.h", "readability-identifier-naming"))

    def test_clean_source_is_not_looked_at_again_before_something_changed(self):
        files = {"libs/A.h": "#pragma once\nvoid Soma();\n", "libs/A.cpp": '#include "libs/A.h"\n'}
        self.assertIn("1 sources, 0 of them clean before", self.tidy(files)[2])
        self.assertIn("1 sources, 1 of them clean before", self.tidy(files)[2])
        files["libs/A.h"] = "#pragma once\nvoid soma();\n"
        self.assert_found(files, ("libs/A.h", "readability-identifier-naming"))
        self.assert_found(files, ("libs/A.h", "readability-identifier-naming"))
        files["libs/A.h"] = "#pragma once\nvoid Soma();\n"
        self.assertIn("1 sources, 0 of them clean before", self.tidy(files)[2])
        rules = self.root / ".clang-tidy"
        rules.write_text(rules.read_text().replace("FunctionCase, value: CamelCase",
                                                   "FunctionCase, value: lower_case"))
        self.assert_found(files, ("libs/A.h", "readability-identifier-naming"))

    def test_source_that_does_not_compile(self):
        code, _, last = self.tidy({"libs/A.cpp": "int F( { return 1; }\n"})
        self.assertEqual(code, 1, last)


if __name__ == "__main__":
    if shutil.which("clang-tidy-14") is None:
        print("there is no clang-tidy-14: its rules were not tried")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1], verbosity=2)
