"""The library logs the same calls in each format, and all commands that read logs read them.

The test is called with the path of the command, of known_run, of libckscribe.so, of the target, and of the folder share/.
"""
import collections
import csv
import io
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from tool_test import ARGUMENTS, ckscribe, main

KNOWN_RUN, LIBRARY, TARGET, SHARE = ARGUMENTS
_folder = tempfile.TemporaryDirectory(prefix="ckscribe.")
FOLDER = pathlib.Path(_folder.name)
subprocess.run([KNOWN_RUN, LIBRARY, TARGET, FOLDER], check=True, timeout=240)
assert not (FOLDER / "error.log").exists(), (FOLDER / "error.log").read_text()

# Each log belongs to this run of the application.
LOGS = {"new.log": "new", "old.log": "old", "events.jsonl": "events", "both.log": "both", "both.jsonl": "both"}
EVERY_FUNCTION = ("every-new.log", "every-old.log", "every-events.jsonl")
NAMES = {0: "CKR_OK", 0x11: "CKR_ATTRIBUTE_SENSITIVE", 0x30: "CKR_DEVICE_ERROR", 0xA0: "CKR_PIN_INCORRECT",
         0x80000999: "CKR_UNKNOWN"}


def calls_of(run):
    """Returns the calls as the application made them."""
    return [json.loads(line) for line in (FOLDER / f"{run}.calls").read_text().splitlines()]


def report(log):
    done = ckscribe("report", "--json", str(FOLDER / log))
    assert (done.returncode, done.stderr) == (0, ""), done
    return json.loads(done.stdout)


class Report(unittest.TestCase):
    def test_each_format_gives_the_calls_that_the_application_made(self):
        for log, run in LOGS.items():
            with self.subTest(log):
                calls = calls_of(run)
                self.assertEqual(len(calls), 262)
                expected = {
                    "calls": len(calls),
                    "errors": sum(call["rv"] not in (0, None) for call in calls),
                    "unfinished": sum(call["rv"] is None for call in calls),
                    "unreadable": 0,
                    "processes": len({call["process"] for call in calls}),
                    # A process has its main thread and two more.
                    "threads": None if log == "old.log" else 24,
                }
                result = report(log)
                self.assertEqual({key: result[key] for key in expected}, expected)
                self.assertEqual((expected["errors"], expected["unfinished"], expected["processes"]), (32, 1, 8))

    def test_each_format_gives_each_functions_results(self):
        for log, run in LOGS.items():
            with self.subTest(log):
                expected = collections.Counter((call["function"], NAMES[call["rv"]], call["rv"])
                                               for call in calls_of(run) if call["rv"] is not None)
                found = {(row["function"], row["result"], row["rv"]): row["count"] for row in report(log)["results"]}
                self.assertEqual(found, dict(expected))

    def test_sessions_logins_slots_and_keys_are_the_same_in_each_format(self):
        for log, run in LOGS.items():
            with self.subTest(log):
                result = report(log)
                # The last process ended before it closed its two.
                self.assertEqual(result["sessions"], {"opened": 16, "closed": 14, "never_closed": 2})
                self.assertEqual([(row["result"], row["user"], row["count"]) for row in result["failed_logins"]],
                                 [("CKR_PIN_INCORRECT", 1, 1)] * 8)
                self.assertEqual([(row["slot"], row["token"], row["serial"]) for row in result["slots"]],
                                 [(4, "accounts", "0123456789abcdef")])
                keys = {(row["label"], row["id"], row["operations"], json.dumps(row["mechanisms"])) for row in result["keys"]}
                self.assertEqual(keys, {("signing key", "0aff", 6, '{"CKM_RSA_PKCS": 6}'), (None, None, 1, '{"CKM_AES_CBC": 1}')})

    def test_call_of_every_function_is_read_back_from_each_format(self):
        for log in EVERY_FUNCTION:
            with self.subTest(log):
                calls = calls_of(log.partition(".")[0])
                # Text records print both functions alike.
                unknown = {} if log.endswith("jsonl") else {"C_GetFunctionStatus": "UnknownType", "C_CancelFunction": "UnknownType"}
                expected = collections.Counter(unknown.get(call["function"], call["function"]) for call in calls)
                result = report(log)
                self.assertEqual({row["function"]: row["calls"] for row in result["functions"]}, dict(expected))
                self.assertEqual((result["calls"], result["unfinished"], result["unreadable"]), (len(calls), 0, 0))


