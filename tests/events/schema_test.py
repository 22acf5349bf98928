"""Tests that the schema of events takes the lines of docs/events.md and refuses lines with a fault.

The test is called with the path of the sources.
"""

import copy
import json
import pathlib
import sys

import jsonschema

sources = pathlib.Path(sys.argv[1])
schema = json.loads((sources / "share/ckscribe/events.schema.json").read_text())
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)

page = (sources / "docs/events.md").read_text()
start, end = [json.loads(line) for line in page.splitlines() if line.startswith('    {"event"')]
for event in (start, end):
    validator.validate(event)


def refuse(event, what, change):
    changed = copy.deepcopy(event)
    change(changed)
    if validator.is_valid(changed):
        sys.exit(f"the schema takes an event {what}:\n{json.dumps(changed)}")


for event in (start, end):
    for member in event:
        if member not in ("session",):
            refuse(event, f"without {member}", lambda changed: changed.pop(member))
    refuse(event, "with an unknown member", lambda changed: changed.update(more=1))
    refuse(event, "with a PIN's value", lambda changed: changed["in"].append({"kind": "PIN", "value": 1}))
    refuse(event, "with an unknown kind", lambda changed: changed["in"].append({"kind": "Other"}))
    refuse(event, "with an exact number as a string", lambda changed: changed.update(session="1"))
    refuse(event, "with an inexact number", lambda changed: changed.update(session=2**53 + 1))
    refuse(event, "with a name and no number", lambda changed: changed.update(mechanism="CKM_RSA_PKCS"))
    refuse(
        event,
        "with text and hex",
        lambda changed: changed["in"].append({"kind": "ByteString", "size": 1, "text": "a", "hex": "61"}),
    )
refuse(start, "with out", lambda changed: changed.update(out=[]))
refuse(start, "with rv", lambda changed: changed.update(rv=0))
