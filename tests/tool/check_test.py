"""These tests run `ckscribe check` over every mistake that people make, and over set-ups without one.

Each test of a mistake demands the sentence that names its cause, and then lets an application run with the same
configuration: what check says is what the library does.
"""

import grp
import json
import os
import pathlib
import pwd
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import textwrap
import time
import unittest

from tool_test import ARGUMENTS, TOOL, ckscribe, main

LIBRARY, CALLER, BUILD, SOURCE = (pathlib.Path(argument) for argument in ARGUMENTS)
TARGETS = BUILD / "targets"

VARIABLE = "WendrafilConfigurationPath"
FUNCTIONS = ["DestroyObject", "GetInfo", "Logout", "OpenSession", "SignFinal"]
UNREACHED = 0x54
NOBODY = 65534

NAME_TARGET = "Name the PKCS#11 library of the device: LibUNIX64 = PATH;"


class SetUp(unittest.TestCase):
    """A test has a directory with a configuration, a target and the library. Every user who finds them can read them."""

    def setUp(self):
        self.directory = pathlib.Path(tempfile.mkdtemp(prefix="ckscribe-check."))
        self.addCleanup(shutil.rmtree, self.directory)
        self.environment = {VARIABLE: str(self.directory), "HOME": str(self.directory / "home"), "LC_ALL": "C.UTF-8"}
        self.target = self.directory / "target.so"
        shutil.copy(TARGETS / "fake_target.so", self.target)
        self.log = self.directory / "log.txt"
        self.errors = self.directory / "error.txt"
        self.user = None

    def entries(self, **changed):
        """Returns the lines of a section in which all is well. A change to None leaves the key out."""
        values = {
            "LibUNIX64": self.target,
            "Enabled": 1,
            "NewFormat": 1,
            "File": self.log,
            "Error": self.errors,
            "FileMode": "0600",
            "Announce": 0,
        } | changed
        return "".join(f"   {key} = {value};\n" for key, value in values.items() if value is not None)

    def section(self, **changed):
        return "CkLog2 = {\n" + self.entries(**changed) + "}\n"

    def write(self, text):
        data = text if isinstance(text, bytes) else text.encode()
        (self.directory / "Wendrafil.conf").write_bytes(data)

    def give_to_nobody(self):
        """Makes check and the application run as a user who may enter the directory but not write to it."""
        self.directory.chmod(0o711)
        for file in (self.directory / "Wendrafil.conf", self.target):
            if file.exists():
                file.chmod(0o755)
        self.user = NOBODY if os.getuid() == 0 else None

    def outsider(self):
        return {"user": NOBODY, "group": NOBODY, "extra_groups": []} if self.user else {}

    def check(self, *options):
        """Returns all findings. Expects that check creates and changes nothing."""
        environment = {key: value for key, value in os.environ.items() if key != VARIABLE} | self.environment
        tool = TOOL
        if self.user:
            tool = str(self.directory / "ckscribe")
            shutil.copy(TOOL, tool)
        before = self.everything()
        done = subprocess.run([tool, "check", "--json", *options], capture_output=True, text=True, timeout=60,
                              cwd=self.directory, env=environment, **self.outsider())
        self.assertEqual(done.stderr, "")
        self.assertEqual(self.everything(), before, "check has created or changed something")
        findings = json.loads(done.stdout)["findings"]
        has_wrong = any(finding["level"] == "wrong" for finding in findings)
        self.assertEqual(done.returncode, 1 if has_wrong else 0)
        return findings

    def everything(self):
        return sorted((str(path), path.lstat().st_size, path.lstat().st_mtime_ns, path.lstat().st_mode)
                      for path in self.directory.rglob("*") if path.name != "ckscribe")

    def assert_found(self, level, about, line, what, do=None, options=()):
        found = self.check(*options)
        for finding in found:
            if (finding["level"], finding["about"], finding.get("line"), finding["what"]) == (level, about, line, what):
                if do is not None:
                    self.assertEqual(finding["do"], do)
                return found
        self.fail(f"not found: {level}, {about}, {line}: {what}\nFound:\n" + "\n".join(map(str, found)))

    def assert_well(self, options=()):
        wrong = [finding for finding in self.check(*options) if finding["level"] == "wrong"]
        self.assertEqual(wrong, [])

    # --- The library

    def run_application(self):
        library, caller = LIBRARY, CALLER
        if self.user:
            library, caller = self.directory / "libckscribe.so", self.directory / "library_caller"
            shutil.copy(LIBRARY, library)
            shutil.copy(CALLER, caller)
        environment = {key: value for key, value in os.environ.items() if key != VARIABLE} | self.environment
        done = subprocess.run([caller, library], capture_output=True, timeout=60, cwd=self.directory, env=environment,
                              **self.outsider())
        self.output = done.stderr.decode()
        self.assertEqual(done.returncode, 0, self.output)
        return json.loads(done.stdout)

    def assert_reached(self):
        """Expects that the application's calls reach the target."""
        self.assertEqual(self.run_application(), dict.fromkeys(FUNCTIONS, 0))

    def assert_unreached(self):
        self.assertEqual(self.run_application(), dict.fromkeys(FUNCTIONS, UNREACHED))

    def assert_logged(self, functions, log=None):
        """Expects that the application's calls reach the target, and that the log, in the new format, holds just these."""
        self.assert_reached()
        self.assertEqual(self.functions_in(log or self.log), functions)

    def functions_in(self, log):
        return sorted(name.decode().replace("_", "") for name in re.findall(rb"STRT(\w+)", log.read_bytes()))

    def assert_no_log(self):
        """Expects that the application's calls reach the target, and that nothing is written."""
        self.assert_reached()
        self.assertFalse(self.log.exists())

    def assert_defaults(self):
        """Expects that the library reads no key at all: there is neither target nor log."""
        self.assert_unreached()
        self.assertFalse(self.log.exists())


