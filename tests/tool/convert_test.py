"""Logs that are turned into other formats."""
import csv
import io
import json
import unittest

from made_logs import make_logs
from tool_test import ARGUMENTS, ckscribe, main

FOLDER, EXPECTED = make_logs(ARGUMENTS[0], "--calls", "3000")
NEW, OLD, EVENTS = (FOLDER / name for name in ("new.log", "old.log", "events.jsonl"))
STARTS = EXPECTED["calls"]
ENDS = EXPECTED["calls"] - EXPECTED["unfinished"]


def convert(to, *arguments, **options):
    done = ckscribe("convert", "--to", to, *map(str, arguments), **options)
    assert done.returncode == 0 and done.stderr == "", (done.returncode, done.stderr)
    return done.stdout


class JsonLines(unittest.TestCase):
    def test_events_stay_as_they_are(self):
        self.assertEqual(sorted(convert("jsonl", EVENTS).splitlines()), sorted(EVENTS.read_text().splitlines()))

    def test_text_logs_give_the_same_events_without_what_they_lack(self):
        def comparable(event, lacking):
            for name in lacking:
                event.pop(name, None)
            for child in event["in"] + event.get("out", []):
                # Text logs show data, these events do not; a text log has no numbers of mechanisms and attributes.
                for value in (child, child.get("parameter", {}), *child.get("attributes", [])):
                    for key in ("hex", "text", "number", "value" if child["kind"] == "AttributeList" else ""):
                        value.pop(key, None)
                if child["kind"] == "ULong":
                    child.pop("name", None)
                if child["kind"] == "ByteString":
                    child.pop("size")
            return json.dumps(event, sort_keys=True)

        lacking = ("time", "ns", "run", "call")
        expected = sorted(comparable(json.loads(line), lacking + ("tid",)) for line in EVENTS.read_text().splitlines())
        for log in (NEW, OLD):
            with self.subTest(log.name):
                events = [json.loads(line) for line in convert("jsonl", log).splitlines()]
                self.assertEqual({"run", "call", "ns"} & {key for event in events for key in event}, set())
                self.assertEqual(sum(event["event"] == "start" for event in events), STARTS)
                self.assertEqual("tid" in events[0], log == NEW)
                # Without threads the ends of like calls may be taken for each other's.
                if log == NEW:
                    self.assertEqual(sorted(comparable(event, lacking + ("tid",)) for event in events), expected)

    def test_time_is_as_much_as_the_log_tells(self):
        self.assertRegex(json.loads(convert("jsonl", NEW).splitlines()[0])["time"], r"^01:00:0\d$")
        self.assertRegex(json.loads(convert("jsonl", OLD).splitlines()[0])["time"], r"^2026-11-21T01:00:0\d$")


class Table(unittest.TestCase):
    def test_table_has_a_head_and_a_row_for_each_call(self):
        rows = list(csv.DictReader(io.StringIO(convert("csv", EVENTS))))
        self.assertEqual(len(rows), EXPECTED["calls"])
        self.assertEqual(list(rows[0]), ["time", "process", "thread", "run", "call", "function", "result", "rv", "ns", "slot",
                                         "session", "object", "user", "mechanism", "in", "out", "file", "line"])
        for name, known in EXPECTED["functions"].items():
            mine = [row for row in rows if row["function"] == name]
            self.assertEqual(len(mine), known["calls"])
            self.assertEqual(sum(int(row["ns"] or 0) for row in mine), known["total_ns"])
            self.assertEqual(sum(row["result"] == "" for row in mine), known["unfinished"])

    def test_cell_that_looks_like_a_formula_is_made_a_text(self):
        log = '10:15:30 00001--03:FINIGenerateRandom CKR_OK1clks {"=HYPERLINK(1,""x"")" }\n'
        event = ('{"event":"end","time":"2026-11-21T12:33:45Z","ns":5,"run":"=1+1","pid":1,"tid":2,"call":1,'
                 '"function":"@SUM(A1)","rv":1,"result":"-2","mechanism":"+3","in":[],"out":[]}\n')
        rows = list(csv.DictReader(io.StringIO(convert("csv", "-", input=log + event))))
        self.assertEqual([row["thread"] for row in rows], ["-3", "2"])
        for field in ("run", "function", "result", "mechanism"):
            self.assertEqual(rows[1][field][0], "'", field)
        for row in rows:
            for field in ("run", "function", "result", "mechanism", "in", "out", "file"):
                self.assertNotIn(row[field][:1] or "x", "=+-@" if row[field] != "-" else "", (field, row[field]))


class Trace(unittest.TestCase):
    def test_trace_has_an_event_for_each_call(self):
        events = json.loads(convert("trace", EVENTS))["traceEvents"]
        self.assertEqual([sum(e["ph"] == phase for e in events) for phase in "XB"], [ENDS, EXPECTED["unfinished"]])
        for name, known in EXPECTED["functions"].items():
            mine = [e for e in events if e["name"] == name]
            self.assertEqual(sum(round(e.get("dur", 0) * 1000) for e in mine), known["total_ns"])
        self.assertEqual({e["pid"] for e in events}, {1000, 1001})

    def test_trace_of_a_text_log_has_its_seconds(self):
        log = "10:15:30 00001-001:STRTFinalize {}\n10:15:32 00001-001:FINIFinalize CKR_OK1clks {}\n"
        done = convert("trace", "--date", "2026-11-21", "-", input=log, environment={"TZ": "UTC"})
        event = json.loads(done)["traceEvents"][0]
        self.assertEqual((event["ts"], event["dur"], event["pid"], event["tid"]), (1795256130e6, 2e6, 1, 1))
        self.assertEqual(event["args"], {"in": "", "result": "CKR_OK", "out": ""})

    def test_empty_log_gives_an_empty_trace(self):
        self.assertEqual(json.loads(convert("trace", "-", input=""))["traceEvents"], [])


class Use(unittest.TestCase):
    def test_format_that_is_unknown_or_absent_is_wrong_use(self):
        self.assertEqual(ckscribe("convert", "--to", "xml", str(NEW)).returncode, 2)
        self.assertEqual(ckscribe("convert", str(NEW)).returncode, 2)


main()
