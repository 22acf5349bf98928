"""These tests check what the packages contain and need, that two builds give the same bytes, and that the packages work
in fresh systems.

packages_test.py SOURCE FIRST SECOND TARBALL...

FIRST and SECOND are directories with the packages of two builds. Each TARBALL is a fresh system. Only root can run the
test: it makes a directory beside the tarball, installs and uses the packages below it, and removes it."""

import hashlib
import io
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest

SOURCE, FIRST, SECOND, *TARBALLS = map(pathlib.Path, sys.argv[1:])
VERSION = re.search(r"project\(ckscribe VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text())[1]
ARCHITECTURE = subprocess.run(["dpkg", "--print-architecture"], check=True, capture_output=True, text=True).stdout.strip()
MACHINE = os.uname().machine
DEB, DEV_DEB = (f"{name}_{VERSION}-1_{ARCHITECTURE}.deb" for name in ("ckscribe", "ckscribe-dev"))
RPM, DEV_RPM = (f"{name}-{VERSION}-1.{MACHINE}.rpm" for name in ("ckscribe", "ckscribe-dev"))
LIBRARIES = f"/usr/lib/{MACHINE}-linux-gnu"
LIBRARY = f"{LIBRARIES}/pkcs11/libckscribe.so"
DOCUMENTS = "/usr/share/doc/ckscribe"
NO_LICENCE = "No licence has been granted yet"


def output_of(*command, **more):
    done = subprocess.run(command, **({"capture_output": True, "text": True, "timeout": 300} | more))
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def commit_of_sources():
    archived = re.search(r'archived_commit "([0-9a-f]{40})"', (SOURCE / "cmake/ArchivedCommit.cmake").read_text())
    commit = archived[1] if archived else output_of("git", "-c", "safe.directory=*", "-C", SOURCE, "log", "-1", "--format=%H")
    return commit[:12]


def files_of_deb(package):
    lines = output_of("dpkg-deb", "--contents", FIRST / package).splitlines()
    return {line.split()[5].removeprefix(".") for line in lines if not line.startswith("d")}


def files_of_rpm(package):
    lines = output_of("rpm", "-qp", "--queryformat", "[%{FILEMODES:perms} %{FILENAMES}\n]", FIRST / package).splitlines()
    return {line.split()[1] for line in lines if not line.startswith("d")}


class Packages(unittest.TestCase):
    maxDiff = None

    def test_TwoBuildsInTwoDirectories_GiveTheSameBytes(self):
        def digests(directory):
            return {path.name: hashlib.sha256(path.read_bytes()).hexdigest() for path in directory.iterdir()}

        self.assertEqual(set(digests(FIRST)), {DEB, DEV_DEB, RPM, DEV_RPM})
        self.assertEqual(digests(FIRST), digests(SECOND))

    def test_Lintian_FindsNoError(self):
        done = subprocess.run(["lintian", "--allow-root", "--fail-on", "error", FIRST / DEB, FIRST / DEV_DEB],
                              capture_output=True, text=True, timeout=300, env=os.environ | {"LC_ALL": "C.UTF-8"})
        self.assertEqual((done.returncode, [line for line in done.stdout.splitlines() if line.startswith("E:")]), (0, []),
                         done.stdout + done.stderr)

    def test_Package_NeedsOnlyWhatDebian12And13NameTheSame(self):
        needs = output_of("dpkg-deb", "--field", FIRST / DEB, "Depends")
        self.assertEqual({need.split()[0] for need in needs.split(", ")},
                         {"libbz2-1.0", "libc6", "libgcc-s1", "liblz4-1", "liblzma5", "libstdc++6", "libzstd1", "zlib1g"})
        self.assertEqual(output_of("dpkg-deb", "--field", FIRST / DEV_DEB, "Depends").strip(), "")

    def test_Library_NeedsTheCLibraryOnlyAndShowsItsVersionAndCommit(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe-packages.") as directory:
            output_of("dpkg-deb", "--extract", FIRST / DEB, directory)
            library = directory + LIBRARY
            needed = set(re.findall(r"NEEDED.*\[(.*)\]", output_of("readelf", "--dynamic", library)))
            self.assertLessEqual(needed, {"libc.so.6", "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1"})
            shown = [line for line in output_of("strings", library).splitlines() if line.startswith("ckscribe ")]
            self.assertEqual(shown, [f"ckscribe {VERSION} (commit {commit_of_sources()})"])

    def test_Programs_AreLinkedAsHardenedOnesAre(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe-packages.") as directory:
            output_of("dpkg-deb", "--extract", FIRST / DEB, directory)
            for program in (LIBRARY, "/usr/bin/ckscribe", f"{LIBRARIES}/ckscribe/libckscribe-audit.so"):
                with self.subTest(program):
                    headers = output_of("readelf", "--wide", "--file-header", "--dynamic", "--segments", directory + program)
                    self.assertRegex(headers, r"(?m)^ *Type: +DYN ")
                    self.assertRegex(headers, r"\(FLAGS_1\) .*\bNOW\b")
                    self.assertRegex(headers, r"(?m)^ *GNU_RELRO ")
                    self.assertRegex(headers, r"(?m)^ *GNU_STACK( +0x0+){5} +RW ")
                    self.assertNotRegex(headers, r"\((RPATH|RUNPATH|TEXTREL)\)")

    def test_Packages_RunNothingWhenTheyAreInstalledAndHaveNoFileBelowEtc(self):
        for package in (DEB, DEV_DEB):
            control = output_of("dpkg-deb", "--ctrl-tarfile", FIRST / package, text=False)
            with tarfile.open(fileobj=io.BytesIO(control)) as files:
                self.assertEqual({pathlib.Path(name).name for name in files.getnames()} - {"", "."}, {"control", "md5sums"})
            self.assertEqual([file for file in files_of_deb(package) if not file.startswith("/usr/")], [])
        for package in (RPM, DEV_RPM):
            self.assertEqual(output_of("rpm", "-qp", "--scripts", "--triggers", FIRST / package), "")

    def test_Files_BelongToRootAndOnlyTheCommandIsExecutable(self):
        for package in (DEB, DEV_DEB):
            for line in output_of("dpkg-deb", "--contents", FIRST / package).splitlines():
                permissions, owner, *_, name = line.split()
                is_command = name == "./usr/bin/ckscribe"
                expected = "drwxr-xr-x" if line.startswith("d") else "-rwxr-xr-x" if is_command else "-rw-r--r--"
                self.assertEqual((permissions, owner), (expected, "root/root"), name)
        for package in (RPM, DEV_RPM):
            lines = output_of("rpm", "-qp", "--queryformat", "[%{FILEMODES:perms} %{FILEUSERNAME} %{FILEGROUPNAME} %{FILENAMES}\n]",
                              FIRST / package).splitlines()
            for permissions, user, group, name in map(str.split, lines):
                expected = {"drwxr-xr-x"} if permissions.startswith("d") else \
                    {"-rwxr-xr-x"} if name == "/usr/bin/ckscribe" else {"-rw-r--r--", "-rwxr-xr-x"} if ".so" in name else {"-rw-r--r--"}
                self.assertIn(permissions, expected, name)
                self.assertEqual((user, group), ("root", "root"), name)

    def test_Packages_SayThatNoLicenceHasBeenGranted(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe-packages.") as directory:
            for package, name in ((DEB, "ckscribe"), (DEV_DEB, "ckscribe-dev")):
                output_of("dpkg-deb", "--extract", FIRST / package, directory)
                self.assertIn(NO_LICENCE, pathlib.Path(f"{directory}/usr/share/doc/{name}/copyright").read_text())
        for package in (RPM, DEV_RPM):
            self.assertEqual(output_of("rpm", "-qp", "--queryformat", "%{LICENSE}", FIRST / package), NO_LICENCE)

    def test_Package_ContainsEveryFileThatThereIsToInstall(self):
        expected = {LIBRARY, "/usr/bin/ckscribe", f"{LIBRARIES}/ckscribe/libckscribe-audit.so",
                    "/usr/share/bash-completion/completions/ckscribe"}
        expected |= {f"{DOCUMENTS}/{name}" for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md", "changelog.gz",
                                                        "changelog.Debian.gz", "copyright")}
        expected |= {f"{DOCUMENTS}/docs/{path.name}" for path in (SOURCE / "docs").iterdir()}
        expected |= {f"{DOCUMENTS}/examples/{path.name}" for path in (SOURCE / "share/examples").iterdir()}
        expected |= {f"/usr/share/man/man{path.stem[-1]}/{path.stem}.gz" for path in (SOURCE / "share/man").glob("*.scd")}
        for directory, installed in (("share/ckscribe", "/usr/share/ckscribe"), ("share/lnav", "/usr/share/ckscribe/lnav")):
            files = [path for path in (SOURCE / directory).rglob("*") if path.is_file()]
            self.assertTrue(files, directory)
            expected |= {f"{installed}/{path.relative_to(SOURCE / directory)}" for path in files}
        notices = {file for file in files_of_deb(DEB) if file.startswith(f"{DOCUMENTS}/notices/")}
        self.assertTrue(notices)
        self.assertEqual(files_of_deb(DEB) - notices, expected)

    def test_DevelopmentPackage_ContainsLibrariesHeadersAndFilesForCMakeAndPkgConfig(self):
        files = files_of_deb(DEV_DEB)
        self.assertLessEqual({f"{LIBRARIES}/libckscribe_config.a", f"{LIBRARIES}/libckscribe_util.a",
                              f"{LIBRARIES}/cmake/ckscribe/ckscribeConfig.cmake", f"{LIBRARIES}/pkgconfig/ckscribe-config.pc",
                              "/usr/include/ckscribe/config/wendrafil_configuration.h"}, files)
        self.assertEqual(files & files_of_deb(DEB), set())

    def test_EveryInstalledFile_HasAComponent(self):
        scripts = [path for path in FIRST.parent.rglob("cmake_install.cmake")]
        self.assertGreater(len(scripts), 5)
        self.assertEqual([script for script in scripts if '"Unspecified"' in script.read_text()], [])

    def test_PackagesForRpm_ContainTheSameFiles(self):
        for deb, rpm in ((DEB, RPM), (DEV_DEB, DEV_RPM)):
            files = {file for file in files_of_deb(deb) if "/changelog" not in file}
            self.assertEqual(files_of_rpm(rpm), files)

    def test_PackagesForRpm_InstallAndLeaveNothing(self):
        with tempfile.TemporaryDirectory(prefix="ckscribe-packages.") as directory:
            rpm = ["rpm", "--root", directory, "--nodeps"]
            output_of(*rpm, "--install", FIRST / RPM, FIRST / DEV_RPM)
            self.assertTrue(pathlib.Path(directory + LIBRARY).is_file())
            output_of(*rpm, "--erase", "ckscribe", "ckscribe-dev")
            left = [path for path in pathlib.Path(directory).rglob("*ckscribe*")]
            self.assertEqual(left, [])

    def test_PackagesForRpm_TellNoMachine(self):
        for package in (RPM, DEV_RPM):
            self.assertEqual(output_of("rpm", "-qp", "--queryformat", "%{BUILDHOST}", FIRST / package), "localhost")


class FreshSystem:
    """A test of the installed packages in one fresh system. A subclass names the tarball."""

    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.root = cls.TARBALL.with_suffix(".root")
        shutil.rmtree(cls.root, ignore_errors=True)
        cls.root.mkdir()
        cls.addClassCleanup(shutil.rmtree, cls.root, ignore_errors=True)
        output_of("tar", "--extract", "--file", cls.TARBALL, "--directory", cls.root, "--exclude", "./dev/*", "--numeric-owner")

    def inside(self, *command, status=0, environment=None):
        """Runs a command in the system, with /proc and /dev, and returns what it prints on standard output."""
        script = ('mount --types proc proc "$0/proc" && mount --rbind /dev "$0/dev" && exec chroot "$0" env --ignore-environment '
                  'PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"')
        done = subprocess.run(["unshare", "--mount", "--pid", "--fork", "--kill-child", "sh", "-c", script, self.root,
                               *(f"{name}={value}" for name, value in (environment or {}).items()), *command],
                              capture_output=True, text=True, timeout=300, stdin=subprocess.DEVNULL)
        self.assertEqual(done.returncode, status, f"{command}: {done.stdout}{done.stderr}")
        self.said = done.stderr
        return done.stdout

    def files(self):
        found = set()
        for directory, directories, names in os.walk(self.root):
            found |= {"/" + os.path.relpath(os.path.join(directory, name), self.root) for name in directories + names}
        return found

    def test_InstalledPackages_WorkAndLeaveNothingButLogs(self):
        for compiler in ("cc", "gcc", "g++", "clang", "cmake"):
            self.inside("sh", "-c", f"command -v {compiler}", status=127)
        # The package manager writes its state and caches whatever it installs.
        state = re.compile("/(var/(lib/(dpkg|apt)|cache|log/(apt|dpkg|alternatives))|tmp|root|etc/ld.so.cache)")
        (self.root / "etc/pkcs11/modules").mkdir(parents=True, exist_ok=True)
        before = self.files()

        for package in (DEB, DEV_DEB):
            shutil.copy(FIRST / package, self.root / "tmp")
        self.inside("dpkg", "--install", f"/tmp/{DEB}", f"/tmp/{DEV_DEB}")
        self.assertEqual(self.inside("ckscribe", "--version"), f"ckscribe {VERSION}\n")

        softhsm = self.inside("sh", "-c", "dpkg-query -L libsofthsm2 | grep '/libsofthsm2\\.so$' | head -n 1").strip()
        self.inside("softhsm2-util", "--init-token", "--free", "--label", "signing", "--so-pin", "87654321", "--pin", "271828")
        with self.subTest("run"):
            self.run_shows_calls(softhsm)
        with self.subTest("configuration"):
            self.configure(softhsm)
        with self.subTest("check"):
            self.assertIn("/var/log/ckscribe/log.txt", self.inside("ckscribe", "check"))
        with self.subTest("log and report"):
            self.log_and_report()
        with self.subTest("p11-kit"):
            self.p11_kit_loads_it()

        self.inside("dpkg", "--purge", "ckscribe", "ckscribe-dev")
        left = {path for path in self.files() - before if not state.match(path) and not path.startswith("/var/lib/softhsm/tokens/")}
        self.assertEqual(left, {"/etc/Wendrafil.conf", "/etc/pkcs11/modules/ckscribe.module", "/var/log/ckscribe",
                                "/var/log/ckscribe/log.txt", "/var/log/ckscribe/events.jsonl"})

    def run_shows_calls(self, softhsm):
        self.inside("ckscribe", "run", "--", "pkcs11-tool", "--module", softhsm, "--list-token-slots")
        self.assertRegex(self.said, r"(?m)^\d\d:\d\d:\d\d\.\d{3} \d+ C_Initialize\(.*\) = CKR_OK <")
        self.assertRegex(self.said, r"(?m) C_GetTokenInfo\(.*\) = CKR_OK \{.*signing")

    def configure(self, softhsm):
        """Makes the configuration from the example of the package, with the path of this system's SoftHSM."""
        example = (self.root / DOCUMENTS[1:] / "examples/Wendrafil.conf").read_text()
        (self.root / "etc/Wendrafil.conf").write_text(re.sub("LibUNIX64 = .*;", f"LibUNIX64 = {softhsm};", example))
        (self.root / "var/log/ckscribe").mkdir()

    def token(self, *words):
        return self.inside("pkcs11-tool", "--module", LIBRARY, "--login", "--pin", "271828", *words)

    def log_and_report(self):
        self.token("--keypairgen", "--key-type", "rsa:2048", "--label", "seal", "--id", "05")
        (self.root / "tmp/note").write_text("Pay the bearer on demand.")
        self.token("--sign", "--mechanism", "SHA256-RSA-PKCS", "--id", "05", "--input-file", "/tmp/note", "--output-file", "/tmp/signature")
        self.assertEqual((self.root / "tmp/signature").stat().st_size, 256)
        log = (self.root / "var/log/ckscribe/log.txt").read_text()
        self.assertEqual((log.count("STRTGenerateKeyPair "), log.count("FINIGenerateKeyPair CKR_OK")), (1, 1))
        self.assertNotIn("271828", log + (self.root / "var/log/ckscribe/events.jsonl").read_text())
        for file in ("log.txt", "events.jsonl"):
            report = json.loads(self.inside("ckscribe", "report", "--json", f"/var/log/ckscribe/{file}"))
            calls = {function["function"]: function["calls"] for function in report["functions"]}
            self.assertEqual((calls["C_GenerateKeyPair"], calls["C_Login"], calls["C_Initialize"]), (1, 2, 2), file)
        self.assertRegex(self.inside("ckscribe", "report", "/var/log/ckscribe/events.jsonl"), r"(?m)^  C_CloseSession +2 +0 +0 ")

    def p11_kit_loads_it(self):
        """Expects the example's bare name to be enough while the target's own module file is away."""
        shutil.copy(self.root / DOCUMENTS[1:] / "examples/ckscribe.module", self.root / "etc/pkcs11/modules")
        own = self.root / "usr/share/p11-kit/modules/softhsm2.module"
        away = own.rename(self.root / "tmp/softhsm2.module")
        shown = self.inside("p11-kit", "list-modules")
        away.rename(own)
        self.assertRegex(shown, r"(?ms)^(module: )?ckscribe\b.*token: signing")


def main():
    for tarball in TARBALLS:
        name = f"In_{tarball.stem}"
        globals()[name] = type(name, (FreshSystem, unittest.TestCase), {"TARBALL": tarball.absolute(), "__module__": __name__})
    unittest.main(argv=sys.argv[:1], verbosity=2)


if __name__ == "__main__":
    main()