class Place(SetUp):
    def test_missing_file_is_wrong_and_every_setting_has_its_default(self):
        path = self.directory / "Wendrafil.conf"
        self.assert_found("wrong", "configuration", None,
                          f"{path} cannot be read: there is no such file. Every setting has its default, and nothing is logged.",
                          f"Create it, or set {VARIABLE} to the folder of another Wendrafil.conf.")
        self.assert_defaults()

    def test_file_under_etc_is_named_when_the_variable_is_not_set(self):
        del self.environment[VARIABLE]
        environment = {key: value for key, value in os.environ.items() if key != VARIABLE}
        done = subprocess.run([TOOL, "check"], capture_output=True, text=True, env=environment, timeout=60)
        self.assertTrue(done.stdout.startswith(
            f"ok    configuration: /etc/Wendrafil.conf is the file, since {VARIABLE} is not set.\n"), done.stdout)

    def test_variable_that_names_a_missing_folder_is_wrong(self):
        self.write(self.section())
        self.environment[VARIABLE] = str(self.directory / "missing")
        self.assert_found("wrong", "configuration", None,
                          f'{VARIABLE} names "{self.directory}/missing", which is no folder that can be reached: the library '
                          f"looks for {self.directory}/missing/Wendrafil.conf.",
                          f"Set {VARIABLE} to the folder of Wendrafil.conf.")
        self.assert_defaults()

    def test_variable_that_names_the_file_is_wrong(self):
        self.write(self.section())
        path = self.directory / "Wendrafil.conf"
        self.environment[VARIABLE] = str(path)
        self.assert_found("wrong", "configuration", None,
                          f"{VARIABLE} names a file, {path}, but has to name the folder: the library looks for "
                          f"{path}/Wendrafil.conf.", f"Set {VARIABLE}={self.directory}")
        self.assert_defaults()

    def test_variable_of_more_than_256_characters_is_wrong(self):
        folder = self.directory / ("a" * 120) / ("b" * 120) / ("c" * 60)
        folder.mkdir(parents=True)
        self.write(self.section())
        shutil.copy(self.directory / "Wendrafil.conf", folder)
        self.environment[VARIABLE] = str(folder)
        self.assert_found("wrong", "configuration", None,
                          f"{VARIABLE} has {len(str(folder))} characters, and only the first 256 count: the file is "
                          f"{str(folder)[:256]}/Wendrafil.conf.", "Choose a folder with a shorter path.")
        self.assert_defaults()

    def test_unreadable_file_is_wrong_and_its_owner_is_named(self):
        self.write(self.section())
        self.give_to_nobody()
        path = self.directory / "Wendrafil.conf"
        path.chmod(0o000)
        owner = "root, group root" if os.getuid() == 0 else None
        found = self.check()
        what = next(finding["what"] for finding in found if finding["level"] == "wrong")
        self.assertRegex(what, rf"\A{path} cannot be read: Permission denied \(owner {owner or '.*'}, permissions 0000\)\. "
                               r"Every setting has its default, and nothing is logged\.\Z")
        self.assert_defaults()

    def test_empty_file_is_wrong(self):
        self.write("")
        path = self.directory / "Wendrafil.conf"
        self.assert_found("wrong", "configuration", None,
                          f"{path} cannot be read: it is empty. Every setting has its default, and nothing is logged.",
                          'Write a section "CkLog2 = {" ... "}" with the keys LibUNIX64, Enabled and File, or set '
                          "WendrafilConfigurationPath to the folder of another Wendrafil.conf.")
        self.assert_defaults()

    def test_directory_in_place_of_the_file_is_wrong(self):
        (self.directory / "Wendrafil.conf").mkdir()
        self.assert_found("wrong", "configuration", None,
                          f"{self.directory}/Wendrafil.conf cannot be read: it is a directory. Every setting has its default, "
                          "and nothing is logged.",
                          "Put a regular file in its place, or set WendrafilConfigurationPath to the folder of another "
                          "Wendrafil.conf.")
        self.assert_defaults()

    def test_byte_0_is_wrong_because_it_ends_the_text(self):
        text = self.section(Enabled=None).encode()
        before = text.index(b"   File")
        self.write(text[:before] + b"\0" + text[before:])
        self.assert_found("wrong", "configuration", None,
                          f"Of the file's {len(text) + 1} bytes the first {before} count: a byte 0 follows.",
                          "Save it as plain text (UTF-8).")
        self.assert_no_log()

    def test_file_of_another_name_is_noted_as_one_that_the_library_does_not_read(self):
        self.write(self.section())
        other = self.directory / "other.conf"
        (self.directory / "Wendrafil.conf").rename(other)
        self.assert_found("note", "configuration", None, "The library reads only files of the name Wendrafil.conf.",
                          f"Rename it before {VARIABLE} names its folder.", ["--config", str(other)])

    def test_file_that_is_not_there_needs_no_other_name(self):
        findings = self.check("--config", str(self.directory / "other.conf"))
        self.assertEqual([finding for finding in findings if finding["what"].startswith("The library reads only")], [])
        self.assertEqual([finding["level"] for finding in findings if finding["about"] == "configuration"], ["ok", "wrong"])

    def test_folder_on_the_command_line_stands_for_its_file(self):
        self.write(self.section())
        del self.environment[VARIABLE]
        self.assert_found("ok", "configuration", None,
                          f"{self.directory}/Wendrafil.conf is the file that was named on the command line.",
                          options=["--config", str(self.directory)])

    def test_file_that_everybody_may_change_is_noted(self):
        self.write(self.section())
        self.directory.chmod(0o755)
        path = self.directory / "Wendrafil.conf"
        path.chmod(0o666)
        self.assert_found("note", "configuration", None,
                          f"Everybody may change {path}, and so choose the library that the application loads.",
                          f"chmod o-w {path}")


