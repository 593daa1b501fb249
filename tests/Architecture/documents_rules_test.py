"""What documents name is there."""
import re
import unittest

import project

FILE = re.compile(r"\.(cpp|h|qml|py|cmake|md|txt|svg|in)$")


def documents():
    return project.having(".md")


def outside_code_blocks(text):
    return re.sub(r"^```.*?^```", "", text, flags=re.M | re.S)


def named(document):
    """What stands between back quotes and looks like a path."""
    for word in re.findall(r"`([^`\n]+)`", outside_code_blocks(project.text(document))):
        # Variables, patterns, commands and placeholders name nothing that is here.
        if not re.search(r"[\s$~*<>|{}()=:,]|\b[A-Z]{2,}\b(?!\.md)", word):
            yield word.removeprefix("./")


class Documents(unittest.TestCase):
    def test_link_to_what_is_there(self):
        broken = []
        for document in documents():
            folder = document.rsplit("/", 1)[0] + "/" if "/" in document else ""
            for target in re.findall(r"\]\(([^)#\s]+)", outside_code_blocks(project.text(document))):
                if "://" not in target and not project.exists(folder + target):
                    broken.append(f"{document}: {target}")
        self.assertEqual(broken, [])

    def test_name_files_and_folders_that_are_there(self):
        names = {name.rsplit("/", 1)[-1] for name in project.files()}
        tops = {name.split("/")[0] for name in project.files()}
        missing = []
        for document in documents():
            folder = document.rsplit("/", 1)[0] + "/" if "/" in document else ""
            for word in named(document):
                if word.split("/")[0] in tops and "/" in word:
                    found = project.exists(word)
                elif word.endswith("/"):
                    found = project.exists(folder + word) or project.exists("src/" + word)
                elif FILE.search(word) and "/" not in word:
                    found = word in names or word.removesuffix(".in") in names
                else:
                    continue
                if not found:
                    missing.append(f"{document}: {word}")
        self.assertEqual(missing, [])

    def test_of_the_architecture_name_types_and_targets_that_are_there(self):
        code = "\n".join(project.text(n) for n in project.having(".h", ".cpp", ".qml", ".txt", ".cmake", ".in"))
        words = set(re.findall(r"\w+", code)) | {name.rsplit("/", 1)[-1].split(".")[0] for name in project.files()}
        words |= {part for name in project.files() for part in name.split("/")[:-1]}
        used = {w for w in named("ARCHITECTURE.md") if re.fullmatch(r"[A-Z][a-z]\w+|wrapio_\w+", w)}
        self.assertGreater(len(used), 20)
        self.assertEqual(sorted(used - words), [])

    def test_of_the_architecture_name_every_folder_of_sources(self):
        text = project.text("ARCHITECTURE.md")
        folders = {"/".join(n.split("/")[:2]) for n in project.having(".cpp", ".qml", under=("src/",)) if n.count("/") > 1}
        folders |= {name.split("/")[0] for name in project.having(".cpp", ".qml", ".py")}
        self.assertEqual([f for f in sorted(folders) if f"`{f}`" not in text and f"`{f}/" not in text], [])

    def test_of_packages_hold_one_package_and_one_known_tag_in_a_line(self):
        lines = [line.split("#")[0].strip() for line in project.text("packages.txt").split("\n")]
        packages = [line for line in lines if line]
        for line in packages:
            self.assertRegex(line, r"\A[a-z0-9][a-z0-9+.-]+( +\[(run|test)\])?\Z")
        names = [line.split()[0] for line in packages]
        self.assertEqual(len(names), len(set(names)))


if __name__ == "__main__":
    unittest.main()
