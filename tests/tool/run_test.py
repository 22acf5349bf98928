"""`ckscribe run` runs programs and modules of our own; see tests/tool/run."""

import json
import os
import pathlib
import re
import signal
import struct
import subprocess
import tempfile
import time
import unittest

from tool_test import ARGUMENTS, TOOL, ckscribe, main

HERE = pathlib.Path(ARGUMENTS[0])
APPLICATION = str(HERE / "application")
ONE = str(HERE / "one_module.so")
TWO = str(HERE / "two_module.so")

DOES_IT_LOAD_ONE = (
    "Does it load one with these arguments? A daemon that runs already has to be started by 'ckscribe run' itself. "
    "A program that changes its root cannot be followed, nor one that changes its user with --keep."
)

LINE = r"\d\d:\d\d:\d\d\.\d{3} \d+ "
SECONDS = r" <\d+\.\d{6}>"


def run(*arguments, **more):
    return ckscribe("run", *arguments, **{"timeout": 30} | more)


def sentences(text):
    """Returns the sentences that run prints besides calls."""
    return [line.removeprefix("ckscribe: ") for line in text.splitlines() if line.startswith("ckscribe: ")]


def calls(text):
    """Returns FUNCTION(arguments) = RESULT {output} of each call, without time, thread and seconds."""
    lines = [re.fullmatch(LINE + "(C_.*?)" + SECONDS, line) for line in text.splitlines()]
    return [line.group(1) for line in lines if line]


def functions(text):
    return [call.split("(")[0] for call in calls(text)]


class InDirectory(unittest.TestCase):
    """Each test has a directory of its own."""

    def setUp(self):
        directory = tempfile.TemporaryDirectory(prefix="ckscribe-run-test.")
        self.addCleanup(directory.cleanup)
        self.place = pathlib.Path(directory.name).resolve()


