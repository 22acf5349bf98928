"""The tests of this folder share this module. It holds one session of a client of PKCS#11 three times over the same
software token, and compares the three.

A test program defines what a session does, as a function of a Place, and passes it to compare_sessions(), which holds
the session straight, with libckscribe.so between client and token logging in the new format, and again logging in
the old one. What the client prints, returns and writes must be the same each time. The client gets the same names of
files all three times: its module is a symbolic link, and the directory is moved out of the way in between.

Programs are called with the paths of libckscribe.so, of SoftHSM's library, of a target that lacks none of the
vendor's functions, and of the program that searches logs for PINs (tests/secrets/find_secrets.cpp). The environment's
CKSCRIBE_REPORT_TOOL is the path of the command `ckscribe`, which has to read all logs back. If the path of the
command `ckscribe` follows, the session is held twice instead: straight, and with `ckscribe run` before each command.
"""

import difflib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import jsonschema

from call_log import records_of_new_log, records_of_old_log

PATHS = [str(pathlib.Path(argument).resolve()) for argument in sys.argv[1:]]
LIBRARY, SOFTHSM, COMPLETE_TARGET, FIND_SECRETS = PATHS[:4]
TOOL = PATHS[4] if len(PATHS) > 4 else None
# This command reads the logs back. It is None where the command is not built.
REPORT_TOOL = os.environ.get("CKSCRIBE_REPORT_TOOL")
HERE = pathlib.Path(__file__).resolve().parent
EVENTS_SCHEMA = HERE.parent.parent / "share/ckscribe/events.schema.json"
EXPECTED_FUNCTIONS = HERE.parent / "expected_functions.def"

# Four bytes of any PIN are recognised wherever they turn up; see tests/secrets/planted_secret.h.
SO_PIN = "Q~J^X@Z!V~K^W@J~"
PIN = "J!Q@X^Z~K!V@"
WRONG_PIN = "V^W!Z@Q~"

TOKEN = "clients"

# These values of events fit the schema whatever they are: times, runs, numbers (those from 2^53 on are strings), whole
# bytes in hexadecimal, texts without escapes.
ORDINARY_VALUES = "|".join((
    r'"time":"[^"]*"', r'"run":"[0-9a-f]{16}-[0-9a-f]+"', r'"\w+":\d{1,15}\b', r'"\w+":"\d{16,20}"',
    r'"values":\[\d{1,15}(,\d{1,15})*\]', r'"hex":"([0-9a-f]{2})+"', r'"text":"[^"\\]+"',
))

# Only the complete one of all targets here has the vendor's functions. The library announces each of them over any
# other target, in the order in which it looks them up.
ANNOUNCEMENTS = "".join(
    f"Failed to load function '{name}'.\n"
    for name in re.findall(r"^FUNCTION\((CA_\w+), .*\bkRequired\b", EXPECTED_FUNCTIONS.read_text(), re.MULTILINE)
).encode()


def fail(message):
    sys.exit(f"FAILED: {message}")


def expect_same(what_is_wrong, expected, actual):
    difference = list(difflib.unified_diff(expected, actual, lineterm="", n=8))
    if difference:
        fail(what_is_wrong + ":\n" + "\n".join(difference))


