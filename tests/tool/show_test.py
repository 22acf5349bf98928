"""`ckscribe show` shows, selects and follows calls."""
import gzip
import lzma
import os
import pathlib
import pty
import re
import select
import subprocess
import tempfile
import time
import unittest

from made_logs import make_logs
from tool_test import ARGUMENTS, TOOL, ckscribe, main

FOLDER, EXPECTED = make_logs(ARGUMENTS[0], "--calls", "5000")
NEW, OLD, EVENTS = (FOLDER / name for name in ("new.log", "old.log", "events.jsonl"))



def read_terminal(descriptor):
    """Returns what is written to the other side, until the other side is closed."""
    text = b""
    try:
        while piece := os.read(descriptor, 65536):
            text += piece
    except OSError:  # the other side is closed
        pass
    os.close(descriptor)
    return text.decode()


LOG = """
10:15:30 00001-001:STRTLogin {Sesn=5 User=1 PIN="********" }
10:15:31 00001-001:FINILogin ***CKR_PIN_INCORRECT***1clks {}

10:15:32 00001--03:STRTSign {Sesn=6 "data" }
10:15:33 00001--03:FINISign CKR_OK1clks {"signature" }

23:00:00 00002-001:STRTDestroyObject {Sesn=7 Obj=9 }
01:00:00 00002-001:FINIDestroyObject CKR_OK1clks {}

01:00:01 00002-001:STRTFinalize {}"""


def show(*arguments, **options):
    done = ckscribe("show", *map(str, arguments), **options)
    assert done.returncode == 0 and done.stderr == "", (done.returncode, done.stderr)
    return done.stdout.splitlines()


def shown(*arguments, log=LOG):
    """Returns the function names of the calls of LOG that are shown."""
    return [re.search(r" (CA?_\w+)\(", line)[1] for line in show(*arguments, "-", input=log)]


class Lines(unittest.TestCase):
    def test_each_call_is_one_line_with_inputs_and_result(self):
        self.assertEqual(show("-", input=LOG), [
            '10:15:30 1 C_Login(session=5, user=1, PIN=********) = CKR_PIN_INCORRECT',
            '10:15:32 -3 C_Sign(session=6, "data") = CKR_OK {"signature"}',
            '23:00:00 1 C_DestroyObject(session=7, object=9) = CKR_OK',
            '01:00:01 1 C_Finalize() = ?',
        ])

    def test_every_call_of_every_format_is_shown_once(self):
        for log in (NEW, OLD, EVENTS):
            with self.subTest(log.name):
                lines = show("--utc", log)
                self.assertEqual(len(lines), EXPECTED["calls"])
                self.assertEqual(sum(line.endswith(" = ?") for line in lines), EXPECTED["unfinished"])


    def test_lines_have_colors_on_a_terminal_unless_NO_COLOR_is_set(self):
        for environment, is_colored in (({}, True), ({"NO_COLOR": "1"}, False)):
            with self.subTest(environment):
                ours, theirs = pty.openpty()
                environment = {key: value for key, value in os.environ.items() if key != "NO_COLOR"} | environment
                process = subprocess.Popen([TOOL, "show", "--errors", "-"], env=environment, stdin=subprocess.PIPE, stdout=theirs)
                os.close(theirs)
                process.stdin.write(LOG.encode())
                process.stdin.close()
                text = read_terminal(ours)
                self.assertEqual(process.wait(60), 0)
                name, bad = ("\x1b[1mC_Login\x1b[0m", "\x1b[31mCKR_PIN_INCORRECT\x1b[0m") if is_colored else ("C_Login", "CKR_PIN_INCORRECT")
                self.assertIn(f"{name}(session=5, user=1, PIN=********) = {bad}\r\n", text)


    def test_utc_changes_the_times_of_each_format_and_adds_no_parts_of_a_second(self):
        old = "\nCommand(Finalize, None, End, CKR_OK) PID:  7  Time:  Sun Nov 15 00:15:32 2026\n // 7 clock cycles\n{\n}\n"
        event = ('{"event":"end","time":"2026-11-21T12:33:45.678Z","ns":5,"run":"a-1","pid":1,"tid":2,"call":3,"function":"C_Sign",'
                 '"rv":0,"result":"CKR_OK","in":[],"out":[]}\n')
        for words, times in (([], ["01:15:31", "00:15:32", "18:03:45.678"]), (["--utc"], ["19:45:31", "18:45:32", "12:33:45.678"])):
            lines = show(*words, "-", input="01:15:31 00001-001:FINILogout CKR_OK1clks {}\n" + old + event,
                         environment={"TZ": "XXX-05:30"})
            self.assertEqual([line.split()[0] for line in lines], times)


