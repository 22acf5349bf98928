"""`ckscribe report` reports on logs whose content is known."""
import gzip
import json
import lzma
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import unittest

import jsonschema

from made_logs import make_logs
from tool_test import ARGUMENTS, TOOL, ckscribe, main

MAKER, SHARE = ARGUMENTS[:2]
SCHEMA = json.loads((pathlib.Path(SHARE) / "ckscribe/report.schema.json").read_text())
FOLDER, EXPECTED = make_logs(MAKER, "--calls", "20000", "--damage", "100", "--processes", "8")
NEW, OLD, EVENTS, DAMAGED = (FOLDER / name for name in ("new.log", "old.log", "events.jsonl", "damaged.log"))
# Under a sanitizer it takes long to convert a log.
FEW_CALLS, _ = make_logs(MAKER, "--calls", "3000", "--damage", "100", "--processes", "8")
TOTALS = ("calls", "errors", "unfinished", "unreadable", "processes", "threads")


def report(*arguments, status=0, **options):
    done = ckscribe("report", "--json", *map(str, arguments), **options)
    assert done.returncode == status, (done.returncode, done.stderr)
    result = json.loads(done.stdout)
    jsonschema.validate(result, SCHEMA)
    return result


def totals(result):
    return {key: result[key] for key in TOTALS}


def results(result):
    return sorted((row["function"], row["result"], row["rv"], row["count"]) for row in result["results"])