class Syntax(SetUp):
    def test_tab_before_a_key_is_wrong(self):
        self.write(self.section().replace("   ", "\t"))
        found = self.assert_found("wrong", "Enabled", 3,
                                  "This does not count: a tab stands before the name, and a key is not found after a tab.",
                                  "Indent it with spaces.")
        self.assertEqual([finding.get("line") for finding in found if "a tab stands before" in finding["what"]],
                         [2, 3, 4, 5, 6, 7, 8])
        self.assert_defaults()

    def test_tab_before_the_section_is_wrong(self):
        self.write("\t" + self.section())
        self.assert_found("wrong", "CkLog2", 1,
                          "A tab stands before the section's name: there is no section CkLog2, every setting has its default, "
                          "and nothing is logged.", 'Begin the line with "CkLog2 = {", without a tab.')
        self.assert_defaults()

    def test_misspelt_section_is_wrong_and_the_right_name_is_given(self):
        for name in ("CkLog", "cklog2", "CKLOG2", "Cklog2"):
            with self.subTest(name):
                self.write("Misc = {\n}\n" + self.section().replace("CkLog2", name))
                self.assert_found("wrong", "CkLog2", 3,
                                  f'The section is called "{name}", not "CkLog2" (capitals matter): there is no section CkLog2, '
                                  "every setting has its default, and nothing is logged.", "Call it CkLog2.")
                self.assert_defaults()

    def test_missing_section_is_wrong(self):
        self.write("Misc = {\n   Apache = 1;\n}\n")
        self.assert_found("wrong", "CkLog2", None,
                          "There is no section CkLog2 in the file: every setting has its default, and nothing is logged.",
                          'Begin the section with a line "CkLog2 = {", without a tab before it.')
        self.assert_defaults()

    def test_section_in_brackets_is_wrong(self):
        self.write("[CkLog2]\n" + self.entries().replace("   ", "").replace(";", ""))
        self.assert_found("wrong", "CkLog2", 1,
                          '"[CkLog2]" is not how a section begins here: there is no section CkLog2, every setting has its '
                          "default, and nothing is logged.",
                          'Write "CkLog2 = {" in its place, indent the keys with spaces, and end the section with "}".')
        self.assert_found("note", "Enabled", 3, "This does not count: there is no section CkLog2.")
        self.assert_defaults()

    def test_section_in_tags_is_wrong(self):
        self.write("<CkLog2>\n" + self.entries() + "</CkLog2>\n")
        self.assert_found("wrong", "CkLog2", 1,
                          '"<CkLog2>" is not how a section begins here: there is no section CkLog2, every setting has its '
                          "default, and nothing is logged.",
                          'Write "CkLog2 = {" in its place, indent the keys with spaces, and end the section with "}".')
        self.assert_found("note", "Enabled", 3, "This does not count: there is no section CkLog2.")
        self.assert_defaults()

    def test_section_name_in_a_tag_is_wrong(self):
        self.write(self.section().replace("CkLog2 = {", "<CkLog2> = {"))
        self.assert_found("wrong", "CkLog2", 1,
                          '"<" stands directly before the section\'s name: there is no section CkLog2, every setting has its '
                          "default, and nothing is logged.",
                          'Begin the section with a line "CkLog2 = {", without a tab before it.')
        self.assert_defaults()

    def test_colon_before_a_key_is_wrong(self):
        self.write(self.section().replace("   Enabled", "   :Enabled"))
        self.assert_found("wrong", "Enabled", 3, 'This does not count: ":" stands directly before the name.',
                          "Take it away; there are no quotes and no marks before a name.")
        self.assert_no_log()

    def test_section_without_an_equals_sign_is_wrong(self):
        self.write(self.section().replace("CkLog2 = {", "CkLog2 {"))
        self.assert_found("wrong", "CkLog2", 1,
                          'Between "CkLog2" and "{" there is not just "=": there is no section CkLog2, every setting has its '
                          "default, and nothing is logged.")
        self.assert_defaults()

    def test_byte_order_mark_is_noted_and_hides_the_section(self):
        self.write(b"\xef\xbb\xbf" + self.section().encode())
        self.assert_found("note", "configuration", 1,
                          "The file begins with a byte order mark (3 bytes), which is part of its first word.",
                          "Save it as plain text without a byte order mark.")
        self.assert_found("wrong", "CkLog2", 1,
                          "A byte order mark or another character stands directly before the section's name: there is no "
                          "section CkLog2, every setting has its default, and nothing is logged.")
        self.assert_defaults()

    def test_second_section_of_the_name_is_wrong_and_does_not_count(self):
        self.write(self.section() + self.section(Enabled=0))
        self.assert_found("wrong", "CkLog2", 10,
                          "This is another section of this name: only the one on line 1 counts.", "Put all keys into one section.")
        self.assert_found("note", "Enabled", 12,
                          "This does not count: it does not stand in the section that begins on line 1.")
        self.assert_logged(FUNCTIONS)

    def test_second_entry_of_a_key_is_wrong_and_does_not_count(self):
        self.write(self.section().replace("   Enabled", "   Enabled = 0;\n   Enabled"))
        self.assert_found("wrong", "Enabled", 4, "This does not count: the first of its name counts, on line 3.",
                          "Delete one of the two.")
        self.assert_no_log()

    def test_closing_brace_in_a_value_is_wrong_because_it_ends_the_section(self):
        self.write(self.section(File=f"{self.directory}/a}}b.txt"))
        self.assert_found("wrong", "File", 5,
                          f'A "}}" stands in the value and ends the section: the value is "{self.directory}/a", and what stands '
                          "behind it does not count.", 'Choose a value without "}".')
        self.assert_found("wrong", "Error", 6,
                          'This does not count: it stands behind the "}" of line 5, which ends the section.',
                          "Move it into the section.")
        self.assert_logged(FUNCTIONS, self.directory / "a")

    def test_section_that_begins_within_another_is_wrong(self):
        self.write("CkLog2 = {\n" + self.entries(Enabled=None) + "LBLib2 = {\n   Enabled = 1;\n}\n")
        self.assert_found("wrong", "LBLib2", 8,
                          'This section begins before a "}" has closed CkLog2 (line 1): its keys count as keys of CkLog2.',
                          'Close CkLog2 with a line "}" before it.')
        self.assert_logged(FUNCTIONS)

    def test_commented_key_that_does_not_count_is_noted(self):
        self.write(self.section().replace("   Enabled", "#Enabled"))
        self.assert_found("note", "Enabled", 3, 'This does not count: "#" stands directly before the name.',
                          "Take it away if the key is to count.")
        self.assert_found("wrong", "Enabled", None, "The key is missing: no log is written.", 'Write "Enabled = 1;" to have one.')
        self.assert_no_log()

    def test_commented_key_that_counts_is_wrong(self):
        self.write(self.section().replace("   Enabled", "# Enabled = 0;\n   Enabled"))
        self.assert_found("wrong", "Enabled", 3,
                          "This line counts, although it begins like a comment: there are no comments, and a blank stands "
                          'before the name. The value is "0".',
                          "Delete the line, or take away the mark before it if it is to count.")
        self.assert_no_log()

    def test_commented_key_behind_the_one_that_counts_is_noted(self):
        self.write(self.section().replace("   Error", "   # Enabled = 0;\n   Error"))
        self.assert_found("note", "Enabled", 6,
                          "This does not count: the first of its name counts, on line 3. Without that one this line would "
                          "count, although it begins like a comment.",
                          "Take away the blank before the name, or delete the line.")
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_commented_key_that_the_library_would_not_find_is_noted(self):
        self.write(self.section().replace("   Error", "   # Enabled\t= 0;\n   Error"))
        self.assert_found("note", "Enabled", 6, 'This does not count: a tab stands between the name and "=".')
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_text_behind_a_semicolon_is_noted(self):
        self.write(self.section(File=f"{self.log};old.txt"))
        self.assert_found("note", "CkLog2", 5, '"old.txt" does not count: the ";" before it ends the value.',
                          'Choose a value without ";".')
        self.assert_logged(FUNCTIONS)

    def test_key_inside_an_earlier_value_is_wrong_because_it_counts(self):
        self.write(self.section().replace("   Enabled", "   Comment = set Enabled = 0 to stop;\n   Enabled"))
        self.assert_found("wrong", "Enabled", 3,
                          'The key stands inside the value of Comment, and counts: the value is "0 to stop".',
                          'Keep "Enabled =" out of other values and texts.')
        self.assert_found("wrong", "Enabled", 4, "This does not count: the first of its name counts, on line 3.")
        self.assert_no_log()

    def test_unknown_key_is_wrong_when_it_is_like_a_missing_one_and_else_noted(self):
        self.write(self.section().replace("Enabled", "Enabeld").replace("   Announce", "   Colour = 1;\n   Announce"))
        self.assert_found("wrong", "Enabeld", 3,
                          'The library knows no key of this name. The nearest one that it knows is "Enabled".',
                          "Call it Enabled.")
        self.assert_found("note", "Colour", 8,
                          'The library knows no key of this name. The nearest one that it knows is "Error".')
        self.assert_no_log()

    def test_blank_or_another_character_inside_a_key_is_wrong(self):
        for name in ("Ena bled", "Ena\tbled", "Ena/bled"):
            with self.subTest(name):
                self.write(self.section().replace("Enabled", name))
                self.assert_found("wrong", name, 3,
                                  'The library knows no key of this name. The nearest one that it knows is "Enabled".',
                                  "Call it Enabled.")
                self.assert_no_log()
        self.write(self.section().replace("   Announce", "   ten boats = 1;\n   Announce"))
        self.assertEqual([finding for finding in self.check() if finding["about"].startswith("ten")], [])
        self.assert_logged(FUNCTIONS)

    def test_key_in_lower_case_is_wrong(self):
        self.write(self.section().replace("Enabled", "enabled"))
        self.assert_found("wrong", "enabled", 3,
                          'The library knows no key of this name. The nearest one that it knows is "Enabled".')
        self.assert_no_log()

    def test_colon_in_place_of_the_equals_sign_is_wrong(self):
        self.write(self.section().replace("Enabled =", "Enabled:"))
        self.assert_found("wrong", "Enabled", 3, 'This does not count: a ":" follows the name and no "=".',
                          'Write "Enabled = 1;".')
        self.assert_no_log()

    def test_missing_equals_sign_is_noted(self):
        self.write(self.section().replace("Enabled =", "Enabled"))
        self.assert_found("note", "Enabled", 3, 'This does not count: no "=" follows the name.')
        self.assert_no_log()

    def test_tab_between_name_and_equals_sign_is_wrong(self):
        self.write(self.section().replace("Enabled =", "Enabled\t="))
        self.assert_found("wrong", "Enabled", 3, 'This does not count: a tab stands between the name and "=".',
                          "Put a space there.")
        self.assert_no_log()

    def test_quotes_around_a_name_are_wrong(self):
        self.write(self.section().replace("Enabled", '"Enabled"'))
        self.assert_found("wrong", "Enabled", 3, 'This does not count: "\\"" stands directly before the name.')
        self.assert_no_log()