class Filters(unittest.TestCase):
    def test_filters_select_and_combine(self):
        for arguments, functions in (
            (["--function", "C_Login,C_Finalize"], ["C_Login", "C_Finalize"]),
            (["--errors"], ["C_Login"]),
            (["--result", "CKR_PIN_INCORRECT"], ["C_Login"]),
            (["--result", "CKR_OK", "--process", "2"], ["C_DestroyObject"]),
            (["--process", "00001,3"], ["C_Login", "C_Sign"]),
            (["--thread", "-03"], ["C_Sign"]),
            (["--thread=1"], ["C_Login", "C_DestroyObject", "C_Finalize"]),
            (["--session", "5,0x7"], ["C_Login", "C_DestroyObject"]),
            (["--object", "9"], ["C_DestroyObject"]),
            (["--unfinished"], ["C_Finalize"]),
            (["--errors", "--process", "2"], []),
        ):
            with self.subTest(arguments):
                self.assertEqual(shown(*arguments), functions)

    def test_times_count_from_the_logs_last_record_and_its_day(self):
        for arguments, functions in (
            (["--last", "10s"], ["C_Finalize"]),
            (["--last", "3h"], ["C_DestroyObject", "C_Finalize"]),
            (["--since", "01:00"], ["C_Finalize"]),
            (["--since", "180m"], ["C_DestroyObject", "C_Finalize"]),
            (["--since", "2026-11-20T10:15:32", "--until", "2026-11-20T23:00:00"], ["C_Sign", "C_DestroyObject"]),
            (["--until", "2026-11-20T10:15:30"], ["C_Login"]),
            (["--since", "2026-11-21"], ["C_Finalize"]),
        ):
            with self.subTest(arguments):
                self.assertEqual(shown("--date", "2026-11-21", *arguments), functions)

    def test_last_counts_from_the_end_of_a_long_call(self):
        def event(call, minute, ns):
            return (f'{{"event":"end","time":"2026-11-21T12:{minute:02}:00Z","ns":{ns},"run":"a-1","pid":1,"tid":2,"call":{call},'
                    f'"function":"C_Sign","rv":0,"result":"CKR_OK","in":[],"out":[]}}\n')

        log = event(1, 9, 5) + event(2, 11, 5) + event(3, 10, 10 * 60 * 10**9)
        self.assertEqual([line[3:5] for line in show("--utc", "--last", "10m", "-", input=log)], ["11", "10"])

    def test_option_slower_selects_by_the_durations_of_events(self):
        median = EXPECTED["functions"]["C_Sign"]["p50_ns"]
        lines = show("--function", "C_Sign", "--slower", f"{median}ns", EVENTS)
        count = EXPECTED["functions"]["C_Sign"]["calls"] - EXPECTED["functions"]["C_Sign"]["unfinished"]
        self.assertAlmostEqual(len(lines), count // 2, delta=1)

    def test_option_slower_says_once_that_a_text_log_has_no_durations(self):
        done = ckscribe("show", "--slower", "1ns", str(NEW))
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        self.assertEqual(done.stderr.count("\n"), 1)
        self.assertIn("Text logs hold no durations", done.stderr)

    def test_option_context_shows_calls_of_the_same_thread_before_and_behind(self):
        log = "".join(f"10:15:{i:02} 00001-{thread:03}:FINI{name} {result}1clks {{}}\n" for i, (thread, name, result) in enumerate([
            (1, "Initialize", "CKR_OK"), (1, "InitPIN", "CKR_OK"), (2, "SetPIN", "CKR_OK"), (1, "Login", "***CKR_PIN_LOCKED***"),
            (2, "CloseSession", "CKR_OK"), (1, "Logout", "CKR_OK"), (1, "Finalize", "CKR_OK")]))
        self.assertEqual(shown("--errors", "--context", "1", log=log), ["C_InitPIN", "C_Login", "C_Logout"])

    def test_records_are_printed_as_they_stand_in_the_log(self):
        lines = LOG.split("\n")
        self.assertEqual(show("--records", "--function", "C_Sign", "-", input=LOG), lines[3:6])
        text = ckscribe("show", "--records", str(OLD)).stdout
        self.assertEqual(sorted(text.split("Command(")), sorted((OLD.read_text()[1:] + "\n").split("Command(")))

    def test_unknown_name_gets_a_message_with_the_nearest_name(self):
        done = ckscribe("show", "--function", "Sign,C_Login,C_Lgin", "--result", "PIN_INCORRECT,CKR_UNKNOWN,CKR_OKAY", "-", input=LOG)
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        self.assertEqual(done.stderr.splitlines(), [
            'ckscribe: "Sign" is no function that is known here. The nearest one is C_Sign.',
            'ckscribe: "C_Lgin" is no function that is known here. The nearest one is C_Login.',
            'ckscribe: "PIN_INCORRECT" is no result that is known here. The nearest one is CKR_PIN_INCORRECT.',
            'ckscribe: "CKR_OKAY" is no result that is known here. The nearest one is CKR_OK.'])

    def test_arguments_that_make_no_sense_are_wrong_use(self):
        for arguments in (["--slower", "5"], ["--last", "soon"], ["--since", "25:00"], ["--process", "x"], ["--date", "x"]):
            with self.subTest(arguments):
                self.assertEqual(ckscribe("show", *arguments, str(NEW)).returncode, 2)


class Follower:
    def __init__(self, *arguments, **options):
        self.process = subprocess.Popen([TOOL, "show", "-f", *map(str, arguments)], **options, stdout=subprocess.PIPE)
        self.text = b""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def lines(self, count, seconds=60):
        """Returns all lines so far, at least `count` of them unless the time is over."""
        end = time.monotonic() + seconds
        while self.text.count(b"\n") < count and time.monotonic() < end:
            if select.select([self.process.stdout], [], [], 0.1)[0]:
                self.text += os.read(self.process.stdout.fileno(), 65536)
        return self.text.decode().splitlines()


def call(process, function, is_start):
    return f"\n\n10:15:30 {process:05}-001:STRT{function} {{}}" if is_start else f"\n10:15:30 {process:05}-001:FINI{function} CKR_OK1clks {{}}"


class Following(unittest.TestCase):
    def test_calls_are_shown_once_as_they_come_across_rotation_and_truncation(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            path.write_text(call(1, "Initialize", True) + call(1, "Initialize", False) + call(2, "Finalize", True))
            with Follower(path) as follower:
                self.assertEqual(follower.lines(1)[0], "10:15:30 1 C_Initialize() = CKR_OK")
                with open(path, "a") as log:
                    log.write(call(2, "Finalize", False)[:20])
                    log.flush()
                    time.sleep(0.3)
                    log.write(call(2, "Finalize", False)[20:])
                self.assertEqual(follower.lines(2)[1:], ["10:15:30 1 C_Finalize() = CKR_OK"])
                path.rename(path.with_suffix(".log.1"))
                path.write_text(call(3, "Logout", True).replace("{}", "{Sesn=4 }") + call(3, "Logout", False))
                self.assertEqual(follower.lines(3)[2:], ["10:15:30 1 C_Logout(session=4) = CKR_OK"])
                with open(path, "w") as log:
                    log.write(call(4, "Terminate", False))
                self.assertEqual(follower.lines(4)[3:], ["10:15:30 1 C_Terminate() = CKR_OK"])

    def test_call_in_progress_is_shown_after_a_second(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            path.write_text(call(1, "Initialize", True))
            with Follower(path) as follower:
                began = time.monotonic()
                self.assertEqual(follower.lines(1), ["10:15:30 1 C_Initialize() = ?"])
                self.assertGreater(time.monotonic() - began, 0.9)
                self.assertEqual(len(follower.lines(2, seconds=1.5)), 1)



    def test_rotated_files_compressed_or_not_are_shown_before_the_file_that_grows(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            path.with_name("calls.log.2.gz").write_bytes(gzip.compress(call(2, "Finalize", True).encode()))
            path.with_name("calls.log.1").write_text(call(2, "Finalize", False))
            path.write_text(call(1, "Initialize", False))
            with Follower(path, path.with_name("calls.log.1"), path.with_name("calls.log.2.gz")) as follower:
                self.assertEqual(follower.lines(2), ["10:15:30 1 C_Finalize() = CKR_OK", "10:15:30 1 C_Initialize() = CKR_OK"])

    def test_compressed_file_is_shown_and_then_the_file_that_takes_its_place(self):
        for packed in (gzip.compress, lzma.compress):
            with tempfile.TemporaryDirectory() as folder, self.subTest(packed.__module__):
                path = pathlib.Path(folder, "calls.log.1.gz")
                path.write_bytes(packed((call(2, "Finalize", True) + call(1, "Initialize", False)).encode()))
                with Follower(path) as follower:
                    self.assertEqual(follower.lines(1)[:1], ["10:15:30 1 C_Initialize() = CKR_OK"])
                    # Rotation renames the file that it has packed.
                    new = path.with_name("new")
                    new.write_bytes(packed(call(2, "Finalize", False).encode()))
                    new.rename(path)
                    self.assertEqual([line for line in follower.lines(2) if not line.endswith("?")][1:],
                                     ["10:15:30 1 C_Finalize() = CKR_OK"])

    def test_standard_input_is_followed_to_its_end(self):
        with Follower("-", stdin=subprocess.PIPE) as follower:
            follower.process.stdin.write((call(1, "Initialize", False) + call(2, "Finalize", True)).encode())
            follower.process.stdin.flush()
            self.assertEqual(follower.lines(2), ["10:15:30 1 C_Initialize() = CKR_OK", "10:15:30 1 C_Finalize() = ?"])
            follower.process.stdin.write((call(3, "Logout", True)).encode())
            follower.process.stdin.close()
            # A call that was shown in progress is not shown again.
            self.assertEqual(follower.lines(3)[2:], ["10:15:30 1 C_Logout() = ?"])
            self.assertEqual(follower.process.wait(60), 0)
            self.assertEqual(follower.lines(4, seconds=0.5)[3:], [])

    def test_fifo_is_followed_from_writer_to_writer(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            os.mkfifo(path)
            with Follower(path) as follower:
                for count, function in enumerate(("Initialize", "Finalize"), 1):
                    with open(path, "w") as log:
                        log.write(call(1, function, False) + "\n")
                    self.assertEqual(follower.lines(count)[count - 1:], [f"10:15:30 1 C_{function}() = CKR_OK"])

    def test_missing_file_gets_a_message_and_is_shown_when_it_appears(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            with Follower(path, stderr=subprocess.PIPE) as follower:
                self.assertEqual(follower.process.stderr.readline().decode(),
                                 f"ckscribe: {path}: No such file or directory. It is read as soon as that is possible.\n")
                path.write_text(call(1, "Initialize", False))
                self.assertEqual(follower.lines(1), ["10:15:30 1 C_Initialize() = CKR_OK"])
                follower.process.stderr.close()

    def test_directory_cannot_be_followed(self):
        done = ckscribe("show", "-f", "/")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (1, "", "ckscribe: /: Is a directory.\n"))

    def test_times_are_selected_in_each_log_by_its_own_last_record(self):
        def log(hour):
            return "".join(f"\n{hour}:{minute}:00 00001-001:FINIFinalize CKR_OK1clks {{}}" for minute in (10, 40, 50))

        with tempfile.TemporaryDirectory() as folder:
            one, other = (pathlib.Path(folder, name) for name in ("one.log", "other.log"))
            one.write_text(log(10))
            other.write_text(log(15))
            with Follower("--last", "15m", one, other) as follower:
                self.assertEqual(sorted(line[:8] for line in follower.lines(4)), ["10:40:00", "10:50:00", "15:40:00", "15:50:00"])
                self.assertEqual(len(follower.lines(5, seconds=0.5)), 4)

    def test_log_that_says_no_time_yet_counts_from_now(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            path.touch()
            early = "\n00:00:00 00009-001:FINIInitialize CKR_OK1clks {}"
            late = "\n23:59:59 00009-001:FINIFinalize CKR_OK1clks {}"
            for words in ([], ["--utc"]):
                path.write_text("")
                with Follower(*words, "--since", "00:00:01", path, env=os.environ | {"TZ": "UTC"}) as follower:
                    time.sleep(0.3)
                    path.write_text(early + late)
                    self.assertEqual(follower.lines(1), ["23:59:59 1 C_Finalize() = CKR_OK"])
            with Follower("--since", "00:00:01", "-", stdin=subprocess.PIPE, env=os.environ | {"TZ": "UTC"}) as follower:
                follower.process.stdin.write((early + late).encode())
                follower.process.stdin.close()
                self.assertEqual(follower.process.wait(60), 0)
                self.assertEqual(follower.lines(1), ["23:59:59 1 C_Finalize() = CKR_OK"])

    def test_fifo_is_followed_with_times(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            os.mkfifo(path)
            with Follower("--utc", "--last", "24h", path, env=os.environ | {"TZ": "UTC"}) as follower:
                with open(path, "w") as log:
                    log.write(time.strftime("\n%H:%M:%S 00009-001:FINIFinalize CKR_OK1clks {}\n", time.gmtime()))
                    log.flush()
                    # The writer is still there.
                    self.assertEqual([line[8:] for line in follower.lines(1)], [" 1 C_Finalize() = CKR_OK"])

    def test_records_and_filters_work_while_following(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "calls.log")
            path.write_text(LOG)
            with Follower("--records", "--errors", path) as follower:
                self.assertEqual(follower.lines(3), LOG.split("\n")[0:3])
                failed = "\n10:15:33 00001--03:FINISign ***CKR_DEVICE_ERROR***1clks {}"
                with open(path, "a") as log:
                    log.write(call(8, "Finalize", False) + failed)
                self.assertEqual(follower.lines(4)[3:], [failed[1:]])


class Progress(unittest.TestCase):
    """The bar appears on a terminal, which standard error is here."""

    def run_on_terminal(self, *arguments, environment=None, feed=None):
        """Returns what the terminal got. Expects that the command ends with 0."""
        ours, theirs = pty.openpty()
        process = subprocess.Popen([TOOL, *map(str, arguments)], env=os.environ | (environment or {}), stderr=theirs,
                                   stdout=subprocess.DEVNULL, stdin=subprocess.PIPE)
        os.close(theirs)
        if feed:
            feed(process.stdin)
        process.stdin.close()
        text = read_terminal(ours)
        self.assertEqual(process.wait(100), 0)
        return text

    def test_bar_shows_share_rate_and_time_left_and_is_removed_at_the_end(self):
        for command in (["report"], ["show"], ["convert", "--to", "csv"], ["diff", NEW]):
            with self.subTest(command[0]):
                text = self.run_on_terminal(*command, NEW, environment={"CKSCRIBE_PROGRESS_AFTER_MS": "0"})
                bar = re.match(r"\r\x1b\[K\[(=*) *\] +(\d+) %  \d+ MB/s  \d+:\d\d left", text)
                self.assertTrue(bar, text)
                self.assertAlmostEqual(len(bar[1]) / 30, int(bar[2]) / 100, delta=0.04)
                self.assertTrue(text.endswith("\r\x1b[K"), text)

    def test_bar_appears_only_after_a_second(self):
        self.assertEqual(self.run_on_terminal("report", NEW, environment={"CKSCRIBE_PROGRESS_AFTER_MS": "3600000"}), "")

        def feed(pipe):
            pipe.write(NEW.read_bytes() * 3)
            pipe.flush()
            # The command has begun by now.
            time.sleep(1.2)
            pipe.write(NEW.read_bytes() * 3)

        self.assertRegex(self.run_on_terminal("report", "-", feed=feed), r"\A\r\x1b\[K\d+ MB  \d+ MB/s")

    def test_there_is_no_bar_where_standard_error_is_no_terminal(self):
        done = ckscribe("report", str(NEW), environment={"CKSCRIBE_PROGRESS_AFTER_MS": "0"})
        self.assertEqual((done.returncode, done.stderr), (0, ""))


main()
