"""Readers of man pages take ours without a warning, and the pages name what the program knows.

man_pages_test.py SOURCE BUILT_PAGES"""

import os
import pathlib
import re
import subprocess
import sys
import unittest

SOURCE, BUILT = map(pathlib.Path, sys.argv[1:3])
del sys.argv[1:3]
PAGES = sorted(BUILT.glob("man[157]/*"))


def text_of(page):
    """Returns the text that a reader sees, without marks for bold letters."""
    done = subprocess.run(["mandoc", "-Tutf8", "-Owidth=200", page], check=True, capture_output=True, text=True, timeout=60)
    return re.sub(".\x08", "", done.stdout)


class ManPages(unittest.TestCase):
    def test_EverySource_IsBuilt(self):
        self.assertEqual({page.name for page in PAGES}, {source.stem for source in (SOURCE / "share/man").glob("*.scd")})
        self.assertLessEqual({"ckscribe.1", "Wendrafil.conf.5", "libckscribe.7"}, {page.name for page in PAGES})

    def test_Mandoc_HasNoWarning(self):
        for page in PAGES:
            with self.subTest(page.name):
                done = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", page], capture_output=True, text=True, timeout=60)
                self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def test_ManWithWarnings_HasNone(self):
        for page in PAGES:
            with self.subTest(page.name):
                done = subprocess.run(["man", "--warnings=w", "-Tutf8", "-l", page], env=os.environ | {"LC_ALL": "C.UTF-8"},
                                      capture_output=True, text=True, timeout=60)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertIn("NAME", re.sub(".\x08", "", done.stdout))

    def test_PageOfTheConfiguration_NamesTheKeysOfTheProgramAndNoOther(self):
        program = re.findall(r'\{"(\w+)", KeyKind::', (SOURCE / "tool/configuration/logging_keys.h").read_text())
        section = text_of(BUILT / "man5/Wendrafil.conf.5").split("KEYS OF THE SECTION CkLog2")[1].split("CLASSES OF FUNCTIONS")[0]
        self.assertGreater(len(program), 10)
        self.assertCountEqual(re.findall(r"^ {5,8}(\w+)$", section, flags=re.M), program)

    def test_PageOfTheConfiguration_NamesTheClassesOfTheProgramAndNoOther(self):
        program = re.findall(r'"([A-Z_]+_FUNC)"', (SOURCE / "config/logging_words.cpp").read_text())
        section = text_of(BUILT / "man5/Wendrafil.conf.5").split("CLASSES OF FUNCTIONS")[1].split("TRAPS OF THE SYNTAX")[0]
        self.assertGreater(len(program), 10)
        self.assertCountEqual(re.findall(r"^ {5,8}(\w+_FUNC)$", section, flags=re.M), program)

    def test_PageOfTheLibrary_HasThePromisesOfTheDocument(self):
        document = (SOURCE / "docs/promises.md").read_text()
        promises = re.findall(r"^\d+\. \*\*(.+?)\*\*", document, flags=re.M)
        self.assertEqual(len(promises), 12)
        page = (SOURCE / "share/man/libckscribe.7.scd").read_text()
        self.assertEqual(re.findall(r"^\. \*(.+?)\*", page, flags=re.M), promises)


if __name__ == "__main__":
    unittest.main(verbosity=2)