class Figures(unittest.TestCase):
    def test_all_formats_give_the_calls_that_were_made(self):
        expected = {key: EXPECTED[key] for key in TOTALS}
        self.assertEqual(totals(report(NEW)), expected)
        self.assertEqual(totals(report(EVENTS)), expected)
        self.assertEqual(totals(report(OLD)), {**expected, "threads": None})

    def test_functions_and_results_are_those_of_the_calls(self):
        rows = sorted((r["function"], r["result"], r["rv"], r["count"]) for r in EXPECTED["results"])
        for log in (NEW, OLD, EVENTS):
            with self.subTest(log.name):
                result = report(log)
                self.assertEqual(results(result), rows)
                functions = {row["function"]: row for row in result["functions"]}
                self.assertEqual(functions.keys(), EXPECTED["functions"].keys())
                for name, row in functions.items():
                    for field in ("calls", "errors", "unfinished"):
                        self.assertEqual(row[field], EXPECTED["functions"][name][field], f"{name} {field}")
                counts = [row["calls"] for row in result["functions"]]
                self.assertEqual(counts, sorted(counts, reverse=True))

    def test_durations_of_events_have_an_exact_total_and_maximum_and_percentiles_within_one_percent(self):
        for row in report(EVENTS)["functions"]:
            known = EXPECTED["functions"][row["function"]]
            self.assertEqual((row["total_ns"], row["max_ns"]), (known["total_ns"], known["max_ns"]))
            for field in ("p50_ns", "p95_ns", "p99_ns"):
                self.assertAlmostEqual(row[field] / known[field], 1, delta=0.01)

    def test_text_logs_have_no_durations(self):
        for row in report(NEW)["functions"]:
            self.assertEqual({row[key] for key in ("total_ns", "p50_ns", "p95_ns", "p99_ns", "max_ns")}, {None})

    def test_span_reaches_from_the_first_call_to_the_last(self):
        events = report(EVENTS)
        self.assertRegex(events["first_time"], r"^2026-11-21T01:00:00\.\d{9}Z$")
        self.assertRegex(events["last_time"], r"^2026-11-21T01:00:0[45]\.\d{9}Z$")
        old = report(OLD, environment={"TZ": "Europe/Berlin"})
        self.assertEqual(old["first_time"], "2026-11-21T00:00:00Z")

    def test_date_of_the_new_format_is_the_day_of_its_last_record(self):
        environment = {"TZ": "UTC"}
        os.utime(NEW, (1_700_000_000, 1_700_000_000))  # 2023-11-14
        self.assertEqual(report(NEW, environment=environment)["last_time"][:10], "2023-11-14")
        self.assertEqual(report("--date", "2024-02-29", NEW, environment=environment)["last_time"][:10], "2024-02-29")

    def test_standard_input_that_is_a_file_is_of_the_day_on_which_that_was_written(self):
        os.utime(NEW, (1_700_000_000, 1_700_000_000))  # 2023-11-14
        with open(NEW) as log:
            done = ckscribe("convert", "--to", "csv", "-", stdin=log, environment={"TZ": "UTC"})
        self.assertEqual({line[:10] for line in done.stdout.splitlines()[1:]}, {"2023-11-14"})

    def test_keys_have_the_names_that_searches_reveal(self):
        lines = ('10:15:30 00001-001:STRTFindObjects_Init {Sesn=1 AttrList={CKA_LABEL="signing key" CKA_ID="0aff" } }',
                 "10:15:30 00001-001:FINIFindObjects_Init CKR_OK1clks {}",
                 "10:15:30 00001-001:STRTFindObjects {Sesn=1 10 }",
                 "10:15:30 00001-001:FINIFindObjects CKR_OK1clks {ObjHndLst={Obj=3 } 1 }",
                 '10:15:30 00001-001:STRTSign_Init {Sesn=1 Mech=(CKM_RSA_PKCS,"<null>") Obj=3 }',
                 "10:15:30 00001-001:FINISign_Init CKR_OK1clks {}")
        keys = report("-", input="\n".join(lines))["keys"]
        self.assertEqual(keys, [{"process": 1, "object": 3, "label": "signing key", "id": "0aff", "class": None,
                                 "operations": 1, "mechanisms": {"CKM_RSA_PKCS": 1}}])

    def test_label_of_digits_is_a_text_unless_they_are_bytes_of_a_text(self):
        lines = []
        for handle, label in enumerate(("ec", "5363686cc3bc7373656c", "deadbeef", "7f", "c3a9"), 3):
            lines += [f'10:15:30 00001-001:STRTCreateObject {{Sesn=1 AttrList={{CKA_LABEL="{label}" CKA_ID="ec" }} }}',
                      f"10:15:30 00001-001:FINICreateObject CKR_OK1clks {{Obj={handle} }}"]
        keys = report("-", input="\n".join(lines))["keys"]
        self.assertEqual([(key["object"], key["label"], key["id"]) for key in keys],
                         [(3, "ec", "ec"), (4, "Schl\u00fcssel", "ec"), (5, "deadbeef", "ec"), (6, "7f", "ec"), (7, "\u00e9", "ec")])

    def test_span_ends_with_the_last_moment_and_not_with_the_last_call_that_ended(self):
        def event(kind, second, ns=0):
            end = ',"rv":0,"result":"CKR_OK","in":[],"out":[]' if kind == "end" else ',"in":[]'
            return (f'{{"event":"{kind}","time":"2026-11-21T12:{second // 60:02}:{second % 60:02}Z",' + (f'"ns":{ns},' if kind == "end" else "") +
                    f'"run":"a-1","pid":1,"tid":{second},"call":{second},"function":"C_Sign"{end}}}\n')

        def span(log):
            result = report("-", "--date", "2026-11-21", input=log, environment={"TZ": "UTC"})
            return result["first_time"], result["last_time"]

        self.assertEqual(span(event("end", 7) + event("start", 600)), ("2026-11-21T12:00:07Z", "2026-11-21T12:10:00Z"))
        self.assertEqual(span(event("start", 8) + event("start", 9)), ("2026-11-21T12:00:08Z", "2026-11-21T12:00:09Z"))
        self.assertEqual(span(event("end", 60, 50 * 10**9) + event("end", 61, 10**9)), ("2026-11-21T12:01:00Z", "2026-11-21T12:01:50Z"))
        text = "12:30:00 00001-001:STRTFinalize {}\n12:30:01 00001-001:FINIFinalize CKR_OK1clks {}\n"
        for log in (event("end", 7) + text, text + event("end", 7)):
            self.assertEqual(span(log), ("2026-11-21T12:00:07Z", "2026-11-21T12:30:01Z"))

    def test_target_that_answers_another_number_each_time_has_a_row_for_each(self):
        # The time that this takes must not grow with the square of the rows: it would take minutes.
        count = 200_000
        lines = "".join('{"event":"end","time":"2026-11-21T12:33:45Z","ns":5,"run":"a-1","pid":1,"tid":2,"call":%d,"function":"C_Sign",'
                        '"rv":%d,"result":"CKR_UNKNOWN","in":[],"out":[]}\n' % (i + 1, 0x80000000 + i) for i in range(count))
        rows = json.loads(ckscribe("report", "--json", "-", input=lines).stdout)["results"]
        self.assertEqual({row["rv"] for row in rows}, set(range(0x80000000, 0x80000000 + count)))
        self.assertEqual({row["count"] for row in rows}, {1})

    def test_commands_that_show_evidence_are_safe_to_copy_whatever_an_event_names(self):
        event = ('{"event":"end","time":"2026-11-21T12:33:45Z","ns":5,"run":"a-1","pid":1,"tid":2,"call":1,"function":"C_Sign;id",'
                 '"rv":1,"result":"CKR_$(id) \'x","in":[],"out":[]}\n')
        [command] = [remark["command"] for remark in report("-", input=event)["remarks"]]
        self.assertEqual(shlex.split(command), ["ckscribe", "show", "--function", "C_Sign;id", "--result", "CKR_$(id) 'x", "-"])
        self.assertNotIn("$(id)", subprocess.run(["sh", "-c", command.replace("ckscribe", "echo", 1)], capture_output=True, text=True,
                                                 check=True).stdout.replace("CKR_$(id)", ""))

    def test_calls_a_second_and_pauses_between_calls_of_a_thread_are_those_of_the_events(self):
        def event(call, second, ns, tid):
            return (f'{{"event":"end","time":"2026-11-21T12:00:{second:02}.000000000Z","ns":{ns},"run":"a-1","pid":1,"tid":{tid},'
                    f'"call":{call},"function":"C_Sign","rv":0,"result":"CKR_OK","in":[],"out":[]}}\n')

        result = report("-", input=event(1, 0, 5 * 10**8, 2) + event(2, 1, 10**9, 3) + event(3, 2, 10**9, 2) + event(4, 9, 10**9, 3))
        self.assertEqual(result["calls_per_second"], 0.4)
        self.assertEqual({key: result["pauses"][key] for key in ("count", "total_ns", "max_ns")},
                         {"count": 2, "total_ns": 8_500_000_000, "max_ns": 7_000_000_000})

    def test_key_is_used_by_operations_and_not_by_the_call_that_makes_it(self):
        lines = ('10:15:30 00001-001:STRTGenerateKey {Sesn=1 Mech=(CKM_AES_KEY_GEN,"<null>") AttrList={CKA_LABEL="made" } }',
                 "10:15:30 00001-001:FINIGenerateKey CKR_OK1clks {Obj=9 }",
                 '10:15:30 00001-001:STRTGenerateKeyPair {Sesn=1 Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") '
                 'AttrList={CKA_LABEL="public" } AttrList={CKA_LABEL="private" } }',
                 "10:15:30 00001-001:FINIGenerateKeyPair CKR_OK1clks {Obj=10 Obj=11 }",
                 '10:15:30 00001-001:STRTEncrypt_Init {Sesn=1 Mech=(CKM_AES_CBC,"<null>") Obj=9 }',
                 "10:15:30 00001-001:FINIEncrypt_Init CKR_OK1clks {}",
                 '10:15:30 00001-001:STRTUnwrapKey {Sesn=1 Mech=(CKM_AES_KEY_WRAP,"<null>") Obj=9 "ab" AttrList={CKA_LABEL="unwrapped" } }',
                 "10:15:30 00001-001:FINIUnwrapKey CKR_OK1clks {Obj=12 }")
        text = "\n".join(lines)
        events = ckscribe("convert", "--to", "jsonl", "-", input=text).stdout
        for log in (text, events):
            keys = {key["object"]: (key["label"], key["operations"], key["mechanisms"]) for key in report("-", input=log)["keys"]}
            self.assertEqual(keys, {9: ("made", 2, {"CKM_AES_CBC": 1, "CKM_AES_KEY_WRAP": 1}), 10: ("public", 0, {}),
                                    11: ("private", 0, {}), 12: ("unwrapped", 0, {})})

    def test_events_made_from_a_text_log_give_the_same_report(self):
        places = ("file", "line", "first_file", "first_line", "last_file", "last_line")

        def figures(result):
            rows = {key: [{k: v for k, v in row.items() if k not in places} for row in value] if isinstance(value, list) else value
                    for key, value in result.items()}
            # The commands name the file, and unreadable lines do not become events.
            for key in ("files", "remarks", "unreadable", "unreadable_stretches"):
                rows.pop(key)
            return rows

        for log in (FEW_CALLS / name for name in ("new.log", "old.log", "damaged.log")):
            with self.subTest(log.name), tempfile.TemporaryDirectory() as folder:
                events = pathlib.Path(folder, "events.jsonl")
                events.write_text(ckscribe("convert", "--to", "jsonl", str(log)).stdout)
                os.utime(events, (os.stat(log).st_mtime,) * 2)
                made = report(events)
                self.assertEqual(made["unreadable"], 0)
                self.assertEqual(figures(made), figures(report(log)))
                self.assertIn("Text logs hold no durations.", ckscribe("report", str(events)).stdout)

    def test_sessions_logins_retries_and_polling_are_counted(self):
        lines = []

        def call(name, start, result="CKR_OK", end=""):
            stars = "" if result == "CKR_OK" else "***"
            lines.append(f"10:15:30 00001-001:STRT{name} {{{start}}}")
            lines.append(f"10:15:30 00001-001:FINI{name} {stars}{result}{stars}1clks {{{end}}}")

        call("OpenSession", "Slot=4 Flgs=4 ", end="Sesn=1 ")
        call("OpenSession", "Slot=4 Flgs=4 ", end="Sesn=2 ")
        call("CloseSession", "Sesn=1 ")
        for _ in range(3):
            call("Login", 'Sesn=2 User=1 PIN="********" ', "CKR_PIN_INCORRECT")
        for _ in range(12):
            call("GetSessionInfo", "Sesn=2 ", end="SesInfo=(1,3,0x6,0x0) ")
        result = report("-", input="\n".join(lines))
        self.assertEqual(result["sessions"], {"opened": 2, "closed": 1, "never_closed": 1})
        self.assertEqual(result["open_sessions"][0]["session"], 2)
        self.assertEqual(result["open_sessions"][0]["line"], 3)
        self.assertEqual([(f["result"], f["user"], f["count"]) for f in result["failed_logins"]], [("CKR_PIN_INCORRECT", 1, 3)])
        self.assertEqual([(r["function"], r["longest"], r["rows"]) for r in result["retries"]], [("C_Login", 3, 1)])
        self.assertEqual([(r["function"], r["longest"]) for r in result["polling"]], [("C_GetSessionInfo", 12)])
        self.assertEqual([(s["slot"], s["calls"]) for s in result["slots"]], [(4, 2)])

    def test_calls_that_ask_for_something_else_each_time_are_no_polling(self):
        def polling(name, *starts):
            lines = [f"10:15:30 00001-001:STRT{name} {{{start}}}\n10:15:30 00001-001:FINI{name} CKR_OK1clks {{}}\n" for start in starts]
            text = "".join(lines)
            events = ckscribe("convert", "--to", "jsonl", "-", input=text).stdout
            found = [[(row["function"], row["longest"]) for row in report("-", input=log)["polling"]] for log in (text, events)]
            self.assertEqual(*found)
            return found[0]

        self.assertEqual(polling("GetMechanismInfo", *(f"Slot=1 {i} " for i in range(20))), [])
        self.assertEqual(polling("GetMechanismInfo", *(f"Slot=1 {i // 12} " for i in range(24))), [("C_GetMechanismInfo", 12)])
        self.assertEqual(polling("GetSlotInfo", *(f"Slot={i % 3} " for i in range(30))), [])
        self.assertEqual(polling("GetSessionInfo", *(f"Sesn={i % 2} " for i in range(30))), [])
        self.assertEqual(polling("GetSlotList", *(f"tknPresent={'true' if i % 2 else 'false'} " for i in range(30))), [])
        # The address to which the answer goes does not count.
        self.assertEqual(polling("GetTokenInfo", *(f"Slot=1 Ptr=0x{i:x} " for i in range(1, 11))), [("C_GetTokenInfo", 10)])


