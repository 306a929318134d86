#!/usr/bin/env python3
"""Plants one violation at a time and expects the checks of this folder to name it.

Usage: test_checks.py --cmake CMAKE --cxx COMPILER --nm NM --ar AR
"""

import argparse
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
tools = argparse.Namespace()


def run(*command):
    done = subprocess.run([str(c) for c in command], capture_output=True, text=True)
    return done.returncode, done.stdout + done.stderr


class Includes(unittest.TestCase):
    def check(self, files):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                path = Path(folder, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            return run(sys.executable, HERE / "check_includes.py", folder)

    def assert_fault(self, files, expected):
        code, output = self.check(files)
        self.assertEqual(code, 1, output)
        self.assertIn(expected, output)

    def test_downward_includes_pass(self):
        code, output = self.check({
            "libs/A.h": "#include <cstdint>\n",
            "RtcClasses.h": '#include "libs/A.h"\n',
            "CmdDBLogger/B.cpp": '#include "RtcClasses.h"\n#include <sqlite3.h>\n',
            "bancada/C.cpp": '#include "libs/A.h"\n#include <sodium.h>\n',
        })
        self.assertEqual(code, 0, output)

    def test_firmware_half_includes_the_bench(self):
        self.assert_fault(
            {"bancada/A.h": "", "CmdDBLogger/B.cpp": '#include "bancada/A.h"\n'},
            'CmdDBLogger/B.cpp:1: #include "bancada/A.h": CmdDBLogger may not include bancada')

    def test_example_is_a_project_of_its_own(self):
        files = {"examples/firmware/A.h": "", "bancada/A.h": "",
                 "examples/firmware/B.cpp": '#include "A.h"\n'}
        self.assertEqual(self.check(files)[0], 0)
        files["examples/firmware/B.cpp"] = '#include "bancada/A.h"\n'
        self.assert_fault(files, "examples may not include bancada")

    def test_upward_include(self):
        self.assert_fault(
            {"RtcClasses.h": "", "libs/A.h": '\n  #  include "RtcClasses.h"\n'},
            "libs/A.h:2: #  include \"RtcClasses.h\": libs may not include RtcClasses")

    def test_include_that_is_not_from_the_root(self):
        self.assert_fault(
            {"libs/A.h": "", "libs/B.h": '#include "A.h"\n'},
            'libs/B.h:1: #include "A.h": no such file')

    def test_firmware_half_includes_the_bench_in_angle_brackets(self):
        self.assert_fault(
            {"bancada/A.h": "", "libs/B.h": "#include <bancada/A.h>\n"},
            "libs/B.h:1: #include <bancada/A.h>: the firmware half needs")

    def test_firmware_half_needs_another_library(self):
        self.assert_fault({"CmdDBLogger/A.cpp": "#include <sodium.h>\n"},
                          "CmdDBLogger/A.cpp:1: #include <sodium.h>: the firmware half needs")

    def test_engine_seen_below_the_loggers(self):
        self.assert_fault({"libs/A.h": "#include <sqlite3.h>\n"},
                          "libs/A.h:1: #include <sqlite3.h>: this layer does not talk")

    def test_folder_of_the_bench_includes_one_that_it_may_not(self):
        self.assert_fault(
            {"bancada/cli/A.h": "", "bancada/registro/B.cpp": '#include "bancada/cli/A.h"\n'},
            'bancada/registro/B.cpp:1: #include "bancada/cli/A.h": bancada/registro may not include '
            "bancada/cli")

    def test_folder_of_the_bench_without_a_rule(self):
        self.assert_fault(
            {"bancada/log/A.h": "", "bancada/novo/B.h": '#include "bancada/log/A.h"\n'},
            'bancada/novo/B.h:1: #include "bancada/log/A.h": bancada/novo has no rule here')

    def test_command_line_included_from_elsewhere(self):
        for name in ("benchmarks/B.cpp", "tests/falhas/B.cpp", "tests/bancada/B.cpp"):
            self.assert_fault(
                {"bancada/cli/A.h": "", name: '#include "bancada/cli/A.h"\n'},
                f'{name}:1: #include "bancada/cli/A.h": bancada/cli/ is for tests/bancada/cli/ alone')
        code, output = self.check(
            {"bancada/cli/A.h": "", "tests/bancada/cli/B.cpp": '#include "bancada/cli/A.h"\n'})
        self.assertEqual(code, 0, output)

    def test_assembled_register_includes_a_room_that_reads(self):
        self.assert_fault(
            {"bancada/leitura/A.h": "", "bancada/caixa/B.cpp": '#include "bancada/leitura/A.h"\n'},
            'bancada/caixa/B.cpp:1: #include "bancada/leitura/A.h": bancada/caixa may not include '
            "bancada/leitura")

    def test_downward_includes_of_the_bench_pass(self):
        code, output = self.check({
            "bancada/A.h": "",
            "bancada/registro/B.h": '#include "bancada/A.h"\n',
            "bancada/comandos/C.h": '#include "bancada/registro/B.h"\n',
            "bancada/cli/D.h": '#include "bancada/comandos/C.h"\n',
            "bancada/main.cpp": '#include "bancada/cli/D.h"\n',
        })
        self.assertEqual(code, 0, output)

    def test_layer_without_a_rule(self):
        self.assert_fault({"novo/A.h": ""}, "novo/A.h: a layer that has no rule here")

    def test_nothing_to_check(self):
        self.assert_fault({}, "no sources found")


class Columns(unittest.TestCase):
    """A logger whose lines name their columns, and what may go wrong with it."""

    LOGGER = """\
// A logger.
BOOL CmdA::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> insert;

    insert.Begin("INSERT INTO a (x, y, z, "
                 "u, v) VALUES (");
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // x
    // Required.
    const char* text = FDController->Text(insert.aux, ';');
    switch (m_sTributacao[0]) {
    case 'T':
        insert.TaxCode("'%02dT%02d.%02d',", 1, 1800); // y
        break;
    default:
        insert.Text("'%s", m_sTributacao); // y
        insert.Integer("%d',", 1);
        break;
    }
    if (m_bDoLog == TRUE) {
        insert.Piece("'DT',0,"); // z, u
    } else {
        insert.Integer("'DS',%d,", 1); // z, u
    }
    insert.Piece(m_bDoLog == TRUE ? "'S')" : "'N')"); // v
    return insert.Execute(*this, db);
}

BOOL CmdB::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE> sql;

    if (m_iRows == 0) {
        sql.Begin("INSERT INTO b(x, y) VALUES(");
        sql.Text("'%s", m_sA); // x
        sql.Piece(" 00:00:00',");
        sql.Text("'%s')", m_sB); // y
    } else {
        sql.Begin("UPDATE b SET ");
        sql.Text("x = '%s'", m_sA);
    }
    return sql.Execute(*this, db);
}
"""

    def check(self, *changes):
        """Checks the logger with each `old` text, which it holds once, replaced by `new`."""
        text = self.LOGGER
        for old, new in changes:
            self.assertEqual(text.count(old), 1, old)
            text = text.replace(old, new)
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "CmdDBLogger", "A.cpp")
            path.parent.mkdir()
            path.write_text(text)
            return run(sys.executable, HERE / "check_columns.py", folder)

    def assert_fault(self, expected, *changes):
        code, output = self.check(*changes)
        self.assertEqual(code, 1, output)
        self.assertIn("CmdDBLogger/A.cpp:" + expected, output)
        self.assertIn(" 1 faults", output)

    def test_values_that_name_their_columns_pass(self):
        self.assertEqual(self.check(), (0, "2 inserts, 0 faults\n"))

    def test_label_that_is_wrong(self):
        self.assert_fault("6: a: a line names w where x stands",
                          ("); // x\n    // R", "); // w\n    // R"))

    def test_label_that_is_missing(self):
        self.assert_fault("25: begins 1 columns and names 0", ("'N')\"); // v", "'N')\");"))

    def test_labels_that_are_swapped(self):
        self.assert_fault("34: b: a line names y where x stands",
                          ("m_sA); // x", "m_sA); // y"), ("m_sB); // y", "m_sB); // x"))

    def test_labels_of_one_piece_that_are_swapped(self):
        self.assert_fault("6: a: a line names u where z stands",
                          ("0,\"); // z, u", "0,\"); // u, z"), ("1); // z, u", "1); // u, z"))

    def test_column_of_the_head_that_is_swapped(self):
        self.assert_fault("6: a: a line names x where y stands", ("a (x, y,", "a (y, x,"))

    def test_column_that_no_line_names(self):
        self.assert_fault("6: a: 6 columns, 5 named", ("u, v) V", "u, v, w) V"))

    def test_piece_of_two_columns_that_names_one(self):
        self.assert_fault("23: begins 2 columns and names 1", ("1); // z, u", "1); // z"))

    def test_second_piece_of_a_column_that_names_it_again(self):
        self.assert_fault("34: b: a line names x where y stands",
                          ("00',\");", "00',\"); // x"))

    def test_second_piece_of_a_column_that_alone_names_it(self):
        self.assert_fault("35: begins 1 columns and names 0",
                          ("m_sA); // x", "m_sA);"), ("00',\");", "00',\"); // x"))

    def test_comment_that_is_no_label(self):
        self.assert_fault("8: '// the number x' names no column",
                          ("); // x\n    // R", "); // the number x\n    // R"))

    def test_label_before_the_value(self):
        self.assert_fault("9: begins 1 columns and names 0",
                          ("    insert.Integer(\"%d,\", F", "    // x\n    insert.Integer(\"%d,\", F"),
                          ("); // x\n    // R", ");\n    // R"))

    def test_alternatives_that_name_other_columns(self):
        self.assert_fault("11: not every way through here", ("1800); // y", "1800); // z"))

    def test_value_that_only_one_way_appends(self):
        self.assert_fault("20: not every way through here",
                          ("} else {\n        insert", "}\n{\n        insert"))

    def test_list_that_is_not_closed(self):
        self.assert_fault("34: b: the list of values is not closed", ("'%s')\"", "'%s'\""))

    def test_value_behind_the_list(self):
        self.assert_fault("26: a value behind the end",
                          ("    return insert", "    insert.Piece(\"0,\"); // w\n    return insert"))

    def test_head_that_is_not_whole(self):
        self.assert_fault("6: the head is not one literal up to its values",
                          ("\"\n                 \"u, v) V", "\");\n    insert.Piece(\"u, v) V"))

    PIECES = ("    insert.Piece(m_bDoLog == TRUE ? \"'S')\" : \"'N')\"); // v\n",
              "    insert.Piece(\"'S',\" // v\n"
              "                 \"0)\"); // w\n")

    def test_literals_that_name_a_column_each_pass(self):
        self.assertEqual(self.check(("u, v) V", "u, v, w) V"), self.PIECES),
                         (0, "2 inserts, 0 faults\n"))

    def test_literals_that_are_swapped(self):
        self.assert_fault("6: a: a line names w where v stands", ("u, v) V", "u, v, w) V"),
                          self.PIECES, ("// v\n", "// w\n"), ("\"); // w\n", "\"); // v\n"))

    def test_literal_of_two_columns_that_names_one(self):
        self.assert_fault("25: begins 2 columns and names 1", ("u, v) V", "u, v, w, t) V"),
                          self.PIECES, ("\"'S',\"", "\"'S',0,\""))

    HELPER = ("// A logger.\n",
              "// A logger.\nvoid Names(Statement<SQL_SIZE>& row, int x)\n{\n"
              "    row.Integer(\"%d,\", x); // x\n    row.Piece(\"0,\"); // y\n}\n\n")
    HELPED = ("        sql.Text(\"'%s\", m_sA); // x\n        sql.Piece(\" 00:00:00',\");\n"
              "        sql.Text(\"'%s')\", m_sB); // y\n",
              "        Names(sql, 1); // x to y\n        sql.Piece(\"0)\"); // z\n")

    def test_helper_that_writes_the_first_values_passes(self):
        self.assertEqual(self.check(("b(x, y)", "b(x, y, z)"), self.HELPER, self.HELPED),
                         (0, "2 inserts, 0 faults\n"))

    def test_helper_whose_columns_are_swapped(self):
        self.assert_fault("40: b: a line names x where y stands",
                          ("b(x, y)", "b(y, x, z)"), self.HELPER, self.HELPED)

    def test_helper_call_that_says_other_columns(self):
        self.assert_fault("41: '// x to z' does not say", ("b(x, y)", "b(x, y, z)"),
                          self.HELPER, self.HELPED, ("// x to y", "// x to z"))

    BEGINNER = ("// A logger.\n",
                "// A logger.\nvoid BeginB(StatementComposer& row)\n{\n"
                "    row.Begin(\"INSERT INTO b(x, y, z) VALUES(\");\n"
                "    row.Integer(\"%d,\", 1); // x\n}\n\n")
    BEGUN = ("        sql.Begin(\"INSERT INTO b(x, y) VALUES(\");\n"
             "        sql.Text(\"'%s\", m_sA); // x\n        sql.Piece(\" 00:00:00',\");\n"
             "        sql.Text(\"'%s')\", m_sB); // y\n",
             "        BeginB(sql);\n        sql.Piece(\"0,\"); // y\n        sql.Piece(\"0)\"); // z\n")

    def test_helper_that_begins_the_statement_passes(self):
        self.assertEqual(self.check(self.BEGINNER, self.BEGUN), (0, "2 inserts, 0 faults\n"))

    def test_end_of_a_begun_statement_that_is_swapped(self):
        self.assert_fault("40: b: a line names z where y stands", self.BEGINNER, self.BEGUN,
                          ("// y\n        sql.Piece(\"0)\"); // z", "// z\n        sql.Piece(\"0)\"); // y"))

    def test_helper_that_begins_a_statement_for_nobody(self):
        code, output = self.check(self.BEGINNER)
        self.assertEqual(code, 1, output)
        self.assertIn("BeginB: begins an INSERT and is not called", output)

    def test_insert_that_begins_no_statement(self):
        self.assert_fault("1: 3 INSERTs, of which 2 begin a statement",
                          ("// A logger.", "const char* HEAD = \"INSERT INTO c (x) VALUES (\";"))

    def test_nothing_to_check(self):
        with tempfile.TemporaryDirectory() as folder:
            code, output = run(sys.executable, HERE / "check_columns.py", folder)
        self.assertEqual(code, 1, output)
        self.assertIn("no INSERT found", output)


