"""The page of a report, opened in a real browser: headless Chromium."""
import html.parser
import json
import pathlib
import re
import subprocess
import tempfile
import unittest

from made_logs import make_logs
from tool_test import ARGUMENTS, ckscribe, main

MAKER, CHROMIUM = ARGUMENTS[:2]
FOLDER, EXPECTED = make_logs(MAKER, "--calls", "20000", "--damage", "0", "--processes", "3")

# Without the last of these, Chromium asks for things that this page does not.
OPTIONS = ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-sync",
           "--disable-background-networking", "--disable-component-update", "--enable-logging=stderr",
           "--virtual-time-budget=20000")


class Tables(html.parser.HTMLParser):
    """Rows of figures: {function: {field: text}} of rows with data-function, and the texts of list items."""

    def __init__(self, text):
        super().__init__()
        self.functions, self.row, self.field, self.items, self.in_item = {}, None, None, [], False
        self.elements = set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.elements.add(tag)
        if tag == "tr":
            name = attributes.get("data-function")
            self.row = self.functions.setdefault(name, {}) if name else None
        elif tag == "td" and self.row is not None:
            self.field = attributes["data-field"]
            self.row[self.field] = ""
        elif tag == "li":
            self.in_item = True
            self.items.append("")

    def handle_endtag(self, tag):
        if tag == "td":
            self.field = None
        elif tag == "li":
            self.in_item = False

    def handle_data(self, data):
        if self.row is not None and self.field:
            self.row[self.field] += data
        if self.in_item:
            self.items[-1] += data


class Page:
    """A page of these logs: its text, its tables as the browser shows them, and what the browser's console says."""

    def __init__(self, *logs):
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as folder:
            path = pathlib.Path(folder) / "page.html"
            done = ckscribe("report", "--html", str(path), *map(str, logs))
            assert done.returncode == 0, done.stderr
            self.text = path.read_text()
            shown = subprocess.run([CHROMIUM, *OPTIONS, f"--user-data-dir={folder}/profile", "--dump-dom", path.as_uri()],
                                   capture_output=True, text=True, timeout=120, check=True)
        self.shown = Tables(shown.stdout)
        self.dom = shown.stdout
        self.console = re.findall(r".*CONSOLE.*", shown.stderr)
        embedded = re.search(r'<script type="application/json" id="report">(.*?)</script>', self.text, re.S)
        self.report = json.loads(embedded[1])


def json_report(*logs):
    return json.loads(ckscribe("report", "--json", *map(str, logs)).stdout)


class PageOfEvents(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.log = FOLDER / "events.jsonl"
        cls.page = Page(cls.log)

    def test_console_of_the_browser_stays_empty(self):
        self.assertEqual(self.page.console, [])

    def test_page_holds_what_json_prints(self):
        self.assertEqual(self.page.report, json_report(self.log))

    def test_table_shows_the_figures_of_each_function(self):
        expected = {row["function"]: row for row in json_report(self.log)["functions"]}
        self.assertEqual(self.page.shown.functions.keys(), expected.keys())
        for name, row in expected.items():
            shown = self.page.shown.functions[name]
            for field in ("calls", "errors", "unfinished"):
                self.assertEqual(shown[field], f"{row[field]:,}", f"{name} {field}")
            self.assertRegex(shown["max_ns"], r"^\d[\d.e+]* (ns|µs|ms|s)$")

    def test_remarks_stand_at_the_top_with_their_commands(self):
        expected = [f"{row['sentence']} {row['command']}" for row in self.page.report["remarks"]]
        self.assertEqual(self.page.shown.items, expected or ["Nothing stands out."])

    def test_page_asks_no_other_machine_for_anything(self):
        self.assertNotRegex(self.page.text, r"(src|href)=[\"']?(https?:)?//")
        self.assertIn("default-src 'none'", self.page.text)

    def test_page_is_small_enough_to_be_mailed(self):
        self.assertLess(len(self.page.text.encode()), 5_000_000)


class PageOfText(unittest.TestCase):
    def test_text_log_shows_calls_without_durations(self):
        page = Page(FOLDER / "new.log")
        self.assertEqual(page.console, [])
        for name, row in page.shown.functions.items():
            self.assertEqual(row["p50_ns"], "–", name)
        self.assertIn("This log has no durations.", page.dom)


class PageOfHostileLog(unittest.TestCase):
    def test_text_of_the_log_does_not_become_markup(self):
        evil = "</script><img src=x onerror=alert(1)><!-- <iframe>"
        event = {"time": "2026-11-21T12:33:45.123456789Z", "run": "18a3-5", "pid": 1, "tid": 2, "call": 1,
                 "function": "C_FindObjectsInit", "session": 1}
        template = [{"kind": "SessionHandle", "value": 1},
                    {"kind": "AttributeList",
                     "attributes": [{"type": "CKA_LABEL", "number": 3, "size": len(evil), "text": evil}]}]
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as folder:
            log = pathlib.Path(folder) / "<b>events.jsonl"
            log.write_text(json.dumps({"event": "start", **event, "in": template}) + "\n" +
                           json.dumps({"event": "end", "ns": 5, "rv": 0, "result": "CKR_OK", **event, "in": template,
                                       "out": []}) + "\n")
            page = Page(log)
        self.assertEqual(page.console, [])
        self.assertIn("C_FindObjectsInit", page.shown.functions)
        self.assertEqual({"img", "iframe", "b"} & page.shown.elements, set())
        self.assertIn("&lt;img src=x", page.dom)


class EmptyLog(unittest.TestCase):
    def test_page_of_no_calls_opens_without_an_error(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as folder:
            log = pathlib.Path(folder) / "empty.log"
            log.touch()
            page = Page(log)
        self.assertEqual(page.console, [])
        self.assertEqual(page.shown.functions, {})


main()
