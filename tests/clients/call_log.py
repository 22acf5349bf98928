"""Reads a log of either format back into records. A log that holds anything but records is an error."""

import re

HEADER = r"\d\d:\d\d:\d\d (?P<process>\d{5,})-(?P<thread>-?\d{2,}):"
FUNCTION = r"(?P<function>[A-Za-z0-9]+)(?:_(?P<specifier>Init|Update|Final|Key))?"
RESULT = r"(?P<result>CKR_[A-Z0-9_]+(?: 0x[0-9a-f]+)?)"
NEW_RECORDS = [
    re.compile(HEADER + text)
    for text in (
        rf"(?P<phase>STRT){FUNCTION} (?P<children>\{{.*\}})",
        rf"(?P<phase>FINI){FUNCTION} (?P<result>CKR_OK)-?\d+clks (?P<children>\{{.*\}})",
        rf"(?P<phase>FINI){FUNCTION} \*\*\*{RESULT}\*\*\*-?\d+clks (?P<children>\{{.*\}})",
    )
]
OLD_RECORD = re.compile(
    r"\nCommand\((?P<function>[A-Za-z0-9]+), (?P<specifier>None|Init|Update|Final|Key), "
    rf"(?:(?P<start>Start)|End, {RESULT})\) PID:  (?P<process>\d+)  "
    r"Time:  \w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\n"
    r"(?(start)| // -?\d+ clock cycles)"
    r"\n\{(?:\n   .*)*\n\}"
)


class Record:
    """A Record is one record of a log. `text` is a record of the new format without its time, process, thread and
    ticks, as 'FINILogin CKR_OK {}'. `call` holds the parts that both formats have: function, specifier, whether it is a
    start, result."""

    def __init__(self, match, is_start, text=None):
        fields = match.groupdict()
        self.process = fields["process"]
        self.thread = fields.get("thread")
        self.function = f"{fields['function']} {fields['specifier'] or 'None'}"
        self.is_start = is_start
        self.call = f"{self.function} start" if is_start else f"{self.function} end {fields['result']}"
        self.text = text


def read_new_record(line):
    for kind in NEW_RECORDS:
        match = kind.fullmatch(line)
        if match:
            text = re.sub(r"-?\d+clks(?= \{)", "", line[match.start("phase") :], count=1)
            return Record(match, match["phase"] == "STRT", text)
    raise ValueError(f"no record: {line!r}")


def records_of_new_log(text):
    """Fails unless an empty line stands before every start record, and nowhere else."""
    lines = [line for line in text.split("\n") if line]
    records = [read_new_record(line) for line in lines]
    layout = "".join(("\n\n" if record.is_start else "\n") + line for record, line in zip(records, lines))
    if layout != text:
        raise ValueError("the log's empty lines are not where they belong")
    return records


def records_of_old_log(text):
    records = []
    position = 0
    while position < len(text):
        match = OLD_RECORD.match(text, position)
        if match is None:
            raise ValueError(f"no record: {text[position : position + 200]!r}")
        records.append(Record(match, match["start"] is not None))
        position = match.end()
    return records
