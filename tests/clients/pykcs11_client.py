"""This client uses the library of its first argument with the PIN of its second and with a wrong one. It prints what the
library answers."""

import sys

import PyKCS11
from PyKCS11 import CKA_CLASS, CKA_EXTRACTABLE, CKA_KEY_TYPE, CKA_LABEL, CKA_TOKEN, CKA_VALUE, CKA_VALUE_LEN
from PyKCS11 import CKA_DECRYPT, CKA_ENCRYPT, CKA_UNWRAP, CKA_WRAP
from PyKCS11 import CKK_AES, CKM_AES_CBC, CKM_AES_CBC_PAD, CKM_AES_KEY_WRAP, CKM_SHA256_RSA_PKCS, CKM_SHA512, CKO_DATA, CKO_SECRET_KEY
from PyKCS11 import Mechanism

module, pin, wrong_pin = sys.argv[1:]
note = b"Pay the bearer on demand."


def show(what, value):
    print(what, bytes(value).hex() if isinstance(value, (bytes, list, tuple, PyKCS11.ckbytelist)) else value)


def failing(what, function, *arguments):
    try:
        function(*arguments)
    except PyKCS11.PyKCS11Error as error:
        show(what, error)


library = PyKCS11.PyKCS11Lib()
library.load(module)
print(library.getInfo())
slot = library.getSlotList(tokenPresent=True)[0]
print(library.getTokenInfo(slot).label)
print(library.getMechanismList(slot))
print(library.getMechanismInfo(slot, "CKM_SHA256_RSA_PKCS"))
failing("slot 77", library.getTokenInfo, 77)

session = library.openSession(slot, PyKCS11.CKF_SERIAL_SESSION | PyKCS11.CKF_RW_SESSION)
failing("wrong PIN", session.login, wrong_pin)
session.login(pin)
failing("second login", session.login, pin)
print(session.getSessionInfo())

key_of = lambda label, value: session.createObject(
    [
        (CKA_CLASS, CKO_SECRET_KEY),
        (CKA_KEY_TYPE, CKK_AES),
        (CKA_TOKEN, False),
        (CKA_LABEL, label),
        (CKA_VALUE, value),
        (CKA_EXTRACTABLE, True),
        (CKA_ENCRYPT, True),
        (CKA_DECRYPT, True),
        (CKA_WRAP, True),
        (CKA_UNWRAP, True),
    ]
)
key = key_of("first", bytes(range(32)))
other = key_of("second", bytes(range(100, 116)))
padded = Mechanism(CKM_AES_CBC_PAD, bytes(16))
secret = session.encrypt(key, note, padded)
show("encrypted", secret)
show("decrypted", session.decrypt(key, secret, padded))
failing("wrong length", session.encrypt, key, note, Mechanism(CKM_AES_CBC, bytes(16)))
wrapping = Mechanism(CKM_AES_KEY_WRAP)
wrapped = session.wrapKey(key, other, wrapping)
show("wrapped", wrapped)
unwrapped = session.unwrapKey(
    key, wrapped, [(CKA_CLASS, CKO_SECRET_KEY), (CKA_KEY_TYPE, CKK_AES), (CKA_EXTRACTABLE, True)], wrapping
)
print(session.getAttributeValue(unwrapped, [CKA_VALUE_LEN, CKA_LABEL]))
show("digest", session.digest(note, Mechanism(CKM_SHA512)))
multi = session.digestSession(Mechanism(CKM_SHA512))
multi.update(note[:10])
multi.update(note[10:])
show("digest in parts", multi.final())
show("random", len(session.generateRandom(20)))
session.seedRandom(note)

private, public = (
    session.findObjects([(CKA_CLASS, kind), (CKA_LABEL, "rsa")])[0]
    for kind in (PyKCS11.CKO_PRIVATE_KEY, PyKCS11.CKO_PUBLIC_KEY)
)
signature = session.sign(private, note, Mechanism(CKM_SHA256_RSA_PKCS))
show("signature", signature)
show("verified", session.verify(public, note, signature, Mechanism(CKM_SHA256_RSA_PKCS)))
show("verified something else", session.verify(public, note + b"!", signature, Mechanism(CKM_SHA256_RSA_PKCS)))
failing("private exponent", session.getAttributeValue, private, [PyKCS11.CKA_PRIVATE_EXPONENT])
print(session.getAttributeValue(private, [PyKCS11.CKA_MODULUS, PyKCS11.CKA_PRIVATE_EXPONENT], True))

data = session.createObject([(CKA_CLASS, CKO_DATA), (CKA_TOKEN, True), (CKA_LABEL, "data"), (CKA_VALUE, note)])
session.setAttributeValue(data, [(CKA_LABEL, "other data")])
print(session.getAttributeValue(data, [CKA_LABEL, CKA_VALUE]))
session.destroyObject(data)
failing("destroyed", session.getAttributeValue, data, [CKA_LABEL])

session.setPin(pin, pin + "-2")
session.setPin(pin + "-2", pin)
session.logout()
session.closeSession()
library.closeAllSessions(slot)
