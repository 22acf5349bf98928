"""`ckscribe diff` compares two runs."""
import pathlib
import tempfile
import unittest

from tool_test import ckscribe, main

RUN = [("Initialize", "", "CKR_OK", ""),
       ("GetSlotList", "tknPresent=true ", "CKR_OK", "SlotLst={Slot=1 Slot=2 } "),
       ("OpenSession", "Slot=1 Flgs=6 ", "CKR_OK", "Sesn=5 "),
       ("Login", 'Sesn=5 User=1 PIN="********" ', "CKR_OK", ""),
       ("FindObjects_Init", 'Sesn=5 AttrList={CKA_LABEL="a" } ', "CKR_OK", ""),
       ("FindObjects", "Sesn=5 10 ", "CKR_OK", "ObjHndLst={Obj=3 } 1 "),
       ("Encrypt_Init", 'Sesn=5 Mech=(CKM_AES_CBC,"00ff00ff00ff00ff00ff00ff00ff00ff") Obj=3 ', "CKR_OK", ""),
       ("Decrypt", 'Sesn=5 "data" ', "CKR_OK", '"8f8f" '),
       ("Finalize", "", "CKR_OK", "")]


def log(calls, process=1, thread=1, time="10:15:30"):
    lines = []
    for name, start, result, end in calls:
        stars = "" if result == "CKR_OK" else "***"
        head = f"{time} {process:05}-{thread:03}"
        lines += ["", f"{head}:STRT{name} {{{start}}}", f"{head}:FINI{name} {stars}{result}{stars}7clks {{{end}}}"]
    return "\n".join(lines) + "\n"


def events(durations):
    return "".join(
        f'{{"event":"end","time":"2026-11-21T12:33:45Z","ns":{ns},"run":"a-1","pid":1,"tid":2,"call":{i + 1},"function":"C_Sign",'
        '"rv":0,"result":"CKR_OK","in":[],"out":[]}\n' for i, ns in enumerate(durations))


def changed(position, *calls):
    return RUN[:position] + list(calls) + RUN[position + 1:]


