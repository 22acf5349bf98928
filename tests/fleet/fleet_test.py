"""These tests bring calls of many hosts into a real engine. They check rows, insertions, states, queries and reports.

    fleet_test.py CKSCRIBE [CLIENT_TEST_ARGUMENT...]

The further arguments are those of the tests of clients (tests/clients/client_test.py), whose events are loaded, too. Two
servers are two shards of one cluster; each test has a database of its own.
"""

import collections
import gzip
import http.server
import itertools
import json
import os
import pathlib
import random
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import urllib.request

import engine_server
from made_calls import make_calls

TOOL = str(pathlib.Path(sys.argv[1]).resolve())
CLIENT_ARGUMENTS = [str(pathlib.Path(argument).resolve()) for argument in sys.argv[2:]]
HERE = pathlib.Path(__file__).resolve().parent
SOURCE = HERE.parents[1]
SEED = int(os.environ.get("FLEET_SEED", time.time_ns() % 10**6))

SERVERS = []
databases = itertools.count()


def ckscribe(*arguments, **more):
    return subprocess.run([TOOL, *map(str, arguments)], **({"capture_output": True, "text": True, "timeout": 300} | more))


def event(number, phase="end", run="18a3f1c2d4e5f607-3e63", function="C_Sign", second=0, ns=1000, **fields):
    """Returns a line of an events file."""
    moment = f"2026-11-21T12:{second // 60 % 60:02}:{second % 60:02}.{number % 10**9:09}Z"
    line = {"event": phase, "time": moment, "ns": ns, "run": run, "pid": 71, "tid": 72, "call": number, "function": function,
            "rv": 0, "result": "CKR_OK", **fields, "in": [], "out": []}
    if phase == "start":
        for key in ("ns", "rv", "result", "out"):
            del line[key]
    return json.dumps(line, separators=(",", ":")) + "\n"


def both(number, **fields):
    return event(number, "start", **fields) + event(number, **fields)


def comparable(report):
    """Returns a report without what only files have."""
    def without_places(value):
        if isinstance(value, dict):
            return {key: without_places(one) for key, one in value.items()
                    if key not in ("file", "line", "first_file", "first_line", "last_file", "last_line", "command")}
        return [without_places(one) for one in value] if isinstance(value, list) else value

    return {key: without_places(value) for key, value in report.items()
            if key not in ("files", "unreadable", "unreadable_stretches")}


class Fleet(unittest.TestCase):
    maxDiff = 4000

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="ckscribe."))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def make_database(self, is_spread=False):
        self.database = f"test_{next(databases)}"
        self.table = "calls_all" if is_spread else "calls"
        self.server = SERVERS[0]
        engine_server.make_tables(SERVERS if is_spread else SERVERS[:1], self.database, is_spread)
        self.url = self.server.url(self.database)

    def ask(self, query):
        return self.server.rows(query, self.database)

    def count(self):
        return self.ask(f"SELECT count() FROM {self.table} FINAL")[0][0]

    def merge(self):
        for server in SERVERS if self.table == "calls_all" else SERVERS[:1]:
            for (partition,) in server.rows("SELECT DISTINCT partition FROM system.parts WHERE active AND table = 'calls' "
                                            f"AND database = '{self.database}'"):
                server.ask(f"OPTIMIZE TABLE calls PARTITION '{partition}' FINAL", self.database)

    def ship(self, *files, host="web1", state=None, **more):
        state = state or self.folder / "state"
        return ckscribe("convert", "--to", "clickhouse", "--host", host, "--state", state, "--url", self.url, *files, **more)

    def ship_well(self, *files, **more):
        done = self.ship(*files, **more)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def report(self, *arguments):
        done = ckscribe("report", "--json", *arguments)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return json.loads(done.stdout)

    def query(self, name, since=0):
        """Returns the rows of a query of share/ckscribe/clickhouse/queries/, by the names of their columns."""
        text = engine_server.query_text(name, self.table, since)
        answer = json.loads(self.server.ask(text + "\nFORMAT JSON", self.database, output_format_json_quote_64bit_integers=0))
        return answer["data"]

    def assert_like(self, actual, expected, what=""):
        """Does what assertEqual does, for long lists. Only shows their first difference."""
        for one, other in itertools.zip_longest(actual, expected):
            self.assertEqual(one, other, what)

    def file(self, name, text):
        path = self.folder / name
        path.write_text(text)
        return path