class Show(unittest.TestCase):
    def test_each_process_has_the_calls_that_it_made(self):
        for log, run in LOGS.items():
            made = collections.Counter(call["process"] for call in calls_of(run))
            for process, count in made.items():
                with self.subTest(log, process=process):
                    lines = ckscribe("show", "--process", str(process), str(FOLDER / log)).stdout.splitlines()
                    self.assertEqual(len(lines), count)

    def test_call_without_an_end_is_the_one_during_which_its_process_ended(self):
        for log, run in LOGS.items():
            with self.subTest(log):
                [process] = [call["process"] for call in calls_of(run) if call["rv"] is None]
                lines = ckscribe("show", "--unfinished", str(FOLDER / log)).stdout.splitlines()
                self.assertEqual(len(lines), 1)
                self.assertRegex(lines[0], r" C_DigestInit\(session=\d+, CKM_SHA_1.*\) = \?$")
                again = ckscribe("show", "--unfinished", "--process", str(process), str(FOLDER / log)).stdout
                self.assertEqual(again.splitlines(), lines)


class Convert(unittest.TestCase):
    def test_each_format_becomes_the_same_table_but_for_what_it_lacks(self):
        def rows(log):
            done = ckscribe("convert", "--to", "csv", str(FOLDER / log))
            return [(row["process"], row["function"], row["result"], row["rv"], row["slot"], row["session"], row["object"],
                     row["user"], row["mechanism"]) for row in csv.DictReader(io.StringIO(done.stdout))]

        self.assertEqual(len(rows("both.log")), 262)
        self.assertEqual(sorted(rows("both.log")), sorted(rows("both.jsonl")))


class Diff(unittest.TestCase):
    def diff(self, before, after):
        done = ckscribe("diff", before, after, cwd=FOLDER)
        self.assertEqual(done.stderr, "")
        return done.returncode, done.stdout.splitlines()

    def test_same_run_in_two_formats_is_alike(self):
        self.assertEqual(self.diff("both.log", "both.jsonl"), (0, []))
        self.assertEqual(self.diff("both.jsonl", "both.log"), (0, []))

    def test_same_program_in_any_two_formats_is_alike(self):
        for before in LOGS:
            for after in LOGS:
                with self.subTest(f"{before} {after}"):
                    self.assertEqual(self.diff(before, after), (0, []))

    def test_call_of_every_function_is_alike_in_any_two_formats(self):
        for before in EVERY_FUNCTION:
            for after in EVERY_FUNCTION:
                with self.subTest(f"{before} {after}"):
                    self.assertEqual(self.diff(before, after), (0, []))

    def test_difference_shows_across_formats(self):
        text = (FOLDER / "new.log").read_text(encoding="latin-1")
        head, changed, rest = text.partition("FINIGetTokenInfo CKR_OK")
        self.assertTrue(changed)
        changes = {
            "answer": (head + "FINIGetTokenInfo ***CKR_DEVICE_REMOVED***" + rest,
                       r"! C_GetTokenInfo\(slot=4\) = CKR_OK, before: CKR_DEVICE_REMOVED  events.jsonl:\d+"),
            "slots": (text.replace("SlotLst={Slot=1 ", "SlotLst={Slot=2 ", 1),
                      r"! C_GetSlotList\(tknPresent=true\) = CKR_OK slots=\[1 4\], before: CKR_OK slots=\[2 4\]  events.jsonl:\d+"),
        }
        for name, (changed, expected) in changes.items():
            with self.subTest(name):
                self.assertNotEqual(changed, text)
                (FOLDER / "changed.log").write_text(changed, encoding="latin-1")
                status, lines = self.diff("changed.log", "events.jsonl")
                self.assertEqual((status, len(lines)), (1, 2))
                self.assertRegex(lines[1], f"^{expected}$")

    def test_attribute_that_differs_shows_across_formats(self):
        text = (FOLDER / "both.log").read_text(encoding="latin-1")
        (FOLDER / "label.log").write_text(text.replace('CKA_LABEL="signing key" CKA_ID', 'CKA_LABEL="signing kex" CKA_ID', 1),
                                          encoding="latin-1")
        status, lines = self.diff("label.log", "both.jsonl")
        self.assertEqual((status, len(lines)), (1, 3))
        self.assertIn('CKA_LABEL="signing kex"', lines[1])
        self.assertEqual(lines[2][:2], "+ ")


