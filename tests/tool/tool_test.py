"""The tests of the command share this module. A test program is called with the path of `ckscribe` and arguments of its
own. It holds classes of unittest, and ends with `main()`."""

import os
import subprocess
import sys
import unittest

TOOL = sys.argv[1]
ARGUMENTS = sys.argv[2:]


def ckscribe(*arguments, environment=None, **more):
    """Runs the command to its end. Its output is text."""
    more = {"capture_output": True, "text": True, "timeout": 120} | more
    return subprocess.run([TOOL, *arguments], env=os.environ | (environment or {}), **more)


def main():
    unittest.main(argv=sys.argv[:1], verbosity=2)