class Documents(unittest.TestCase):
    SCHEMA = "CREATE TABLE a (x INTEGER, y TEXT); CREATE TABLE b (z TEXT);\n"
    DATABASE = ("# Tables\n```mermaid\nerDiagram\n    a ||--o{ b : x\n```\n"
                "### a\n| column | holds |\n|---|---|\n| `x` | one |\n| `y` | two |\n"
                "### b\n| `z` | three |\n## Else\n| `w` | no column |\n")
    README = "# The first\n[tables](docs/database.md#tables) [here](#the-first)\n"

    def check(self, **changed):
        files = {"sqlite/schema.sql": self.SCHEMA, "docs/database.md": self.DATABASE,
                 "README.md": self.README}
        files.update({{"schema": "sqlite/schema.sql", "database": "docs/database.md",
                       "readme": "README.md"}[name]: text for name, text in changed.items()})
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                path = Path(folder, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            return run(sys.executable, HERE / "check_documents.py", folder)

    def assert_fault(self, expected, **changed):
        code, output = self.check(**changed)
        self.assertEqual(code, 1, output)
        self.assertIn(expected, output)
        self.assertIn(" 1 faults", output)

    def test_complete_documents_pass(self):
        code, output = self.check()
        self.assertEqual((code, output), (0, "2 documents, 2 links, 0 faults\n"))

    def test_links_elsewhere_and_in_code_are_left_alone(self):
        code, output = self.check(readme=self.README + "[a](https://example.org/x) `[b](c)`\n"
                                  "```\n[d](e)\n```\n")
        self.assertEqual((code, output), (0, "2 documents, 2 links, 0 faults\n"))

    def test_link_that_leads_nowhere(self):
        self.assert_fault("README.md:3: docs/none.md: leads nowhere",
                          readme=self.README + "[a](docs/none.md)\n")

    def test_link_to_a_heading_that_is_not_there(self):
        self.assert_fault("README.md:3: docs/database.md#none: there is no such heading",
                          readme=self.README + "[a](docs/database.md#none)\n")

    def test_link_out_of_the_project(self):
        self.assert_fault("README.md:3: ..: leads out of the project",
                          readme=self.README + "[a](..)\n")

    def test_no_links(self):
        self.assert_fault("no links found", readme="none\n")

    def test_table_that_is_not_told(self):
        self.assert_fault("docs/database.md: does not tell the table c",
                          schema=self.SCHEMA + "CREATE TABLE c (x);\n")

    def test_table_that_is_none(self):
        self.assert_fault("docs/database.md: tells c, which is no table",
                          database=self.DATABASE + "### c\n")

    def test_column_that_is_not_told(self):
        self.assert_fault("docs/database.md: tells a.y 0 times",
                          database=self.DATABASE.replace("| `y` | two |\n", ""))

    def test_column_that_is_told_twice(self):
        self.assert_fault("docs/database.md: tells b.z 2 times",
                          database=self.DATABASE.replace("## Else", "| `z` | again |\n## Else"))

    def test_column_that_is_none(self):
        self.assert_fault("docs/database.md: tells b.v, which is no column",
                          database=self.DATABASE.replace("## Else", "| `v` | what |\n## Else"))

    def test_table_of_the_diagram_that_is_none(self):
        self.assert_fault("docs/database.md: the diagram has c, which is no table",
                          database=self.DATABASE.replace("a ||--o{ b", "a ||--o{ c"))


class Symbols(unittest.TestCase):
    def check(self, sources, *options):
        with tempfile.TemporaryDirectory() as folder:
            objects = []
            for name, text in sources.items():
                source = Path(folder, name)
                source.write_text(text)
                objects.append(source.with_name(name + ".o"))
                code, output = run(tools.cxx, "-std=c++17", "-O0", "-c", source, "-o", objects[-1])
                self.assertEqual(code, 0, output)
            archive = Path(folder, "libtest.a")
            code, output = run(tools.ar, "rcs", archive, *objects)
            self.assertEqual(code, 0, output)
            return run(sys.executable, HERE / "check_symbols.py",
                       "--cxx", tools.cxx, "--nm", tools.nm, *options, archive)

    def assert_fault(self, sources, expected, *options):
        code, output = self.check(sources, *options)
        self.assertEqual(code, 1, output)
        self.assertIn(expected, output)

    def test_what_the_library_may_need_passes(self):
        code, output = self.check({
            "a.cpp": 'extern "C" int sqlite3_exec();\nvoid Vindral_GravaLog(char*);\n'
                     "int GetRatearSubtotal();\n#include <cstring>\nint b();\n"
                     "long long g;\nlong long a(char* t) { Vindral_GravaLog(t);\n"
                     "return g / (GetRatearSubtotal() + sqlite3_exec() + b()) +\n"
                     "static_cast<int>(std::strlen(t)); }\n",
            "b.cpp": "int b() { return 1; }\n",
            "RejectedStatement.cpp": "#include <cstdlib>\n"
                                     "void* m() { return std::malloc(1); }\n"
                                     "void f(void* p) { std::free(p); }\n",
        })
        self.assertEqual(code, 0, output)

    def test_symbol_of_nobody(self):
        self.assert_fault({"a.cpp": "void Elsewhere(int);\nvoid a() { Elsewhere(1); }\n"},
                          "Elsewhere(int), needed by a.cpp.o, is neither")

    def test_other_form_of_a_symbol_left_to_the_user(self):
        self.assert_fault(
            {"a.cpp": "void Vindral_GravaLog(const char*);\nvoid a() { Vindral_GravaLog(0); }\n"},
            "Vindral_GravaLog(char const*), needed by a.cpp.o, is neither")

    def test_symbol_of_the_user_defined(self):
        self.assert_fault({"a.cpp": "int GetRatearSubtotal() { return 1; }\n"},
                          "GetRatearSubtotal() is the user's to define")

    def test_implementation_of_the_facade(self):
        self.assert_fault(
            {"a.cpp": "struct F { virtual ~F(); };\nvoid a(F& f) { f.F::~F(); }\n"},
            "F::~F(), needed by a.cpp.o, is neither")

    def test_operator_new(self):
        self.assert_fault({"a.cpp": "int* a() { return new int; }\n"}, "operator new(")

    def test_malloc_elsewhere(self):
        self.assert_fault({"a.cpp": "#include <cstdlib>\nvoid* a() { return std::malloc(1); }\n"},
                          "malloc, needed by a.cpp.o, allocates")

    def test_allocation_of_the_engine(self):
        self.assert_fault(
            {"a.cpp": 'extern "C" void* sqlite3_malloc64(long);\n'
                      "void* a() { return sqlite3_malloc64(1); }\n"},
            "sqlite3_malloc64, needed by a.cpp.o, allocates")

    def test_standard_string(self):
        self.assert_fault(
            {"a.cpp": "#include <string>\nvoid a(std::string& s) { s.append(9, 'a'); }\n"},
            "basic_string")

    def test_throw(self):
        self.assert_fault({"a.cpp": "void a() { throw 1; }\n"}, "__cxa_throw")

    def test_type_information_without_the_runtime(self):
        sources = {"a.cpp": "struct A { virtual void F(); };\nvoid A::F() {}\n"}
        self.assertEqual(self.check(sources)[0], 0)
        self.assert_fault(sources, "vtable for __cxxabiv1::__class_type_info, needed by a.cpp.o, "
                                   "is the C++ runtime's", "--no-runtime")

    def test_empty_archive(self):
        self.assert_fault({"a.cpp": ""}, "defines nothing")


class EmbeddedSchema(unittest.TestCase):
    def test_column_says_since_when_it_is_there(self):
        with tempfile.TemporaryDirectory() as folder:
            schema, source = Path(folder, "schema.sql"), Path(folder, "out.cpp")
            schema.write_text("CREATE TABLE b (\n  x INTEGER,\n  y TEXT -- since version 12\n);\n"
                              "CREATE TABLE a (\n  z TEXT\n);\n")
            code, output = run(tools.cmake, "-D", f"INPUT={schema}", "-D", f"OUTPUT={source}", "-P",
                               HERE.parents[1] / "LogDatabase/EmbedSchema.cmake")
            self.assertEqual(code, 0, output)
            columns = source.read_text().split("LOG_COLUMNS[] = {\n")[1].split("};")[0]
            self.assertEqual(columns.split("\n")[:-1], [
                '    {"a", "z", 0},', '    {"b", "x", 0},', '    {"b", "y", 12},'])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for tool in ("cmake", "cxx", "nm", "ar"):
        parser.add_argument("--" + tool, required=True)
    tools = parser.parse_args()
    unittest.main(argv=[sys.argv[0], "--verbose"])