class Place:
    """A Place has a directory with a token of its own, the environment that leads to it, and a transcript of what
    happened in it.

    `module` is the PKCS#11 library for the client. The token holds the key pairs and certificates "rsa" (id 01) and
    "ec" (id 02), whose PEM files rsa.key, rsa.crt, ec.key, ec.crt lie in the directory.
    """

    def __init__(self, directory):
        self.directory = pathlib.Path(directory)
        self.module = str(self.directory / "module.so")
        self.transcript = []
        self.announces = False
        self.user = None  # the number of the user who runs the commands; None for who runs the test
        self.runs = None  # with `ckscribe run`: how many commands there were
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.directory),
            "TMPDIR": str(self.directory),
            "LC_ALL": "C.UTF-8",
            "SOFTHSM2_CONF": str(self.directory / "softhsm2.conf"),
            "WendrafilConfigurationPath": str(self.directory),
        }

    def use_module(self, library):
        pathlib.Path(self.module).symlink_to(library)

    def write(self, name, text):
        path = self.directory / name
        path.write_text(text)
        return str(path)

    def run(self, *command, status=0, varies=(), environment={}, input=b""):
        """Runs a command to its end and notes what it printed and returned. `status` is what it has to return.

        `varies` has regular expressions of what differs from run to run by nature. Their matches are not compared.
        """
        if shutil.which(command[0]) is None:
            fail(f"there is no {command[0]}: install it, or run ./check, which does")
        done = subprocess.run(
            [*self._before(), *command],
            cwd=self.directory,
            env=self.environment | environment,
            input=input,
            capture_output=True,
            timeout=120,
            user=self.user,
            group=self.user,
            extra_groups=None if self.user is None else [],
        )
        output = self._without_announcements(done.stdout)
        if done.returncode != status:
            fail(f"{' '.join(command)} returned {done.returncode}, not {status}:\n{(output + done.stderr).decode()}")
        self.note("ran", " ".join(command))
        self.note("standard output", output, varies)
        self.note("standard error", done.stderr, varies)
        return output.decode(errors="replace")

    def _before(self):
        if self.runs is None:
            return []
        self.runs += 1
        return [TOOL, "run", "--data", "-o", self.directory / f"run.{self.runs}", "--"]

    def keep(self, *names):
        """Notes the contents of files that the client wrote."""
        for name in names:
            self.note(f"file {name}", (self.directory / name).read_bytes())

    def note(self, what, said, varies=()):
        text = said.decode("utf-8", "backslashreplace") if isinstance(said, bytes) else said
        for expression in varies:
            text = re.sub(expression, "<varies>", text)
        self.transcript += [f"{what}: {line}" for line in text.splitlines()]

    def _without_announcements(self, output):
        """Returns the output without the announcements. A client that writes past stdio's buffers may have text of its own
        in the middle of them."""
        own = b""
        recognised = 20
        while ANNOUNCEMENTS[:recognised] in output:
            self.announces = True
            missing = ANNOUNCEMENTS
            while missing:
                text, mark, rest = output.partition(missing[:recognised])
                if not mark:
                    fail(f"not announced: {missing.decode()}")
                length = len(os.path.commonprefix([mark + rest, missing]))
                own += text
                output = (mark + rest)[length:]
                missing = missing[length:]
        return own + output


def make_token(place):
    """Lays out `place` with a token, keys and certificates."""
    place.directory.mkdir()
    (place.directory / "tokens").mkdir()
    place.write(
        "softhsm2.conf",
        f"directories.tokendir = {place.directory}/tokens\nobjectstore.backend = file\nlog.level = ERROR\n",
    )
    place.use_module(SOFTHSM)
    place.run("softhsm2-util", "--init-token", "--free", "--label", TOKEN, "--so-pin", SO_PIN, "--pin", PIN)
    for name, number, kind in (("rsa", "01", ["rsa:2048"]), ("ec", "02", ["ec", "-pkeyopt", "ec_paramgen_curve:P-256"])):
        place.run(
            *("openssl", "req", "-x509", "-nodes", "-newkey", *kind, "-keyout", f"{name}.key", "-out", f"{name}.crt"),
            *("-subj", f"/CN={name}", "-days", "36500"),
        )
        place.run("openssl", "x509", "-in", f"{name}.crt", "-outform", "DER", "-out", f"{name}.der")
        known = ("--id", number, "--label", name)
        place.run("softhsm2-util", "--import", f"{name}.key", "--token", TOKEN, "--pin", PIN, *known)
        place.run(
            *("pkcs11-tool", "--module", place.module, "--token-label", TOKEN, "--login", "--pin", PIN),
            *("--write-object", f"{name}.der", "--type", "cert", *known),
        )
    pathlib.Path(place.module).unlink()


def configuration(place, target, new_format):
    return (
        "CkLog2 = {\n"
        f"   LibUNIX64 = {target};\n"
        "   Enabled = 1;\n"
        f"   NewFormat = {new_format};\n"
        f"   File = {place.directory}/log.txt;\n"
        f"   Error = {place.directory}/logerror.txt;\n"
        f"   Events = {place.directory}/events.jsonl;\n"
        + ("" if new_format else "   HideData = 0;\n")
        + "}\n"
    )


def check_log_files(directory):
    if (directory / "logerror.txt").exists():
        fail("there are errors: " + (directory / "logerror.txt").read_text())
    text = (directory / "log.txt").read_text(encoding="latin-1")
    search = subprocess.run([FIND_SECRETS, directory / "log.txt"], capture_output=True, text=True)
    if search.returncode != 0:
        fail("the log holds " + search.stdout + search.stderr)
    return text


