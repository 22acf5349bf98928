"""README fits its first reader, and the links of all documents lead somewhere.

documents_test.py SOURCE"""

import pathlib
import re
import sys
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1))
README = SOURCE / "README.md"
DOCUMENTS = [README, SOURCE / "CHANGELOG.md", SOURCE / "CONTRIBUTING.md", *sorted((SOURCE / "docs").glob("*.md")), SOURCE / "tests/fuzz/README.md"]

MOST_LINES_OF_README = 120
LINES_OF_FIRST_SCREEN = 24


def text_outside_code(document):
    """Returns the text of a document without blocks that are fenced or indented."""
    text = re.sub(r"^```.*?^```", "", document.read_text(), flags=re.S | re.M)
    return re.sub(r"^ {4}.*$", "", text, flags=re.M)


def anchors(document):
    """Returns what "#..." may name in a document: its headings, as web pages of repositories spell them."""
    headings = re.findall(r"^#+ (.*)$", text_outside_code(document), flags=re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


class Documents(unittest.TestCase):
    def test_Readme_HasAtMost120Lines(self):
        self.assertLessEqual(len(README.read_text().splitlines()), MOST_LINES_OF_README)

    def test_Readme_ShowsBothCommandsOnTheFirstScreen(self):
        first_screen = README.read_text().splitlines()[:LINES_OF_FIRST_SCREEN]
        for command in ("    ./demo ", "    ./check "):
            self.assertTrue(any(line.startswith(command) for line in first_screen), command)

    def test_EveryRelativeLink_LeadsToAFileAndAHeading(self):
        links = 0
        for document in DOCUMENTS:
            for link in re.findall(r"\]\(([^)\s]+)\)", text_outside_code(document)):
                if re.match(r"[a-z]+:", link):
                    continue
                links += 1
                path, _, anchor = link.partition("#")
                target = (document.parent / path) if path else document
                with self.subTest(document=document.name, link=link):
                    self.assertTrue(target.exists(), "the file is missing")
                    if anchor:
                        self.assertIn(anchor, anchors(target))
        self.assertGreater(links, 20)

    def test_EveryPageOfDocs_IsLinkedFromReadme(self):
        readme = README.read_text()
        for page in sorted((SOURCE / "docs").glob("*.md")):
            with self.subTest(page=page.name):
                self.assertIn(f"(docs/{page.name})", readme, "add a row to the table of pages")

    def test_Architecture_NamesFilesThatExist(self):
        for path in re.findall(r"`((?:front|records|descriptors|config|host|functions|tests)/[\w/]+\.\w+)`",
                               (SOURCE / "docs/architecture.md").read_text()):
            with self.subTest(path=path):
                self.assertTrue((SOURCE / path).exists())


if __name__ == "__main__":
    unittest.main()