class Lnav(unittest.TestCase):
    """The formats for lnav read logs of the library."""

    FORMATS = {"new.log": "ckscribe_log", "old.log": "ckscribe_old_log", "events.jsonl": "ckscribe_events"}

    def query(self, log, question):
        with tempfile.TemporaryDirectory(prefix="ckscribe.") as home:
            # The terminal, settings and older sessions of the person who runs the test do not
            # count.
            environment = {"PATH": os.environ["PATH"], "HOME": home, "LC_ALL": "C.UTF-8", "TZ": "UTC"}
            done = subprocess.run([self.lnav, "-n", "-W", "-I", pathlib.Path(SHARE) / "lnav", "-c", f";{question}",
                                   "-c", ":write-csv-to -", FOLDER / log],
                                  env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=100)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            return done.stdout.splitlines()

    @classmethod
    def setUpClass(cls):
        cls.lnav = shutil.which("lnav")
        assert cls.lnav, "there is no lnav: install it, or run ./check, which does"

    def test_results_are_those_of_the_calls(self):
        for log, table in self.FORMATS.items():
            with self.subTest(log):
                expected = collections.Counter(
                    (NAMES[call["rv"]] + (" 0x80000999" if call["rv"] == 0x80000999 and log != "events.jsonl" else ""),
                     "info" if call["rv"] == 0 else "error")
                    for call in calls_of(LOGS[log]) if call["rv"] is not None)
                lines = self.query(log, f"SELECT result, log_level, count(*) AS n FROM {table} WHERE result IS NOT NULL GROUP BY result ORDER BY result")
                self.assertEqual(lines, ["result,log_level,n"] + [f"{name},{level},{n}" for (name, level), n in sorted(expected.items())])

    def test_columns_hold_what_a_record_shows(self):
        process = calls_of("new")[0]["process"]
        self.assertEqual(
            self.query("new.log", f"SELECT DISTINCT phase, process, result FROM ckscribe_log WHERE function = 'Encrypt_Init' AND process = {process}"),
            ["phase,process,result", f"STRT,{process},<NULL>", f"FINI,{process},CKR_OK"])
        process = calls_of("old")[0]["process"]
        self.assertEqual(
            self.query("old.log", f"SELECT DISTINCT phase, part, process, result FROM ckscribe_old_log WHERE function = 'Encrypt' AND part = 'Init' AND process = {process}"),
            ["phase,part,process,result", f"Start,Init,{process},<NULL>", f"End,Init,{process},CKR_OK"])
        process = calls_of("events")[0]["process"]
        self.assertEqual(
            self.query("events.jsonl", "SELECT DISTINCT event, pid, slot, mechanism, mechanism_number, rv, result FROM ckscribe_events "
                       f"WHERE function IN ('C_EncryptInit', 'C_OpenSession') AND pid = {process} ORDER BY slot, event"),
            ["event,pid,slot,mechanism,mechanism_number,rv,result",
             f"end,{process},<NULL>,CKM_AES_CBC,4226,0,CKR_OK", f"start,{process},<NULL>,CKM_AES_CBC,4226,<NULL>,<NULL>",
             f"end,{process},4,<NULL>,<NULL>,0,CKR_OK", f"start,{process},4,<NULL>,<NULL>,<NULL>,<NULL>"])

    def test_durations_of_events_are_numbers(self):
        events = [json.loads(line) for line in (FOLDER / "events.jsonl").read_text().splitlines()]
        total = sum(event["ns"] for event in events if event["event"] == "end")
        self.assertEqual(self.query("events.jsonl", "SELECT sum(ns) AS total FROM ckscribe_events"), ["total", str(total)])


main()