class Schema(Fleet):
    ROW = {"host": "h", "run": "r", "call": 5, "time": 1795264425123456789, "function": "C_Sign", "pid": 1}

    def insert(self, *rows):
        self.server.ask("INSERT INTO calls FORMAT JSONEachRow " + "\n".join(map(json.dumps, rows)), self.database)

    def test_end_replaces_its_start_and_repeats_in_whatever_order_they_come(self):
        start = self.ROW | {"version": 1}
        end = self.ROW | {"version": 2, "result": "CKR_OK", "ns": 7}
        for order in itertools.permutations((start, end, start, end)):
            self.make_database()
            for row in order:
                self.insert(row)
            for _ in range(2):
                self.assertEqual(self.ask("SELECT version, result, ns FROM calls FINAL"), [[2, "CKR_OK", 7]])
                self.merge()
            self.assertEqual(self.ask("SELECT count() FROM calls"), [[1]])
            self.server.ask(f"DROP DATABASE {self.database}")

    def test_rows_of_one_insertion_replace_each_other_too(self):
        self.make_database()
        self.insert(self.ROW | {"version": 2, "result": "CKR_OK", "ns": 7}, self.ROW | {"version": 1})
        self.assertEqual(self.ask("SELECT version FROM calls FINAL"), [[2]])

    def test_calls_lie_in_partitions_by_their_day_in_utc(self):
        self.make_database()
        day = 86400 * 10**9
        self.insert(*(self.ROW | {"time": moment} for moment in (20778 * day - 1, 20778 * day, 20779 * day - 1)))
        self.assertEqual(sorted(self.ask("SELECT partition, rows FROM system.parts WHERE active AND table = 'calls' AND "
                                         f"database = '{self.database}'")), [["2026-11-20", 1], ["2026-11-21", 2]])

    def test_bucket_is_that_which_the_schema_describes_and_pauses_are_counted_in(self):
        self.make_database()
        chance = random.Random(5)
        numbers = {(factor << shift) + more for shift in range(62) for factor in (1, 3) for more in (-1, 0, 1)}
        numbers = sorted({number for number in numbers if 0 < number < 2**63} | {chance.getrandbits(chance.randrange(1, 63)) + 1
                                                                              for _ in range(3000)})

        def bucket(number):
            shift = max(0, number.bit_length() - 8)
            return shift * 128 + (number >> shift)

        events = self.file("events.jsonl", "".join(event(i + 1, ns=number) for i, number in enumerate(numbers)))
        self.assertEqual(ckscribe("convert", "--to", "clickhouse", "--host", "a", "--url", self.url, events).returncode, 0)
        self.assert_like(self.ask("SELECT ns, bucket FROM calls ORDER BY ns"), [[number, bucket(number)] for number in numbers])
        # Each pause has a thread of its own.
        self.server.ask("TRUNCATE TABLE calls", self.database)
        self.insert(*(self.ROW | {"call": 2 * i + k, "tid": i, "version": 2, "time": k * number + 1, "position": k}
                      for i, number in enumerate(numbers[:1000]) for k in (0, 1)))
        pauses = self.query("pauses")[0]
        counts = collections.Counter(map(bucket, numbers[:1000]))
        self.assert_like(list(zip(pauses["buckets"], pauses["counts"])), sorted(counts.items()))
        self.assertEqual((pauses["pauses"], pauses["total_ns"], pauses["max_ns"]),
                         (1000, sum(numbers[:1000]), max(numbers[:1000])))

    def test_minute_view_counts_ends_and_counts_repeats_again(self):
        self.make_database()
        sums = "SELECT sum(calls), sum(errors), sum(ns), min(toUnixTimestamp(minute)) FROM calls_by_minute"
        end = self.ROW | {"version": 2, "result": "CKR_DEVICE_ERROR", "ns": 7}
        self.insert(self.ROW | {"version": 1}, end)
        self.assertEqual(self.ask(sums), [[1, 1, 7, 1795264425 // 60 * 60]])
        self.insert(end)
        self.assertEqual(self.ask(sums)[0][:3], [2, 2, 14])
        self.assertIn("A call that is inserted twice counts twice here", (engine_server.SCHEMA / "calls_by_minute.sql").read_text())


class State(Fleet):
    def setUp(self):
        super().setUp()
        self.make_database()
        self.events = self.folder / "events.jsonl"

    def numbers(self):
        return [row[0] for row in self.ask("SELECT call FROM calls FINAL ORDER BY call")]

    def inserted(self):
        """Returns how many rows were inserted in all, repeats included. No merge may come before this count."""
        return self.ask("SELECT count() FROM calls")[0][0]

    def test_growing_file_goes_on_where_it_was_left(self):
        self.server.ask("SYSTEM STOP MERGES")
        self.addCleanup(self.server.ask, "SYSTEM START MERGES")
        for number in range(1, 4):
            with self.events.open("a") as file:
                file.write(both(number))
            self.ship_well(self.events)
            self.assertEqual((self.numbers(), self.inserted()), (list(range(1, number + 1)), number))
        self.ship_well(self.events)
        self.assertEqual(self.inserted(), 3)

    def test_call_in_progress_is_unfinished_till_its_end_comes(self):
        self.events.write_text(event(1, "start"))
        self.ship_well(self.events)
        self.assertEqual(self.ask("SELECT version FROM calls FINAL"), [[1]])
        with self.events.open("a") as file:
            file.write(event(1))
        self.ship_well(self.events)
        for _ in range(2):
            self.assertEqual(self.ask("SELECT version, result FROM calls FINAL"), [[2, "CKR_OK"]])
            self.merge()

    def test_line_without_its_end_waits(self):
        line = event(2)
        self.events.write_text(event(1) + line[:50])
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1])
        with self.events.open("a") as file:
            file.write(line[50:])
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1, 2])

    def test_file_without_a_whole_event_waits(self):
        for text in ("", event(1)[:5], event(1)[:-1]):
            self.events.write_text(text)
            self.ship_well(self.events)
            self.assertEqual(self.numbers(), [])
        self.events.write_text(event(1))
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1])

    def test_rotation_by_renaming_loses_and_repeats_nothing(self):
        self.server.ask("SYSTEM STOP MERGES")
        self.addCleanup(self.server.ask, "SYSTEM START MERGES")
        self.events.write_text(both(1))
        self.ship_well(self.events)
        with self.events.open("a") as file:
            file.write(both(2))
        self.events.rename(self.folder / "events.jsonl.1")
        self.events.write_text(both(3))
        self.ship_well(*self.folder.glob("events.jsonl*"))
        self.assertEqual((self.numbers(), self.inserted()), ([1, 2, 3], 3))
        # The files rotate again, and the oldest is compressed.
        packed = gzip.compress((self.folder / "events.jsonl.1").read_bytes() + both(4).encode())
        (self.folder / "events.jsonl.2.gz").write_bytes(packed)
        self.events.rename(self.folder / "events.jsonl.1")
        self.events.write_text(both(5))
        for _ in range(2):
            self.ship_well(*self.folder.glob("events.jsonl*"))
            self.assertEqual((self.numbers(), self.inserted()), ([1, 2, 3, 4, 5], 5))

    def test_rotation_by_copying_and_emptying_loses_and_repeats_nothing(self):
        self.server.ask("SYSTEM STOP MERGES")
        self.addCleanup(self.server.ask, "SYSTEM START MERGES")
        self.events.write_text(both(1))
        self.ship_well(self.events)
        with self.events.open("a") as file:
            file.write(both(2))
        copy = self.folder / "events.jsonl.1"
        whole = self.events.read_text()
        # The copy is first not finished, then finished. Then the file is emptied.
        copy.write_text(whole[:len(both(1)) - 40])
        self.ship_well(copy, self.events)
        copy.write_text(whole)
        self.ship_well(copy, self.events)
        self.events.write_text("")
        self.ship_well(copy, self.events)
        self.assertEqual((self.numbers(), self.inserted()), ([1, 2], 2))
        # The new text is longer than the old one.
        self.events.write_text("".join(map(both, range(3, 9))))
        self.ship_well(copy, self.events)
        self.assertEqual((self.numbers(), self.inserted()), (list(range(1, 9)), 8))

    def test_content_that_changed_before_the_place_where_it_was_left_is_read_again(self):
        self.events.write_text(both(1) + both(2))
        self.ship_well(self.events)
        self.events.write_text(both(1) + both(3) + both(4))
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1, 2, 3, 4])

    def test_file_that_was_cut_is_read_once_as_soon_as_nobody_writes_it(self):
        self.server.ask("SYSTEM STOP MERGES")
        self.addCleanup(self.server.ask, "SYSTEM START MERGES")
        self.events.write_text("".join(map(both, range(1, 6))))
        self.ship_well(self.events)
        self.events.write_text(both(1) + both(9))
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1, 2, 3, 4, 5])
        before = time.time() - 120
        os.utime(self.events, (before, before))
        for _ in range(2):
            self.ship_well(self.events)
            self.assertEqual((self.numbers(), self.inserted()), ([1, 2, 3, 4, 5, 9], 7))

    def test_last_line_of_a_compressed_file_needs_no_end(self):
        packed = self.folder / "events.jsonl.1.gz"
        packed.write_bytes(gzip.compress((both(1) + event(2)[:-1]).encode()))
        self.ship_well(packed)
        self.assertEqual(self.numbers(), [1, 2])

    def test_state_moves_on_only_after_the_engine_has_answered(self):
        self.events.write_text(both(1))
        self.ship_well(self.events)
        before = (self.folder / "state").read_bytes()
        with self.events.open("a") as file:
            file.write(both(2))
        for url, words in ((f"http://127.0.0.1:{engine_server.free_ports(1)[0]}/", "does not answer"),
                           (self.server.url("no_such_database"), "refuses with status")):
            done = ckscribe("convert", "--to", "clickhouse", "--host", "web1", "--state", self.folder / "state", "--url", url,
                            self.events)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertIn(words, done.stderr)
            self.assertEqual((self.folder / "state").read_bytes(), before)
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1, 2])

    def test_answer_that_is_lost_repeats_the_insertion(self):
        self.events.write_text(both(1))
        target, lose = self.server.port, [True]

        class Proxy(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                body = self.rfile.read(int(self.headers["Content-Length"]))
                with urllib.request.urlopen(f"http://127.0.0.1:{target}{self.path}", body) as answer:
                    text = answer.read()
                if "INSERT" in self.path and lose.pop():
                    self.close_connection = True
                    return
                self.send_response(200)
                self.send_header("Content-Length", str(len(text)))
                self.end_headers()
                self.wfile.write(text)

            def log_message(self, *_):
                pass

        with http.server.ThreadingHTTPServer(("127.0.0.1", 0), Proxy) as proxy:
            threading.Thread(target=proxy.serve_forever, daemon=True).start()
            self.url = f"http://127.0.0.1:{proxy.server_port}/?database={self.database}"
            done = self.ship(self.events)
            self.assertEqual(done.returncode, 1)
            self.assertIn("does not answer", done.stderr)
            self.assertFalse((self.folder / "state").exists())
            lose.append(False)
            self.ship_well(self.events)
            proxy.shutdown()
        self.assertEqual(self.numbers(), [1])

    def test_state_of_another_host_is_refused(self):
        self.events.write_text(both(1))
        self.ship_well(self.events)
        done = self.ship(self.events, host="web2")
        self.assertEqual((done.returncode, done.stderr), (1, f'ckscribe: {self.folder}/state: it is the state of host "web1". '
                                                          'Name another file with --state.\n'))

    def test_damaged_state_is_said_and_a_removed_one_repeats(self):
        self.events.write_text(both(1))
        self.ship_well(self.events)
        (self.folder / "state").write_text("{")
        done = self.ship(self.events)
        self.assertEqual(done.returncode, 1)
        self.assertIn("it is no state of ckscribe", done.stderr)
        (self.folder / "state").unlink()
        self.ship_well(self.events)
        self.assertEqual(self.numbers(), [1])

    def test_second_process_does_not_use_the_same_state(self):
        import fcntl
        self.events.write_text(both(1))
        with open(self.folder / "state.lock", "w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            done = self.ship(self.events)
        self.assertEqual(done.returncode, 1)
        self.assertIn("another ckscribe convert works with this state", done.stderr)
        self.assertEqual(self.numbers(), [])

    def test_text_log_is_refused_and_events_beside_it_are_shipped(self):
        log = self.file("calls.log", "\n\n10:15:30 00001-001:STRTFinalize {}\n10:15:32 00001-001:FINIFinalize CKR_OK1clks {}\n")
        self.events.write_text(both(1))
        done = self.ship(log, self.events)
        self.assertEqual(done.returncode, 1)
        self.assertIn(f"{log}: records of a text log have no run", done.stderr)
        self.assertEqual(self.numbers(), [1])

    def test_lines_that_cannot_be_read_are_said_and_left_out(self):
        self.events.write_text(both(1) + "{\"event\":\n" + both(2))
        done = self.ship(self.events)
        self.assertEqual((done.returncode, done.stderr),
                         (0, f"ckscribe: {self.events}: 1 line cannot be read and is left out.\n"))
        self.assertEqual(self.numbers(), [1, 2])

    def test_missing_table_is_said(self):
        self.server.ask("DROP TABLE calls_by_minute", self.database)
        self.server.ask("DROP TABLE calls", self.database)
        self.events.write_text(both(1))
        done = self.ship(self.events)
        self.assertEqual(done.returncode, 1)
        self.assertIn("refuses with status", done.stderr)


class Interruption(Fleet):
    """A host writes and rotates its file while the timer's command is killed again and again."""

    def write_calls(self, rotate, count, chance):
        """Writes `count` calls in small pieces and rotates now and then."""
        number = 0
        waiting = []
        while number < count:
            piece = ""
            for _ in range(chance.randrange(1, 60)):
                number += 1
                piece += event(number, "start", second=number // 50)
                waiting.append(event(number, second=number // 50))
                if chance.random() < 0.7:
                    piece += waiting.pop(chance.randrange(len(waiting)))
            with open(self.folder / "events.jsonl", "a") as file:
                file.write(piece)
            if chance.random() < 0.05:
                rotate()
            time.sleep(0.003)
        with open(self.folder / "events.jsonl", "a") as file:
            file.write("".join(waiting))
        self.written = number

    def older(self):
        return sorted(self.folder.glob("events.jsonl.*"), key=lambda path: -int(path.suffix[1:]))

    def rename(self):
        for path in self.older():
            path.rename(path.with_suffix(f".{int(path.suffix[1:]) + 1}"))
        (self.folder / "events.jsonl").rename(self.folder / "events.jsonl.1")

    def copy_and_empty(self):
        # logrotate does the same with copytruncate. The writer is the same thread here: nothing is written between
        # copying and emptying. Therefore the rotation itself can lose nothing.
        for path in self.older():
            path.rename(path.with_suffix(f".{int(path.suffix[1:]) + 1}"))
        shutil.copy(self.folder / "events.jsonl", self.folder / "events.jsonl.1")
        os.truncate(self.folder / "events.jsonl", 0)

    def check(self, rotate, is_spread):
        self.make_database(is_spread)
        chance = random.Random(SEED)
        (self.folder / "events.jsonl").write_text("")
        writer = threading.Thread(target=self.write_calls, args=(rotate, 6000, random.Random(SEED + 1)))
        writer.start()
        killed = 0
        try:
            while writer.is_alive() or killed < 10:
                command = [TOOL, "convert", "--to", "clickhouse", "--host", "web1", "--state", str(self.folder / "state"), "--url",
                           self.url, *map(str, self.folder.glob("events.jsonl*"))]
                process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                time.sleep(chance.random() ** 2 * 0.2)
                process.send_signal(signal.SIGKILL)
                process.communicate()
                killed += process.returncode == -signal.SIGKILL
        finally:
            writer.join()
        self.ship_well(*self.folder.glob("events.jsonl*"))
        figures = f"SELECT count(), uniqExact(call), min(call), max(call), countIf(version = 2) FROM {self.table} FINAL"
        for _ in range(2):
            self.assertEqual(self.ask(figures), [[self.written, self.written, 1, self.written, self.written]], f"seed {SEED}")
            self.merge()

    def test_killed_insertions_of_files_that_are_renamed_lose_and_double_nothing(self):
        self.check(self.rename, False)

    def test_killed_insertions_of_files_that_are_copied_and_emptied_lose_and_double_nothing(self):
        self.check(self.copy_and_empty, False)

    def test_killed_insertions_into_two_shards_lose_and_double_nothing(self):
        self.check(self.rename, True)


class EverySystemCall(Fleet):
    """The timer's command is killed in front of each system call that reports or changes something."""

    CALLS = "flock,sendto,recvfrom,write,fsync,rename"

    def run_under_strace(self, host, *options):
        """Runs the command for a host that was shipped in part: it ships the rest of a rotated file, and a new file."""
        folder = self.folder / host
        folder.mkdir()
        events = folder / "events.jsonl"
        events.write_text(both(1))
        self.ship_well(events, host=host, state=folder / "state")
        with events.open("a") as file:
            file.write(both(2))
        events.rename(folder / "events.jsonl.1")
        events.write_text(both(3) + event(4, "start"))
        return subprocess.run(["strace", "-qq", *options, TOOL, "convert", "--to", "clickhouse", "--host", host, "--state",
                               folder / "state", "--url", self.url, *sorted(folder.glob("events*"))],
                              capture_output=True, text=True, timeout=120)

    def test_run_that_is_killed_at_any_step_loses_and_doubles_nothing(self):
        self.make_database()
        calls = re.findall(r"(?m)^(\w+)\(", self.run_under_strace("whole", "-e", f"trace={self.CALLS}").stderr)
        # The command asks for the table and makes two insertions. The state moves on behind each insertion.
        for call, least in (("flock", 1), ("sendto", 3), ("recvfrom", 3), ("write", 2), ("fsync", 2), ("rename", 2)):
            self.assertGreaterEqual(calls.count(call), least, call)
        hosts = ["whole"]
        killed = 0
        for step, call in enumerate(calls):
            hosts.append(f"killed-{step}")
            number = calls[:step + 1].count(call)
            done = self.run_under_strace(hosts[-1], "-o", "/dev/null", "-e", f"inject={call}:signal=KILL:when={number}")
            # An answer may come in fewer pieces than it did before.
            self.assertIn(done.returncode, (-signal.SIGKILL, 0), (call, number, done.stderr))
            killed += done.returncode != 0
            folder = self.folder / hosts[-1]
            self.assertEqual(json.loads((folder / "state").read_text())["host"], hosts[-1], (call, number))
            self.ship_well(*folder.glob("events*"), host=hosts[-1], state=folder / "state")
        self.assertGreaterEqual(killed, 10)
        for _ in range(2):
            self.assert_like(self.ask("SELECT host, groupArray((call, version)) FROM (SELECT host, call, version FROM calls FINAL "
                                      "ORDER BY host, call) GROUP BY host ORDER BY host"),
                             [[host, [[1, 2], [2, 2], [3, 2], [4, 1]]] for host in sorted(hosts)])
            self.merge()


class Reports(Fleet):
    def load(self, paths):
        for path in paths:
            done = ckscribe("convert", "--to", "clickhouse", "--host", path.stem, "--url", self.url, path)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def check_report(self, expected):
        report = self.report("--clickhouse", self.url)
        self.assertIsNone(report["unreadable"])
        self.assertEqual(set(report), set(expected))
        for key, value in comparable(expected).items():
            if isinstance(value, list):
                self.assert_like(comparable(report)[key], value, key)
            else:
                self.assertEqual(comparable(report)[key], value, key)

    def test_report_of_events_that_clients_wrote_is_that_of_the_files(self):
        if not CLIENT_ARGUMENTS:
            self.skipTest("no arguments for the tests of clients")
        kept = self.folder / "kept"
        kept.mkdir()
        for name in ("pkcs11_tool", "pykcs11"):
            done = subprocess.run(["/usr/bin/python3", "-B", str(SOURCE / f"tests/clients/{name}_test.py"), *CLIENT_ARGUMENTS],
                                  env=os.environ | {"KEPT_EVENTS": str(kept)}, capture_output=True, text=True, timeout=300)
            self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        paths = sorted(kept.glob("*.jsonl"))
        self.assertEqual(len(paths), 4)
        self.make_database(is_spread=True)
        self.load(paths)
        expected = self.report(*paths)
        for key in ("calls", "errors", "functions", "results", "slots", "keys"):
            self.assertTrue(expected[key], key)
        self.check_report(expected)

    def test_text_of_a_report_is_that_of_the_files_without_places_and_commands(self):
        self.make_database()
        paths = make_calls(self.folder, hosts=14, calls=3000)
        self.load(paths)
        texts = []
        for arguments in (map(str, paths), ("--clickhouse", self.url)):
            done = ckscribe("report", *arguments)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            texts.append(re.sub(r"(?m)^    (ckscribe show|clickhouse-client) .*", "", done.stdout))
        of_files, of_engine = texts
        self.assertEqual(re.findall(r"(?m).* $", of_engine), [])
        self.assertGreater(of_files.count(str(self.folder)), 20)
        self.assert_like(of_engine.splitlines(), re.sub(rf"  {self.folder}/host-\d+\.jsonl:\d+", "", of_files).splitlines())

    def test_reports_and_queries_of_200000_calls_of_200_hosts_have_the_figures_of_the_files(self):
        self.make_database(is_spread=True)
        paths = make_calls(self.folder, hosts=200, calls=200_000)
        began = time.monotonic()
        self.load(paths)
        print(f"\n200 insertions of 1,000 calls: {time.monotonic() - began:.1f} s", file=sys.stderr)
        expected = self.report(*paths)
        self.assertEqual(self.count(), expected["calls"])
        for key in comparable(expected):
            self.assertTrue(expected[key] or key == "open_sessions", key)
        self.check_report(expected)
        # Both servers have a part, and no call lies on both.
        shares = [server.rows("SELECT count() FROM calls FINAL", self.database)[0][0] for server in SERVERS]
        self.assertEqual(sum(shares), expected["calls"])
        self.assertGreater(min(shares), expected["calls"] / 4)
        # Some hosts are loaded again, because their state was lost.
        self.load(paths[3:8])
        self.check_report(expected)
        self.merge()
        self.check_report(expected)

        self.check_queries(paths, expected)
        self.check_since(paths)

    def test_report_of_calls_that_came_bit_by_bit_is_that_of_the_files(self):
        self.make_database()
        chance = random.Random(SEED)
        files = []
        for source in make_calls(self.folder, hosts=3, calls=4500):
            folder = self.folder / source.stem
            folder.mkdir()
            log, state = folder / "events.jsonl", folder / "state"
            rest = source.read_bytes()
            while rest:
                size = chance.randrange(1, 300_000)
                is_rotated = chance.random() < 0.4
                if is_rotated:
                    # Programs write whole lines.
                    size = rest.find(b"\n", size) + 1 or len(rest)
                with log.open("ab") as file:
                    file.write(rest[:size])
                rest = rest[size:]
                before = state.read_bytes() if state.exists() else b""
                self.ship_well(*folder.glob("events*"), host=source.stem, state=state)
                if chance.random() < 0.3:
                    # The files are as if the command had been killed before the state moved on.
                    state.write_bytes(before)
                if is_rotated and rest:
                    for number in range(len(list(folder.glob("events.jsonl.*"))), 0, -1):
                        old = folder / f"events.jsonl.{number}"
                        if old.exists():
                            (folder / f"events.jsonl.{number + 1}.gz").write_bytes(gzip.compress(old.read_bytes()))
                            old.unlink()
                        else:
                            old.with_suffix(f".{number}.gz").rename(folder / f"events.jsonl.{number + 1}.gz")
                    log.rename(folder / "events.jsonl.1")
            files += sorted(folder.glob("events*"))
        expected = self.report(*files)
        self.assertGreater(len(files), 3, f"seed {SEED}")
        self.assertGreater(expected["unfinished"], 0)
        self.check_report(expected)

    def check_queries(self, paths, expected):
        errors = [row for row in expected["results"] if row["result"] != "CKR_OK"]
        ranked = [row for row in self.query("errors") if row["result"] != "CKR_OK"]
        self.assertEqual([row["calls"] for row in ranked], sorted((row["count"] for row in errors), reverse=True))
        self.assertEqual({(row["function"], row["result"], row["rv"], row["calls"]) for row in ranked},
                         {(row["function"], row["result"], row["rv"], row["count"]) for row in errors})
        self.assertEqual(len(self.query("unfinished")), expected["unfinished"])

        latency = {(row["host"], row["function"]): row for row in self.query("latency")}
        keys = self.query("keys")
        outliers = self.query("outliers")
        self.assertEqual(outliers[0]["host"], "host-007")
        for number in (0, 7, 13, 199):
            host = paths[number].stem
            mine = self.report("--top", 100000, paths[number])
            for function in mine["functions"]:
                row = latency[host, function["function"]]
                for key in ("calls", "errors", "unfinished", "total_ns", "max_ns", "p50_ns", "p95_ns", "p99_ns"):
                    self.assertEqual(row[key], function[key] or 0, (host, key))
            self.assert_like([[row["pid"], row["object"], row["label"] or None, row["id"] or None, row["class"] or None,
                               row["operations"], dict(zip(row["mechanisms"], row["counts"]))]
                              for row in keys if row["host"] == host],
                             [[row[key] for key in ("process", "object", "label", "id", "class", "operations", "mechanisms")]
                              for row in mine["keys"]])
            for row in outliers:
                if row["host"] == host:
                    figures = latency[host, row["function"]]
                    self.assertEqual([row[key] for key in ("calls", "errors", "p50_ns")],
                                     [figures[key] for key in ("calls", "errors", "p50_ns")])
        for row in outliers[:20]:
            medians = sorted(one["p50_ns"] for (_, function), one in latency.items()
                             if function == row["function"] and one["calls"] >= 10)
            self.assertEqual(row["middle_ns"], medians[(len(medians) + 1) // 2 - 1])

    def check_since(self, paths):
        """Expects figures since a moment to be those of the calls that began then."""
        moment = 1795228200 * 10**9  # 02:30
        ends, starts = {}, {}
        for path in paths:
            for line in path.read_text().splitlines():
                one = json.loads(line)
                (ends if one["event"] == "end" else starts)[path.stem, one["run"], one["call"]] = one
        counts = {}
        calls = 0
        for key, start in starts.items():
            end = ends.get(key, {})
            is_since = start["time"] >= "2026-11-21T02:30:00"
            calls += is_since
            counts.setdefault((start["function"], end.get("result", "")), [0, 0])[is_since] += 1
        report = self.report("--clickhouse", self.url, "--since", "2026-11-21T02:30Z")
        self.assertEqual(report["calls"], calls)
        self.assertEqual({(row["function"], row["result"]): [row["before"], row["since"]]
                          for row in self.query("changes", moment)}, counts)


class Shippers(Fleet):
    def test_command_of_the_service_inserts_what_is_in_the_files_and_in_those_of_their_rotations(self):
        self.make_database()
        (self.folder / "state").mkdir()
        self.file("events-71.jsonl", both(1))
        self.file("events-72.jsonl.1", both(2, run="other"))
        (self.folder / "events-72.jsonl.2.gz").write_bytes(gzip.compress(both(3, run="older").encode()))
        text = (SOURCE / "share/examples/ckscribe-ship.service").read_text()
        for old, new in (("/var/log/ckscribe", str(self.folder)), ("http://clickhouse.example:8123/", self.url), ("%H", "web1")):
            self.assertIn(old, text)
            text = text.replace(old, new)
        words = shlex.split(re.search(r"(?m)^ExecStart=(.*)", text)[1])
        environment = os.environ | {"STATE_DIRECTORY": str(self.folder / "state"), "PATH": f"{pathlib.Path(TOOL).parent}:/usr/bin:/bin"}
        for _ in range(2):
            done = subprocess.run(words, env=environment, capture_output=True, text=True, timeout=60)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertEqual(self.ask("SELECT host, call FROM calls FINAL ORDER BY call"), [["web1", 1], ["web1", 2], ["web1", 3]])
        self.assertTrue((self.folder / "state/events.state").is_file())

    def test_events_that_rsyslog_ships_arrive_whole_and_count_once(self):
        self.make_database()
        port, = engine_server.free_ports(1)
        lines = [event(number, label="\u00fc" * (number % 50)) for number in range(1, 2001)]
        lines[1000] = event(1001, label="x" * 100_000)
        events = self.file("events-71.jsonl", "")
        received = self.folder / "fleet"
        daemons = []
        for name, changes in (("collector", {"/var/log/ckscribe-fleet": str(received)}),
                              ("host", {"/var/log/ckscribe": str(self.folder), "collector.example": "127.0.0.1"})):
            text = (SOURCE / f"share/examples/rsyslog-{name}.conf").read_text()
            for old, new in (changes | {"10514": str(port)}).items():
                self.assertIn(old, text)
                text = text.replace(old, new)
            work = self.folder / f"{name}.work"
            work.mkdir()
            text = f'global(workDirectory="{work}" maxMessageSize="1m" localHostname="web7")\n' + text
            configuration = self.file(f"{name}.conf", text)
            daemon = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", "/usr/sbin/rsyslogd", "-n", "-f", configuration, "-i",
                                       self.folder / f"{name}.pid"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.addCleanup(daemon.wait)
            self.addCleanup(daemon.terminate)
            daemons.append(daemon)
        time.sleep(1)
        for begin in range(0, len(lines), 500):
            with events.open("a") as file:
                file.write("".join(lines[begin:begin + 500]))
            time.sleep(0.2)
        path = received / "web7/events.jsonl"
        for _ in range(600):
            if path.exists() and path.read_bytes().count(b"\n") >= len(lines):
                break
            self.assertEqual([daemon.poll() for daemon in daemons], [None, None])
            time.sleep(0.1)
        self.assert_like(path.read_text().splitlines(keepends=True), lines)
        self.ship_well(path, host="web7")
        self.assertEqual(self.ask("SELECT count(), uniqExact(call) FROM calls FINAL"), [[2000, 2000]])


class WrongUse(Fleet):
    def test_report_takes_files_or_a_server(self):
        self.make_database()
        for arguments, words in ((["--clickhouse", self.url, "a.log"], "takes no FILE"), ([], "FILE"),
                                 (["--clickhouse", self.url, "--html", "x"], "--html needs files"),
                                 (["--clickhouse", self.url, "--since", "never"], "not a moment"),
                                 (["--since", "1h", "a.log"], "--since belongs to --clickhouse")):
            done = ckscribe("report", *arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertIn(words, done.stderr)

    def test_report_of_an_empty_table_is_empty(self):
        self.make_database()
        report = self.report("--clickhouse", self.url)
        self.assertEqual((report["calls"], report["threads"], report["first_time"], report["functions"], report["unreadable"]),
                         (0, 0, None, [], None))

    def test_report_of_a_server_without_table_says_so(self):
        done = ckscribe("report", "--clickhouse", SERVERS[0].url("default"))
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("refuses with status", done.stderr)


def main():
    with tempfile.TemporaryDirectory(prefix="ckscribe.") as folder:
        SERVERS.extend(engine_server.start_servers(folder, 2))
        try:
            program = unittest.main(argv=[sys.argv[0], "-v", *os.environ.get("FLEET_TESTS", "").split()], exit=False)
        finally:
            for server in SERVERS:
                server.stop()
    sys.exit(not program.result.wasSuccessful())


main()
