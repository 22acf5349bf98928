#!/usr/bin/python3
"""Writes events of many hosts, with a bit of everything that a report tells.

    made_calls.py FOLDER --hosts N --calls N

FOLDER gets a file host-NNN.jsonl for each host, with about N calls in all. Host 7 is slow, and host 13 fails often.
"""
import argparse
import datetime
import pathlib
import random

BEGAN = int(datetime.datetime(2026, 11, 20, 22, 0, tzinfo=datetime.timezone.utc).timestamp())
SPAN = 8 * 3600  # two days have a part in it

SESSION = '{{"kind":"SessionHandle","value":{}}}'
OBJECT = '{{"kind":"ObjectHandle","value":{}}}'


def attributes(label):
    return ('{"kind":"AttributeList","attributes":[{"type":"CKA_CLASS","number":0,"size":8,"value":%d},'
            '{"type":"CKA_LABEL","number":3,"size":%d,"text":"%s"},{"type":"CKA_ID","number":258,"size":1,"hex":"%02x"}]}'
            % (2 + len(label) % 3, len(label), label, len(label)))


class Host:
    """Writes the events of one host: each thread makes one call after the other, and calls of threads overlap."""

    def __init__(self, number, path, seed):
        self.number = number
        self.randomness = random.Random(seed * 1000 + number)
        self.file = open(path, "w")
        self.calls = {}
        self.waiting = {}
        self.slow = 8 if number == 7 else 1
        self.failing = 0.2 if number == 13 else 0.02

    def call(self, process, thread, function, inputs=(), outputs=(), result=("CKR_OK", 0), ends=True, **fields):
        # The call of the same thread before this one ends first. Calls of other threads may go on.
        self.end(thread)
        run = f"18a3f1c2d4e5{self.number:04x}-{process:x}"
        number = self.calls[run] = self.calls.get(run, 0) + 1
        self.now += self.randomness.randrange(1, self.step)
        ns = int(self.randomness.lognormvariate(10.5, 1.3)) * self.slow
        seconds, rest = divmod(self.now, 10**9)
        time = datetime.datetime.fromtimestamp(BEGAN + seconds, datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%S")
        head = (f'"run":"{run}","pid":{process},"tid":{thread},"call":{number},"function":"{function}"')
        more = "".join(f',"{key}":{value}' if isinstance(value, int) else f',"{key}":"{value}"' for key, value in fields.items())
        given = f'"in":[{",".join(inputs)}]'
        self.file.write(f'{{"event":"start","time":"{time}.{rest:09}Z",{head}{more},{given}}}\n')
        if ends:
            self.waiting[thread] = (f'{{"event":"end","time":"{time}.{rest:09}Z","ns":{ns},{head},"rv":{result[1]},'
                                    f'"result":"{result[0]}"{more},{given},"out":[{",".join(outputs)}]}}\n')

    def end(self, thread):
        if thread in self.waiting:
            self.file.write(self.waiting.pop(thread))

    def make(self, count):
        """Makes about `count` calls."""
        self.now = self.randomness.randrange(10**9)
        self.step = max(2, SPAN * 10**9 // count * 2)
        processes = [2000 + self.number, 4000 + self.number]
        threads = [(process, process * 10 + i) for process in processes for i in range(3)]
        steps = ("sign",) * 60 + ("search", "create", "read", "pair", "open", "close", "close all", "log in", "poll", "retry",
                                  "token", "mechanism", "strange", "sweep", "describe") + ("random",) * 6 + ("lost",) * (self.number % 3 == 0)
        while sum(self.calls.values()) < count:
            process, thread = self.randomness.choice(threads)
            getattr(self, self.randomness.choice(steps).replace(" ", "_"))(process, thread)
        if self.number % 4:
            for process, thread in threads[::3]:
                self.call(process, thread, "C_Finalize")
        for thread in list(self.waiting):
            self.end(thread)
        self.file.close()

    def failure(self, *results):
        return self.randomness.choice(results) if self.randomness.random() < self.failing else ("CKR_OK", 0)

    def a_session(self):
        return self.randomness.randrange(1, 6)

    def sign(self, process, thread):
        session, key = self.a_session(), self.randomness.randrange(1, 30)
        mechanism, number = self.randomness.choice((("CKM_RSA_PKCS", 1), ("CKM_ECDSA", 0x1041)))
        self.call(process, thread, "C_SignInit",
                  [SESSION.format(session), f'{{"kind":"Mechanism","type":"{mechanism}","number":{number}}}', OBJECT.format(key)],
                  result=self.failure(("CKR_KEY_HANDLE_INVALID", 0x60), ("CKR_UNKNOWN", 0x80000000 + self.number % 3)),
                  session=session, object=key, mechanism=mechanism, mechanism_number=number)
        self.call(process, thread, "C_Sign", [SESSION.format(session), '{"kind":"ByteString","size":32}'],
                  ['{"kind":"ByteString","size":256}'], result=self.failure(("CKR_DEVICE_ERROR", 0x30)), session=session)

    def search(self, process, thread):
        session = self.a_session()
        found = sorted(self.randomness.sample(range(1, 40), 2))
        label = "key %d of \\u00fc" % self.randomness.randrange(8)
        self.call(process, thread, "C_FindObjectsInit", [SESSION.format(session), attributes(label)], session=session)
        for handles in (found, []):
            self.call(process, thread, "C_FindObjects", [SESSION.format(session)],
                      [f'{{"kind":"ObjectHandleList","values":{handles}}}'.replace(" ", "")], session=session)
        if self.randomness.random() < 0.9:
            self.call(process, thread, "C_FindObjectsFinal", [SESSION.format(session)], session=session)

    def make_object(self, process, thread, function, count, **fields):
        session = self.a_session()
        labels = [f"made {self.randomness.randrange(9)}" + "x" * i for i in range(count)]
        handles = self.randomness.sample(range(20, 60), count)
        self.call(process, thread, function, [SESSION.format(session), *map(attributes, labels)],
                  [OBJECT.format(handle) for handle in handles], result=self.failure(("CKR_DEVICE_MEMORY", 0x31)), session=session,
                  object=handles[0], **fields)

    def create(self, process, thread):
        self.make_object(process, thread, "C_CreateObject", 1)

    def pair(self, process, thread):
        # Making a key is no operation with it.
        self.make_object(process, thread, "C_GenerateKeyPair", 2, mechanism="CKM_RSA_PKCS_KEY_PAIR_GEN", mechanism_number=0)

    def read(self, process, thread):
        key = self.randomness.randrange(1, 60)
        self.call(process, thread, "C_GetAttributeValue", [SESSION.format(1), OBJECT.format(key)],
                  [attributes(f"read {self.randomness.randrange(5)}")], session=1, object=key)

    def open(self, process, thread):
        session, slot = self.a_session(), self.randomness.randrange(3)
        self.call(process, thread, "C_OpenSession", [f'{{"kind":"SlotID","value":{slot}}}'], [SESSION.format(session)],
                  result=self.failure(("CKR_SESSION_COUNT", 0xB1)), slot=slot, session=session)

    def close(self, process, thread):
        session = self.a_session()
        self.call(process, thread, "C_CloseSession", [SESSION.format(session)],
                  result=self.failure(("CKR_SESSION_HANDLE_INVALID", 0xB3)), session=session)

    def close_all(self, process, thread):
        slot = self.randomness.randrange(3)
        self.call(process, thread, "C_CloseAllSessions", [f'{{"kind":"SlotID","value":{slot}}}'], slot=slot)

    def log_in(self, process, thread):
        session, user = self.a_session(), self.randomness.randrange(2)
        self.call(process, thread, "C_Login", [SESSION.format(session), f'{{"kind":"UserType","value":{user}}}', '{"kind":"PIN"}'],
                  result=self.randomness.choice((("CKR_OK", 0), ("CKR_PIN_INCORRECT", 0xA0), ("CKR_PIN_LOCKED", 0xA4))),
                  session=session, user=user)

    def poll(self, process, thread):
        for _ in range(self.randomness.randrange(5, 15)):
            self.call(process, thread, "C_GetSlotList", outputs=['{"kind":"ULong","value":3}'])

    def retry(self, process, thread):
        for _ in range(self.randomness.randrange(1, 6)):
            self.call(process, thread, "C_WaitForSlotEvent", result=self.randomness.choice(
                (("CKR_NO_EVENT", 8), ("CKR_FUNCTION_NOT_SUPPORTED", 0x54))))

    def token(self, process, thread):
        slot = self.randomness.randrange(3)
        self.call(process, thread, "C_GetTokenInfo", [f'{{"kind":"SlotID","value":{slot}}}'],
                  [f'{{"kind":"TokenInfo","label":"token {slot}","serialNumber":"{self.number:04}{slot}"}}'], slot=slot)

    def mechanism(self, process, thread):
        # A mechanism without an object is no operation.
        self.call(process, thread, "C_GetMechanismInfo", ['{"kind":"SlotID","value":1}', '{"kind":"MechanismType","number":1}'],
                  slot=1, mechanism="CKM_RSA_PKCS", mechanism_number=1)

    def sweep(self, process, thread):
        # A question for another mechanism each time is no polling.
        for mechanism in range(12):
            self.call(process, thread, "C_GetMechanismInfo",
                      ['{"kind":"SlotID","value":1}', f'{{"kind":"MechanismType","number":{mechanism}}}'], slot=1,
                      mechanism_number=mechanism)

    def describe(self, process, thread):
        # The address to which the answer goes does not count.
        for i in range(self.randomness.randrange(8, 13)):
            address = 2**46 + i if i % 2 else f'"{2**63 + i}"'
            self.call(process, thread, "C_GetTokenInfo",
                      ['{"kind":"SlotID","value":2}', f'{{"kind":"Pointer","value":{address}}}'], slot=2)

    def strange(self, process, thread):
        self.call(process, thread, "CA_GetTSV", [f'{{"kind":"SlotID","value":{2**63 + 5}}}'.replace(str(2**63 + 5), f'"{2**63 + 5}"')])

    def random(self, process, thread):
        self.call(process, thread, "C_GenerateRandom", [SESSION.format(1)], ['{"kind":"ByteString","size":16}'], session=1)

    def lost(self, process, thread):
        self.call(process, thread, "C_Sign", [SESSION.format(1)], ends=False, session=1)


def make_calls(folder, hosts, calls, seed=7):
    """Writes the files and returns their paths, in the order of the hosts."""
    paths = []
    for number in range(hosts):
        path = pathlib.Path(folder, f"host-{number:03}.jsonl")
        Host(number, path, seed).make(calls // hosts)
        paths.append(path)
    return paths


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder")
    parser.add_argument("--hosts", type=int, default=200)
    parser.add_argument("--calls", type=int, default=200_000)
    options = parser.parse_args()
    make_calls(options.folder, options.hosts, options.calls)
