"""ssh-agent lets a program of its own load the PKCS#11 library, and speaks with it over that program's standard input
and output. An announcement of a missing function would stand in the middle of what the program says, and ssh-agent would
give up. The target of this session therefore lacks no function."""

from askpass import environment_answering
from client_test import COMPLETE_TARGET, PIN, compare_sessions


def session(place):
    place.write("note", "Pay the bearer on demand.\n")
    place.write("rsa.pub", place.run("ssh-keygen", "-y", "-f", "rsa.key"))
    place.write(
        "script",
        f"set -e\nssh-add -s {place.module}\nssh-add -L\n"
        "ssh-keygen -Y sign -f rsa.pub -n file note\n"
        f"ssh-add -e {place.module}\n! ssh-add -L\n",
    )
    place.run("ssh-agent", "-P", "*", "sh", "script", environment=environment_answering(place, PIN))
    place.write("signers", f"me {(place.directory / 'rsa.pub').read_text()}")
    place.run(
        *("ssh-keygen", "-Y", "verify", "-f", "signers", "-I", "me", "-n", "file", "-s", "note.sig"),
        input=(place.directory / "note").read_bytes(),
    )
    place.keep("note.sig")


compare_sessions(
    session,
    target=COMPLETE_TARGET,
    expected=[
        'FINIInitialize CKR_OK {}',
        'STRTLogin {Sesn=... User=1 PIN="********" }',
        'STRTSign_Init {Sesn=... Mech=(CKM_RSA_PKCS,"<null>") Obj=... }',
        'FINISign CKR_OK {"..." }',
        'FINIFinalize CKR_OK {}',
    ],
)