class Values(SetUp):
    def test_word_for_enabled_is_wrong_because_it_counts_as_0(self):
        for word in ("true", "yes", "on", "'1'"):
            with self.subTest(word):
                self.write(self.section(Enabled=word))
                self.assert_found("wrong", "Enabled", 3, f'"{word}" is no number and counts as 0: no log is written.',
                                  'Write "Enabled = 1;" or "Enabled = 0;".')
                self.assert_no_log()

    def test_missing_enabled_is_wrong_because_no_log_is_written(self):
        self.write(self.section(Enabled=None))
        self.assert_found("wrong", "Enabled", None, "The key is missing: no log is written.", 'Write "Enabled = 1;" to have one.')
        self.assert_no_log()

    def test_enabled_0_is_noted_because_no_log_is_written(self):
        self.write(self.section(Enabled=0))
        self.assert_found("note", "Enabled", 3, "It is 0: no log is written.", 'Write "Enabled = 1;" to have one.')
        self.assert_well()
        self.assert_no_log()

    def test_enabled_0_is_well_when_events_are_written(self):
        self.write(self.section(Enabled=0, Events=f"{self.directory}/events.jsonl"))
        self.assert_found("ok", "Enabled", 3, "It is 0: events are written, and no log.")
        self.write(self.section(Enabled=None, Events=f"{self.directory}/events.jsonl"))
        self.assert_found("ok", "Enabled", None, "The key is missing: events are written, and no log.")
        self.assert_well()

    def test_unknown_class_in_the_mask_is_wrong_and_the_nearest_one_is_given(self):
        self.write(self.section(LoggingMask="SESION_FUNC|SIGN_VERIFY_FUNC"))
        self.assert_found("wrong", "LoggingMask", 9, '"SESION_FUNC" is no class and is ignored (capitals matter).',
                          'Write "LoggingMask = SESSION_FUNC|SIGN_VERIFY_FUNC;".')
        self.assert_logged(["SignFinal"])

    def test_mask_in_lower_case_is_wrong_and_logs_nothing(self):
        self.write(self.section(LoggingMask="session_func"))
        self.assert_found("wrong", "LoggingMask", 9, '"session_func" is no class and is ignored (capitals matter).',
                          'Write "LoggingMask = SESSION_FUNC;".')
        self.assert_found("note", "LoggingMask", 9, "The mask is 0x0 and logs 0 of the 295 functions.")
        self.assert_logged([])

    def test_empty_mask_is_wrong_because_nothing_is_logged(self):
        self.write(self.section(LoggingMask=""))
        self.assert_found("wrong", "LoggingMask", 9, "The mask is empty: nothing is logged.")
        self.assert_logged([])

    def test_mask_none_is_noted_because_nothing_is_logged(self):
        self.write(self.section(LoggingMask="NONE"))
        self.assert_found("note", "LoggingMask", 9, "NONE is the name of no class: nothing is logged.")
        self.assert_well()
        self.assert_logged([])

    def test_commas_between_classes_are_wrong(self):
        self.write(self.section(LoggingMask="SESSION_FUNC, SIGN_VERIFY_FUNC,OBJ_MNGMNT_FUNC"))
        self.assert_found("wrong", "LoggingMask", 9,
                          '"SESSION_FUNC,", "SIGN_VERIFY_FUNC,OBJ_MNGMNT_FUNC" are no class and are ignored (commas do not stand '
                          'between classes, blanks and "|" do).',
                          'Write "LoggingMask = SESSION_FUNC|SIGN_VERIFY_FUNC|OBJ_MNGMNT_FUNC;".')
        self.assert_logged([])

    def test_mask_of_more_than_12_words_is_wrong(self):
        self.write(self.section(LoggingMask="MISC_FUNC " * 12 + "SESSION_FUNC"))
        self.assert_found("wrong", "LoggingMask", 9, "The mask has 13 words, and those after the 12th do not count.",
                          "Name each class once; ALL_FUNC stands for all of them.")
        self.assert_logged([])

    def test_mask_is_shown_with_the_number_of_functions_that_it_logs(self):
        self.write(self.section(LoggingMask="SESSION_FUNC | SIGN_VERIFY_FUNC", LoggingLevel="ADMIN"))
        self.assert_found("ok", "LoggingMask", 9, "The mask is 0x4400, the level ADMIN, and logs 2 of the 295 functions.")
        self.assert_logged(["Logout"])
        self.write(self.section())
        self.assert_found("ok", "LoggingMask", None,
                          "The mask is missing (ALL_FUNC) and logs 294 of the 295 functions.")

    def test_level_in_lower_case_is_wrong(self):
        self.write(self.section(LoggingLevel="admin"))
        self.assert_found("wrong", "LoggingLevel", 9,
                          '"admin" is none of DESTROY, MODIFY and ADMIN (capitals matter): calls of every level are logged.',
                          'Write "LoggingLevel = ADMIN;".')
        self.assert_logged(FUNCTIONS)

    def test_comment_behind_a_level_is_wrong(self):
        self.write(self.section(LoggingLevel="DESTROY # only these"))
        self.assert_found("wrong", "LoggingLevel", 9,
                          'There are no comments: " # only these" is part of the value, which is no level then. Calls of every '
                          "level are logged.",
                          'Write "LoggingLevel = DESTROY;".')
        self.assert_logged(FUNCTIONS)

    def test_blank_behind_a_level_is_wrong(self):
        self.write(self.section(LoggingLevel="DESTROY "))
        self.assert_found("wrong", "LoggingLevel", 9,
                          '"DESTROY " is no level, for the blank in it: calls of every level are logged.',
                          'Write "LoggingLevel = DESTROY;".')
        self.assert_logged(FUNCTIONS)

    def test_level_that_counts_is_named(self):
        self.write(self.section(LoggingLevel="DESTROY"))
        self.assert_found("ok", "LoggingLevel", 9, "The level is DESTROY.")
        self.assert_logged(["DestroyObject"])

    def test_path_of_more_than_499_characters_is_wrong(self):
        path = str(self.directory) + "/." * 250 + "/long.txt"
        self.write(self.section(File=path))
        self.assert_found("wrong", "File", 5, f"The value has {len(path)} characters, and only the first 499 count.",
                          "Make it at most 499 characters long.")
        self.assert_reached()
        self.assertFalse((self.directory / "long.txt").exists())

    def test_mask_of_more_than_199_characters_is_wrong(self):
        mask = "MISC_FUNC" + " " * 190 + "SESSION_FUNC"
        self.write(self.section(LoggingMask=mask))
        self.assert_found("wrong", "LoggingMask", 9, f"The value has {len(mask)} characters, and only the first 199 count.")
        self.assert_logged([])

    def test_blank_before_the_semicolon_is_wrong_because_it_belongs_to_the_value(self):
        self.write(self.section(File=f"{self.log} "))
        self.assert_found("wrong", "File", 5,
                          f'The value is "{self.log} ": what stands before the ";" or the end of the line belongs to it.',
                          f'Write "File = {self.log};".')
        self.assert_logged(FUNCTIONS, self.directory / "log.txt ")

    def test_tab_behind_the_equals_sign_is_wrong_because_it_belongs_to_the_value(self):
        self.write(self.section().replace("File =", "File =\t"))
        self.assert_found("wrong", "File", 5, f'The value is "\\x09 {self.log}": a tab after "=" belongs to it.')
        self.assert_no_log()

    def test_quotes_around_a_path_are_wrong_because_they_belong_to_it(self):
        self.write(self.section(File=f'"{self.log}"'))
        self.assert_found("wrong", "File", 5, f'The quotes are part of the path "{self.log}".', f'Write "File = {self.log};".')
        self.assert_no_log()

    def test_comment_behind_a_path_is_wrong_because_it_belongs_to_the_path(self):
        self.write(self.section().replace("/log.txt;", "/log.txt # the log"))
        self.assert_found("wrong", "File", 5, 'There are no comments: " # the log" is part of the path.',
                          f'Write "File = {self.log};".')
        self.assert_logged(FUNCTIONS, self.directory / "log.txt # the log")

    def test_tilde_in_a_path_is_wrong(self):
        self.write(self.section(File="~/log.txt"))
        (self.directory / "home").mkdir()
        self.assert_found("wrong", "File", 5,
                          '"~" does not stand for a home directory: it is the name of a folder in the application\'s current '
                          "directory.", "Write the whole path.")
        self.assert_reached()
        self.assertFalse((self.directory / "home/log.txt").exists())
        self.assertEqual([finding["level"] for finding in self.check() if finding["about"] == "File"], ["wrong"])

    def test_variable_in_a_path_is_wrong(self):
        self.write(self.section(File="$HOME/log.txt"))
        (self.directory / "home").mkdir()
        self.assert_found("wrong", "File", 5, '"$" is a character of the path: no variable is put in its place.',
                          "Write the whole path.")
        self.assert_reached()
        self.assertFalse((self.directory / "home/log.txt").exists())

    def test_permissions_that_are_no_octal_number_are_wrong(self):
        os.umask(0o027)
        self.write(self.section(FileMode="rw-------"))
        self.assert_found("wrong", "FileMode", 7, '"rw-------" is no octal number up to 0777: new files get 0666 less the umask.',
                          'Write "FileMode = 0600;".')
        self.assert_logged(FUNCTIONS)
        self.assertEqual(self.log.stat().st_mode & 0o777, 0o640)
        self.assertIn("FileMode", self.errors.read_text())

    def test_permissions_that_keep_the_owner_out_are_noted(self):
        self.write(self.section(FileMode="0400"))
        self.assert_found("note", "FileMode", 7, "New files get the permissions 0400: their owner cannot open them again.",
                          'Write "FileMode = 0600;".')
        self.assert_logged(FUNCTIONS)
        self.assertEqual(self.log.stat().st_mode & 0o777, 0o400)

    def test_word_for_announce_is_wrong_because_it_does_not_count_as_0(self):
        self.write(self.section(Announce="no"))
        self.assert_found("wrong", "Announce", 8,
                          '"no" is no plain 0: functions that the target lacks are announced on standard output.',
                          'Write "Announce = 0;" to keep standard output as it is.')
        self.assert_reached()
        self.assertIn("Failed to load function 'CA_GetFunctionList'.", self.output)

    def test_word_for_new_format_is_wrong_because_it_counts_as_0(self):
        self.write(self.section(NewFormat="yes"))
        self.assert_found("wrong", "NewFormat", 4, '"yes" is no number and counts as 0.')
        self.assert_reached()
        self.assertIn("Command(GetInfo, None, Start)", self.log.read_text())

    def test_word_for_hide_data_is_noted_because_it_hides_data(self):
        self.write(self.section(HideData="no"))
        self.assert_found("note", "HideData", 9, '"no" hides data in log and events, as everything but a plain 0 does.')


