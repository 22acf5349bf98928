"""ssh logs in with keys on the token: it loads the PKCS#11 library into itself and signs with it what a server asks for.

Each login has a server of its own, which ssh starts as the command that leads to its host: there is no port, and all
that the server reads lies in the session's directory. The hosts "rsa" and "ec" admit the key of that name only.
"""

import ctypes
import os
import pathlib
import shutil

from askpass import environment_answering
from client_test import PIN, WRONG_PIN, compare_sessions, fail


def path_of_server():
    """Returns the whole path of sshd. sshd insists on being called by it, and not every PATH has its directory."""
    path = shutil.which("sshd", path=f"{os.environ['PATH']}:/usr/sbin")
    if path is None:
        fail("there is no sshd: install openssh-server, or run ./check, which does")
    return path


def make_empty_directory():
    """Makes the directory in which root's sshd locks up the part of itself that speaks with strangers. Nothing else
    makes it where the package's service never runs. The directory stays, because another sshd may need it by then."""
    if os.geteuid() == 0:
        pathlib.Path("/run/sshd").mkdir(mode=0o755, exist_ok=True)


def adopt_orphans():
    """Lets this process wait for the command that leads to ssh's host, for which ssh does not wait."""
    PR_SET_CHILD_SUBREAPER = 36
    if ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        fail("no way to wait for the servers that ssh leaves behind")


def wait_for_orphans():
    try:
        while True:
            os.waitpid(-1, 0)
    except ChildProcessError:
        pass


def make_hosts(place):
    place.run("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-C", "host", "-f", "host")
    place.write("known_hosts", f"* {(place.directory / 'host.pub').read_text()}")
    for name in ("rsa", "ec"):
        place.write(f"{name}.pub", place.run("ssh-keygen", "-y", "-f", f"{name}.key"))
    place.write(
        "sshd_config",
        f"HostKey {place.directory}/host\nPidFile none\nUsePAM no\nStrictModes no\n"
        "PermitUserRC no\nExposeAuthInfo yes\n",
    )
    server = f"{SERVER} -i -f sshd_config -E server.log -o AuthorizedKeysFile={place.directory}/%n.pub"
    place.write(
        "ssh_config",
        f"ProxyCommand {server}\nUserKnownHostsFile {place.directory}/known_hosts\nGlobalKnownHostsFile none\n"
        "IdentityFile none\nIdentityAgent none\nPreferredAuthentications publickey\n",
    )


def log_in(place, host, provider, pin=PIN, status=7):
    """Logs in with one key. What the host says shows which key it was, and 7 is the status of what ran there."""
    try:
        place.run(
            *("ssh", "-F", "ssh_config", *provider, host),
            "echo Good morning; cat $SSH_USER_AUTH; echo and goodbye >&2; exit 7",
            environment=environment_answering(place, pin),
            status=status,
        )
    finally:
        wait_for_orphans()


def check_pins_are_not_kept(place):
    (place.directory / "askpass").unlink()
    for path in place.directory.rglob("*"):
        if path.is_file() and any(pin.encode() in path.read_bytes() for pin in (PIN, WRONG_PIN)):
            fail(f"a PIN in {path}")


def session(place):
    make_hosts(place)
    server_log = pathlib.Path(place.write("server.log", ""))
    try:
        log_in(place, "rsa", ("-I", place.module))
        log_in(place, "ec", ("-o", f"PKCS11Provider={place.module}"))
        log_in(place, "rsa", ("-I", place.module), pin=WRONG_PIN, status=255)
    except SystemExit:
        print(f"The server's log:\n{server_log.read_text()}")
        raise
    # The server's last messages differ by chance, because ssh closes the connection.
    place.note("server", "".join(line for line in server_log.open() if line.startswith("Accepted ")))
    check_pins_are_not_kept(place)


SERVER = path_of_server()
make_empty_directory()
adopt_orphans()
compare_sessions(
    session,
    expected=[
        'FINIInitialize CKR_OK {}',
        'FINIGetAttributeValue CKR_OK {AttrList={CKA_ID="01" CKA_MODULUS="..." CKA_PUBLIC_EXPONENT="010001" } }',
        'STRTLogin {Sesn=1 User=1 PIN="********" }',
        'FINILogin CKR_OK {}',
        'STRTSign_Init {Sesn=1 Mech=(CKM_RSA_PKCS,"<null>") Obj=... }',
        'FINISign_Init CKR_OK {}',
        'STRTSign {Sesn=1 "3051300d060960864801650304020305000440..." }',
        'FINISign CKR_OK {"..." }',
        'FINIInitialize CKR_OK {}',
        'STRTLogin {Sesn=1 User=1 PIN="********" }',
        'FINILogin CKR_OK {}',
        'STRTSign_Init {Sesn=1 Mech=(CKM_ECDSA,"<null>") Obj=... }',
        'FINISign_Init CKR_OK {}',
        'STRTSign {Sesn=1 "..." }',
        'FINISign CKR_OK {"..." }',
        'FINIInitialize CKR_OK {}',
        'STRTLogin {Sesn=1 User=1 PIN="********" }',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
    ],
)
