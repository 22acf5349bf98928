"""A client loads the target beside the library. p11-kit has a .module file of each, NSS two modules of one profile.

Both hand out one function list. The library overwrites it, and gives it back when the client unloads the library, as
both clients do at once. The client then uses the target and ends as it does without the library.
"""

import os
import pathlib
import shutil
import tempfile

from client_test import LIBRARY, PIN, SOFTHSM, TOKEN, Place, configuration, expect_same, fail, make_token

NOBODY = 65534
PROXIES = [
    pathlib.Path(directory) / "p11-kit-proxy.so" for directory in ("/usr/lib/x86_64-linux-gnu", "/usr/lib64", "/usr/lib")
]


def proxy():
    for path in PROXIES:
        if path.exists():
            return str(path)
    fail("there is no p11-kit-proxy.so: install it, or run ./check, which does")


def prepare(root):
    """Makes a place whose log, token and copy of the library belong to an ordinary user: root has no modules of its own."""
    place = Place(root / "place")
    make_token(place)
    shutil.copy(LIBRARY, place.directory / "libckscribe.so")
    place.write("Wendrafil.conf", configuration(place, SOFTHSM, 1).replace("Enabled", "Announce = 0;\n   Enabled"))
    (place.directory / ".config/pkcs11/modules").mkdir(parents=True)
    if os.geteuid() == 0:
        os.chown(root, NOBODY, NOBODY)
        for folder, _, files in os.walk(place.directory):
            for path in [folder, *(os.path.join(folder, file) for file in files)]:
                os.chown(path, NOBODY, NOBODY)
        place.user = NOBODY
    return place


def expect(condition, what, output):
    if not condition:
        fail(f"{what}:\n{output}")


def check_p11_kit(place, modules):
    """Lets p11-kit and its clients use the token. `modules` has the name of each .module file and what it loads."""
    folder = place.directory / ".config/pkcs11/modules"
    for name, path in modules:
        # If two files have one name, the user's file counts.
        (folder / f"{name}.module").write_text(f"module: {path}\n")
    listed = place.run("p11-kit", "list-modules")
    expect(f"token: {TOKEN}" in listed, "p11-kit does not list the token", listed)
    listed = place.run("p11tool", "--list-tokens")
    expect(f"Label: {TOKEN}" in listed, "p11tool does not list the token", listed)
    listed = place.run("p11tool", "--list-all", f"pkcs11:token={TOKEN}")
    expect("Label: rsa" in listed, "p11tool does not list the objects", listed)
    listed = place.run("pkcs11-tool", "--module", proxy(), "--list-slots")
    expect(TOKEN in listed, "pkcs11-tool does not list the token", listed)
    opened = ("--token-label", TOKEN, "--login", "--pin", PIN)
    listed = place.run("pkcs11-tool", "--module", proxy(), *opened, "--list-objects", "--type", "privkey")
    expect("rsa" in listed and "ec" in listed, "pkcs11-tool does not list the private keys", listed)
    for path in folder.iterdir():
        path.unlink()


def check_nss(place):
    """Adds the library to a profile that has the token. NSS refuses it as it refuses the target under another name."""
    database = ("-dbdir", "sql:.")
    place.run("certutil", "-N", "-d", "sql:.", "--empty-password")
    add = ("modutil", "-force", *database, "-add")
    place.run(*add, "target", "-libfile", SOFTHSM)
    (place.directory / "other_name.so").symlink_to(SOFTHSM)
    refusals = []
    for library in ("other_name.so", "libckscribe.so"):
        begin = len(place.transcript)
        place.run(*add, "second", "-libfile", str(place.directory / library), status=22)
        refusals.append(place.transcript[begin + 1 :])
    expect_same("NSS refuses the library in another way than the target", *refusals)
    listed = place.run("modutil", *database, "-list")
    expect(". target\n" in listed and ". second\n" not in listed, "the profile has other modules", listed)
    place.write("pin", PIN + "\n")
    listed = place.run("certutil", "-K", "-d", "sql:.", "-h", TOKEN, "-f", "pin")
    expect("rsa" in listed and "ec" in listed, "certutil does not list the private keys", listed)


def log_of(place):
    log = place.directory / "log.txt"
    text = log.read_text(encoding="latin-1") if log.exists() else ""
    log.unlink(missing_ok=True)
    return text


with tempfile.TemporaryDirectory(prefix="ckscribe-client.") as root:
    place = prepare(pathlib.Path(root))
    target = ("softhsm2", SOFTHSM)
    check_p11_kit(place, [target])
    expect(log_of(place) == "", "there is a log without the library", "")
    # p11-kit loads modules in an order that follows from their names, and drops the second of two with one list.
    for name in ("ckscribe", "other-name"):
        check_p11_kit(place, [target, (name, place.directory / "libckscribe.so")])
        expect("FINIGetFunctionList CKR_OK" in log_of(place), f"p11-kit does not load {name}.module", "")
    check_nss(place)
    expect("FINIInitialize ***CKR_CRYPTOKI_ALREADY_INITIALIZED***" in log_of(place), "NSS does not call the library", "")
    print(f"{len(place.transcript)} lines of clients that have the target beside the library")