class Target(SetUp):
    def assert_target_fails(self, target, reason, do=None):
        self.write(self.section(LibUNIX64=target))
        self.assert_found("wrong", "LibUNIX64", 2,
                          "The target does not load, and every call answers CKR_FUNCTION_NOT_SUPPORTED. The loader says: " + reason,
                          do)
        self.assert_unreached()
        # The library reports the same words of the loader.
        self.assertIn(reason.split(". ")[0].removesuffix(".")[:100], self.errors.read_text())

    def test_target_that_does_not_exist_is_wrong(self):
        path = f"{self.directory}/missing.so"
        self.assert_target_fails(
            path, f"{path}: cannot open shared object file: No such file or directory. There is no such file.", NAME_TARGET)

    def test_target_in_quotes_is_wrong(self):
        path = f'"{self.target}"'
        self.assert_target_fails(
            path, f"{path}: cannot open shared object file: No such file or directory. There is no such file.", NAME_TARGET)
        self.assert_found("wrong", "LibUNIX64", 2, f"The quotes are part of the path {path}.",
                          f'Write "LibUNIX64 = {self.target};".')

    def test_target_that_is_no_library_is_wrong(self):
        path = self.directory / "text.so"
        path.write_text("This is a text, and a longer one than the head of a library is; it goes on and on.\n" * 2)
        self.assert_target_fails(path, f"{path}: invalid ELF header. It is no library of this system (not ELF).", NAME_TARGET)

    def test_target_of_32_bits_is_wrong(self):
        path = self.directory / "narrow.so"
        data = bytearray(self.target.read_bytes())
        data[4] = 1
        path.write_bytes(data)
        self.assert_target_fails(
            path, f"{path}: wrong ELF class: ELFCLASS32. It is a library of 32 bits, and this is a program of 64.", NAME_TARGET)

    def test_target_with_an_undefined_symbol_is_wrong(self):
        path = TARGETS / "target_that_lacks_a_symbol.so"
        self.assert_target_fails(path, f"{path}: undefined symbol: symbol_that_nobody_defines.",
                                 "Ask its vendor for a library that is complete, or install what defines that symbol.")

    def test_target_that_lacks_a_library_is_wrong(self):
        path = BUILD / "target_that_needs_another/target_that_needs_another.so"
        self.assert_target_fails(
            path, "liblibrary_that_goes.so: cannot open shared object file: No such file or directory.",
            "Install the library that it needs, or let LD_LIBRARY_PATH name its folder.")

    def test_directory_as_target_is_wrong(self):
        self.assert_target_fails(self.directory, f"{self.directory}: cannot read file data: Is a directory. It is a directory.",
                                 NAME_TARGET)

    def test_library_itself_or_a_copy_as_target_is_wrong(self):
        for path in (LIBRARY, self.directory / "copy.so"):
            with self.subTest(path):
                if not path.exists():
                    shutil.copy(LIBRARY, path)
                self.write(self.section(LibUNIX64=path))
                self.assert_found("wrong", "LibUNIX64", 2,
                                  f"{path} is ckscribe itself: it is not bound, and every call answers "
                                  "CKR_FUNCTION_NOT_SUPPORTED.", NAME_TARGET)
                self.assert_unreached()

    def test_library_without_pkcs11_as_target_is_wrong(self):
        self.write(self.section(LibUNIX64="libm.so.6"))
        self.assert_found("wrong", "LibUNIX64", 2,
                          "libm.so.6 loads, but is no PKCS#11 library: it has no C_GetFunctionList.", NAME_TARGET)
        self.assert_unreached()

    def test_target_without_a_function_list_is_wrong(self):
        path = TARGETS / "target_that_lacks_its_list.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("wrong", "LibUNIX64", 2,
                          f"{path} loads, but is no PKCS#11 library: it has no C_GetFunctionList.", NAME_TARGET)

    def test_empty_target_is_wrong_because_it_stands_for_the_application(self):
        self.write(self.section(LibUNIX64=""))
        self.assert_found("wrong", "LibUNIX64", 2,
                          "The path is empty, which stands for the application itself: there is no target, and every call "
                          "answers CKR_FUNCTION_NOT_SUPPORTED.", NAME_TARGET)
        self.assert_unreached()

    def test_missing_target_is_noted_with_the_default(self):
        self.write(self.section(LibUNIX64=None))
        self.assert_found("note", "LibUNIX64", None, "The key is missing: the target is /usr/lib/libmordavek2.so.", NAME_TARGET)
        self.assert_unreached()
        self.assertIn("/usr/lib/libmordavek2.so", self.errors.read_text())

    def test_relative_target_is_noted(self):
        self.write(self.section(LibUNIX64="./target.so"))
        self.assert_found("note", "LibUNIX64", 2,
                          '"./target.so" is relative to the directory in which the application makes its first call.',
                          "Write the whole path.")
        self.assert_logged(FUNCTIONS)

    def test_target_without_a_folder_is_noted(self):
        self.write(self.section(LibUNIX64="target.so"))
        self.assert_found("note", "LibUNIX64", 2,
                          '"target.so" has no folder: the loader looks for it where it looks for libraries, which may differ from '
                          "one application to the next.", "Write the whole path.")
        self.assert_unreached()

    def test_target_that_crashes_while_it_is_loaded_is_wrong(self):
        path = TARGETS / "crashing_target.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("wrong", "LibUNIX64", 2,
                          f"The target {path} ends the process with signal 6 (Aborted) while it is loaded and asked who it is.")
        self.assertEqual(subprocess.run([CALLER, LIBRARY], capture_output=True, cwd=self.directory,
                                        env=os.environ | self.environment).returncode, -signal.SIGABRT)

    def test_target_that_hangs_while_it_is_loaded_is_wrong(self):
        path = TARGETS / "hanging_target.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("wrong", "LibUNIX64", 2,
                          f"The target {path} does not come to an end within 1 s while it is loaded and asked who it is.",
                          options=["--time-limit", "1"])
        with self.assertRaises(subprocess.TimeoutExpired):
            subprocess.run([CALLER, LIBRARY], capture_output=True, cwd=self.directory,
                           env=os.environ | self.environment, timeout=2)

    def test_what_the_target_prints_is_not_taken_for_a_result(self):
        path = TARGETS / "printing_target.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("ok", "LibUNIX64", 2, f"The target {path} loads.")

    def test_process_that_the_target_starts_ends_with_the_check(self):
        path = TARGETS / "process_starting_target.so"
        self.write(self.section(LibUNIX64=path))
        with tempfile.NamedTemporaryFile() as number:
            self.environment["FILE_FOR_PROCESS_NUMBER"] = number.name
            self.assert_found("ok", "LibUNIX64", 2, f"The target {path} loads.")
            self.assert_ended(int(number.read()))

    def assert_ended(self, process):
        for _ in range(100):
            try:
                state = pathlib.Path(f"/proc/{process}/stat").read_text().rsplit(")", 1)[1].split()[0]
            except FileNotFoundError:
                return
            if state == "Z":
                return
            time.sleep(0.1)
        os.kill(process, signal.SIGKILL)
        self.fail(f"process {process} lives on")

    def test_target_that_needs_the_library_is_noted(self):
        path = TARGETS / "target_on_top_of_library.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("note", "LibUNIX64", 2, "The target itself needs libckscribe.so: its own calls are logged, too.")
        self.assert_logged(FUNCTIONS)

    def test_function_of_the_library_does_not_count_as_one_of_the_target(self):
        path = TARGETS / "target_on_top_of_library_without_list.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("wrong", "LibUNIX64", 2,
                          f"{path} loads, but is no PKCS#11 library: it has no C_GetFunctionList.", NAME_TARGET)

    def test_target_that_exports_only_its_list_is_well(self):
        path = TARGETS / "list_only_target.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_found("ok", "LibUNIX64", 2,
                          "The target exports C_GetFunctionList and no other function of the standard: they are taken from its "
                          "list.")
        self.assert_found("ok", "LibUNIX64", 2,
                          "The target says that it is: The Makers, Fake target, version 3.7, Cryptoki 2.40.")
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_target_is_described_and_its_missing_functions_are_counted(self):
        self.write(self.section(Announce=None))
        found = self.assert_found("ok", "LibUNIX64", 2,
                                  "The target says that it is: The Makers, Fake target, version 3.7, Cryptoki 2.40.")
        self.assertIn(f"The target {self.target} loads.", [finding["what"] for finding in found])
        self.assert_found("note", "LibUNIX64", 2,
                          "The target lacks 55 functions of the standard, which answer CKR_FUNCTION_NOT_SUPPORTED.",
                          "See which with -v.")
        self.assert_found("note", "LibUNIX64", 2,
                          "The target lacks 227 functions of the vendor's. Each is announced on the application's standard "
                          "output, which programs that speak through it do not bear.",
                          'Write "Announce = 0;" to keep standard output as it is.')
        verbose = [finding["what"] for finding in self.check("-v")]
        lacked = [re.findall(r"\bCA?_\w+", what) for what in verbose if what.startswith("The target lacks")]
        self.run_application()
        announced = re.findall(r"Failed to load function '(\w+)'", self.output)
        optional = [name for name in announced if name not in lacked[0] + lacked[1]]
        self.assertEqual(set(lacked[0] + lacked[1]) - {"CKR_FUNCTION_NOT_SUPPORTED"}, set(announced) - set(optional))
        self.assertEqual(sorted(optional), ["C_DecryptDigestUpdate", "C_DecryptVerifyUpdate", "C_DigestEncryptUpdate",
                                            "C_SignEncryptUpdate"])

    def test_target_that_fails_to_initialise_is_wrong_only_when_check_initialises_it(self):
        path = TARGETS / "target_without_device.so"
        self.write(self.section(LibUNIX64=path))
        self.assert_well()
        self.assert_found("wrong", "LibUNIX64", 2, "The target's C_Initialize answers CKR_DEVICE_ERROR (0x30).",
                          "Set the target up; its documentation says how.", ["--initialize"])