class Damage(unittest.TestCase):
    def test_damaged_records_are_counted_and_listed_with_file_and_line(self):
        result = report(DAMAGED)
        self.assertGreater(result["unreadable"], 100)
        # If the start of a call is cut, its end is left, and the other way round.
        self.assertGreater(result["calls"], EXPECTED["calls"] - result["unreadable"])
        listed = ckscribe("report", "--unreadable", str(DAMAGED)).stdout.splitlines()
        self.assertEqual(len(listed), result["unreadable"])
        lines = DAMAGED.read_text().split("\n")
        for row, stretch in zip(listed[:100], result["unreadable_stretches"]):
            path, number, rest = row.split(":", 2)
            self.assertEqual((path, int(number)), (str(DAMAGED), stretch["line"]))
            self.assertEqual(rest, f" 1 line: {lines[int(number) - 1][:200]}")

    def test_log_of_only_zeros_and_missing_file_end_with_1_and_other_logs_are_reported(self):
        with tempfile.TemporaryDirectory() as folder:
            noise = pathlib.Path(folder, "noise.log")
            noise.write_bytes(bytes(1000))
            for bad in (noise, pathlib.Path(folder, "missing.log"), pathlib.Path(folder)):
                with self.subTest(bad.name):
                    self.assertEqual(report(bad, EVENTS, status=1)["calls"], EXPECTED["calls"])
            empty = pathlib.Path(folder, "empty.log")
            empty.touch()
            self.assertEqual(totals(report(empty)), dict.fromkeys(TOTALS, 0))

    def test_damaged_log_ends_with_0(self):
        report(DAMAGED, status=0)


