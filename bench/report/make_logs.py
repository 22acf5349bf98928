#!/usr/bin/python3
"""Writes the same calls as a text log of the new format, of the old format, and as events.

    make_logs.py FOLDER [--calls N | --size BYTES] [--damage EVERY] [--processes N] [--only NAME]
                        [--unfinished SHARE]

FOLDER gets new.log, old.log (with --calls only), events.jsonl and, with --damage, damaged.log: new.log with one record in
EVERY cut in the middle. With --only and --size it gets this one file, of that size. SHARE of the calls
have no end, 0.0005 if nothing is said. Prints as JSON what a report of them
must say.
"""
import argparse
import collections
import datetime
import json
import os
import random

FUNCTIONS = [
    # Each row has the printed name and the exported name.
    ("Sign_Init", "C_SignInit"),
    ("Sign", "C_Sign"),
    ("FindObjects_Init", "C_FindObjectsInit"),
    ("FindObjects", "C_FindObjects"),
    ("FindObjects", "C_FindObjectsFinal"),
    ("GetSessionInfo", "C_GetSessionInfo"),
    ("Encrypt_Init", "C_EncryptInit"),
    ("Encrypt", "C_Encrypt"),
    ("Login", "C_Login"),
    ("GenerateRandom", "C_GenerateRandom"),
]
WEIGHTS = [25, 25, 3, 3, 3, 6, 10, 10, 1, 14]
ERRORS = {
    "C_Login": [("CKR_PIN_INCORRECT", 0xA0), ("CKR_USER_ALREADY_LOGGED_IN", 0x100)],
    "C_Sign": [("CKR_DEVICE_ERROR", 0x30), ("CKR_UNKNOWN", 0x80000999)],
    "C_FindObjectsInit": [("CKR_OPERATION_ACTIVE", 0x90)],
}