class Files(SetUp):
    def test_missing_folder_of_the_log_is_wrong(self):
        self.write(self.section(File=f"{self.directory}/a/b/log.txt"))
        self.assert_found("wrong", "File", 5,
                          f"The folder {self.directory}/a does not exist: the log cannot be created.",
                          f"Create it: mkdir -p {self.directory}/a/b")
        self.assert_reached()
        self.assertIn("Could not open capture file", self.errors.read_text())

    def test_folder_of_any_name_is_one_word_of_the_command_that_creates_it(self):
        self.write(self.section(File=f"{self.directory}/it's `here`/log.txt"))
        self.assert_found("wrong", "File", 5, f"The folder {self.directory}/it's `here` does not exist: the log cannot be created.",
                          f"Create it: mkdir -p '{self.directory}/it'\\''s `here`'")

    def test_folder_in_which_the_log_cannot_be_created_is_wrong(self):
        self.write(self.section())
        self.give_to_nobody()
        if not self.user:
            self.directory.chmod(0o511)
            self.addCleanup(self.directory.chmod, 0o700)
        found = self.check()
        what = next(finding["what"] for finding in found if finding["about"] == "File")
        self.assertRegex(what, rf"\AThe log {self.log} is not there and cannot be created in {self.directory} "
                               r"\(owner \S+, group \S+, permissions 0\d11\): Permission denied\.\Z")
        self.assert_no_log()

    def test_folder_of_the_log_that_may_not_be_entered_is_wrong(self):
        closed = self.directory / "closed"
        closed.mkdir()
        (closed / "log.txt").touch()
        self.write(self.section(File=closed / "log.txt"))
        closed.chmod(0o000)
        self.addCleanup(closed.chmod, 0o700)
        self.give_to_nobody()
        self.assert_found("wrong", "File", 5,
                          f"The log {closed}/log.txt cannot be reached: {closed}: Permission denied.",
                          "Let the application's user enter every folder above it.")
        self.assert_reached()

    def test_file_in_place_of_the_logs_folder_is_wrong(self):
        (self.directory / "file").touch()
        self.write(self.section(File=f"{self.directory}/file/log.txt"))
        self.assert_found("wrong", "File", 5, f"{self.directory}/file is no folder: the log cannot be created.",
                          "Name a file in a folder.")
        self.assert_reached()
        self.assertIn("Could not open capture file", self.errors.read_text())

    def test_directory_as_log_is_wrong(self):
        self.log.mkdir()
        self.write(self.section())
        self.assert_found("wrong", "File", 5, f"The log {self.log} is a directory: nothing is written.", "Name a file in it.")
        self.assert_reached()
        self.assertIn("Could not open capture file", self.errors.read_text())

    def test_socket_as_log_is_wrong(self):
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(self.log))
            self.write(self.section())
            self.assert_found("wrong", "File", 5, f"The log {self.log} is no file that can be appended to.", "Name a file.")
            self.assert_reached()

    def test_device_as_log_is_noted(self):
        self.write(self.section(File="/dev/full"))
        self.assert_found("note", "File", 5, "The log /dev/full is a device and no file: what it does not take is lost.",
                          "Name a file.")
        self.assert_well()
        self.assert_reached()

    def test_fifo_as_log_is_noted(self):
        os.mkfifo(self.log)
        self.write(self.section())
        self.assert_found("note", "File", 5, f"The log {self.log} is a FIFO: what nobody reads is lost.",
                          "Keep a reader running, or name a file.")
        self.assert_reached()

    def test_check_does_not_disturb_the_reader_of_a_fifo(self):
        os.mkfifo(self.log)
        self.write(self.section())
        reader = subprocess.Popen(["cat", self.log], stdout=subprocess.DEVNULL)
        self.addCleanup(reader.wait)
        self.addCleanup(reader.kill)
        self.check()
        with self.assertRaises(subprocess.TimeoutExpired):
            reader.wait(0.3)

    def test_empty_path_of_the_log_is_wrong(self):
        self.write(self.section(File=""))
        self.assert_found("wrong", "File", 5, "The path is empty: no log can be opened.", "Write the whole path of the log.")
        self.assert_reached()
        self.assertIn("Could not open capture file", self.errors.read_text())

    def test_relative_path_of_the_log_is_noted_with_the_present_directory(self):
        self.write(self.section(File=None))
        self.assert_found("note", "File", None,
                          'The key is missing: the log is "log.txt", relative to the directory in which the application makes its '
                          f"first call (here it would be {self.directory}).", "Write the whole path: File = /FOLDER/log.txt;")
        self.assert_logged(FUNCTIONS)

    def test_error_file_that_cannot_be_created_is_wrong(self):
        self.write(self.section(Error=f"{self.directory}/missing/error.txt", LibUNIX64="/missing.so"))
        self.assert_found("wrong", "Error", 6,
                          f"The folder {self.directory}/missing does not exist: the error file cannot be created.",
                          f"Create it: mkdir -p {self.directory}/missing")
        self.assert_unreached()
        self.assertFalse((self.directory / "missing").exists())

    def test_empty_path_of_the_error_file_is_noted(self):
        self.write(self.section(Error="", LibUNIX64="/missing.so"))
        self.assert_found("note", "Error", 6, "The path is empty: the library's own troubles are reported nowhere.")
        self.assert_unreached()

    def test_log_that_may_be_written_and_not_read_is_wrong(self):
        self.log.touch()
        self.log.chmod(0o622)
        self.write(self.section())
        self.give_to_nobody()
        if not self.user:
            self.log.chmod(0o200)
        self.assertIn(f"{self.log}", next(finding["what"] for finding in self.check() if finding["about"] == "File"))
        what = next(finding["what"] for finding in self.check() if finding["about"] == "File")
        self.assertRegex(what, rf"\AThe log {self.log} \(owner \S+, group \S+, permissions 0\d\d\d\) cannot be opened for "
                               r"appending, which needs the right to read, too: Permission denied\.\Z")
        self.assert_reached()
        self.assertEqual(self.log.stat().st_size, 0)

    def test_log_with_data_that_everybody_may_read_is_wrong(self):
        self.directory.chmod(0o755)
        self.log.touch()
        self.log.chmod(0o644)
        self.write(self.section())
        self.assert_found("wrong", "File", 5,
                          "The log shows data in clear, and its permissions are 0644: everybody may read it.",
                          f'chmod o-rwx {self.log} ("FileMode = 0600;" for new files), or hide data with "HideData = 1;".')
        self.write(self.section(HideData=1))
        self.assert_well()

    def test_log_that_only_a_folder_protects_is_noted(self):
        self.log.touch()
        self.log.chmod(0o644)
        self.write(self.section())
        self.assert_found("note", "File", 5,
                          "The log shows data in clear, and its permissions are 0644: only a folder above it keeps others out.")
        self.assert_well()

    def test_new_log_with_data_that_everybody_may_read_is_wrong(self):
        os.umask(0o022)
        self.directory.chmod(0o755)
        self.write(self.section(FileMode=None))
        self.assert_found("wrong", "File", 5,
                          "The log shows data in clear, and its permissions would be 0644: everybody may read it.",
                          'Write "FileMode = 0600;", or hide data with "HideData = 1;".')
        self.assert_logged(FUNCTIONS)
        self.assertEqual(self.log.stat().st_mode & 0o777, 0o644)

    def test_log_whose_path_ends_with_a_slash_is_wrong(self):
        self.write(self.section(File=f"{self.log}/"))
        self.assert_found("wrong", "File", 5, f"The log {self.log}/ names a folder.", "Name a file in it.")
        self.assert_no_log()

    @unittest.skipIf(os.getuid() != 0, "only root can give a file to another user")
    def test_log_of_another_user_in_a_shared_folder_is_judged_as_the_system_opens_it(self):
        """The system decides whether it opens the log (fs.protected_regular). check must say the same."""
        shared = self.directory / "shared"
        shared.mkdir()
        shared.chmod(0o1777)
        log = shared / "log.txt"
        log.touch()
        log.chmod(0o666)
        os.chown(log, NOBODY, NOBODY)
        self.write(self.section(File=log, HideData=1))
        wrong = [finding["what"] for finding in self.check() if finding["level"] == "wrong"]
        self.assert_reached()
        refused = [f"The log {log} (owner nobody, group nogroup, permissions 0666) cannot be opened for appending: "
                   "Permission denied."]
        self.assertEqual(wrong, refused if log.stat().st_size == 0 else [])

    def test_log_behind_a_dangling_link_is_judged_by_the_place_that_the_link_names(self):
        self.log.symlink_to("a/later.txt")
        self.write(self.section())
        self.assert_found("wrong", "File", 5, f"The folder {self.directory}/a does not exist: the log cannot be created.")
        (self.directory / "a").mkdir()
        self.assert_found("ok", "File", 5, f"The log {self.log} is not there yet and can be created.")
        self.assert_logged(FUNCTIONS, self.directory / "a/later.txt")

    def test_path_of_the_events_file_is_judged_with_its_process_number(self):
        events = f"{self.directory}/100%%-events-%p.jsonl"
        self.write(self.section(Events=events))
        what = next(finding["what"] for finding in self.check() if finding["about"] == "Events")
        self.assertRegex(what, rf"\AThe events file {self.directory}/100%-events-\d+\.jsonl is not there yet and can be created\.\Z")
        self.assert_reached()
        self.assertEqual([path.name for path in self.directory.glob("100%-events-[0-9]*.jsonl")],
                         [path.name for path in self.directory.glob("*.jsonl")])
        self.write(self.section(Events=f"{self.directory}/missing/events"))
        self.assert_found("wrong", "Events", 9,
                          f"The folder {self.directory}/missing does not exist: the events file cannot be created.")
        self.assert_reached()
        self.assertIn(f"Could not open events file {self.directory}/missing/events.", self.errors.read_text())

    def test_events_with_data_that_everybody_may_read_are_wrong(self):
        self.directory.chmod(0o755)
        self.write(self.section(Events=f"{self.directory}/events.jsonl", FileMode="0644", Enabled=0))
        self.assert_well()
        self.write(self.section(Events=f"{self.directory}/events.jsonl", FileMode="0644", Enabled=0, HideData=0))
        self.assert_found("wrong", "Events", 9,
                          "The events file shows data in clear, and its permissions would be 0644: everybody may read it.")

    def test_one_file_for_log_and_errors_is_noted(self):
        self.write(self.section(Error=self.log))
        self.assert_found("note", "Error", 6, "Log and error file are the same file.", "Name another file for one of them.")
        self.write(self.section(Events=self.log))
        self.assert_found("wrong", "Events", 9, "Log and events file are the same file.", "Name another file for one of them.")
        self.write(self.section(Events=f"{self.directory}/both", Error=f"{self.directory}/both"))
        self.assert_found("wrong", "Events", 9, "Events and error file are the same file.", "Name another file for one of them.")


