"""Every file is built, every test runs, and no file grows beyond what one can read."""
import re
import unittest

import project

MOST_LINES = 400
MOST_LINES_OF_A_FOLDERS_README = 20


def lists_of(name):
    """What the CMake files of the folder of `name` and of those above it say."""
    parts = name.split("/")[:-1]
    folders = ["/".join(parts[: i + 1]) + "/" for i in range(len(parts))] + [""]
    said = []
    for folder in folders:
        said += [project.text(f) for f in project.files() if re.fullmatch(re.escape(folder) + r"(CMakeLists\.txt|[^/]+\.cmake)", f)]
    return "\n".join(said)


def is_listed(name):
    """By its file name, by its path from a folder above, by a pattern, or by a word that a variable stands for."""
    stem = name.rsplit("/", 1)[1]
    said = lists_of(name)
    if re.search(rf"(^|[\s/\"(]){re.escape(stem)}($|[\s)\"])", said):
        return True
    if any(f"*.{stem.rsplit('.', 1)[1]}" in glob for glob in re.findall(r"file\(GLOB\w*\s[^)]*\)", said)):
        return True
    for before, after in re.findall(r"(?:^|[\s/])([\w-]*)\$\{\w+\}([\w.-]*\.\w+)", said):
        word = stem.removeprefix(before).removesuffix(after)
        if before + word + after == stem and re.search(rf"\b{re.escape(word)}\b", said):
            return True
    return False


class Files(unittest.TestCase):
    def test_of_code_are_all_built(self):
        sources = project.having(".cpp", ".qml", under=("src/", "runner/", "tests/", "benchmarks/", "fuzz/", "resources/"))
        self.assertEqual([name for name in sources if not is_listed(name)], [])

    def test_of_tests_all_run(self):
        scripts = project.having("_test.py", under=("tests/",))
        self.assertGreater(len(scripts), 5)
        self.assertEqual([name for name in scripts if not is_listed(name)], [])

    def test_of_headers_open_with_their_purpose(self):
        wrong = [name for name in project.having(".h") if not re.match(r"// \S.*\n(//.*\n)*#pragma once\n", project.text(name))]
        self.assertEqual(wrong, [])

    def test_are_short_enough_to_be_read(self):
        texts = project.having(".cpp", ".h", ".qml", ".py", ".js", ".cmake", "CMakeLists.txt", ".sh")
        long = {name: count for name in texts if (count := project.text(name).count("\n")) > MOST_LINES}
        self.assertEqual(long, {})

    def test_that_describe_a_folder_are_short(self):
        readmes = [name for name in project.having("README.md") if "/" in name]
        self.assertGreater(len(readmes), 4)
        long = {n: c for n in readmes if (c := project.text(n).count("\n")) > MOST_LINES_OF_A_FOLDERS_README}
        self.assertEqual(long, {})

    def test_that_describe_a_folder_stand_in_every_layer(self):
        layers = {"/".join(name.split("/")[:2]) for name in project.having(".cpp", under=("src/",)) if name.count("/") > 1}
        self.assertEqual([layer for layer in sorted(layers) if not project.exists(layer + "/README.md")], [])

    def test_hold_no_generated_or_binary_ware(self):
        pictures_and_samples = ("docs/pictures/", "tests/Fixtures/", "fuzz/corpus/")
        binary = [n for n in project.files() if b"\0" in (project.ROOT / n).read_bytes()[:8192]]
        self.assertEqual([n for n in binary if not n.startswith(pictures_and_samples)], [])
        self.assertEqual([n for n in project.files() if re.search(r"\.(o|a|so|pyc|orig|rej|log|tmp)$|__pycache__", n)], [])


if __name__ == "__main__":
    unittest.main()