def check_events(directory, records):
    """Expects the events file beside a log to have the log's calls, no secret, and nothing but what the schema describes.

    Where the environment names a folder in KEPT_EVENTS, a copy of the file stays there for other tests.
    """
    if folder := os.environ.get("KEPT_EVENTS"):
        shutil.copy(directory / "events.jsonl", pathlib.Path(folder, f"{pathlib.Path(sys.argv[0]).stem}-{directory.name}.jsonl"))
    search = subprocess.run([FIND_SECRETS, directory / "events.jsonl"], capture_output=True, text=True)
    if search.returncode != 0:
        fail("the events hold " + search.stdout + search.stderr)
    validator = jsonschema.Draft202012Validator(json.loads(EVENTS_SCHEMA.read_text()))
    kinds = {"start": 0, "end": 0}
    seen = set()
    for line in (directory / "events.jsonl").read_text(encoding="utf-8").splitlines():
        event = json.loads(line)
        kinds[event["event"]] += 1
        # The schema takes milliseconds for an event. It judges one of those events that differ only in ordinary values.
        shape = re.sub(ORDINARY_VALUES, lambda value: value.group().partition(":")[0], line)
        if shape in seen:
            continue
        seen.add(shape)
        for error in validator.iter_errors(event):
            fail(f"an event does not fit the schema: {error.message}\n{line}")
    starts = sum(1 for record in records if record.is_start)
    if kinds != {"start": starts, "end": len(records) - starts}:
        fail(f"there are {kinds} events and {starts} starts in {len(records)} records")


def reported(file):
    """Returns the report of a file that consists of calls, each with a start and an end."""
    done = subprocess.run([REPORT_TOOL, "report", "--json", file], capture_output=True, text=True, timeout=60)
    if done.returncode != 0 or done.stderr:
        fail(f"`ckscribe report` of {file.name} returned {done.returncode}: {done.stderr}")
    report = json.loads(done.stdout)
    if report["unreadable"] != 0 or report["unfinished"] != 0:
        fail(f"`ckscribe report` finds unreadable or unfinished in {file.name}: {report['unreadable_stretches']}, {report['unfinished_calls']}")
    return report


def check_reports(directory, records):
    """Expects `ckscribe report` to read the log and the events back, and to find the calls that were made in both."""
    if REPORT_TOOL is None:
        return
    starts = [record for record in records if record.is_start]
    errors = sum(1 for record in records if not record.is_start and not record.call.endswith(" CKR_OK"))
    expected = {"calls": len(starts), "errors": errors, "processes": len({record.process for record in records})}
    rows = []
    for name in ("log.txt", "events.jsonl"):
        report = reported(directory / name)
        found = {key: report[key] for key in expected}
        if found != expected:
            fail(f"`ckscribe report` of {name} finds {found}, not {expected}")
        rows.append([f"{row['function']} {row['result']} {row['rv']}: {row['count']}" for row in report["results"]])
        ends = sum(row["count"] for row in report["results"])
        if ends != len(records) - len(starts):
            fail(f"`ckscribe report` of {name} counts {ends} results of {len(records) - len(starts)} ends")
    expect_same("the reports of the log and of the events differ", sorted(rows[0]), sorted(rows[1]))
    # The records have words of their own for the functions. Two functions print `FindObjects`.
    functions = lambda calls: sorted(set(calls))
    printed = functions(record.function.replace(" None", "").replace(" ", "") for record in starts)
    read = functions(row.split()[0].removeprefix("C_").replace("FindObjectsFinal", "FindObjects") for row in rows[0])
    expect_same("the report of the log names other functions than its records", printed, read)
    done = subprocess.run([REPORT_TOOL, "diff", "log.txt", "events.jsonl"], cwd=directory, capture_output=True, text=True, timeout=120)
    if done.returncode != 0 or done.stdout or done.stderr:
        fail(f"`ckscribe diff` finds that the log and the events of one run differ:\n{done.stdout}{done.stderr}")


def check_records(records, expected):
    """Expects each text of `expected` to match a record, in this order. Three dots stand for anything."""
    remaining = iter(records)
    for text in expected:
        pattern = ".*".join(re.escape(part) for part in text.split("..."))
        if not any(re.fullmatch(pattern, record.text) for record in remaining):
            alike = sorted({record.text for record in records if record.text.startswith(text.split()[0])})
            fail(f"no record, or none in this place, is\n{text}\nThe log has:\n" + "\n".join(alike))