class P11Kit(SetUp):
    """p11-kit reads a user's own modules only if the user is not root."""

    def write_module(self, name, library):
        folder = self.directory / "home/.config/pkcs11/modules"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(f"module: {library}\n")
        for path in (self.directory / "home", self.directory / "home/.config", folder.parent, folder):
            path.chmod(0o755)
        return folder / name

    def setUp(self):
        super().setUp()
        self.environment["XDG_CONFIG_HOME"] = ""

    def test_target_and_library_as_modules_of_p11_kit_are_wrong(self):
        self.write(self.section())
        library = self.write_module("ckscribe.module", self.directory / "libckscribe.so")
        target = self.write_module("target.module", self.target)
        shutil.copy(LIBRARY, self.directory / "libckscribe.so")
        self.give_to_nobody()
        self.directory.chmod(0o777)
        self.assert_found("wrong", "p11-kit", None,
                          f"{library} names ckscribe and {target} its target: p11-kit loads the target twice, and may take the two "
                          "for one and drop the second.", "Hide the target's: an empty file /etc/pkcs11/modules/target.module")

    def test_target_as_module_of_p11_kit_is_noted(self):
        self.write(self.section())
        target = self.write_module("target.module", self.target)
        self.give_to_nobody()
        self.directory.chmod(0o777)
        self.assert_found("note", "p11-kit", None,
                          f"{target} names the target itself: what applications call through p11-kit is not logged.")
        self.assert_well()


    def test_target_and_library_as_modules_of_different_programs_are_noted(self):
        self.write(self.section())
        library = self.write_module("ckscribe.module", self.directory / "libckscribe.so")
        target = self.write_module("target.module", self.target)
        target.write_text(target.read_text() + "disable-in: application\n")
        shutil.copy(LIBRARY, self.directory / "libckscribe.so")
        self.give_to_nobody()
        self.directory.chmod(0o777)
        self.assert_found("note", "p11-kit", None,
                          f'{library} names ckscribe and {target} its target, and "enable-in" or "disable-in" says which programs '
                          "get them: none may get both.", "")
        self.assert_well()


class OtherWays(SetUp):
    def test_module_in_openssl_cnf_is_named(self):
        self.write(self.section())
        settings = self.directory / "openssl.cnf"
        settings.write_text(f"[pkcs11]\nMODULE_PATH = {self.target}\n")
        self.assert_found("note", "OpenSSL", None,
                          f"{settings}, line 2, names the target itself: those calls are not logged.",
                          "Name libckscribe.so there.", ["--openssl", str(settings)])
        settings.write_text("[pkcs11]\npkcs11-module-path = /usr/lib/libckscribe.so\n")
        self.assert_found("ok", "OpenSSL", None, f"{settings}, line 2, names ckscribe.", options=["--openssl", str(settings)])

    def test_module_in_the_database_of_nss_is_named(self):
        self.write(self.section())
        modules = self.directory / "pkcs11.txt"
        modules.write_text(f"library=\nname=NSS Internal PKCS #11 Module\n\nlibrary={self.target}\nname=target\n")
        self.assert_found("note", "NSS", None, f"{modules}, line 4, names the target itself: those calls are not logged.",
                          options=["--nss", str(self.directory)])


