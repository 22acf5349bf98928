"""Installs what was built and looks for the library where p11-kit finds modules.

The test is called with the build directory and the directory of modules below the prefix.
"""

import pathlib
import subprocess
import sys
import tempfile

build, directory = sys.argv[1:]

with tempfile.TemporaryDirectory(prefix="ckscribe-installed.") as prefix:
    subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
    modules = [path.name for path in pathlib.Path(prefix, directory).iterdir()]
    if modules != ["libckscribe.so"]:
        sys.exit(f"FAILED: installed as modules were {modules}")
    module = pathlib.Path(prefix, directory, "libckscribe.so")
    needed = subprocess.run(["readelf", "-d", module], check=True, capture_output=True, text=True).stdout
    if "libstdc++" in needed or "libgcc_s" in needed or "RUNPATH" in needed:
        sys.exit(f"FAILED: the installed library needs more than the system's own:\n{needed}")