class Calls(InDirectory):
    def test_each_finished_call_is_a_line_and_the_module_is_named_first(self):
        done = run(APPLICATION, "slots", ONE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertEqual(done.stderr.splitlines()[0], f"ckscribe: Logging the calls to {ONE}.")
        self.assertEqual(
            calls(done.stderr),
            [
                "C_GetFunctionList() = CKR_OK",
                "C_Initialize() = CKR_OK",
                "C_GetSlotList(tknPresent=false) = CKR_OK {count=1}",
                "C_Finalize() = CKR_OK",
            ],
        )
        self.assertEqual(len(done.stderr.splitlines()), 5)

    def test_second_column_of_a_call_is_the_thread(self):
        done = run(APPLICATION, "threads", ONE)
        self.assertEqual(done.returncode, 0)
        threads = re.findall(rf"^{LINE[:-4]}(\d+) C_Sign\(", done.stderr, re.M)
        self.assertEqual(len(threads), 8 * 250)
        self.assertEqual(len(set(threads)), 8)

    def test_failed_call_shows_its_result(self):
        done = run(APPLICATION, "error", ONE)
        self.assertIn("C_Sign(session=31, <5 bytes>) = CKR_DEVICE_ERROR {<5 bytes>}", calls(done.stderr))

    def test_output_goes_to_the_file_and_nothing_to_the_standard_streams(self):
        file = self.place / "calls"
        done = run("-o", file, APPLICATION, "slots", ONE)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "1 slots\n", ""))
        self.assertEqual(len(calls(file.read_text())), 4)
        self.assertEqual(sentences(file.read_text()), [f"Logging the calls to {ONE}."])

    def test_calls_are_printed_while_the_command_runs(self):
        with subprocess.Popen([TOOL, "run", APPLICATION, "hang", ONE], stderr=subprocess.PIPE, text=True) as command:
            self.assertEqual(command.stderr.readline(), f"ckscribe: Logging the calls to {ONE}.\n")
            self.assertIn("C_GetFunctionList() = CKR_OK", command.stderr.readline())
            self.assertIsNone(command.poll())
            command.terminate()
            command.communicate(timeout=60)

    def test_children_and_programs_that_they_become_are_logged_too(self):
        done = run(APPLICATION, "fork", ONE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertEqual(functions(done.stderr).count("C_Sign"), 2)
        self.assertEqual(functions(done.stderr).count("C_GetSlotList"), 1)
        self.assertEqual(len(set(re.findall(rf"^{LINE[:-4]}(\d+) ", done.stderr, re.M))), 3)
        self.assertEqual(sentences(done.stderr), [f"Logging the calls to {ONE}."])

    def test_run_waits_for_what_the_command_leaves_running(self):
        done = run(APPLICATION, "daemon", ONE)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(calls(done.stderr), ["C_GetFunctionList() = CKR_OK", "C_Sign(session=31, <6 bytes>) = CKR_OK {<5 bytes>}"])

    def test_class_selects_its_functions(self):
        for words in ("SIGN_VERIFY_FUNC", "sign_verify", "Sign_Verify_Func"):
            with self.subTest(words):
                self.assertEqual(set(functions(run("-e", words, APPLICATION, "error", ONE).stderr)), {"C_Sign"})
        done = run("-e", "gen,slot_token", APPLICATION, "slots", ONE)
        self.assertEqual(functions(done.stderr), ["C_GetFunctionList", "C_Initialize", "C_GetSlotList", "C_Finalize"])

    def test_unknown_class_is_refused_with_the_list_of_classes(self):
        done = run("-e", "session,signing", APPLICATION, "slots", ONE)
        self.assertEqual((done.returncode, done.stdout), (125, ""))
        self.assertIn('"signing" is no class of functions. These are: GEN_FUNC, SLOT_TOKEN_FUNC, ', done.stderr)

    def test_data_shows_only_if_the_user_asks_for_it(self):
        for format in ("calls", "text", "old", "events"):
            with self.subTest(format):
                hidden = run("--format", format, APPLICATION, "error", ONE).stderr
                shown = run("--format", format, "--data", APPLICATION, "error", ONE).stderr
                self.assertNotRegex(hidden, '"error"|6572726f72')
                self.assertRegex(shown, '"error"|6572726f72')

    def test_text_formats_print_the_log_itself(self):
        new = run("--format", "text", APPLICATION, "slots", ONE).stderr
        self.assertRegex(new, r"(?m)^\d\d:\d\d:\d\d \d+-+\d+:STRTGetSlotList \{tknPresent=false \}$")
        old = run("--format", "old", APPLICATION, "slots", ONE).stderr
        self.assertRegex(old, r"(?m)^Command\(GetSlotList, None, Start\) PID: ")
        for text in (new, old):
            self.assertNotIn("C_GetSlotList", text)

    def test_events_format_prints_one_object_a_line(self):
        file = self.place / "events"
        done = run("--format", "events", "-o", file, APPLICATION, "slots", ONE)
        self.assertEqual(sentences(done.stderr), [f"Logging the calls to {ONE}."])
        events = [json.loads(line) for line in file.read_text().splitlines()]
        self.assertEqual([event["event"] for event in events], ["start", "end"] * 4)
        self.assertEqual(events[5]["function"], "C_GetSlotList")

    def test_output_file_that_cannot_take_the_calls_is_named_and_the_command_goes_on(self):
        done = run("-o", "/dev/full", APPLICATION, "slots", ONE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertEqual(
            done.stderr,
            "ckscribe: /dev/full cannot be written: No space left on device. Calls are missing there; the command goes on.\n",
        )

    def test_unknown_format_is_refused_with_the_list_of_formats(self):
        done = run("--format", "xml", APPLICATION, "slots", ONE)
        self.assertEqual((done.returncode, done.stdout), (125, ""))
        self.assertIn('"xml" is no format. These are: calls, text, old, events. \'ckscribe run --help\'', done.stderr)

    def test_output_file_with_data_is_for_the_user_only(self):
        hidden, shown = self.place / "hidden", self.place / "shown"
        run("-o", hidden, APPLICATION, "slots", ONE, umask=0o022)
        run("--data", "-o", shown, APPLICATION, "slots", ONE, umask=0o022)
        self.assertEqual((hidden.stat().st_mode & 0o777, shown.stat().st_mode & 0o777), (0o644, 0o600))


class Table(unittest.TestCase):
    def rows(self, text):
        lines = text.splitlines()
        start = next(i for i, line in enumerate(lines) if line.startswith("function "))
        return {line.split()[0]: line.split()[1:] for line in lines[start + 1 :] if not line.startswith("ckscribe: ")}

    def test_summary_only_prints_the_table_and_no_calls(self):
        done = run("-c", APPLICATION, "threads", ONE)
        self.assertEqual(calls(done.stderr), [])
        rows = self.rows(done.stderr)
        self.assertEqual(list(rows)[-1], "total")
        self.assertEqual({name: row[:2] for name, row in rows.items()},
                         {"C_Sign": ["2000", "0"], "C_GetFunctionList": ["1", "0"], "total": ["2001", "0"]})

    def test_summary_prints_the_calls_and_the_table(self):
        done = run("-C", APPLICATION, "error", ONE)
        self.assertEqual(functions(done.stderr), ["C_GetFunctionList", "C_Sign"])
        self.assertEqual(self.rows(done.stderr)["C_Sign"][:2], ["1", "1"])

    def test_interrupted_run_still_prints_the_table(self):
        with subprocess.Popen([TOOL, "run", "-c", APPLICATION, "hang", ONE], stderr=subprocess.PIPE, text=True,
                              start_new_session=True) as command:
            command.stderr.readline()
            time.sleep(0.5)
            os.killpg(command.pid, signal.SIGINT)  # as a terminal does
            text = command.communicate(timeout=60)[1]
        self.assertEqual(command.returncode, 128 + signal.SIGINT)
        self.assertEqual(self.rows(text)["C_WaitForSlotEvent"][:2], ["1", "0"])
        self.assertIn("The command was ended by SIGINT (Interrupt) in C_WaitForSlotEvent (thread ", text)


class Ends(InDirectory):
    def test_exit_status_is_that_of_the_command(self):
        self.assertEqual(run(APPLICATION, "seven").returncode, 7)
        self.assertEqual(run("sh", "-c", "kill -TERM $$").returncode, 128 + signal.SIGTERM)

    def test_crash_gets_a_sentence_with_the_call_in_which_it_happened(self):
        done = run(APPLICATION, "crash", ONE)
        self.assertEqual(done.returncode, 128 + signal.SIGSEGV)
        self.assertRegex(done.stderr, r"ckscribe: The command was ended by SIGSEGV \(Segmentation fault\) in C_Sign \(thread \d+\)\.")
        self.assertRegex(done.stderr, rf"ckscribe: 1 call never returned:\n{LINE}C_Sign\(session=31, <5 bytes>\) = \? \(thread \d+, since \d+\.\d{{6}} s\)\n")

    def test_crash_of_what_the_command_left_running_is_named_with_its_process_and_call(self):
        done = run(APPLICATION, "crashing-daemon", ONE)
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stderr, r"ckscribe: Process \d+, which the command left running, was ended by SIGSEGV "
                                      r"\(Segmentation fault\) in C_Sign \(thread \d+\)\.")

    def test_end_of_what_the_command_left_running_outside_of_calls_is_not_named(self):
        self.assertNotIn("ended by", run("sh", "-c", "sh -c 'sleep 0.1; kill -TERM $$' &").stderr)

    def test_crash_outside_of_calls_gets_a_sentence_that_says_so(self):
        done = run("sh", "-c", "kill -SEGV $$")
        self.assertEqual(done.returncode, 128 + signal.SIGSEGV)
        self.assertIn("The command was ended by SIGSEGV (Segmentation fault) outside of PKCS#11 calls.", sentences(done.stderr))

    def test_signal_to_run_reaches_the_command(self):
        with subprocess.Popen([TOOL, "run", APPLICATION, "interrupted"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as command:
            self.assertEqual(command.stdout.readline(), "ready\n")
            command.terminate()
            self.assertEqual(command.communicate(timeout=60)[0], "interrupted\n")
        self.assertEqual(command.returncode, 0)

    def test_hangup_that_is_ignored_does_not_end_the_wait_for_what_the_command_leaves_running(self):
        ready = "sh -c 'sleep 4' & echo left"
        with subprocess.Popen([TOOL, "run", "sh", "-c", ready], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                              preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN)) as command:
            command.stdout.readline()
            time.sleep(0.5)  # the shell has ended
            command.send_signal(signal.SIGHUP)
            with self.assertRaises(subprocess.TimeoutExpired):
                command.wait(0.5)
            self.assertEqual(command.wait(60), 0)

    def test_command_that_is_not_there_ends_with_127(self):
        for name in ("no-such-command", "/no/such/command"):
            done = run(name)
            self.assertEqual((done.returncode, done.stderr), (127, f"ckscribe: There is no command {name}.\n"))

    def test_command_that_cannot_be_run_ends_with_126(self):
        file = self.place / "file"
        file.write_text("x")
        done = run(file)
        self.assertEqual((done.returncode, done.stderr), (126, f"ckscribe: {file} cannot be run: Permission denied.\n"))
        file.write_text("#!/no/such/interpreter\n")
        file.chmod(0o755)
        done = run(file)
        self.assertEqual(done.returncode, 126)
        self.assertIn("the program that is to interpret or to load it is not there", done.stderr)

    def test_failure_of_run_itself_ends_with_125_and_the_command_does_not_run(self):
        made = self.place / "made"
        for options in (["-m", "/no/such/module.so"], ["-m", "/etc/passwd"], ["-o", "/no/such/folder/file"],
                        ["--format", "xml"], ["--keep", "/proc/x"], ["-m", str(pathlib.Path(TOOL).parent / "libckscribe.so")]):
            with self.subTest(options):
                done = run(*options, "touch", made)
                self.assertEqual((done.returncode, done.stdout), (125, ""))
                self.assertRegex(done.stderr, r"\Ackscribe: [^\n]+\n\Z")
        self.assertFalse(made.exists())


class Modules(InDirectory):
    def test_first_module_is_logged_and_the_others_are_named(self):
        script = self.place / "script"
        script.write_text(f"{APPLICATION} slots {TWO} {ONE}\n")
        done = run("sh", script)
        self.assertEqual((done.returncode, done.stdout), (0, "2 slots\n1 slots\n"))
        self.assertEqual(
            sentences(done.stderr),
            [f"Logging the calls to {TWO}.", f"Also loaded and left as they are: {ONE}. 'ckscribe run -m PATH' logs one of them."],
        )
        self.assertEqual(functions(done.stderr).count("C_GetSlotList"), 1)

    def test_each_process_has_its_own_first_module(self):
        script = self.place / "script"
        script.write_text(f"{APPLICATION} slots {TWO}\n{APPLICATION} slots {ONE}\n")
        done = run("sh", script)
        self.assertEqual(sentences(done.stderr), [f"Logging the calls to {TWO}.", f"Logging the calls to {ONE}."])
        self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=1}", calls(done.stderr))
        self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=2}", calls(done.stderr))

    def test_named_module_is_logged_under_any_spelling(self):
        link = self.place / "link.so"
        link.symlink_to(ONE)
        hard = HERE / f"hard-{os.getpid()}.so"
        os.link(ONE, hard)
        self.addCleanup(hard.unlink)
        for name in (ONE, str(link), str(hard), f"{HERE}/../run/./one_module.so", f"./{os.path.relpath(ONE)}", f"/proc/self/root{ONE}"):
            with self.subTest(name):
                done = run("-m", ONE, APPLICATION, "slots", TWO, name)
                self.assertEqual(done.stdout, "2 slots\n1 slots\n")
                self.assertEqual(functions(done.stderr).count("C_GetSlotList"), 1)
                self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=1}", calls(done.stderr))

    def test_module_name_without_a_path_is_found_where_the_loader_finds_it(self):
        done = run("-m", "one_module.so", APPLICATION, "slots", "two_module.so", "one_module.so", environment={"LD_LIBRARY_PATH": str(HERE)})
        self.assertEqual(done.stdout, "2 slots\n1 slots\n")
        self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=1}", calls(done.stderr))
        self.assertEqual(functions(done.stderr).count("C_GetSlotList"), 1)

    def test_module_that_an_argument_names_is_logged(self):
        script = self.place / "script"
        script.write_text(f"{APPLICATION} slots {TWO} {ONE}\n")
        for argument in (ONE, f"--module={ONE}", f"-I{ONE}", f"pkcs11:token=x?module-path={ONE}&pin-value=1"):
            with self.subTest(argument):
                done = run("sh", script, argument)
                self.assertEqual(sentences(done.stderr)[0], f"Logging the calls to {ONE}.")
                self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=1}", calls(done.stderr))

    def test_same_module_is_logged_each_time_a_process_loads_it(self):
        done = run(APPLICATION, "slots", ONE, ONE)
        self.assertEqual(functions(done.stderr).count("C_GetSlotList"), 2)

    def test_module_with_other_interfaces_is_passed_over(self):
        other = str(HERE / "other_interface_module.so")
        script = self.place / "script"
        script.write_text(f"{APPLICATION} slots {other} {TWO}\n")
        done = run("sh", script)
        self.assertEqual(done.stdout, "3 slots\n2 slots\n")
        self.assertEqual(
            sentences(done.stderr),
            [f"Logging the calls to {TWO}.",
             f"Loaded and left as they are, for they are asked for other interfaces than PKCS#11's: {other}."],
        )

    def test_module_finds_libraries_that_lie_beside_it(self):
        module = str(HERE / "module_with_neighbour.so")
        done = run("-m", module, APPLICATION, "slots", module)
        self.assertEqual((done.returncode, done.stdout), (0, "4 slots\n"))
        self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=4}", calls(done.stderr))

    def test_relative_path_holds_when_the_command_changes_its_directory(self):
        done = run("sh", "-c", f"cd / && exec {APPLICATION} slots .{ONE}")
        self.assertEqual(done.stdout, "1 slots\n")
        self.assertEqual(sentences(done.stderr), [f"Logging the calls to /.{ONE}."])

    def test_command_that_loads_no_module_gets_a_sentence_that_says_so(self):
        self.assertEqual(
            sentences(run("true").stderr),
            ["No call was logged: the command loaded no PKCS#11 module.",
             DOES_IT_LOAD_ONE],
        )

    def test_command_that_does_not_load_the_named_module_gets_a_sentence_about_what_it_loads(self):
        self.assertEqual(
            sentences(run("-m", TWO, APPLICATION, "slots", ONE).stderr),
            [f"No call was logged: the command did not load {TWO}.",
             f"Modules that were loaded and left as they are: {ONE}. 'ckscribe run -m PATH' logs one of them."],
        )

    def test_program_that_is_linked_with_its_module_works_and_gets_a_sentence(self):
        done = run(HERE / "linked")
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertIn(f"Linked with the command or with what it loads: {ONE}.", done.stderr)

    def test_static_program_works_and_gets_a_sentence(self):
        done = run(HERE / "static", "seven")
        self.assertEqual(done.returncode, 7)
        self.assertIn(f"{HERE}/static is linked statically, so that no loader can give it another module.", done.stderr)

    @unittest.skipUnless(os.geteuid() == 0, "needs root to make a set-user-ID program")
    def test_set_user_id_program_works_and_gets_a_sentence(self):
        program = self.place / "raised"
        program.write_bytes(pathlib.Path(APPLICATION).read_bytes())
        os.chown(program, 65534, 65534)
        program.chmod(0o4755)
        self.place.chmod(0o755)
        done = run(program, "slots", ONE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertIn(f"{program} is set-user-ID or set-group-ID", done.stderr)

    @unittest.skipUnless(os.geteuid() == 0, "needs root to become another user")
    def test_process_that_changes_its_user_before_its_first_call_is_logged(self):
        for verb in ("dropped", "dropped-after-loading"):
            with self.subTest(verb):
                done = run("--data", APPLICATION, verb, ONE)
                self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
                self.assertEqual(sentences(done.stderr), [f"Logging the calls to {ONE}."])
                self.assertEqual(functions(done.stderr),
                                 ["C_GetFunctionList", "C_Initialize", "C_GetSlotList", "C_Finalize"])

    @unittest.skipUnless(os.geteuid() == 0, "needs root to become another user")
    def test_text_log_of_a_process_that_changes_its_user_is_missing_and_a_sentence_says_so(self):
        done = run("--format", "text", APPLICATION, "dropped-after-loading", ONE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertRegex(done.stderr, "ckscribe: libckscribe.so says: .* Could not open capture file /.*/log.txt.\n")

    def test_private_directory_cannot_be_guessed_and_its_logs_cannot_be_read_by_others(self):
        for umask in (0, 0o077):
            with self.subTest(umask=umask):
                done = run("--format", "text", "sh", "-c", 'cd "$CKSCRIBE_RUN" && pwd && stat -c "%a %n" .. . *',
                           environment={"TMPDIR": str(self.place)}, umask=umask)
                path, *modes = done.stdout.splitlines()
                self.assertRegex(path, rf"^{self.place}/ckscribe-run\.\w{{6}}/[0-9a-f]{{16}}$")
                self.assertEqual(
                    sorted(modes),
                    ["622 events.jsonl", "622 log.txt", "622 logerror.txt", "622 notices", "644 Wendrafil.conf",
                     "644 run.settings", "711 ..", "755 ."],
                )

    @unittest.skipUnless(os.geteuid() == 0, "needs root to become another user")
    def test_process_that_changes_its_user_before_it_loads_the_module_works_as_without_run_where_logs_are_kept(self):
        done = run("--keep", self.place / "kept", APPLICATION, "dropped", ONE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
        self.assertEqual(
            sentences(done.stderr),
            [f"No call was logged: the command did not load {ONE}.", DOES_IT_LOAD_ONE,
             f"The configuration and the raw logs are in {self.place / 'kept'}."],
        )

    def test_program_of_another_architecture_is_no_script_and_cannot_be_run(self):
        program = self.place / "foreign"
        program.write_bytes(b"\x7fELF\x01\x01\x01" + bytes(9) + b"\x02\x00\x03\x00" + bytes(200))
        program.chmod(0o755)
        done = run(program)
        self.assertEqual((done.returncode, done.stderr), (126, f"ckscribe: {program} cannot be run: Exec format error.\n"))

    def test_program_of_another_architecture_works_with_its_own_environment_and_gets_a_sentence(self):
        # This program for x86 with 32 bits ends with 7 if its environment is empty, else with 8.
        program = self.place / "foreign"
        code = bytes.fromhex("8b0c24 8b5c8c08 85db 0f95c3 0fb6db 83c307 b801000000 cd80")
        begin, address = 52 + 32, 0x08048000
        size = begin + len(code)
        header = struct.pack("<HHIIIIIHHHHHH", 2, 3, 1, address + begin, 52, 0, 0, 52, 32, 1, 40, 0, 0)
        segment = struct.pack("<IIIIIIII", 1, 0, address, address, size, size, 5, 4096)
        program.write_bytes(b"\x7fELF\x01\x01\x01" + bytes(9) + header + segment + code)
        program.chmod(0o755)
        try:
            self.assertEqual(subprocess.run([program], env={}).returncode, 7)
        except OSError:
            self.skipTest("this kernel runs no programs of 32 bits")
        done = subprocess.run([TOOL, "run", program], env={}, stderr=subprocess.PIPE, text=True, timeout=60)
        self.assertEqual(done.returncode, 7)
        self.assertEqual(
            sentences(done.stderr)[0],
            f"{program} is of another architecture than libckscribe.so. Use a ckscribe that is built for it.",
        )

    def test_text_without_an_interpreter_is_run_by_the_shell(self):
        script = self.place / "script"
        script.write_text("exit 9\n")
        script.chmod(0o755)
        self.assertEqual(run(script).returncode, 9)

    def test_application_that_loads_the_library_itself_gets_the_target_of_its_configuration(self):
        (self.place / "Wendrafil.conf").write_text(f"CkLog2 = {{\n   LibUNIX64 = {TWO};\n}}\n")
        done = run(APPLICATION, "slots", str(pathlib.Path(TOOL).parent / "libckscribe.so"),
                   environment={"WendrafilConfigurationPath": str(self.place)})
        self.assertEqual(done.stdout, "2 slots\n")
        self.assertEqual(
            sentences(done.stderr),
            [f"WendrafilConfigurationPath={self.place} does not count here: this run has a configuration of its own.",
             f"Logging the calls to {TWO}."],
        )
        self.assertIn("C_GetSlotList(tknPresent=false) = CKR_OK {count=2}", calls(done.stderr))


class Surroundings(InDirectory):
    def inherited(self, *before, **more):
        return subprocess.run([*before, APPLICATION, "inherited"], capture_output=True, text=True, timeout=60, **more).stdout.splitlines()

    def test_environment_descriptors_and_signals_are_the_commands_own(self):
        def prepare():
            signal.signal(signal.SIGCHLD, signal.SIG_IGN)
            signal.signal(signal.SIGHUP, signal.SIG_IGN)
            signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGUSR1, signal.SIGTERM})
            os.dup2(1, 7)
            os.close(0)

        without = self.inherited(preexec_fn=prepare, close_fds=False)
        with_run = self.inherited(TOOL, "run", "-o", "/dev/null", preexec_fn=prepare, close_fds=False)
        own = ("environment LD_AUDIT=", "environment CKSCRIBE_RUN=", "environment WendrafilConfigurationPath=")
        self.assertEqual([line for line in with_run if not line.startswith(own)], without)
        self.assertEqual(len(with_run), len(without) + 3)
        self.assertIn("descriptor 7", with_run)
        self.assertNotIn("descriptor 0", with_run)
        self.assertIn("signal 17 ignored open", with_run)

    def test_closed_standard_error_gets_nothing_and_the_command_runs(self):
        done = run(APPLICATION, "slots", ONE, preexec_fn=lambda: os.close(2), capture_output=False, stdout=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))

    def test_reader_that_goes_away_does_not_disturb_the_command(self):
        done = subprocess.run(["sh", "-c", f"('{TOOL}' run '{APPLICATION}' threads '{ONE}' 2>&1 >/dev/null; echo $? >&3) 3>'{self.place}/status' | head -n 1"],
                              capture_output=True, text=True, timeout=60)
        self.assertEqual(done.stdout, f"ckscribe: Logging the calls to {ONE}.\n")
        self.assertEqual((self.place / "status").read_text(), "0\n")

    def test_configuration_that_the_command_brings_along_does_not_count(self):
        (self.place / "Wendrafil.conf").write_text(f"CkLog2 = {{\n   LibUNIX64 = {TWO};\n   Enabled = 1;\n   File = {self.place}/log;\n}}\n")
        done = run("env", f"WendrafilConfigurationPath={self.place}", APPLICATION, "slots", ONE)
        self.assertEqual(done.stdout, "1 slots\n")
        self.assertEqual(len(calls(done.stderr)), 4)
        self.assertIn(f"WendrafilConfigurationPath={self.place} does not count here: this run has a configuration of its own.",
                      sentences(done.stderr))
        self.assertFalse((self.place / "log").exists())

    def test_process_that_empties_its_environment_works_and_gets_a_sentence(self):
        for command in (["env", "-u", "WendrafilConfigurationPath", APPLICATION, "slots", ONE], [APPLICATION, "cleared", ONE]):
            with self.subTest(command):
                done = run(*command)
                self.assertEqual((done.returncode, done.stdout), (0, "1 slots\n"))
                self.assertIn("1 of the processes had no WendrafilConfigurationPath any more", done.stderr)

    def test_run_inside_a_run_has_a_log_of_its_own(self):
        file = self.place / "inner"
        done = run(TOOL, "run", "-o", file, APPLICATION, "slots", ONE)
        self.assertEqual(done.stdout, "1 slots\n")
        self.assertEqual(len(calls(file.read_text())), 4)
        self.assertEqual(calls(done.stderr), [])

    def test_directory_for_temporary_files_that_cannot_be_configured_is_passed_over(self):
        for name in ("with;semicolon", "with}brace", "with=equals", "l" * 250):
            with self.subTest(name):
                folder = self.place / name
                folder.mkdir()
                done = run(APPLICATION, "slots", ONE, environment={"TMPDIR": str(folder)})
                self.assertEqual(len(calls(done.stderr)), 4)
                self.assertEqual(list(folder.iterdir()), [])

    def test_directory_for_temporary_files_is_used_and_left_empty(self):
        done = run(APPLICATION, "inherited", environment={"TMPDIR": str(self.place)})
        self.assertIn(f"environment CKSCRIBE_RUN={self.place}/ckscribe-run.", done.stdout)
        self.assertEqual(list(self.place.iterdir()), [])

    def test_kept_directory_holds_a_configuration_that_serves_without_run(self):
        kept = self.place / "new" / "kept"
        done = run("--keep", kept, "--format", "text", APPLICATION, "slots", ONE)
        self.assertEqual(sentences(done.stderr)[-1], f"The configuration and the raw logs are in {kept}.")
        self.assertEqual(sorted(file.name for file in kept.iterdir()), ["Wendrafil.conf", "events.jsonl", "log.txt"])
        self.assertEqual({file.stat().st_mode & 0o777 for file in kept.iterdir()}, {0o600})
        self.assertIn(f"LibUNIX64 = {ONE};", (kept / "Wendrafil.conf").read_text())
        before = (kept / "events.jsonl").read_text().count("\n")
        again = subprocess.run([APPLICATION, "slots", str(pathlib.Path(TOOL).parent / "libckscribe.so")],
                               env=os.environ | {"WendrafilConfigurationPath": str(kept)}, capture_output=True, text=True)
        self.assertEqual(again.stdout, "1 slots\n")
        self.assertEqual((kept / "events.jsonl").read_text().count("\n"), before + 8)

    def test_check_finds_nothing_wrong_with_a_kept_configuration(self):
        for options in ([], ["--format", "text"], ["--format", "old", "--data"], ["--format", "events", "-e", "SESSION_FUNC"]):
            with self.subTest(options), tempfile.TemporaryDirectory(dir=self.place) as kept:
                done = run("-m", ONE, "--keep", kept, *options, APPLICATION, "slots", ONE)
                self.assertEqual(done.returncode, 0, done.stderr)
                done = ckscribe("check", "--config", kept, "--json")
                self.assertEqual([finding for finding in json.loads(done.stdout)["findings"] if finding["level"] == "wrong"], [])

    def test_kept_directory_of_another_run_is_refused(self):
        run("--keep", self.place / "kept", "true")
        done = run("--keep", self.place / "kept", "true")
        self.assertEqual(done.returncode, 125)
        self.assertIn("holds a Wendrafil.conf already", done.stderr)


if __name__ == "__main__":
    main()
