"""Every exported function has a seed of the record fuzzer, and every seed names a function.

    seeds_test.py SOURCE_DIRECTORY
"""

import pathlib
import re
import sys

source = pathlib.Path(sys.argv[1])
seeds = source / "tests/fuzz/corpus/record_fuzzer"
rows = (source / "functions/functions.def").read_text()
functions = [
    kind.split("_")[0] + "_" + name
    for kind, name in re.findall(r"^(C_|C_LIST_|C_OPTIONAL_|C_UNBOUND_|CA_|CA_LIST_|CA_BARE_)ROW\((\w+)", rows, re.M)
]

# A seed begins with a byte for the format and the name of its function in a line.
named = {}
for path in sorted(seeds.iterdir()):
    name = path.read_bytes()[1:].split(b"\n")[0].decode(errors="replace")
    named.setdefault(name, []).append(path.name)

faults = [f"{paths} in {seeds}: {name!r} is no exported function." for name, paths in named.items() if name not in functions]
faults += [
    f"{name} has no seed. Write one with: printf '\\001{name}\\n\\000' > tests/fuzz/corpus/record_fuzzer/{name}"
    for name in functions
    if name not in named
]
sys.exit("\n".join(faults) if faults or not functions else 0)
