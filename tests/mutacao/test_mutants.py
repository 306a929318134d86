#!/usr/bin/env python3
"""Tries the rules of mutants.py on small sources."""
import unittest

from mutants import mutants_of, schema_mutants_of


def changed(source, kind):
    return {source[:mutant.begin] + mutant.text + source[mutant.end:]
            for mutant in mutants_of(source) if mutant.kind == kind}


class Mutants(unittest.TestCase):
    def test_letters_of_a_literal(self):
        self.assertEqual(changed('a("x\\n");', "letter"), {'a("y\\n");'})
        self.assertEqual(changed('a("ab");', "letter dropped"), {'a("b");', 'a("a");'})

    def test_comparison(self):
        self.assertEqual(changed("x = a < b;", "comparison"), {"x = a <= b;", "x = a >= b;"})
        self.assertEqual(changed("std::vector<int> a;", "comparison"), set())

    def test_operators_and_signs(self):
        self.assertEqual(changed("x = a + b;", "operator"), {"x = a - b;"})
        self.assertEqual(changed("x = a == b && c;", "operator"),
                         {"x = a != b && c;", "x = a == b || c;"})
        self.assertEqual(changed("x = -a;", "sign"), {"x = a;"})
        self.assertEqual(changed("x = !a;", "logic"), {"x = a;"})

    def test_constants(self):
        self.assertEqual(changed("x = 4;", "constant"), {"x = 5;", "x = 3;"})
        self.assertEqual(changed("return TRUE;", "constant"), {"return FALSE;"})
        self.assertEqual(changed("constexpr double A1 = b1;", "constant"), set())

    def test_calls(self):
        self.assertEqual(changed("{ a.b(c, 1); }", "call dropped"), {"{ ; }"})
        self.assertEqual(changed("{ a.b(c, 1); }", "call doubled"), {"{ a.b(c, 1); a.b(c, 1); }"})
        self.assertEqual(changed("{ a.b(c, 1); }", "swapped"), {"{ a.b(1, c); }"})
        self.assertEqual(changed("{ int a(b); return c(d); }", "call dropped"), set())

    def test_conditions_returns_and_branches(self):
        self.assertEqual(changed("if (a(b)) { return c; }", "condition"),
                         {"if (!(a(b))) { return c; }"})
        self.assertEqual(changed("if (a(b)) { return c; }", "return"), {"if (a(b)) { return {}; }"})
        self.assertEqual(changed("switch (a) { case 1: b(); break; case 2: break; }",
                                 "branch dropped"),
                         {"switch (a) { case 1: b(); ; case 2: break; }"})
        self.assertEqual(changed("{ return FALSE; }", "return"), set())
        self.assertEqual(changed("while (a) { break; }", "branch dropped"), {"while (a) { ; }"})

    def test_embedded_texts(self):
        self.assertEqual(changed('a = R"css(top: 4px)css";', "embedded text"),
                         {'a = R"css(tox: 4px)css";', 'a = R"css(top: 5px)css";',
                          'a = R"css(top: 4py)css";'})

    def test_schema(self):
        schema = "-- a b\nCREATE TABLE t (\n  ab TEXT,\n  cd REAL\n);\nCREATE INDEX i ON t (ab);\n"
        found = {(mutant.kind, schema[:mutant.begin] + mutant.text + schema[mutant.end:])
                 for mutant in schema_mutants_of(schema)}
        self.assertIn(("column dropped", schema.replace("  ab TEXT,\n", "")), found)
        self.assertIn(("index dropped", schema.replace("CREATE INDEX i ON t (ab);\n", "")), found)
        self.assertIn(("schema word", schema.replace("TEXT", "TEXx")), found)
        self.assertTrue(all(text.startswith("-- a b\n") for _, text in found))

    def test_what_is_left_alone(self):
        for source in ("// a < b 1\n", "/* 1 */", "#if 1 < 2\n", "static_assert(1 < 2);",
                       "assert(a == 1);", "[[gnu::noinline]] ;"):
            self.assertEqual(list(mutants_of(source)), [], source)


if __name__ == "__main__":
    unittest.main()
