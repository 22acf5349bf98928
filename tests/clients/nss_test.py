from client_test import PIN, TOKEN, WRONG_PIN, compare_sessions


def session(place):
    database = ("-d", "sql:.")
    place.write("pin", PIN + "\n")
    place.write("noise", "Only stirred into the token's own random numbers.")
    place.write("note", "Pay the bearer on demand.\n")
    place.write("wrong", WRONG_PIN + "\n")
    on_token = (*database, "-h", TOKEN, "-f", "pin")

    place.run("certutil", "-N", *database, "--empty-password")
    place.run("modutil", "-force", "-dbdir", "sql:.", "-add", "token", "-libfile", place.module)
    place.run("modutil", "-dbdir", "sql:.", "-list")
    place.run("modutil", "-dbdir", "sql:.", "-list", "token")
    place.run("certutil", "-L", *on_token)
    place.run("certutil", "-K", *on_token, varies=["< ?[0-9]+>"])
    place.run("certutil", "-L", *on_token, "-n", f"{TOKEN}:rsa", "-a")
    place.run("certutil", "-K", *database, "-h", TOKEN, "-f", "wrong", status=255)

    place.run("certutil", "-A", *database, "-n", "trusted", "-t", "CTu,CTu,CTu", "-i", "rsa.crt")
    place.run("cmsutil", "-S", *database, "-f", "pin", "-N", f"{TOKEN}:rsa", "-i", "note", "-o", "note.cms")
    place.run(
        *("openssl", "cms", "-verify", "-inform", "DER", "-in", "note.cms", "-CAfile", "rsa.crt", "-purpose", "any"),
        *("-out", "note.read"),
    )
    place.run("cmsutil", "-D", *database, "-f", "pin", "-i", "note.cms", "-o", "note.decoded")
    place.keep("note.read", "note.decoded")

    place.run(
        *("certutil", "-S", *on_token, "-n", "new", "-s", "CN=made by NSS", "-x", "-t", ",,", "-m", "5"),
        *("-k", "rsa", "-g", "2048", "-z", "noise"),
    )
    place.run("certutil", "-L", *on_token, "-n", f"{TOKEN}:new", "-a", "-o", "new.crt")
    place.run("openssl", "verify", "-CAfile", "new.crt", "-check_ss_sig", "new.crt")


compare_sessions(
    session,
    expected=[
        'STRTGetFunctionList {}',
        'FINIInitialize CKR_OK {}',
        'FINILogin CKR_OK {}',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
        'STRTLogin {Sesn=... User=1 PIN="********" }',
        'STRTSign_Init {Sesn=... Mech=(CKM_RSA_PKCS,"<null>") Obj=... }',
        'FINISign CKR_OK {"..." }',
        'STRTSeedRandom {Sesn=... "..." }',
        'STRTGenerateKeyPair {Sesn=... Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,"<null>") AttrList={...} AttrList={...} }',
        'STRTCreateObject {Sesn=... AttrList={...CKA_LABEL="new"...} }',
    ],
)
