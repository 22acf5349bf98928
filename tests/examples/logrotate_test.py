"""logrotate itself obeys the rule for logrotate while calls run, and no record is lost or doubled.

logrotate_test.py LIBRARY TARGET EXAMPLES"""

import collections
import gzip
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import time
import unittest

LIBRARY, TARGET = sys.argv[1:3]
EXAMPLES = pathlib.Path(sys.argv[3])
del sys.argv[1:4]

# Two threads make calls with numbers of their own, until standard input ends. The program prints how many each has made.
APPLICATION = """
import ctypes, sys, threading, time
library = ctypes.CDLL(sys.argv[1])
ended = threading.Event()
made = [0, 0]

def call(thread):
    while not ended.is_set():
        made[thread] += 1
        library.C_Logout(ctypes.c_ulong(int(sys.argv[2]) * 100_000_000 + thread * 10_000_000 + made[thread]))
        if made[thread] % 10 == 0:
            time.sleep(0.002)

threads = [threading.Thread(target=call, args=(number,)) for number in range(2)]
for thread in threads:
    thread.start()
sys.stdin.read()
ended.set()
for thread in threads:
    thread.join()
print(*made)
"""

ROTATIONS = 2


def contents(path):
    data = path.read_bytes()
    return (gzip.decompress(data) if path.suffix == ".gz" else data).decode()


class Rotation(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="ckscribe-logrotate.")
        self.addCleanup(temporary.cleanup)
        self.place = pathlib.Path(temporary.name)
        self.log = self.place / "log.txt"
        self.events = self.place / "events.jsonl"
        configuration = (EXAMPLES / "Wendrafil.conf").read_text()
        configuration = re.sub("LibUNIX64 = .*;", f"LibUNIX64 = {TARGET};", configuration)
        (self.place / "Wendrafil.conf").write_text(configuration.replace("/var/log/ckscribe", str(self.place)))
        self.rule = self.place / "rule"
        self.rule.write_text((EXAMPLES / "logrotate.conf").read_text().replace("/var/log/ckscribe", str(self.place)))
        self.rule.chmod(0o600)

    def start_application(self, number):
        application = subprocess.Popen(
            [sys.executable, "-c", APPLICATION, LIBRARY, str(number)], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
            env={"WendrafilConfigurationPath": str(self.place)})
        self.addCleanup(application.kill)
        return application

    def rotate(self):
        done = subprocess.run(["logrotate", "--force", "--state", self.place / "state", self.rule], capture_output=True,
                              text=True, timeout=60)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def wait_until_log_grows(self):
        """Waits until the log grows. An application that has noticed the rotation writes into the new file."""
        deadline = time.monotonic() + 60
        while not (self.log.exists() and self.log.stat().st_size and self.events.exists() and self.events.stat().st_size):
            self.assertLess(time.monotonic(), deadline, "nothing is written into the new file")
            time.sleep(0.01)

    def files_of(self, log):
        """Returns all files of a log, the oldest first."""
        rotated = sorted(log.parent.glob(log.name + ".*"), key=lambda path: -int(path.name.removeprefix(log.name).split(".")[1]))
        return [*rotated, log]

    def test_CallsRunDuringRotations_EveryRecordIsThereOnce(self):
        applications = [self.start_application(number) for number in (1, 2)]
        for rotation in range(ROTATIONS):
            self.wait_until_log_grows()
            self.rotate()
        self.wait_until_log_grows()
        calls = []
        for number, application in enumerate(applications, start=1):
            made = application.communicate(timeout=60)[0].split()
            self.assertEqual((application.returncode, len(made)), (0, 2))
            calls += [number * 100_000_000 + thread * 10_000_000 + call
                      for thread in range(2) for call in range(1, int(made[thread]) + 1)]
        self.assertGreater(len(calls), 1000)

        logs, events = self.files_of(self.log), self.files_of(self.events)
        self.assertEqual([path.name for path in logs], ["log.txt.2.gz", "log.txt.1.gz", "log.txt"])
        self.assertEqual([path.name for path in events],
                         ["events.jsonl.2.gz", "events.jsonl.1.gz", "events.jsonl"])
        text = "".join(map(contents, logs))
        starts = re.findall(r"STRTLogout \{Sesn=(\d+) \}", text)
        self.assertEqual(collections.Counter(map(int, starts)), collections.Counter(calls))
        self.assertEqual(text.count("FINILogout CKR_OK"), len(calls))
        lines = [json.loads(line) for line in "".join(map(contents, events)).splitlines()]
        for kind in ("start", "end"):
            sessions = collections.Counter(line["session"] for line in lines if line["event"] == kind)
            self.assertEqual(sessions, collections.Counter(calls), kind)

    def test_RotatedFiles_KeepOwnerPermissionsAndTimeOfTheLastRecord(self):
        application = self.start_application(1)
        self.wait_until_log_grows()
        application.communicate(timeout=60)
        before = self.log.stat()
        time.sleep(1.1)
        # Compression keeps all this, too, except parts of a second.
        self.rule.write_text(self.rule.read_text().replace("compress\n", "nocompress\n"))
        self.rotate()
        after = (self.place / "log.txt.1").stat()
        self.assertEqual((after.st_mode & 0o777, after.st_uid, after.st_gid, after.st_size, after.st_mtime_ns),
                         (0o600, before.st_uid, before.st_gid, before.st_size, before.st_mtime_ns))
        new = self.log.stat()
        self.assertEqual((new.st_mode & 0o777, new.st_uid, new.st_gid, new.st_size), (0o600, before.st_uid, before.st_gid, 0))


if __name__ == "__main__":
    unittest.main(verbosity=2)
