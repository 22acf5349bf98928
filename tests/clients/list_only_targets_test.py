"""Some targets of the distribution export C_GetFunctionList and no other function. Applications reach all of them through
the library as they do without it."""

import pathlib
import subprocess
import sys
import time

from client_test import HERE, PIN, SOFTHSM, TOKEN, WRONG_PIN, compare_sessions, fail

LIBRARY_DIRECTORIES = [pathlib.Path(directory) for directory in ("/usr/lib/x86_64-linux-gnu", "/usr/lib64", "/usr/lib")]


def library(name):
    for directory in LIBRARY_DIRECTORIES:
        if (directory / name).exists():
            return str(directory / name)
    fail(f"there is no {name}: install it, or run ./check, which does")


def certificates(place):
    """Lists the certificate authorities of the system."""
    place.run("pkcs11-tool", "--module", place.module, "--show-info")
    place.run("pkcs11-tool", "--module", place.module, "--list-slots")
    place.run("pkcs11-tool", "--module", place.module, "--list-objects", "--type", "cert")
    place.run("p11tool", "--provider", place.module, "--list-tokens")
    place.run("p11tool", "--provider", place.module, "--list-all-certs", "pkcs11:")


def remote_token(place):
    """Uses a software token in a server of its own, which p11-kit's client module talks to."""
    socket = place.directory / "socket"
    server = subprocess.Popen(
        ["p11-kit", "server", "--foreground", "--name", str(socket), "--provider", SOFTHSM, "pkcs11:"],
        env=place.environment,
        stdout=subprocess.DEVNULL,
    )
    try:
        wait_for(socket)
        place.environment["P11_KIT_SERVER_ADDRESS"] = f"unix:path={socket}"
        use_remote_token(place)
    finally:
        server.terminate()
        server.wait()


def wait_for(path):
    for _ in range(1000):
        if path.exists():
            return
        time.sleep(0.01)
    fail(f"nobody made {path}")


def use_remote_token(place):
    def tool(*arguments, **more):
        return place.run("pkcs11-tool", "--module", place.module, *arguments, **more)

    place.write("note", "Pay the bearer on demand.\n")
    tool("--list-slots")
    tool("--list-mechanisms")
    tool("--token-label", TOKEN, "--login", "--pin", PIN, "--list-objects")
    signing = ("--sign", "--mechanism", "SHA256-RSA-PKCS", "--id", "01", "-i", "note", "-o", "note.rsa")
    tool("--token-label", TOKEN, "--login", "--pin", PIN, *signing)
    tool("--token-label", TOKEN, "--login", "--pin", WRONG_PIN, "--list-objects", status=1)
    place.keep("note.rsa")
    place.run("p11tool", "--provider", place.module, "--list-all", f"pkcs11:token={TOKEN}")


def no_server(place):
    place.run("pkcs11-tool", "--module", place.module, "--list-slots", status=1)
    place.run("p11tool", "--provider", place.module, "--list-tokens")


def softoken(place):
    (place.directory / "database").mkdir()
    place.run(sys.executable, str(HERE / "softoken_client.py"), place.module, str(place.directory / "database"))


SEARCH = [
    'FINIGetFunctionList CKR_OK {}',
    'FINIInitialize CKR_OK {}',
    'STRTOpenSession {Slot=... Flgs=... }',
    'STRTFindObjects_Init {Sesn=... AttrList={...} }',
]
FOUND = [
    'FINIFindObjects CKR_OK {ObjHndLst={Obj=... } 1 }',
    'FINIGetAttributeValue CKR_OK {AttrList={CKA_ID="..." } }',
]

# Which certificates p11-kit's module finds depends on the system; NSS's brings its own.
compare_sessions(certificates, SEARCH, target=library("pkcs11/p11-kit-trust.so"))
compare_sessions(certificates, SEARCH + FOUND, target=library("libnssckbi.so"))
compare_sessions(
    remote_token,
    [
        'FINIInitialize CKR_OK {}',
        'STRTLogin {Sesn=... User=1 PIN="********" }',
        'FINILogin CKR_OK {}',
        r'STRTSign {Sesn=... "Pay the bearer on demand.\a" }',
        'FINISign CKR_OK {"..." }',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
    ],
    target=library("pkcs11/p11-kit-client.so"),
)
compare_sessions(no_server, ['FINIGetSlotList CKR_OK {SlotLst={} }'], target=library("pkcs11/p11-kit-client.so"))
compare_sessions(
    softoken,
    [
        'FINIInitialize CKR_OK {}',
        'FINIDigest CKR_OK {"..." }',
        'FINICreateObject CKR_OK {Obj=... }',
        'FINISign CKR_OK {"..." }',
        'FINISign ***CKR_OPERATION_NOT_INITIALIZED*** {...}',
        'FINIFinalize CKR_OK {}',
    ],
    target=library("libsoftokn3.so"),
)
