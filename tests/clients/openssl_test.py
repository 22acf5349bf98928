from client_test import PIN, TOKEN, compare_sessions


def session(place):
    place.write(
        "openssl.cnf",
        "openssl_conf = all\n[all]\nengines = engines\n[engines]\npkcs11 = engine\n"
        f"[engine]\nengine_id = pkcs11\nMODULE_PATH = {place.module}\nPIN = {PIN}\ninit = 0\n"
        "[req]\ndistinguished_name = name\nprompt = no\n[name]\nCN = From a token\n",
    )
    place.write("note", "Pay the bearer on demand.\n")

    def openssl(*arguments):
        place.run("openssl", *arguments, environment={"OPENSSL_CONF": "openssl.cnf"})

    def private(name):
        return f"pkcs11:token={TOKEN};object={name};type=private"

    engine = ("-engine", "pkcs11")
    for name in ("rsa", "ec"):
        openssl("dgst", *engine, "-keyform", "engine", "-sha256", "-sign", private(name), "-out", f"note.{name}", "note")
        place.run("openssl", "x509", "-in", f"{name}.crt", "-pubkey", "-noout", "-out", f"{name}.pub")
        place.run("openssl", "dgst", "-sha256", "-verify", f"{name}.pub", "-signature", f"note.{name}", "note")
        openssl("pkey", *engine, "-inform", "engine", "-in", private(name), "-pubout", "-out", f"{name}.read")
        openssl("req", "-new", *engine, "-keyform", "engine", "-key", private(name), "-sha256", "-out", f"{name}.csr")
        place.run("openssl", "req", "-verify", "-noout", "-in", f"{name}.csr")
    place.keep("note.rsa", "rsa.read", "ec.read", "rsa.csr")

    openssl(
        *("dgst", *engine, "-keyform", "engine", "-sha256", "-sigopt", "rsa_padding_mode:pss", "-sigopt", "rsa_pss_saltlen:32"),
        *("-sign", private("rsa"), "-out", "note.pss", "note"),
    )
    place.run(
        *("openssl", "dgst", "-sha256", "-sigopt", "rsa_padding_mode:pss", "-verify", "rsa.pub"),
        *("-signature", "note.pss", "note"),
    )
    place.run("openssl", "pkeyutl", "-encrypt", "-pubin", "-inkey", "rsa.pub", "-in", "note", "-out", "note.encrypted")
    openssl(
        *("pkeyutl", "-decrypt", *engine, "-keyform", "engine", "-inkey", private("rsa")),
        *("-in", "note.encrypted", "-out", "note.decrypted"),
    )
    place.keep("note.decrypted")
    openssl("cms", "-sign", *engine, "-keyform", "engine", "-inkey", private("rsa"), "-signer", "rsa.crt", "-in", "note", "-out", "note.cms")
    place.run("openssl", "cms", "-verify", "-in", "note.cms", "-CAfile", "rsa.crt", "-purpose", "any", "-out", "note.read")
    place.keep("note.read")


compare_sessions(
    session,
    expected=[
        'FINIInitialize CKR_OK {}',
        'STRTLogin {Sesn=... User=1 PIN="********" }',
        'STRTSign_Init {Sesn=... Mech=(CKM_RSA_PKCS,"<null>") Obj=... }',
        'STRTSign_Init {Sesn=... Mech=(CKM_ECDSA,"<null>") Obj=... }',
        'FINISign CKR_OK {"..." }',
        r'FINIDecrypt CKR_OK {"Pay the bearer on demand.\a" }',
    ],
)
