import sys

from client_test import HERE, PIN, WRONG_PIN, compare_sessions


def session(place):
    place.run(sys.executable, str(HERE / "pykcs11_client.py"), place.module, PIN, WRONG_PIN)


compare_sessions(
    session,
    expected=[
        'FINIInitialize CKR_OK {}',
        'FINIGetTokenInfo ***CKR_SLOT_ID_INVALID*** {...}',
        'FINILogin ***CKR_PIN_INCORRECT*** {}',
        'FINILogin ***CKR_USER_ALREADY_LOGGED_IN*** {}',
        'STRTCreateObject {Sesn=1 AttrList={...CKA_LABEL="first" ...} }',
        'STRTEncrypt_Init {Sesn=1 Mech=(CKM_AES_CBC_PAD,"00000000000000000000000000000000") Obj=... }',
        'FINIDecrypt CKR_OK {"Pay the bearer on demand." }',
        'FINIWrapKey CKR_OK {"..." 24 }',
        'STRTUnwrapKey {Sesn=1 Mech=(Unknown Mechanism Type,"<null>") Obj=... "..." AttrList={...} }',
        'STRTDigest_Update {Sesn=1 "Pay the be" }',
        'FINIDigest_Final CKR_OK {"..." }',
        'FINIGenerateRandom CKR_OK {"..." }',
        'STRTSeedRandom {Sesn=1 "Pay the bearer on demand." }',
        'STRTVerify {Sesn=1 "Pay the bearer on demand." "..." }',
        'FINIVerify ***CKR_SIGNATURE_INVALID*** {}',
        'FINIGetAttributeValue ***CKR_ATTRIBUTE_SENSITIVE*** {...}',
        'STRTSetAttributeValue {Sesn=1 Obj=... AttrList={CKA_LABEL="other data" } }',
        'FINIGetAttributeValue ***CKR_OBJECT_HANDLE_INVALID*** {...}',
        'STRTSetPIN {Sesn=1 Old="********" New="********" }',
        'STRTCloseAllSessions {Slot=... }',
    ],
)
