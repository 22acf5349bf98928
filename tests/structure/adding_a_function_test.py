"""docs/adding-a-function.md is right: a reader who follows it literally gets a library and tests that pass.

    adding_a_function_test.py SOURCE_DIRECTORY WORK_DIRECTORY COMPILER [CMAKE_ARGUMENT...]

The test copies the sources, does each step of the page in the copy, and builds and runs the tests that hold every
function against a row, a case, an oracle or a seed. Further arguments go to cmake.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys

SOURCE, WORK, COMPILER = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
COPY = WORK / "source"
BUILD = WORK / "build"
PAGE = SOURCE / "docs/adding-a-function.md"

BLOCK = r"\n\n```\w*\n(.*?)```\n"
BEHIND = re.compile(r"^Behind the line in `([^`]+)` that begins with `([^`]+)`, add:" + BLOCK, re.M | re.S)
AT_END = re.compile(r"^At the end of `([^`]+)`, add:" + BLOCK, re.M | re.S)
RUN = re.compile(r"^Run:" + BLOCK, re.M | re.S)

# The tests of these programs hold every function against a row, a case, an oracle or a seed.
PROGRAMS = {
    "functions_test": "tests/front/functions_test",
    "logging_front_test": "tests/front/logging_front_test",
    "vendor_calls_test": "tests/vendor_calls/vendor_calls_test",
    "record_fuzzer": "tests/fuzz/record_fuzzer",
}


def run(*command, cwd=COPY):
    result = subprocess.run(command, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f"FAILED: {' '.join(map(str, command))}\n{result.stdout[-8000:]}")
    return result.stdout


def do_steps():
    """Does each step of the page in the copy, and returns the number of steps."""
    page = PAGE.read_text()
    steps = 0
    for name, beginning, block in BEHIND.findall(page):
        path = COPY / name
        lines = path.read_text().splitlines(keepends=True)
        places = [i for i, line in enumerate(lines) if line.startswith(beginning)]
        if len(places) != 1:
            sys.exit(f"FAILED: {len(places)} lines of {name} begin with {beginning}")
        lines.insert(places[0] + 1, block)
        path.write_text("".join(lines))
        steps += 1
    for name, block in AT_END.findall(page):
        with (COPY / name).open("a") as file:
            file.write(block)
        steps += 1
    for block in RUN.findall(page):
        run("sh", "-ec", block)
        steps += 1
    return steps


shutil.rmtree(COPY, ignore_errors=True)
shutil.copytree(SOURCE, COPY, ignore=shutil.ignore_patterns("build*", ".git", ".cache"))
steps = do_steps()
if steps != 6:
    sys.exit(f"FAILED: {steps} of the page's six steps were understood")

# The copy compiles from the cache what it has in common with earlier copies.
os.environ.update(CCACHE_BASEDIR=str(WORK), CCACHE_NOHASHDIR="1", CCACHE_SLOPPINESS="pch_defines,time_macros")
run("cmake", "-S", COPY, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
    f"-DCMAKE_CXX_COMPILER={COMPILER}", *sys.argv[4:])  # fmt: skip
run("ninja", "-C", BUILD, *PROGRAMS)
for program in PROGRAMS.values():
    arguments = [COPY / "tests/fuzz/corpus/record_fuzzer"] if program.endswith("fuzzer") else []
    run(BUILD / program, *arguments, cwd=(BUILD / program).parent)
run(sys.executable, COPY / "tests/fuzz/seeds_test.py", COPY)
cases = run(BUILD / PROGRAMS["vendor_calls_test"], "--gtest_list_tests", "--gtest_filter=*CA_GetProbeLevel*")
if "CA_GetProbeLevel" not in cases:
    sys.exit("FAILED: the new function's case does not run")
