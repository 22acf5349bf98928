from client_test import HERE, PIN, WRONG_PIN, compare_sessions


def session(place):
    configuration = place.write("java.cfg", f"name = token\nlibrary = {place.module}\nslotListIndex = 0\n")
    place.run("java", str(HERE / "SunPkcs11Client.java"), configuration, PIN, WRONG_PIN)
    place.run(
        *("keytool", "-list", "-v", "-keystore", "NONE", "-storetype", "PKCS11", "-storepass", PIN),
        *("-providerClass", "sun.security.pkcs11.SunPKCS11", "-providerArg", configuration),
    )


compare_sessions(
    session,
    in_order=False,
    expected=[
        'FINIInitialize CKR_OK {}',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
        'STRTLogin {Sesn=... User=1 PIN="********" }',
        'STRTSign_Init {Sesn=... Mech=(CKM_SHA256_RSA_PKCS,"<null>") Obj=... }',
        'STRTSign_Update {Sesn=... "Pay the bearer on demand." }',
        'FINISign_Final CKR_OK {"..." }',
    ],
)