class Diff(unittest.TestCase):
    def diff(self, before, after):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in (("before", before), ("after", after)):
                pathlib.Path(folder, name).write_text(text)
            done = ckscribe("diff", "before", "after", cwd=folder)
            self.assertEqual(done.stderr, "")
            return done.returncode, done.stdout.splitlines()

    def test_runs_that_differ_in_handles_addresses_times_and_random_bytes_are_alike(self):
        other = [(name, start.replace("Sesn=5", "Sesn=77").replace("Obj=3", "Obj=88").replace("00ff", "1234"), result,
                  end.replace("Sesn=5", "Sesn=77").replace("Obj=3", "Obj=88").replace("8f8f", "9e9e9e"))
                 for name, start, result, end in RUN]
        self.assertEqual(self.diff(log(RUN), log(other, process=9, thread=-4, time="23:00:00")), (0, []))

    def test_call_that_is_gone_and_call_that_is_new_are_shown(self):
        self.assertEqual(self.diff(log(RUN), log(changed(3))), (1, [
            "process 1, thread 1 | process 1, thread 1",
            "- C_Login(user=1, PIN=********) = CKR_OK  before:11"]))
        self.assertEqual(self.diff(log(RUN), log(RUN[:3] + [("Logout", "Sesn=5 ", "CKR_OK", "")] + RUN[3:])), (1, [
            "process 1, thread 1 | process 1, thread 1", "+ C_Logout() = CKR_OK  after:11"]))

    def test_runs_go_on_alike_behind_thousands_of_calls_that_differ(self):
        def signatures(count, data):
            return [("Sign", f'Sesn=5 "{data} {i}" ', "CKR_OK", "") for i in range(count)]

        status, lines = self.diff(log(RUN[:3] + signatures(3000, "one") + RUN[3:]), log(RUN[:3] + signatures(3060, "two") + RUN[3:]))
        self.assertEqual(status, 1)
        self.assertEqual([line for line in lines if 'C_Sign(' not in line], ["process 1, thread 1 | process 1, thread 1"])
        self.assertEqual([sum(line.startswith(sign) for line in lines) for sign in "-+"], [3000, 3060])

    def test_call_with_another_answer_is_shown(self):
        for position, call, text in (
            (3, RUN[3][:2] + ("CKR_PIN_INCORRECT", ""),
             "! C_Login(user=1, PIN=********) = CKR_PIN_INCORRECT, before: CKR_OK  after:11"),
            (1, RUN[1][:3] + ("SlotLst={Slot=1 } ",),
             "! C_GetSlotList(tknPresent=true) = CKR_OK slots=[1], before: CKR_OK slots=[1 2]  after:5"),
            (5, RUN[5][:3] + ("ObjHndLst={} 0 ",), "! C_FindObjects(10) = CKR_OK objects=0, before: CKR_OK objects=1  after:17"),
        ):
            with self.subTest(text):
                self.assertEqual(self.diff(log(RUN), log(changed(position, call))),
                                 (1, ["process 1, thread 1 | process 1, thread 1", text]))

    def test_call_that_never_came_back_is_another_answer(self):
        text = log(RUN)
        self.assertEqual(self.diff(text, text[:text.rindex("\n10:15")])[1][1],
                         "! C_Finalize() = ?, before: CKR_OK  after:26")

    def test_call_that_takes_ten_times_as_long_and_ten_milliseconds_more_is_shown(self):
        before = events([1_000_000, 1_000, 2_000_000])
        self.assertEqual(self.diff(before, events([11_000_000, 9_000_000, 11_999_999])), (1, [
            "process 1, thread 2 | process 1, thread 2", "~ C_Sign() <0.011000>, before: <0.001000>  after:1"]))
        self.assertEqual(self.diff(before, events([10_999_999, 10_000, 19_000_000])), (0, []))

    def test_threads_are_paired_by_their_first_calls(self):
        one, other = log(RUN[:2]), log(RUN[3:5], thread=2)
        self.assertEqual(self.diff(one + other, log(RUN[3:5], thread=7) + log(RUN[:2], thread=8)), (0, []))
        self.assertEqual(self.diff(one, one + other)[1][0], "no thread | process 1, thread 2")

    def test_addresses_of_lengths_do_not_count_but_lengths_do(self):
        def run(address, length):
            return log([("Encrypt", f'Sesn=5 "data" pusEncryptedDataLen={address} *pusEncryptedDataLen={length} ', "CKR_OK", "")])

        self.assertEqual(self.diff(run("0x1234", 16), run("0xfffffff0", 16)), (0, []))
        self.assertEqual(self.diff(run("0x1234", 16), run("0x1234", 32))[0], 1)

    def test_threads_that_begin_alike_are_paired_by_how_they_go_on(self):
        short, long = RUN[:3], RUN[:5]
        self.assertEqual(self.diff(log(short) + log(long, thread=2), log(long, thread=7) + log(short, thread=8)), (0, []))

    def test_thread_whose_first_call_never_came_back_is_paired_by_it(self):
        wait, login = ("WaitForSlotEvent", "Flgs=0 ", "CKR_OK", "Slot=1 "), RUN[3]
        after = log([wait, login], thread=3) + log([login, RUN[0]], thread=4)
        before = log([wait], thread=3).split("\n10:15:30 00001-003:FINI")[0] + "\n" + log([login], thread=3) + log([login, RUN[0]], thread=4)
        self.assertEqual(self.diff(before, after), (1, [
            "process 1, thread 3 | process 1, thread 3", "! C_WaitForSlotEvent(flags=0x0) = CKR_OK, before: ?  after:2"]))

    def test_log_without_threads_is_compared_by_process(self):
        old = "".join(f"\nCommand(Finalize, None, {phase}) PID:  {process}  Time:  Sat Nov 21 12:33:45 2026\n{ticks}\n{{\n}}"
                      for process in (71, 72) for phase, ticks in (("Start", ""), ("End, CKR_OK", " // 7 clock cycles")))
        new = log(RUN[-1:], thread=5) + log(RUN[-1:], process=2, thread=6)
        self.assertEqual(self.diff(old, new), (0, []))
        self.assertEqual(self.diff(old, new + log(RUN[-1:], process=2, thread=7))[1],
                         ["process 72 | process 2", "+ C_Finalize() = CKR_OK  after:8"])

    def test_text_that_can_be_read_as_bytes_is_alike_in_either_reading(self):
        def event(value):
            return ('{"event":"end","time":"2026-11-21T12:33:45Z","ns":5,"run":"a-1","pid":1,"tid":2,"call":1,"function":"C_FindObjectsInit",'
                    '"rv":0,"result":"CKR_OK","in":[{"kind":"SessionHandle","value":5},{"kind":"AttributeList","attributes":'
                    f'[{{"type":"CKA_LABEL","number":3,{value}}}]}}],"out":[]}}\n')

        text = log([("FindObjects_Init", 'Sesn=5 AttrList={CKA_LABEL="ec" } ', "CKR_OK", "")])
        self.assertEqual(self.diff(text, event('"size":2,"text":"ec"')), (0, []))
        self.assertEqual(self.diff(text, event('"size":1,"hex":"ec"')), (0, []))
        self.assertEqual(self.diff(text, event('"size":2,"text":"ed"'))[0], 1)
        self.assertEqual(self.diff(text, event('"size":2'))[0], 0)
        self.assertEqual(self.diff(text, event('"size":3'))[0], 1)
        # Bytes that are a text are never written as digits.
        text = log([("FindObjects_Init", 'Sesn=5 AttrList={CKA_LABEL="41" } ', "CKR_OK", "")])
        self.assertEqual(self.diff(text, event('"size":2,"text":"41"')), (0, []))
        self.assertEqual(self.diff(text, event('"size":1,"text":"A"'))[0], 1)

    def test_log_that_cannot_be_read_is_no_equal_run(self):
        done = ckscribe("diff", "/nowhere/a", "/nowhere/b")
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr.count("\n"), 2)


main()
