import pathlib
import re
import subprocess
import tempfile
import unittest

from tool_test import ARGUMENTS, TOOL, ckscribe, main

SHARE = pathlib.Path(ARGUMENTS[0])


def subcommands():
    lines = ckscribe("--help").stdout.split("Subcommands:\n")[1].split("\n\n")[0].splitlines()
    return [line.split()[0] for line in lines if re.match("  [a-z]", line)]


class CommandLine(unittest.TestCase):
    def test_version_is_name_and_number(self):
        done = ckscribe("--version")
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout, r"\Ackscribe \d+\.\d+\.\d+\n\Z")
        self.assertEqual(done.stderr, "")

    def test_version_of_each_subcommand_is_that_of_the_command(self):
        for name in subcommands():
            with self.subTest(name):
                done = ckscribe(name, "--version")
                self.assertEqual((done.returncode, done.stdout, done.stderr), (0, ckscribe("--version").stdout, ""))

    def test_help_of_each_subcommand_has_an_example_of_it(self):
        self.assertIn("run", subcommands())
        for name in subcommands():
            with self.subTest(name):
                done = ckscribe(name, "--help")
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertRegex(done.stdout, rf"Examples?:\n  (\S+=\S+ )*ckscribe {name} ")

    def test_each_subcommand_has_a_man_page_with_an_example_that_the_main_page_names(self):
        main_page = (SHARE / "man/ckscribe.1.scd").read_text()
        for name in subcommands():
            with self.subTest(name):
                page = (SHARE / f"man/ckscribe-{name}.1.scd").read_text()
                self.assertIn(f"\t$ ckscribe {name} ", page)
                self.assertIn(f"*ckscribe-{name}*(1)", main_page)

    def test_each_long_option_stands_in_the_man_page_of_its_subcommand(self):
        for name in subcommands():
            options = set(re.findall(r"(?<=[ ,])--[a-z-]+", ckscribe(name, "--help").stdout.split("Example")[0]))
            page = (SHARE / f"man/ckscribe-{name}.1.scd").read_text().replace("\\", "")
            for option in options - {"--help"}:
                with self.subTest(f"{name} {option}"):
                    self.assertIn(option, page)

    def test_wrong_use_ends_with_2_and_says_where_help_is(self):
        for words in (["frobnicate"], [], ["--frobnicate"]):
            with self.subTest(words):
                done = ckscribe(*words)
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertRegex(done.stderr, r"\Ackscribe: .*'ckscribe --help' shows what there is\.\n\Z")

    def test_wrong_use_gets_a_message_of_whole_sentences(self):
        done = ckscribe("conf", "get")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (2, "", "ckscribe: key is required. 'ckscribe conf --help' shows what there is.\n"))

    def test_result_that_cannot_be_written_gets_a_message_and_ends_with_1(self):
        with open("/dev/full", "w") as full, tempfile.NamedTemporaryFile("w", suffix=".conf") as configuration:
            configuration.write("CkLog2 = {\n   Enabled = 1;\n}\n")
            configuration.flush()
            done = subprocess.run([TOOL, "conf", "--config", configuration.name, "get", "Enabled"], stdout=full,
                                  stderr=subprocess.PIPE, text=True, timeout=60)
        self.assertEqual((done.returncode, done.stderr),
                         (1, "ckscribe: Standard output cannot be written: No space left on device.\n"))

    def test_wrong_use_of_run_ends_with_125(self):
        for words in ([], ["--frobnicate", "true"], ["-o"]):
            with self.subTest(words):
                done = ckscribe("run", *words)
                self.assertEqual((done.returncode, done.stdout), (125, ""))
                self.assertRegex(done.stderr, r"\Ackscribe: .*'ckscribe run --help' shows what there is\.\n\Z")


class Completion(unittest.TestCase):
    def complete(self, *words):
        """Returns the words that bash offers for the last word."""
        script = (
            f"PATH={pathlib.Path(TOOL).parent}:$PATH; . /usr/share/bash-completion/bash_completion; . {SHARE}/completion/ckscribe\n"
            'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_LINE="$*"; COMP_POINT=${#COMP_LINE}\n'
            '_ckscribe ckscribe; printf "%s\\n" "${COMPREPLY[@]}"'
        )
        done = subprocess.run(["bash", "-c", script, "bash", "ckscribe", *words], capture_output=True, text=True, timeout=60)
        return done.stdout.split()

    def test_first_word_is_completed_as_a_subcommand(self):
        self.assertLessEqual({"--help", "--version", *subcommands()}, set(self.complete("")))
        self.assertIn("run", self.complete("ru"))

    def test_option_is_completed_as_one_of_the_subcommand(self):
        self.assertIn("--help", self.complete("run", "--"))
        for name in subcommands():
            with self.subTest(name):
                options = re.findall(r"^  (?:-\w,)?(--[a-z-]+)", ckscribe(name, "--help").stdout, flags=re.M)
                self.assertGreater(len(options), 1)
                self.assertLessEqual(set(options), set(self.complete(name, "--")))

    def test_words_behind_run_are_completed_as_a_command(self):
        self.assertIn("pkcs11-tool", self.complete("run", "pkcs11-too"))
        self.assertIn("pkcs11-tool", self.complete("run", "--", "pkcs11-too"))


if __name__ == "__main__":
    main()
