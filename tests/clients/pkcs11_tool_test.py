from client_test import PIN, SO_PIN, TOKEN, WRONG_PIN, compare_sessions


def session(place):
    def tool(*arguments, **more):
        return place.run("pkcs11-tool", "--module", place.module, *arguments, **more)

    def logged_in(*arguments, **more):
        return tool("--token-label", TOKEN, "--login", "--pin", PIN, *arguments, **more)

    place.write("note", "Pay the bearer on demand.\n")
    tool("--show-info")
    tool("--list-slots")
    tool("--list-mechanisms")
    tool("--list-objects")
    logged_in("--list-objects")
    # pkcs11-tool's own tests end with parameters that SoftHSM refuses.
    logged_in("--test", status=1)

    logged_in("--sign", "--mechanism", "SHA256-RSA-PKCS", "--id", "01", "-i", "note", "-o", "note.rsa")
    place.run("openssl", "x509", "-in", "rsa.crt", "-pubkey", "-noout", "-out", "rsa.pub")
    place.run("openssl", "dgst", "-sha256", "-verify", "rsa.pub", "-signature", "note.rsa", "note")
    tool("--verify", "--mechanism", "SHA256-RSA-PKCS", "--id", "01", "-i", "note", "--signature-file", "note.rsa")
    logged_in("--hash", "--mechanism", "SHA256", "-i", "note", "-o", "note.sha256")
    logged_in("--sign", "--mechanism", "ECDSA", "--signature-format", "openssl", "--id", "02", "-i", "note.sha256", "-o", "note.ec")
    place.run("openssl", "x509", "-in", "ec.crt", "-pubkey", "-noout", "-out", "ec.pub")
    place.run("openssl", "pkeyutl", "-verify", "-pubin", "-inkey", "ec.pub", "-in", "note.sha256", "-sigfile", "note.ec")

    place.run("openssl", "pkeyutl", "-encrypt", "-pubin", "-inkey", "rsa.pub", "-in", "note", "-out", "note.encrypted")
    logged_in("--decrypt", "--mechanism", "RSA-PKCS", "--id", "01", "-i", "note.encrypted", "-o", "note.decrypted")
    for kind, name in (("pubkey", "rsa"), ("pubkey", "ec"), ("cert", "rsa"), ("cert", "ec")):
        tool("--read-object", "--type", kind, "--label", name, "-o", f"{name}.{kind}")
    place.keep("note.rsa", "note.sha256", "note.decrypted", "rsa.pubkey", "ec.pubkey", "rsa.cert", "ec.cert")

    logged_in("--write-object", "note", "--type", "data", "--label", "a note", "--private")
    logged_in("--read-object", "--type", "data", "--label", "a note", "-o", "note.read")
    logged_in("--delete-object", "--type", "data", "--label", "a note")
    place.keep("note.read")
    logged_in("--generate-random", "16", "-o", "random")
    logged_in("--change-pin", "--new-pin", PIN + "-2")
    tool("--token-label", TOKEN, "--login", "--pin", PIN + "-2", "--list-objects", "--type", "cert")
    tool("--token-label", TOKEN, "--login", "--login-type", "so", "--so-pin", SO_PIN, "--init-pin", "--new-pin", PIN)

    logged_in("--sign", "--mechanism", "SHA256-RSA-PKCS", "--id", "77", "-i", "note", "-o", "none", status=1)
    logged_in("--sign", "--mechanism", "ECDSA-SHA256", "--id", "02", "-i", "note", "-o", "none", status=1)
    tool("--token-label", TOKEN, "--login", "--pin", WRONG_PIN, "--list-objects", status=1)
    tool("--slot-index", "77", "--list-objects", status=1)

    # These come last, because SoftHSM lists objects and tokens in an order that a new one changes at random.
    logged_in("--keypairgen", "--key-type", "rsa:2048", "--id", "03", "--label", "new")
    logged_in("--keypairgen", "--key-type", "EC:secp384r1", "--id", "04", "--label", "new", varies=["[0-9a-f]{194,}"])
    logged_in("--keygen", "--key-type", "AES:32", "--id", "05", "--label", "new")
    tool("--slot-index", "1", "--init-token", "--label", "second", "--so-pin", SO_PIN)


compare_sessions(
    session,
    expected=[
        'STRTGetFunctionList {}',
        'FINIGetFunctionList CKR_OK {}',
        'STRTInitialize {}',
        'FINIGetInfo CKR_OK {Info={"0228" "SoftHSM                         " Flgs=0 } }',
        'STRTLogin {Sesn=1 User=1 PIN="********" }',
        'FINILogin CKR_OK {}',
        'STRTSign_Init {Sesn=1 Mech=(CKM_SHA256_RSA_PKCS,"<null>") Obj=... }',
        'FINISign_Init CKR_OK {}',
        r'STRTSign {Sesn=1 "Pay the bearer on demand.\a" }',
        'FINISign CKR_OK {"..." }',
        'STRTSetPIN {Sesn=1 Old="********" New="********" }',
        'STRTLogin {Sesn=1 User=0 PIN="********" }',
        'STRTInitPIN {Sesn=1 PIN="********" }',
        'FINISign_Init ***CKR_MECHANISM_INVALID*** {}',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
        'FINIGenerateKeyPair CKR_OK {Obj=... Obj=... }',
        'STRTInitToken {Slot=1 PIN="********" label="second                          " }',
    ],
)