class Files(unittest.TestCase):
    def test_compressed_log_and_standard_input_give_the_same_report(self):
        text = EVENTS.read_bytes()
        expected = totals(report(EVENTS))
        with tempfile.TemporaryDirectory() as folder:
            packed = {"a.gz": gzip.compress(text, 1), "a.xz": lzma.compress(text, preset=0),
                      "a.zst": subprocess.run(["zstd", "-q", "-c"], input=text, stdout=subprocess.PIPE, check=True).stdout}
            for name, content in packed.items():
                path = pathlib.Path(folder, name)
                path.write_bytes(content)
                with self.subTest(name):
                    self.assertEqual(totals(report(path)), expected)
                    with open(path) as file:
                        self.assertEqual(totals(report("-", stdin=file)), expected)

    def test_compressed_log_that_is_cut_gives_the_calls_before_the_cut(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "cut.gz")
            path.write_bytes(gzip.compress(EVENTS.read_bytes(), 1)[:-100000])
            result = report(path)
            self.assertGreater(result["calls"], EXPECTED["calls"] // 2)
            self.assertIsNotNone(result["files"][0]["error"])

    def test_rotated_family_in_any_order_is_one_log(self):
        text = NEW.read_bytes()
        # The cut is in the middle of a call, behind a record.
        cuts = [0] + [text.index(b"\n\n", len(text) * i // 4) for i in (1, 2, 3)] + [len(text)]
        with tempfile.TemporaryDirectory() as folder:
            names = ("log-20261119.gz", "log.2", "log.1.gz", "log")
            paths = []
            for name, begin, end in zip(names, cuts, cuts[1:]):
                path = pathlib.Path(folder, name)
                path.write_bytes(gzip.compress(text[begin:end]) if name.endswith("gz") else text[begin:end])
                paths.append(path)
            expected = totals(report(NEW))
            self.assertEqual(totals(report(*paths)), expected)
            self.assertEqual(totals(report(*reversed(paths))), expected)
            # As separate logs they lack the calls that the files before them began.
            separate = [path.rename(path.with_name(f"{letter}.log")) for path, letter in zip(paths, "abcd")]
            self.assertGreater(report(*separate)["unfinished"], expected["unfinished"])

    def test_different_logs_are_never_joined(self):
        with tempfile.TemporaryDirectory() as folder:
            one, other = pathlib.Path(folder, "one.log"), pathlib.Path(folder, "other.log")
            one.write_text("10:15:30 00001-001:STRTFinalize {}\n")
            other.write_text("10:15:30 00001-001:FINIFinalize CKR_OK1clks {}\n")
            result = report(one, other)
            self.assertEqual((result["calls"], result["unfinished"], result["processes"], result["threads"]), (2, 1, 2, 2))


class Memory(unittest.TestCase):
    def test_memory_does_not_grow_with_the_log(self):
        def peak(*command):
            # The memory that an address sanitizer keeps after it was freed does not count.
            environment = {**os.environ, "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"}
            with tempfile.TemporaryFile() as output:
                process = subprocess.Popen([TOOL, *map(str, command)], stdout=output, env=environment)
                _, status, used = os.wait4(process.pid, 0)
            self.assertEqual(os.waitstatus_to_exitcode(status), 0)
            return used.ru_maxrss / 1024

        peaks = {}
        for mebibytes in (8, 64):
            with tempfile.TemporaryDirectory() as folder:
                for name in ("new.log", "events.jsonl"):
                    subprocess.run([sys.executable, MAKER, folder, "--calls", "5000", "--size", str(mebibytes << 20), "--only", name],
                                   check=True, stdout=subprocess.DEVNULL)
                    for command in (("report", "--json"), ("show", "--errors")):
                        peaks[mebibytes, name, command[0]] = peak(*command, pathlib.Path(folder, name))
        for name in ("new.log", "events.jsonl"):
            for command in ("report", "show"):
                small, large = (peaks[mebibytes, name, command] for mebibytes in (8, 64))
                self.assertLess(large, small + 8, peaks)


class Text(unittest.TestCase):
    def test_text_names_what_stands_out_and_how_to_see_it(self):
        done = ckscribe("report", "--utc", str(EVENTS))
        self.assertEqual(done.returncode, 0)
        self.assertIn(f"  20,000 calls, {EXPECTED['errors']} errors, {EXPECTED['unfinished']} unfinished\n", done.stdout)
        self.assertIn("  8 processes, 32 threads\n", done.stdout)
        self.assertIn(f"    ckscribe show --unfinished {EVENTS}\n", done.stdout)
        self.assertRegex(done.stdout, r"\n  function +calls +errors +unfinished +total +p50 +p95 +p99 +max\n")
        self.assertNotIn("\033", done.stdout)

    def test_report_of_a_text_log_says_once_how_to_get_durations(self):
        text = ckscribe("report", str(NEW), str(OLD)).stdout
        self.assertEqual(text.count("Text logs hold no durations."), 1)
        self.assertNotIn("hold no durations", ckscribe("report", str(EVENTS)).stdout)

    def test_option_top_bounds_the_lists(self):
        self.assertIn("  and 6 more\n", ckscribe("report", "--top", "4", str(EVENTS)).stdout)
        self.assertEqual(len(report("--top", "2", EVENTS)["keys"]), 2)

    def test_wrong_date_is_wrong_use(self):
        for date in ("yesterday", "2026-02-29", "2026-11-31", "2026-11-00", "9999-01-01"):
            with self.subTest(date):
                done = ckscribe("report", "--date", date, str(NEW))
                self.assertEqual((done.returncode, done.stdout), (2, ""))


class Page(unittest.TestCase):
    def test_page_holds_what_json_prints(self):
        with tempfile.TemporaryDirectory() as folder:
            page = pathlib.Path(folder, "report.html")
            done = ckscribe("report", "--html", str(page), str(EVENTS))
            if "built without" in done.stderr:
                self.skipTest("no chart library")
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
            text = page.read_text().split('<script type="application/json" id="report">')[1].split("</script>")[0]
            self.assertEqual(json.loads(text), report(EVENTS))
            page.unlink()
            self.assertEqual(report("--html", page, EVENTS), report(EVENTS))
            self.assertTrue(page.exists())

    def test_page_has_at_most_5_megabytes_whatever_the_log_holds(self):
        less = "<" * 3900
        lines = []
        for i in range(1500):
            head = f"10:15:30 {i + 1:05}-001:"
            lines += [f"{head}STRTOpenSession {{Slot=1 Flgs=4 }}", f"{head}FINIOpenSession CKR_OK1clks {{Sesn={i} }}",
                      f'{head}STRTLogin {{Sesn={i} User=1 PIN="********" }}', f"{head}FINILogin ***CKR_PIN_INCORRECT***1clks {{}}",
                      f'{head}STRTCreateObject {{Sesn={i} AttrList={{CKA_LABEL="{less[:200]}{i}" }} }}',
                      f"{head}FINICreateObject CKR_OK1clks {{Obj={i} }}", f'{head}STRTSign {{Sesn={i} "{less}" }}']
        with tempfile.TemporaryDirectory() as folder:
            log, page = pathlib.Path(folder, "calls.log"), pathlib.Path(folder, "report.html")
            log.write_text("\n".join(lines))
            done = ckscribe("report", "--html", str(page), str(log))
            if "built without" in done.stderr:
                self.skipTest("no chart library")
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertLessEqual(page.stat().st_size, 5_000_000)
            text = page.read_text().split('<script type="application/json" id="details">')[1].split("</script>")[0]
            self.assertGreater(len(json.loads(text)["calls"]), 1000)

    def test_page_does_not_replace_a_log(self):
        with tempfile.TemporaryDirectory() as folder:
            log, link = pathlib.Path(folder, "calls.log"), pathlib.Path(folder, "link.log")
            log.write_text("10:15:30 00001-001:STRTFinalize {}\n")
            link.symlink_to(log)
            done = ckscribe("report", "--html", str(link), str(EVENTS), str(log))
            if "built without" in done.stderr:
                self.skipTest("no chart library")
            self.assertEqual((done.returncode, done.stdout, done.stderr),
                             (2, "", f"ckscribe: {link} is one of the logs. The page needs a file of its own: report --html OUT FILE...\n"))
            self.assertEqual(log.read_text(), "10:15:30 00001-001:STRTFinalize {}\n")

    def test_page_that_cannot_be_written_ends_with_1(self):
        done = ckscribe("report", "--html", "/nowhere/report.html", str(EVENTS))
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("ckscribe: ", done.stderr)


main()
