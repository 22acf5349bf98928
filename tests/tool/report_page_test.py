"""A real browser, headless Chromium, opens the page of a report."""
import html
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

# Chromium asks for things that this page does not ask for, unless it has the last of these options.
OPTIONS = ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-sync",
           "--disable-background-networking", "--disable-component-update", "--enable-logging=stderr",
           "--virtual-time-budget=20000")


class Tables(html.parser.HTMLParser):
    """Tables holds rows of figures: {function: {field: text}} of rows with data-function, and the texts of list items."""

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
    """A Page is a page of these logs, opened with options of the browser. It has its text, its tables as the browser shows
    them, and what the browser's console says."""

    def __init__(self, *words, probe=False):
        logs = [word for word in words if not str(word).startswith("--")]
        options = [word for word in words if word not in logs]
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as folder:
            path = pathlib.Path(folder) / "page.html"
            done = ckscribe("report", "--html", str(path), *map(str, logs))
            assert done.returncode == 0, done.stderr
            self.text = path.read_text()
            if probe:
                path.write_text(self.text.replace("</body>", PROBE))
            shown = subprocess.run([CHROMIUM, *OPTIONS, *options, f"--user-data-dir={folder}/profile", "--dump-dom", path.as_uri()],
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

    def test_page_does_not_grow_with_the_log(self):
        size = len(self.page.text.encode())
        self.assertLess(size, 2_500_000)
        folder, expected = make_logs(MAKER, "--calls", "200000", "--damage", "0", "--processes", "3")
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as place:
            path = pathlib.Path(place) / "page.html"
            self.assertEqual(ckscribe("report", "--html", str(path), str(folder / "events.jsonl")).returncode, 0)
            text = path.read_text()
        embedded = re.search(r'<script type="application/json" id="report">(.*?)</script>', text, re.S)
        self.assertEqual(json.loads(embedded[1])["calls"], 200_000)
        # The log has ten times as many calls. The page shows more only of calls without an end, at
        # most a thousand.
        self.assertLess(len(text.encode()), size + 1000 * 2000)
        self.assertIn("The page holds ", text)


# PROBE does in the browser what a person does, and leaves what the page then shows in an element of its own.
PROBE = """<script>
(() => {
  const one = (selector) => document.querySelector(selector);
  const told = {};
  const texts = (selector) => [...document.querySelectorAll(selector)].filter((each) => each.offsetParent !== null).map((each) => each.textContent);
  told.background = getComputedStyle(document.body).backgroundColor;
  told.requests = performance.getEntriesByType("resource").length;

  const heads = one("#function-table").tHead.rows[0].cells;
  const order = () => texts("#function-table td[data-field=function]");
  told.orders = [order()];
  heads[0].dispatchEvent(new KeyboardEvent("keydown", { key: "Enter" }));
  told.orders.push(order());
  told.sorted = [heads[0].getAttribute("aria-sort"), heads[1].getAttribute("aria-sort")];
  heads[1].click();
  heads[1].click();
  told.orders.push(order());
  told.sorted.push(heads[0].getAttribute("aria-sort"), heads[1].getAttribute("aria-sort"));

  const search = (table, text) => {
    const input = one(`input[data-table=${table}]`);
    input.focus();
    input.value = text;
    input.dispatchEvent(new Event("input"));
  };
  search("function-table", "sIGNi");
  told.found = order();
  search("function-table", "");
  search("call-table", "C_FindObjectsInit(");
  told.foundCalls = texts("#call-table td[data-field=text]");
  search("call-table", "");

  one("#call-table tbody tr").dispatchEvent(new KeyboardEvent("keydown", { key: "Enter" }));
  told.selectedByKey = one("#selected-call").textContent;

  const chart = Chart.getChart("thread-chart");
  const range = () => [chart.options.scales.x.min, chart.options.scales.x.max];
  const frame = one("#thread-frame");
  told.ranges = [range()];
  for (const key of ["+", "ArrowRight", "Home"]) {
    frame.dispatchEvent(new KeyboardEvent("keydown", { key }));
    told.ranges.push(range());
  }
  one("button[data-zoom=in]").click();
  told.ranges.push(range());
  one("button[data-zoom=all]").click();
  frame.dispatchEvent(new WheelEvent("wheel", { deltaY: -100, cancelable: true }));
  told.ranges.push(range());
  one("button[data-zoom=all]").click();

  const bar = chart.getDatasetMeta(0).data[7].getCenterPoint();
  const box = one("#thread-chart").getBoundingClientRect();
  one("#thread-chart").dispatchEvent(new MouseEvent("click", { clientX: box.left + bar.x, clientY: box.top + bar.y }));
  // Charts answer with the next picture.
  setTimeout(() => {
    // The color in the middle of a bar.
    const painted = (id, dataset) => {
      const canvas = one("#" + id);
      const bar = Chart.getChart(id).getDatasetMeta(dataset).data.find((each) => each.height > 3 || each.horizontal);
      const { x, y } = bar.getCenterPoint();
      const scale = canvas.width / canvas.clientWidth;
      const copy = document.createElement("canvas");
      [copy.width, copy.height] = [canvas.width, canvas.height];
      const context = copy.getContext("2d", { willReadFrequently: true });
      context.drawImage(canvas, 0, 0);
      return [...context.getImageData(x * scale, y * scale, 1, 1).data].join();
    };
    told.painted = [painted("time-chart", 0), painted("time-chart", 1), painted("latency-chart", 0), painted("thread-chart", 0)];
    told.selectedByClick = one("#selected-call").textContent;
    const probe = document.createElement("pre");
    probe.id = "probe";
    probe.textContent = JSON.stringify(told);
    document.body.append(probe);
  }, 500);
})();
</script></body>"""


class PageInUse(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.log = FOLDER / "events.jsonl"
        cls.report = json_report(cls.log)
        cls.page = Page(cls.log, probe=True)
        probe = re.search(r'<pre id="probe">(.*?)</pre>', cls.page.dom, re.S)
        cls.told = json.loads(html.unescape(probe[1]))

    def test_console_of_the_browser_stays_empty(self):
        self.assertEqual(self.page.console, [])

    def test_page_has_loaded_nothing(self):
        self.assertEqual(self.told["requests"], 0)

    def test_tables_are_sorted_by_key_and_by_click(self):
        by_calls = [row["function"] for row in sorted(self.report["functions"], key=lambda row: -row["calls"])]
        self.assertEqual(self.told["orders"], [by_calls, sorted(by_calls), by_calls])
        self.assertEqual(self.told["sorted"], ["ascending", None, None, "descending"])

    def test_search_shows_the_rows_that_hold_the_text_in_capitals_or_not(self):
        self.assertEqual(self.told["found"], ["C_SignInit"])
        found = self.told["foundCalls"]
        # There are at least the first and the last twenty, which the table did not show before.
        self.assertGreaterEqual(len(found), 40)
        self.assertEqual({text[:18] for text in found}, {"C_FindObjectsInit("})

    def test_timeline_is_zoomed_and_moved_by_keys_buttons_and_wheel(self):
        all_, zoomed, moved, home, button, wheel = self.told["ranges"]
        width = lambda one: one[1] - one[0]
        for half in (zoomed, moved, button):
            self.assertAlmostEqual(width(half) / width(all_), 0.5, places=6)
        self.assertAlmostEqual(moved[0] - zoomed[0], width(all_) / 8, places=3)
        self.assertAlmostEqual(width(home) / width(all_), 1, places=6)
        self.assertAlmostEqual(width(wheel) / width(all_), 0.8, places=6)

    def test_selected_call_shows_its_arguments_its_result_and_its_record(self):
        details = json.loads(re.search(r'<script type="application/json" id="details">(.*?)</script>', self.page.text, re.S)[1])
        for told, call in ((self.told["selectedByKey"], details["calls"][0]), (self.told["selectedByClick"], None)):
            call = call or next(one for one in details["calls"] if one["place"] + one["text"] in told)
            self.assertIn(f"{details['functions'][call['function']]} = {call['result']}", told)
            self.assertIn(call["text"] + call["records"], told)
        # This call is another one than the call that the key selects.
        self.assertNotIn(details["calls"][0]["place"] + "C_", self.told["selectedByClick"])

    def test_page_is_light_or_dark_as_the_reader_likes(self):
        self.assertEqual(self.told["background"], "rgb(255, 255, 255)")
        dark = Page(self.log, "--force-dark-mode", probe=True)
        self.assertEqual(dark.console, [])
        told = json.loads(html.unescape(re.search(r'<pre id="probe">(.*?)</pre>', dark.dom, re.S)[1]))
        self.assertEqual(told["background"], "rgb(20, 24, 29)")
        for page, errors, calls in ((self.told, "194,59,46,255", "47,111,179,255"), (told, "239,122,109,255", "110,168,230,255")):
            self.assertEqual(page["painted"][:3], [errors, calls, calls])
            self.assertIn(page["painted"][3], (errors, calls))

    def test_lists_of_the_report_stand_in_the_page(self):
        for title, rows in (("Calls without an end", "unfinished_calls"), ("Time between the calls of a thread", "pauses")):
            self.assertTrue(self.report[rows])
            self.assertIn(f"<h3>{title}</h3>", self.page.dom)
        call = self.report["unfinished_calls"][0]
        self.assertIn(f"{call['file']}:{call['line']}<", self.page.dom)
        self.assertIn("0x80000999", self.page.dom)


class PageOnPaper(unittest.TestCase):
    def test_printed_page_has_all_figures_and_nothing_to_press(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as folder:
            page, paper = pathlib.Path(folder) / "page.html", pathlib.Path(folder) / "page.pdf"
            self.assertEqual(ckscribe("report", "--html", str(page), str(FOLDER / "events.jsonl")).returncode, 0)
            subprocess.run([CHROMIUM, *OPTIONS, f"--user-data-dir={folder}/profile", f"--print-to-pdf={paper}", page.as_uri()],
                           capture_output=True, timeout=120, check=True)
            text = subprocess.run(["pdftotext", "-layout", paper, "-"], capture_output=True, text=True, timeout=60, check=True).stdout
        for row in json_report(FOLDER / "events.jsonl")["functions"]:
            self.assertRegex(text, rf"{row['function']} +{row['calls']:,} +{row['errors']:,} ")
        for pressed in ("Search", "Zoom in", "Show more calls"):
            self.assertNotIn(pressed, text)


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