class AllIsWell(SetUp):
    def test_complete_configuration_is_well(self):
        self.write(self.section())
        self.assert_well()
        self.assert_logged(FUNCTIONS)
        self.assert_well()

    def test_dos_line_ends_are_well(self):
        self.write(self.section().replace("\n", "\r\n"))
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_missing_semicolons_are_well(self):
        self.write(self.section().replace(";", ""))
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_missing_closing_brace_is_well(self):
        self.write(self.section().replace("}", ""))
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_section_on_one_line_is_well(self):
        self.write(f"CkLog2 = {{ LibUNIX64 = {self.target}; Enabled = 1; NewFormat = 1; File = {self.log}; FileMode = 0600; "
                   f"Announce = 0; Error = {self.errors}; }}")
        self.assert_well()
        self.assert_logged(FUNCTIONS)

    def test_sections_of_other_programs_are_well(self):
        self.write("File servers and others: Enabled logging of calls.\nWendrafil2 = {\n   LibUNIX64 = /usr/lib/other.so;\n}\n"
                   "LBLib2 = {\n\tEnabled = yes;\n}\n" + self.section() + "SSM = {\n   Enabled = 0;\n   File = \"x\";\n}\n")
        self.assertEqual([finding for finding in self.check() if finding["level"] != "ok" and finding["about"] != "p11-kit"
                          and "functions of the standard" not in finding["what"]], [])
        self.assert_logged(FUNCTIONS)

    def examples_in(self, file):
        """Yields every section CkLog2 that the file shows, with the paths of this test."""
        for found in re.finditer(r"(?ms)^( *)CkLog2 = \{\n.*?^\1\}", file.read_text()):
            section = textwrap.dedent(found[0])
            section = re.sub(r"(LibUNIX64 = ).*;", rf"\g<1>{self.target};", section)
            yield re.sub(r"(?m)(= ?)\S*/([\w.%-]+);$", rf"\g<1>{self.directory}/\g<2>;",
                         section.replace(str(self.target), "TARGET")).replace("TARGET", str(self.target))

    def test_examples_of_the_readme_the_docs_and_the_demo_are_well(self):
        for file in (SOURCE / "README.md", SOURCE / "demo", *sorted((SOURCE / "docs").glob("*.md"))):
            for example in self.examples_in(file):
                with self.subTest(file):
                    self.write(example)
                    self.assert_well()
                    self.assert_reached()

    def test_readme_has_an_example(self):
        self.assertGreater(len(list(self.examples_in(SOURCE / "README.md"))), 0)


class Output(SetUp):
    def test_text_has_two_lines_for_each_finding_and_counts_them(self):
        self.write("CkLog2 = {\n   Enabled = yes;\n   LibUNIX64 = ;\n   Error = ;\n}\n")
        done = ckscribe("check", environment=self.environment, cwd=self.directory)
        self.assertEqual((done.returncode, done.stderr), (1, ""))
        lines = done.stdout.splitlines()
        self.assertIn('wrong Enabled, line 2: "yes" is no number and counts as 0: no log is written.', lines)
        self.assertEqual(lines[lines.index('wrong Enabled, line 2: "yes" is no number and counts as 0: no log is written.') + 1],
                         '      -> Write "Enabled = 1;" or "Enabled = 0;".')
        self.assertIn("ok    CkLog2, line 1: Lines 1 to 5 are the section.", lines)
        self.assertRegex(lines[-1], r"\A2 wrong, \d+ notes?\.\Z")

    def test_text_is_coloured_only_on_a_terminal(self):
        self.write(self.section())
        for no_colour, colours in (("", True), ("1", False)):
            environment = os.environ | self.environment | {"NO_COLOR": no_colour}
            done = subprocess.run(["script", "-qec", f"{TOOL} check", "/dev/null"], capture_output=True, text=True,
                                  env=environment, cwd=self.directory, timeout=60)
            self.assertEqual("\033[32mok" in done.stdout, colours)

    def test_check_works_with_closed_standard_streams(self):
        self.write(self.section())
        done = subprocess.run(["bash", "-c", '"$0" check <&- 2>&-', TOOL], stdout=subprocess.PIPE, text=True, timeout=60,
                              env=os.environ | self.environment, cwd=self.directory)
        self.assertIn(f"ok    LibUNIX64, line 2: The target {self.target} loads.\n", done.stdout)

    def test_bytes_that_are_no_text_are_shown_as_escapes(self):
        self.write(self.section().encode().replace(b"Enabled = 1", b"Enabled = \xff\x01"))
        self.assertIn({"level": "wrong", "about": "Enabled", "line": 3,
                       "what": '"\\xff\\x01" is no number and counts as 0: no log is written.',
                       "do": 'Write "Enabled = 1;" or "Enabled = 0;".'}, self.check())


class User(SetUp):
    def test_empty_path_behind_config_is_wrong_use(self):
        done = ckscribe("check", "--config", "")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (2, "", "ckscribe: --config: The path is empty. 'ckscribe check --help' shows what there is.\n"))

    def test_unknown_user_is_wrong_use(self):
        done = ckscribe("check", "--user", "nobody-of-this-name")
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertRegex(done.stderr, r"\Ackscribe: --user: There is no user nobody-of-this-name\. ")

    @unittest.skipIf(os.getuid() != 0, "only root can become another user")
    def test_check_judges_as_the_user_that_is_named(self):
        self.write(self.section())
        self.directory.chmod(0o711)
        (self.directory / "Wendrafil.conf").chmod(0o644)
        self.target.chmod(0o755)
        found = self.check("--user", "nobody")
        self.assertEqual([finding["what"].split(" (")[0] for finding in found if finding["level"] == "wrong"],
                         [f"The log {self.log} is not there and cannot be created in {self.directory}",
                          f"The error file {self.errors} is not there and cannot be created in {self.directory}"])
        self.assertEqual([finding for finding in self.check() if finding["level"] == "wrong"], [])

    @unittest.skipIf(os.getuid() != 0, "only root can become another user")
    def test_target_that_the_named_user_may_not_read_is_wrong(self):
        self.write(self.section(Enabled=0, Error="/dev/null"))
        self.directory.chmod(0o711)
        (self.directory / "Wendrafil.conf").chmod(0o644)
        self.target.chmod(0o700)
        self.assert_found("wrong", "LibUNIX64", 2,
                          "The target does not load, and every call answers CKR_FUNCTION_NOT_SUPPORTED. The loader says: "
                          f"{self.target}: cannot open shared object file: Permission denied. It cannot be read: Permission "
                          "denied.", "Let the application's user read it and enter every folder above it.", ["--user", "nobody"])

    @unittest.skipIf(os.getuid() != 0, "only root can become another user")
    def test_check_takes_on_all_groups_of_the_named_user(self):
        members = [member for group in grp.getgrall() for member in group.gr_mem] + ["nobody"]
        user = pwd.getpwnam(members[0])
        done = subprocess.run(["strace", "-qq", "-e", "trace=setgroups,setgid,setuid", TOOL, "check", "--user", user.pw_name,
                               "--config", "/nonexistent"],
                              capture_output=True, text=True, timeout=60)
        groups = sorted(os.getgrouplist(user.pw_name, user.pw_gid))
        calls = re.findall(r"(?m)^(set\w+)\((.*)\) += 0$", done.stderr)
        self.assertEqual([name for name, _ in calls], ["setgroups", "setgid", "setuid"])
        self.assertEqual(sorted(map(int, re.search(r"\[(.*)\]", calls[0][1])[1].split(", "))), groups)
        self.assertEqual([words for _, words in calls[1:]], [str(user.pw_gid), str(user.pw_uid)])

    @unittest.skipIf(os.getuid() != 0, "only root can become another user")
    def test_only_root_can_judge_as_another_user(self):
        tool = self.directory / "ckscribe"
        shutil.copy(TOOL, tool)
        self.directory.chmod(0o755)
        done = subprocess.run([tool, "check", "--user", "root"], capture_output=True, text=True, user=NOBODY, timeout=60)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn("Only root can look at a set-up as another user.", done.stderr)


if __name__ == "__main__":
    main()
