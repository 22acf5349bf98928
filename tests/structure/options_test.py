"""These tests check what CMake makes of the options for packagers. Nothing is compiled.

options_test.py SOURCE CXX_COMPILER"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

SOURCE, COMPILER = sys.argv[1:3]
del sys.argv[1:3]


class Options(unittest.TestCase):
    def configured(self, *options):
        """Returns whether the library has the C++ runtime in it, the directory that it is installed in, and the number of tests."""
        with tempfile.TemporaryDirectory(prefix="ckscribe-options.") as directory:
            subprocess.run(["cmake", "-S", SOURCE, "-B", directory, "-G", "Ninja", f"-DCMAKE_CXX_COMPILER={COMPILER}",
                            "-DCKSCRIBE_TOOL=OFF", *options], check=True, capture_output=True, timeout=120)
            build = pathlib.Path(directory, "build.ninja").read_text()
            link = re.search(r"^build libckscribe\.so:.*?(?=^build )", build, flags=re.M | re.S)[0]
            script = pathlib.Path(directory, "front/cmake_install.cmake").read_text()
            place = re.search(r'DESTINATION "(.*?)" TYPE SHARED_LIBRARY', script)[1]
            tests = subprocess.run(["ctest", "--test-dir", directory, "-N"], check=True, capture_output=True, text=True, timeout=60)
            return "-static-libstdc++" in link, place, int(re.search(r"Total Tests: (\d+)", tests.stdout)[1])

    def test_PrefixOfP11Kit_LibraryGoesWhereP11KitLooks(self):
        place = subprocess.run(["pkg-config", "--variable=p11_module_path", "p11-kit-1"], check=True, capture_output=True, text=True)
        self.assertEqual(self.configured("-DCMAKE_INSTALL_PREFIX=/usr", "-DBUILD_TESTING=OFF"),
                         (True, place.stdout.strip().replace("/usr/", "${CMAKE_INSTALL_PREFIX}/"), 0))

    def test_OtherPrefix_LibraryGoesBelowIt(self):
        self.assertEqual(self.configured("-DCMAKE_INSTALL_PREFIX=/opt/signing", "-DCMAKE_INSTALL_LIBDIR=lib64", "-DBUILD_TESTING=OFF")[1],
                         "${CMAKE_INSTALL_PREFIX}/lib64/pkcs11")

    def test_OptionsThatArePackagersOwn_AreObeyed(self):
        self.assertEqual(self.configured("-DCKSCRIBE_MODULE_DIR=/opt/modules", "-DCKSCRIBE_STATIC_RUNTIME=OFF", "-DBUILD_TESTING=OFF"),
                         (False, "/opt/modules", 0))


if __name__ == "__main__":
    unittest.main(verbosity=2)
