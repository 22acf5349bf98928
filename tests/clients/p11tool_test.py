from client_test import PIN, TOKEN, WRONG_PIN, compare_sessions


def session(place):
    def tool(*arguments, pin=PIN, **more):
        return place.run("p11tool", "--provider", place.module, *arguments, environment={"GNUTLS_PIN": pin}, **more)

    token = f"pkcs11:token={TOKEN}"
    tool("--list-tokens")
    tool("--list-mechanisms", token)
    tool("--list-all", token)
    tool("--login", "--list-all", token)
    tool("--info", f"{token};object=rsa;type=cert")
    tool("--export", f"{token};object=rsa;type=cert", "--outfile", "rsa.pem")
    tool("--login", "--export-pubkey", f"{token};object=ec;type=private", "--outfile", "ec.pub")
    place.keep("rsa.pem", "ec.pub")
    tool("--login", "--test-sign", f"{token};object=rsa")
    tool("--login", "--test-sign", f"{token};object=ec")

    place.write("request.cfg", 'cn = "From a token"\nsigning_key\n')
    place.run(
        *("certtool", "--provider", place.module, "--generate-request", "--hash", "SHA256", "--template", "request.cfg"),
        *("--load-privkey", f"{token};object=rsa;type=private", "--load-pubkey", f"{token};object=rsa;type=public"),
        *("--outfile", "request.pem"),
        environment={"GNUTLS_PIN": PIN},
    )
    place.keep("request.pem")
    place.run("openssl", "req", "-verify", "-noout", "-in", "request.pem")

    tool("--login", "--write", "--secret-key", "00112233445566778899aabbccddeeff", "--label", "secret", token)
    tool("--login", "--list-all", f"{token};object=secret", varies=["id=[%0-9A-F]+", "ID: [:0-9a-f]+"])
    tool("--login", "--delete", "--batch", f"{token};object=secret")
    tool("--login", "--generate-privkey", "ECDSA", "--curve", "secp256r1", "--label", "new", "--id", "06", "--outfile", "new.pub", token)
    tool("--login", "--test-sign", f"{token};object=new")
    tool("--login", "--list-all", token, pin=WRONG_PIN, status=1)


compare_sessions(
    session,
    expected=[
        'FINIInitialize CKR_OK {}',
        'FINIGetSlotList CKR_OK {SlotLst={Slot=... Slot=1 } }',
        'STRTFindObjects_Init {Sesn=... AttrList={CKA_CLASS="..." ... } }',
        'FINIFindObjects CKR_OK {ObjHndLst={Obj=... } 1 }',
        'STRTSign_Init {Sesn=1 Mech=(CKM_ECDSA,"<null>") Obj=... }',
        'FINISign CKR_OK {"..." }',
        'STRTCreateObject {Sesn=1 AttrList={...CKA_VALUE="00112233445566778899aabbccddeeff" ...} }',
        'STRTDestroyObject {Sesn=1 Obj=... }',
        'STRTGenerateKeyPair {Sesn=1 Mech=(CKM_ECDSA_KEY_PAIR_GEN,"<null>") AttrList={...} AttrList={...CKA_LABEL="new" ...} }',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
    ],
)
