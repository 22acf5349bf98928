"""systemd takes the drop-in for services, and the drop-in sets what it says.

systemd_test.py EXAMPLES"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

EXAMPLES = pathlib.Path(sys.argv.pop(1))


class DropIn(unittest.TestCase):
    def verify(self, text):
        """Returns what systemd says of a service with this drop-in."""
        with tempfile.TemporaryDirectory(prefix="ckscribe-systemd.") as directory:
            service = pathlib.Path(directory, "signer.service")
            service.write_text("[Service]\nType=oneshot\nExecStart=/bin/true\nProtectSystem=strict\n")
            drop_in = pathlib.Path(directory, "signer.service.d/ckscribe.conf")
            drop_in.parent.mkdir()
            drop_in.write_text(text)
            done = subprocess.run(["systemd-analyze", "verify", "--man=no", service], capture_output=True, text=True, timeout=50,
                                  env=os.environ | {"SYSTEMD_UNIT_PATH": f"{directory}:/lib/systemd/system"})
            return [line for line in (done.stdout + done.stderr).splitlines() if directory in line]

    def test_Example_IsTakenWithoutAWord(self):
        self.assertEqual(self.verify((EXAMPLES / "ckscribe-service.conf").read_text()), [])

    def test_ExampleWithAMisspeltKey_IsNotTaken(self):
        text = (EXAMPLES / "ckscribe-service.conf").read_text().replace("LogsDirectoryMode", "LogDirectoryMode")
        self.assertRegex("".join(self.verify(text)), "LogDirectoryMode")

    def test_TimerThatShipsEventsAndItsService_AreTakenWithoutAWord(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe-systemd.") as directory:
            units = [shutil.copy(EXAMPLES / f"ckscribe-ship.{kind}", directory) for kind in ("service", "timer")]
            done = subprocess.run(["systemd-analyze", "verify", "--man=no", *units], capture_output=True, text=True, timeout=50,
                                  env=os.environ | {"SYSTEMD_UNIT_PATH": f"{directory}:/lib/systemd/system"})
            said = [line for line in (done.stdout + done.stderr).splitlines() if "ckscribe-ship" in line]
            self.assertEqual((done.returncode, said), (0, []))


if __name__ == "__main__":
    unittest.main(verbosity=2)