def children(function, session, randomness):
    """Returns new and old text, and JSON, of a call's inputs and outputs."""
    handle = randomness.randrange(1, 40)
    size = randomness.choice((16, 32, 32, 64, 256))
    data = randomness.randbytes(size) + b"\xff"
    out = randomness.randbytes(size) + b"\xfe"
    sesn = (f"Sesn={session} ", f"\n   SessionHandle(0x{session:x});", f'{{"kind":"SessionHandle","value":{session}}}')
    key = (f"Obj={handle} ", f"\n   ObjectHandle(0x{handle:x});", f'{{"kind":"ObjectHandle","value":{handle}}}')

    def text(value):
        return (f'"{value.hex()}" ', f'\n   ByteString(Numeric"{value.hex()}");', f'{{"kind":"ByteString","size":{len(value)}}}')

    def join(*parts):
        return "".join(p[0] for p in parts), "".join(p[1] for p in parts), ",".join(p[2] for p in parts)

    nothing = ("", "", "")
    if function in ("C_SignInit", "C_EncryptInit"):
        name = "CKM_RSA_PKCS" if function == "C_SignInit" else "CKM_AES_CBC"
        mechanism = (f'Mech=({name},"<null>") ', f'\n   Mechanism{name},Value(SimpleText"<null>"));',
                     f'{{"kind":"Mechanism","type":"{name}","number":1,"parameter":{{"size":0}}}}')
        return join(sesn, mechanism, key), nothing, {"object": handle, "mechanism": name}
    if function == "C_Sign":
        return join(sesn, text(data)), join(text(out)), {}
    if function == "C_Encrypt":
        lengths = (f"pusEncryptedDataLen=0x1234 *pusEncryptedDataLen={size} ", f"\n   ULong(0x1234);\n   ULong({size});",
                   f'{{"kind":"ULong","value":4660}},{{"kind":"ULong","value":{size}}}')
        return join(sesn, text(data), lengths), join(text(out), lengths), {}
    if function == "C_FindObjectsInit":
        label = f"key {handle}"
        template = (f'AttrList={{CKA_CLASS="0300000000000000" CKA_LABEL="{label}" }} ',
                    '\n   AttributeList\n   {\n      Attribute(CKA_CLASS,Value(Numeric"0300000000000000"));'
                    f'\n      Attribute(CKA_LABEL,Value(SimpleText"{label}"));\n   }};',
                    '{"kind":"AttributeList","attributes":[{"type":"CKA_CLASS","number":0,"size":8,"value":3},'
                    f'{{"type":"CKA_LABEL","number":3,"size":{len(label)},"text":"{label}"}}]}}')
        return join(sesn, template), nothing, {}
    if function == "C_FindObjects":
        count = ("10 ", "\n   UShort(0xa);", '{"kind":"UShort","value":10}')
        found = (f"ObjHndLst={{Obj={handle} }} 1 ",
                 f"\n   ObjectHandleList\n   {{\n      ObjectHandle(0x{handle:x});\n   }};\n   UShort(0x1);",
                 f'{{"kind":"ObjectHandleList","values":[{handle}]}},{{"kind":"UShort","value":1}}')
        return join(sesn, count), found, {}
    if function == "C_GetSessionInfo":
        info = ("SesInfo=(1,3,0x6,0x0) ", "\n   SessionInfo(0x1,0x3,0x6,0x0);",
                '{"kind":"SessionInfo","slotID":1,"state":3,"flags":6,"ulDeviceError":0}')
        return join(sesn), info, {}
    if function == "C_Login":
        pin = ('User=1 PIN="********" ', '\n   UserType(0x1);\n   ByteString(SimpleText"********");',
               '{"kind":"UserType","value":1},{"kind":"PIN","name":"PIN"}')
        return join(sesn, pin), nothing, {"user": 1}
    if function == "C_GenerateRandom":
        return join(sesn), join(text(out)), {}
    return join(sesn), nothing, {}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder")
    parser.add_argument("--calls", type=int)
    parser.add_argument("--size", type=int, help="of new.log, by repeating 200,000 calls")
    parser.add_argument("--damage", type=int)
    parser.add_argument("--processes", type=int, default=2)
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--unfinished", type=float, default=0.0005)
    parser.add_argument("--only", choices=("new.log", "events.jsonl"))
    options = parser.parse_args()
    randomness = random.Random(options.seed)
    os.makedirs(options.folder, exist_ok=True)
    count = options.calls or 200_000
    path = lambda name: os.path.join(options.folder, name)

    calls = collections.Counter()
    results = collections.Counter()
    unfinished = collections.Counter()
    durations = collections.defaultdict(list)
    threads = [(1000 + process, 5000 + process * 8 + thread) for process in range(options.processes) for thread in range(4)]
    began = datetime.datetime(2026, 11, 21, 1, 0, 0, tzinfo=datetime.timezone.utc)
    waiting = {}  # by thread: the end records of its call
    numbers = collections.Counter()
    with open(path("new.log"), "w") as new, open(path("old.log"), "w") as old, open(path("events.jsonl"), "w") as events:
        def write(texts):
            new.write(texts[0])
            old.write(texts[1])
            events.write(texts[2])

        for i in range(count):
            thread = randomness.choice(threads)
            if thread in waiting:
                write(waiting.pop(thread))
            process, tid = thread
            printed, function = randomness.choices(FUNCTIONS, WEIGHTS)[0]
            result, rv = "CKR_OK", 0
            if function in ERRORS and randomness.random() < 0.05:
                result, rv = randomness.choice(ERRORS[function])
            name, _, specifier = printed.partition("_")
            now = began + datetime.timedelta(milliseconds=i // 4)
            time, calendar = now.strftime("%H:%M:%S"), now.strftime("%a %b %d %H:%M:%S %Y")
            start, end, fields = children(function, 1 + tid % 4, randomness)
            ns = int(randomness.lognormvariate(11, 1.5))
            numbers[process] += 1
            head = (f'"time":"{now.strftime("%Y-%m-%dT%H:%M:%S")}.{randomness.randrange(10**9):09}Z",', f'"run":"18a3f1c2d4e5f607-{process:x}",'
                    f'"pid":{process},"tid":{tid},"call":{numbers[process]},"function":"{function}",')
            selected = f'"session":{1 + tid % 4},' + "".join(f'"{k}":{json.dumps(v)},' for k, v in fields.items())
            shown = result if result != "CKR_UNKNOWN" else f"CKR_UNKNOWN 0x{rv:x}"
            stars = "" if rv == 0 else "***"
            write((f"\n\n{time} {process:05}-{tid:03}:STRT{printed} {{{start[0]}}}",
                   f"\nCommand({name}, {specifier or 'None'}, Start) PID:  {process}  Time:  {calendar}\n\n{{{start[1]}\n}}",
                   f'{{"event":"start",{head[0]}{head[1]}{selected}"in":[{start[2]}]}}\n'))
            calls[function] += 1
            if randomness.random() < options.unfinished:
                unfinished[function] += 1
                continue
            waiting[thread] = (
                f"\n{time} {process:05}-{tid:03}:FINI{printed} {stars}{shown}{stars}{i}clks {{{end[0]}}}",
                f"\nCommand({name}, {specifier or 'None'}, End, {shown}) PID:  {process}  Time:  {calendar}\n // 0 clock cycles\n{{{end[1]}\n}}",
                f'{{"event":"end",{head[0]}"ns":{ns},{head[1]}"rv":{rv},"result":"{result}",{selected}"in":[{start[2]}],"out":[{end[2]}]}}\n')
            results[function, result, rv] += 1
            durations[function].append(ns)
        for texts in waiting.values():
            write(texts)

    repeated = 1
    if options.size:
        repeated = -(-options.size // os.path.getsize(path(options.only or "new.log")))
        os.remove(path("old.log"))
        for name in (options.only,) if options.only else ("new.log", "events.jsonl"):
            with open(path(name), "rb") as file:
                text = file.read()
            with open(path(name), "ab") as file:
                for i in range(1, repeated):
                    # Each repetition is another load of the library.
                    file.write(text.replace(b'"run":"18a3f1c2', b'"run":"%08x' % i) if name == "events.jsonl" else text)
    for name in ("new.log", "events.jsonl"):
        if options.only not in (None, name):
            os.remove(path(name))
    if options.damage:
        with open(path("new.log"), "rb") as source, open(path("damaged.log"), "wb") as damaged:
            for i, line in enumerate(source):
                damaged.write(line[:len(line) // 2] + b"\n" if i % (options.damage * 3 // 2) == 1 and len(line) > 1 else line)
    print(json.dumps({
        "calls": sum(calls.values()) * repeated, "errors": sum(n for (_, _, rv), n in results.items() if rv) * repeated,
        "unfinished": sum(unfinished.values()) * repeated, "unreadable": 0,
        "processes": options.processes, "threads": len(threads),
        "functions": {f: {"calls": n * repeated, "unfinished": unfinished[f] * repeated,
                          "errors": sum(m for (g, _, rv), m in results.items() if g == f and rv) * repeated,
                          "total_ns": sum(durations[f]) * repeated, "max_ns": max(durations[f], default=None),
                          **{f"p{p}_ns": sorted(durations[f])[-(-len(durations[f]) * p // 100) - 1] for p in (50, 95, 99)}}
                      for f, n in calls.items()},
        "results": [{"function": f, "result": r, "rv": rv, "count": n * repeated} for (f, r, rv), n in sorted(results.items())]}))


main()
