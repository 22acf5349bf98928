from askpass import environment_answering
from client_test import PIN, WRONG_PIN, compare_sessions


def session(place):
    keys = place.run("ssh-keygen", "-D", place.module)
    place.write("authority.pub", next(key for key in keys.splitlines() if key.startswith("ssh-rsa ")) + "\n")

    place.run("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-C", "host", "-f", "host")
    for pin, status in ((PIN, 0), (WRONG_PIN, 255)):
        place.run(
            *("ssh-keygen", "-D", place.module, "-s", "authority.pub", "-I", "a host", "-h", "-n", "example.org", "host.pub"),
            environment=environment_answering(place, pin),
            status=status,
        )
    place.run("ssh-keygen", "-L", "-f", "host-cert.pub", varies=["ED25519-CERT SHA256:.*"])


compare_sessions(
    session,
    expected=[
        'FINIInitialize CKR_OK {}',
        'FINIGetAttributeValue CKR_OK {AttrList={CKA_ID="01" CKA_MODULUS="..." CKA_PUBLIC_EXPONENT="010001" } }',
        'STRTLogin {Sesn=... User=1 PIN="********" }',
        'STRTSign_Init {Sesn=... Mech=(CKM_RSA_PKCS,"<null>") Obj=... }',
        'FINISign CKR_OK {"..." }',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
    ],
)
