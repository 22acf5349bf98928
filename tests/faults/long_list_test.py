"""The time that a record of a long list takes grows linearly with the list: long_list_test.py PROGRAM LIBRARY TARGET VALGRIND

The instructions of a call stand for its time: they are the same on a loaded machine.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

PROGRAM, LIBRARY, TARGET, VALGRIND = sys.argv[1:]
FEW, MANY, MOST = 50_000, 200_000, 5

# These keys choose each of the three ways to write a call.
WAYS = {
    "new format": "Enabled = 1;\n   NewFormat = 1;\n   File = calls.log;",
    "old format": "Enabled = 1;\n   NewFormat = 0;\n   File = calls.log;",
    "events": "Enabled = 0;\n   Events = calls.log;",
}


def instructions(directory, count):
    """Returns the count of instructions of the call. The target's are among them, a few for each handle."""
    done = subprocess.run(
        [
            *(VALGRIND, "--tool=callgrind", "--toggle-collect=C_FindObjects", "--callgrind-out-file=/dev/null"),
            *(PROGRAM, LIBRARY, str(count)),
        ],
        cwd=directory,
        env={"WendrafilConfigurationPath": str(directory)},
        capture_output=True,
        text=True,
        timeout=200,
    )
    collected = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode != 0 or collected is None:
        sys.exit(f"FAILED: valgrind returned {done.returncode}:\n{done.stderr}")
    log = directory / "calls.log"
    text = log.read_text()
    log.unlink()
    # The old format shows handles in hexadecimal.
    if not (str(count) in text or f"0x{count:x}" in text) or len(text) < 3 * count:
        sys.exit(f"FAILED: the log of {count} handles has {len(text)} characters")
    return int(collected.group(1))


for way, keys in WAYS.items():
    with tempfile.TemporaryDirectory(prefix="ckscribe-test.") as root:
        directory = pathlib.Path(root)
        (directory / "Wendrafil.conf").write_text(f"CkLog2 = {{\n   LibUNIX64 = {TARGET};\n   {keys}\n}}\n")
        few, many = (instructions(directory, count) for count in (FEW, MANY))
        print(f"{way}: {few} instructions for {FEW} handles, {many} for {MANY}: {many / few:.2f} times as many")
        if few < 10 * FEW or many > MOST * few:
            sys.exit(f"FAILED: {way}: {many / few:.2f} times the instructions for {MANY / FEW:.0f} times the handles")