def check_pairs(records):
    """Expects every call to have a start and an end, one after the other on its thread."""
    open_calls = {}
    for record in records:
        thread = (record.process, record.thread)
        if record.is_start:
            if thread in open_calls:
                fail(f"two starts in a row: {open_calls[thread].text}, {record.text}")
            open_calls[thread] = record
        else:
            start = open_calls.pop(thread, None)
            if start is None or start.function != record.function:
                fail(f"an end without its start: {record.text}")
    if open_calls:
        fail(f"starts without an end: {[record.text for record in open_calls.values()]}")


def check_calls(lines, expected):
    """Expects each end record of `expected` to have its call among the lines of `ckscribe run`, in this order."""
    calls = [re.fullmatch(r"\S+ \d+ (C_\w+)\(.*\) = (CKR_\w+)( \{.*\})? <\S+>", line) for line in lines]
    remaining = iter([call.group(1, 2) for call in calls if call])
    for text in expected:
        record = re.match(r"FINI(\w+) \**(CKR_\w+)", text)
        if record is None:
            continue
        wanted = ("C_" + record.group(1).replace("_", ""), record.group(2))
        if wanted not in remaining:
            fail(f"no call, or none in this place, is {wanted}. The lines are:\n" + "\n".join(lines))


def compare_with_run(session, expected, target):
    """Holds the session straight and with `ckscribe run`, and compares what the client does."""
    with tempfile.TemporaryDirectory(prefix="ckscribe-client.") as root:
        root = pathlib.Path(root)
        session_directory = root / "session"
        make_token(Place(session_directory))
        session_directory.rename(root / "prepared")
        transcripts = {}
        for name in ("straight", "run"):
            shutil.copytree(root / "prepared", session_directory)
            place = Place(session_directory)
            place.use_module(target)
            del place.environment["WendrafilConfigurationPath"]
            place.runs = 0 if name == "run" else None
            session(place)
            transcripts[name] = place.transcript
            session_directory.rename(root / name)
        expect_same("the client behaves differently with `ckscribe run`", transcripts["straight"], transcripts["run"])

        outputs = [root / "run" / f"run.{number + 1}" for number in range(place.runs)]
        search = subprocess.run([FIND_SECRETS, *outputs], capture_output=True, text=True)
        if search.returncode != 0:
            fail("the output holds " + search.stdout + search.stderr)
        lines = [line for output in outputs for line in output.read_text().splitlines()]
        for line in lines:
            if "libckscribe.so says" in line or "never returned" in line:
                fail(line)
        check_calls(lines, expected)
        print(f"{len(transcripts['run'])} lines the same twice, {len(lines)} lines of `ckscribe run`")


def compare_sessions(session, expected, target=SOFTHSM, in_order=True):
    """Holds `session(place)` three times and compares.

    `expected` has some records of the new format, without time, process, thread and ticks. Three dots stand for anything.
    `target` is the PKCS#11 library through which the client reaches the token.
    `in_order` says that the client makes its calls in the same order each time.
    """
    if TOOL:
        compare_with_run(session, expected, target)
        return
    with tempfile.TemporaryDirectory(prefix="ckscribe-client.") as root:
        root = pathlib.Path(root)
        session_directory = root / "session"
        make_token(Place(session_directory))
        session_directory.rename(root / "prepared")

        transcripts = {}
        for name, module, new_format in (("straight", target, 0), ("new", LIBRARY, 1), ("old", LIBRARY, 0)):
            shutil.copytree(root / "prepared", session_directory)
            place = Place(session_directory)
            place.use_module(module)
            place.write("Wendrafil.conf", configuration(place, target, new_format))
            session(place)
            if place.announces != (module == LIBRARY and target != COMPLETE_TARGET):
                fail("missing functions are announced exactly when the library is there and its target lacks them")
            transcripts[name] = place.transcript
            session_directory.rename(root / name)

        for name in ("new", "old"):
            expect_same("the client behaves differently with the library", transcripts["straight"], transcripts[name])

        if (root / "straight/log.txt").exists():
            fail("there is a log without the library")
        new = records_of_new_log(check_log_files(root / "new"))
        old = records_of_old_log(check_log_files(root / "old"))
        check_events(root / "new", new)
        check_events(root / "old", old)
        check_reports(root / "new", new)
        check_reports(root / "old", old)
        check_pairs(new)
        check_records(new, expected)
        order = list if in_order else sorted
        new_calls, old_calls = (order(record.call for record in log) for log in (new, old))
        expect_same("the logs of the two formats do not tell of the same calls", new_calls, old_calls)
        print(f"{len(transcripts['straight'])} lines the same three times, {len(new)} records in each log")
