"""Checks that sources are changed where and as they should be. Run by ctest."""
import json
import tempfile
import unittest
from pathlib import Path

from points import find_points
from schemata import render


def points_of(text):
    """The points of a source, by what is written of them."""
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder).resolve()
        source = root / "common" / "Sample.cpp"
        source.parent.mkdir()
        source.write_text(text)
        database = root / "compile_commands.json"
        database.write_text(json.dumps([{"file": str(source), "command": "c++ -std=c++20"}]))
        found = find_points(root, database, 1)["common/Sample.cpp"]
    return found, {point.key.removeprefix("common/Sample.cpp "): point for point in found.points.values()}


class Points(unittest.TestCase):
    def assert_points(self, text, *expected):
        self.assertEqual(sorted(points_of(text)[1]), sorted(expected))

    def test_a_comparison_has_its_opposite_and_its_other_bound(self):
        self.assert_points("bool f(int a, int b)\n{\n    return a < b;\n}\n",
                           "f: return {{a < b => a <= b}};", "f: return {{a < b => a >= b}};")

    def test_a_statement_is_dropped(self):
        self.assert_points("void g();\nvoid f()\n{\n    g();\n}\n", "f: {{g() => }};")

    def test_each_side_of_a_conjunction_is_negated(self):
        self.assert_points("bool f(bool a, bool b)\n{\n    return a && !b;\n}\n",
                           "f: return {{a && !b => a || !b}};", "f: return {{a => !(a)}} && !b;",
                           "f: return a && {{!b => static_cast<bool>(b)}};")

    def test_constants_change(self):
        self.assert_points('const char* f(int a)\n{\n    a = 7;\n    return "x";\n}\n',
                           "f: {{a = 7 => }};", "f: a = {{7 => 8}};", 'f: return {{"x" => ""}};')

    def test_what_the_compiler_must_know_stays(self):
        found, points = points_of("static_assert(1 == 1);\nenum E { A = 3 };\n")
        self.assertEqual(points, {})
        self.assertGreater(found.left_out, 0)


class Schemata(unittest.TestCase):
    def render(self, text):
        found, points = points_of(text)
        numbers = {key: number for number, key in enumerate(points, 1)}
        return render(text, {numbers[key]: point for key, point in points.items()}, found.unlocked), numbers

    def test_a_change_holds_no_other_change(self):
        rendered, numbers = self.render("bool f(int a)\n{\n    return a == 7;\n}\n")
        outer = numbers["f: return {{a == 7 => a != 7}};"]
        inner = numbers["f: return a == {{7 => 8}};"]
        self.assertIn(f"return (zolMutant({outer}) ? a != 7 : a == static_cast<int>(zolMutant({inner}) ? 8 : 7));",
                      rendered)

    def test_lines_stay_where_they_are(self):
        text = "void g(int);\nbool f(bool a,\n       bool b)\n{\n    g(1 +\n      2);\n    return a &&\n           b;\n}\n"
        self.assertEqual(self.render(text)[0].count("\n"), text.count("\n"))

    def test_a_dropped_statement_keeps_the_changes_in_it(self):
        rendered, numbers = self.render("void g(bool);\nvoid f()\n{\n    g(true);\n}\n")
        dropped = numbers["f: {{g(true) => }};"]
        changed = numbers["f: g({{true => false}});"]
        self.assertIn(f"if (!zolMutant({dropped})) g((zolMutant({changed}) ? false : true));", rendered)

    def test_a_constant_of_the_compiler_becomes_one_of_the_program(self):
        rendered, numbers = self.render("constexpr int LEVEL = 4;\n")
        self.assertEqual(len(numbers), 1)
        self.assertIn("const int LEVEL = static_cast<int>(zolMutant(1) ? 5 : 4);", rendered)
        self.assertNotIn("constexpr", rendered)


if __name__ == "__main__":
    unittest.main()
