"""bench/report/make_logs.py makes logs of known content once for a test program."""
import json
import pathlib
import subprocess
import sys
import tempfile

_kept = []


def make_logs(maker, *options):
    """Returns the folder with new.log, old.log and events.jsonl, and what a report of them must say."""
    folder = tempfile.TemporaryDirectory(prefix="ckscribe.")
    _kept.append(folder)
    done = subprocess.run([sys.executable, "-B", maker, folder.name, *options], stdout=subprocess.PIPE, check=True)
    return pathlib.Path(folder.name), json.loads(done.stdout)
