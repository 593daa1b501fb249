"""Pictures that are named are there, and drawn by the rules of their folder."""
import re
import unittest
import xml.etree.ElementTree

import project

LARGEST_PICTURE = 4096
SVG = "{http://www.w3.org/2000/svg}"


def literals(expression):
    return re.findall(r'"([^"]*)"', expression)


def symbols_in_qml(text):
    """What is assigned to properties called symbol or …Symbol, and to the name of a Symbol."""
    for expression in re.findall(r"\b(?:\w+S|s)ymbol\s*:\s*(.+)", text):
        yield from literals(expression)
    for block in re.findall(r"\bSymbol\s*\{([^{}]*)\}", text):
        for expression in re.findall(r"^\s*name\s*:\s*(.+)$", block, re.M):
            yield from literals(expression)


def symbols_in_code(text):
    """What follows the word symbol."""
    for match in re.finditer(r'[sS]ymbol\w*[ ={(,]*u?"([^"]*)"', text):
        yield match[1]


class Pictures(unittest.TestCase):
    def symbols(self):
        return {name.rsplit("/", 1)[1].removesuffix(".svg") for name in project.having(".svg", under=("resources/symbols/",))}

    def test_of_symbols_that_the_interface_names_are_there(self):
        missing = set()
        for name in project.having(".qml", under=("src/",)):
            missing |= {(name, s) for s in symbols_in_qml(project.text(name)) if s and s not in self.symbols()}
        for name in project.having(".cpp", ".h", under=("src/ViewModels/", "src/Views/", "src/Models/", "src/WrapioApp")):
            missing |= {(name, s) for s in symbols_in_code(project.text(name)) if s and s not in self.symbols()}
        self.assertEqual(missing, set())

    def test_of_templates_are_there_with_their_symbols(self):
        text = project.text("src/Models/AppTemplate.cpp")
        assets = set(re.findall(r'u"(template-[a-z-]+)"', text))
        symbols = set(re.findall(r'u"([a-z.0-9]+)"_s,\s*u"#', text))
        self.assertGreaterEqual(len(assets), 3)
        self.assertGreaterEqual(len(symbols), 3)
        self.assertEqual({a for a in assets if not project.exists(f"resources/templates/{a}.svg")}, set())
        self.assertEqual(symbols - self.symbols(), set())

    def test_of_templates_are_all_used(self):
        text = project.text("src/Models/AppTemplate.cpp")
        drawn = {name.rsplit("/", 1)[1].removesuffix(".svg") for name in project.having(".svg", under=("resources/templates/",))}
        self.assertEqual({name for name in drawn if f'"{name}"' not in text}, set())

    def test_are_small_and_use_nothing_that_the_renderer_lacks(self):
        lacking = {"filter", "mask", "clipPath", "style", "text", "image", "script", "foreignObject", "pattern", "symbol"}
        pictures = project.having(".svg", under=("resources/",))
        self.assertGreater(len(pictures), 20)
        for name in pictures:
            root = xml.etree.ElementTree.fromstring(project.text(name))
            self.assertEqual(root.tag, SVG + "svg", name)
            used = {element.tag.removeprefix(SVG) for element in root.iter()}
            self.assertEqual(used & lacking, set(), name)
            self.assertLessEqual(len(project.text(name).encode()), LARGEST_PICTURE, name)

    def test_of_symbols_have_one_size_and_one_colour(self):
        for name in project.having(".svg", under=("resources/symbols/",)):
            root = xml.etree.ElementTree.fromstring(project.text(name))
            self.assertEqual(root.get("viewBox"), "0 0 24 24", name)
            colors = {e.get(a) for e in root.iter() for a in ("fill", "stroke")} - {None, "none"}
            self.assertLessEqual(colors, {"#000", "#000000", "black"}, name)


class Tokens(unittest.TestCase):
    def test_are_the_only_place_of_colours_and_durations(self):
        views = project.having(".qml", under=("src/Views/",))
        self.assertGreater(len(views), 10)
        self.assertEqual(project.lines_that_match(views, r'"#[0-9a-fA-F]{3,8}"'), [])
        self.assertEqual(project.lines_that_match(views, r"\bQt\.(rgba|hsva|hsla|lighter|darker)\("), [])
        self.assertEqual(project.lines_that_match(views, r"\bcolor\s*:\s*\"[a-z]"), [])
        self.assertEqual(project.lines_that_match(views, r"\b(duration|delay|interval)\s*:\s*[1-9]"), [])

    def test_do_not_hide_in_context_properties(self):
        self.assertEqual(project.lines_that_match(project.having(".cpp", ".h"), r"\bsetContextPropert[y]\b"), [])


if __name__ == "__main__":
    unittest.main()
