"""No file includes a header of a higher floor.

    includes_test.py SOURCE_DIRECTORY

Folders are floors. A file may include headers of its own folder, of its own floor and of every lower floor. The
reader knows only the lists of functions and the text tools. The command never reaches into the library.
"""

import pathlib
import re
import sys
import tempfile
import unittest

FLOORS = {
    "functions": 1, "util": 1,
    "host": 2, "config": 2,
    "descriptors": 3, "reader": 3,
    "records": 4,
    "front": 5,
    "tool": 6,
}  # fmt: skip

# A folder of ONLY includes itself and these. A folder of NEVER does not include these. The floors would allow more.
ONLY = {"reader": {"functions", "util"}}
NEVER = {"tool": {"front"}}

INCLUDE = re.compile(r'^\s*#\s*include\s+"(\w+)/([^"]+)"')


def sentences(source):
    """Returns one sentence for each include that is not allowed."""
    found = []
    for folder in FLOORS:
        for path in sorted((source / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp", ".def"):
                continue
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if match is None or match[1] == folder:
                    continue
                fault = fault_of(folder, match[1])
                if fault:
                    place = f"{path.relative_to(source)}:{number}"
                    found.append(f'{place} includes "{match[1]}/{match[2]}": {fault}')
    return found


def fault_of(folder, included):
    if included not in FLOORS:
        return f"{included}/ is no floor of the product. Move the header to a folder that this test lists."
    if FLOORS[included] > FLOORS[folder]:
        return (
            f"{folder}/ is on floor {FLOORS[folder]} and {included}/ above it on floor {FLOORS[included]}. "
            f"Move what you need down to {folder}/ or below."
        )
    if included not in ONLY.get(folder, FLOORS):
        return f"{folder}/ may include only {' and '.join(sorted(ONLY[folder]))}."
    if included in NEVER.get(folder, ()):
        return f"{folder}/ must never include {included}/."
    return None


class Includes(unittest.TestCase):
    def test_no_include_of_the_product_points_upwards(self):
        self.assertEqual([], sentences(pathlib.Path(SOURCE)))

    def test_every_folder_with_includes_is_found(self):
        folders = {path.parent.name for path in pathlib.Path(SOURCE).glob("*/CMakeLists.txt")}
        self.assertLessEqual({"functions", "util", "host", "config", "descriptors", "records", "front"}, folders)

    def test_upward_include_gives_a_sentence(self):
        with tempfile.TemporaryDirectory() as directory:
            source = pathlib.Path(directory)
            for folder in FLOORS:
                (source / folder).mkdir()
            (source / "util/text.cpp").write_text('#include <string>\n#include "host/environment.h"\n')
            (source / "reader/calls.h").write_text('#include "config/settings.h"\n#include "util/text.h"\n')
            (source / "tool/run.cpp").write_text('#include "reader/calls.h"\n#include "front/startup.h"\n')
            (source / "front/call.h").write_text('#include "records/a.h"\n#include "tests/b.h"\n')
            self.assertEqual(
                [
                    'util/text.cpp:2 includes "host/environment.h": util/ is on floor 1 and host/ above it on floor 2. '
                    "Move what you need down to util/ or below.",
                    'reader/calls.h:1 includes "config/settings.h": reader/ may include only functions and util.',
                    'front/call.h:2 includes "tests/b.h": tests/ is no floor of the product. '
                    "Move the header to a folder that this test lists.",
                    'tool/run.cpp:2 includes "front/startup.h": tool/ must never include front/.',
                ],
                sentences(source),
            )


if __name__ == "__main__":
    SOURCE = sys.argv.pop(1)
    unittest.main()
