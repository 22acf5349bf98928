"""Asks every question for jq that docs/events.md has, and compares the answers.

The test is called with the path of the sources.
"""

import json
import pathlib
import subprocess
import sys
import tempfile

RUN = "18a3f1c2d4e5f607-3e63"


def call(number, function, nanoseconds, rv=0, result="CKR_OK", has_end=True, run=RUN):
    """Returns the lines of one call."""
    head = {"time": f"2026-11-21T12:33:{number:02}.000000000Z"}
    rest = {"run": run, "pid": 15971, "tid": 15972, "call": number, "function": function}
    yield {"event": "start", **head, **rest, "in": []}
    if has_end:
        yield {"event": "end", **head, "ns": nanoseconds, **rest, "rv": rv, "result": result, "in": [], "out": []}


EVENTS = [
    *call(1, "C_Initialize", 5_000_999),
    *call(2, "C_Sign", 3_000),
    *call(3, "C_Sign", 12_000, 0xA0, "CKR_PIN_INCORRECT"),
    *call(4, "C_Sign", 11_000, 0xA0, "CKR_PIN_INCORRECT"),
    *call(5, "C_Login", 7_000, 0xA0, "CKR_PIN_INCORRECT"),
    *call(6, "C_WaitForSlotEvent", 0, has_end=False),
    *call(7, "C_Logout", 1_000),
    *call(8, "C_Logout", 2_000),
    *call(9, "C_Logout", 4_000),
    *call(10, "C_Logout", 5_000),
    *call(11, "C_Logout", 6_000),
    *call(12, "C_Logout", "18014398509481984"),
    # The same number in another run is another call.
    *call(6, "C_Logout", 900, run="18a3f1c2d4e5f608-3e64"),
]

ANSWERS = [
    f"""18014398509481 C_Logout CKR_OK {RUN}/12
5000 C_Initialize CKR_OK {RUN}/1
12 C_Sign CKR_PIN_INCORRECT {RUN}/3
11 C_Sign CKR_PIN_INCORRECT {RUN}/4
7 C_Login CKR_PIN_INCORRECT {RUN}/5
6 C_Logout CKR_OK {RUN}/11
5 C_Logout CKR_OK {RUN}/10
4 C_Logout CKR_OK {RUN}/9
3 C_Sign CKR_OK {RUN}/2
2 C_Logout CKR_OK {RUN}/8
""",
    """2 C_Sign CKR_PIN_INCORRECT
1 C_Login CKR_PIN_INCORRECT
""",
    f"""2026-11-21T12:33:06.000000000Z C_WaitForSlotEvent {RUN}/6 thread 15972
""",
]

page = pathlib.Path(sys.argv[1], "docs/events.md").read_text()
questions = [line.strip() for line in page.splitlines() if line.startswith("    jq ")]
if len(questions) != len(ANSWERS):
    sys.exit(f"docs/events.md has {len(questions)} questions, and this test {len(ANSWERS)} answers: add what is missing")

with tempfile.TemporaryDirectory() as directory:
    pathlib.Path(directory, "events.jsonl").write_text("".join(json.dumps(event) + "\n" for event in EVENTS))
    for question, answer in zip(questions, ANSWERS):
        asked = subprocess.run(question, shell=True, cwd=directory, capture_output=True, text=True)
        if asked.returncode != 0 or asked.stdout != answer:
            sys.exit(f"{question}\nanswers\n{asked.stdout}{asked.stderr}\nand should answer\n{answer}")
