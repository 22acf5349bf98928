"""The built library says what it is, and the build finds out which commit the sources are of.

identity_test.py SOURCE LIBRARY VERSION"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE, LIBRARY, VERSION = sys.argv[1:4]
del sys.argv[1:4]

HASH = "0123456789abcdef0123456789abcdef01234567"


def printed_by(*command, **more):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=60, **more).stdout


class Identity(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="ckscribe-identity.")
        self.addCleanup(temporary.cleanup)
        self.sources = pathlib.Path(temporary.name, "sources")
        shutil.copytree(pathlib.Path(SOURCE, "cmake"), self.sources / "cmake")

    def commit_and_time(self):
        """Returns what the build finds out about the sources in this test's directory."""
        script = self.sources.with_suffix(".cmake")
        script.write_text(f"include({SOURCE}/cmake/CkscribeCommit.cmake)\n"
                          f'ckscribe_commit({self.sources} commit time)\nmessage("${{commit}} ${{time}}")\n')
        done = subprocess.run(["cmake", "-P", script], check=True, capture_output=True, text=True, timeout=60)
        return done.stderr.split()

    def git(self, *words):
        return printed_by("git", "-c", "user.name=Somebody", "-c", "user.email=somebody@ckscribe.invalid", *words, cwd=self.sources)

    def test_StringsOfTheLibrary_HaveOneLineWithNameVersionAndCommit(self):
        lines = [line for line in printed_by("strings", LIBRARY).splitlines() if line.startswith("ckscribe ")]
        self.assertEqual(len(lines), 1, lines)
        self.assertRegex(lines[0], rf"\Ackscribe {re.escape(VERSION)} \(commit ([0-9a-f]{{12}}|unknown)\)\Z")

    def test_SourcesInGit_AreOfTheCommitThatIsCheckedOut(self):
        self.git("init", "--quiet")
        self.git("add", ".")
        self.git("commit", "--quiet", "--message", "First", "--date", "@1700000000")
        head, time = self.git("log", "-1", "--format=%H %ct").split()
        self.assertEqual(self.commit_and_time(), [head[:12], time])

    def test_SourcesWithoutGit_AreOfAnUnknownCommit(self):
        self.assertEqual(self.commit_and_time(), ["unknown", "0"])

    def test_SourcesBelowARepositoryOfSomebodyElse_AreOfAnUnknownCommit(self):
        subprocess.run(["git", "init", "--quiet", self.sources.parent], check=True, timeout=60)
        self.assertEqual(self.commit_and_time(), ["unknown", "0"])

    def test_SourcesFromAnArchive_AreOfTheCommitThatTheArchiveNames(self):
        self.assertIn("/cmake/ArchivedCommit.cmake export-subst", pathlib.Path(SOURCE, ".gitattributes").read_text().splitlines())
        file = self.sources / "cmake/ArchivedCommit.cmake"
        file.write_text(file.read_text().replace("$Format:%H$", HASH).replace("$Format:%ct$", "1763790000"))
        self.assertEqual(self.commit_and_time(), [HASH[:12], "1763790000"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
