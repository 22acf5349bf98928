"""Builds what the benchmarks measure."""

import pathlib
import subprocess

SOURCE = pathlib.Path(__file__).resolve().parent.parent
BUILD = SOURCE / "build" / "bench-release"


def build(folder, *targets):
    """Builds the targets as they are shipped, in a folder that is made when it is not there."""
    options = ["-DCMAKE_BUILD_TYPE=Release", "-DCKSCRIBE_BENCH=ON", "-DCKSCRIBE_TESTS=OFF"]
    quiet = {"check": True, "stdout": subprocess.DEVNULL}
    if not (folder / "CMakeCache.txt").exists():
        subprocess.run(["cmake", "-S", SOURCE, "-B", folder, "-G", "Ninja"] + options, **quiet)
    subprocess.run(["cmake", "--build", folder, "--target", *targets], **quiet)
