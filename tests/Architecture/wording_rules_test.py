"""Words that have no place in the project."""
import re
import unittest

import project

# Written so that they do not find themselves.
FORBIDDEN = (
    r"(?i)\bthe[ ]spec\b",
    r"(?i)\b(the|our|this)[ ]specification\b",
    r"(?i)\bpart[ ][1-7]\.[0-9]",
    r"/wor[k]/",
    r"(?i)\.\./share[d]\b",
    r"(?i)\bissue[ ]#?[0-9]+",
    r"(?i)\b(runner-notes|design|style)\.md[b]?\b",
)
UNFINISHED = (
    r"\b(TOD[O]|FIXM[E]|XX[X]|HAC[K])\b",
    r"\bDISABLE[D]_|@unittest\.skip\b",
    # Where a machine lacks what a test needs, the test says what that is.
    r"\b(GTEST_SKI[P]|QSKI[P]|skipTes[t])\((?!\) << \"\w|\"\w)",
    r"\b(EXPECT|ASSERT)_TRU[E]\(tru[e]\)|assertTru[e]\(Tru[e]\)",
    r"(?i)\bnot (yet )?implemente[d]\b",
)


class Wording(unittest.TestCase):
    def test_never_points_to_papers_or_places_outside_the_project(self):
        for pattern in FORBIDDEN:
            self.assertEqual(project.lines_that_match(project.files(), pattern), [], pattern)
            self.assertEqual([name for name in project.files() if re.search(pattern, "/" + name)], [], pattern)

    def test_marks_nothing_as_unfinished_or_switched_off(self):
        for pattern in UNFINISHED:
            self.assertEqual(project.lines_that_match(project.files(), pattern), [], pattern)

    def test_ends_no_processes_by_name(self):
        self.assertEqual(project.lines_that_match(project.files(), r"\b(p|kill)kil[l]\b|\bkillal[l]\b"), [])

    def test_has_no_blanks_at_the_end_of_lines_and_ends_every_file_with_one_line_end(self):
        texts = [n for n in project.files() if project.text(n) and not n.startswith(("tests/Fixtures/", "fuzz/corpus/"))]
        self.assertEqual(project.lines_that_match(texts, r"[ \t]+$"), [])
        self.assertEqual([n for n in texts if not project.text(n).endswith("\n") or project.text(n).endswith("\n\n")], [])


if __name__ == "__main__":
    unittest.main()
