// Records of PKCS#11 section "Key management functions".

#include "records/record_children.h"
#include "records/ssl3_structures.h"
#include "records/standard_records.h"

namespace {

// The handles that CKM_SSL3_KEY_AND_MAC_DERIVE returns through the mechanism's parameter.
void AddKeysOfConnection(CommandDescriptor& command, const CK_MECHANISM* mechanism) {
    const CK_MECHANISM used = ValueAt(mechanism);
    if (used.mechanism != CKM_SSL3_KEY_AND_MAC_DERIVE) return;
    const auto parameter = ValueAt(static_cast<const CK_SSL3_KEY_MAT_PARAMS*>(used.pParameter));
    const CK_SSL3_KEY_MAT_OUT keys = ValueAt(parameter.pReturnedKeyMaterial);
    command.AddDescriptor(Object(keys.hClientMacSecret));
    command.AddDescriptor(Object(keys.hServerMacSecret));
    command.AddDescriptor(Object(keys.hClientKey));
    command.AddDescriptor(Object(keys.hServerKey));
}

}  // namespace

void GenerateKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_ATTRIBUTE_PTR pTemplate,
                      CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kGenerateKey, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Template(pTemplate, ulCount));
    command.Capture();
}

void GenerateKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG,
                    CK_OBJECT_HANDLE_PTR phKey) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kGenerateKey, kEnd, rv);
    command.AddDescriptor(Object(ValueAt(phKey)));
    command.Capture();
}

void GenerateKeyPairStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism,
                          CK_ATTRIBUTE_PTR pPublicKeyTemplate, CK_ULONG ulPublicKeyAttributeCount,
                          CK_ATTRIBUTE_PTR pPrivateKeyTemplate, CK_ULONG ulPrivateKeyAttributeCount,
                          CK_OBJECT_HANDLE_PTR, CK_OBJECT_HANDLE_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kGenerateKeyPair, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Template(pPublicKeyTemplate, ulPublicKeyAttributeCount));
    command.AddDescriptor(Template(pPrivateKeyTemplate, ulPrivateKeyAttributeCount));
    command.Capture();
}

void GenerateKeyPairEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG,
                        CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phPublicKey,
                        CK_OBJECT_HANDLE_PTR phPrivateKey) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kGenerateKeyPair, kEnd, rv);
    command.AddDescriptor(Object(ValueAt(phPublicKey)));
    command.AddDescriptor(Object(ValueAt(phPrivateKey)));
    command.Capture();
}

void WrapKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hWrappingKey,
                  CK_OBJECT_HANDLE hKey, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kWrapKey, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hWrappingKey));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void WrapKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_OBJECT_HANDLE,
                CK_BYTE_PTR pWrappedKey, CK_ULONG_PTR pulWrappedKeyLen) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kWrapKey, kEnd, rv);
    command.AddDescriptor(Bytes(pWrappedKey, ValueAt(pulWrappedKeyLen)));
    command.AddDescriptor(ShortNumber(ValueAt(pulWrappedKeyLen)));
    command.Capture();
}

void UnwrapKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hUnwrappingKey,
                    CK_BYTE_PTR pWrappedKey, CK_ULONG ulWrappedKeyLen, CK_ATTRIBUTE_PTR pTemplate,
                    CK_ULONG ulAttributeCount, CK_OBJECT_HANDLE_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kUnwrapKey, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hUnwrappingKey));
    command.AddDescriptor(Bytes(pWrappedKey, ulWrappedKeyLen));
    command.AddDescriptor(Template(pTemplate, ulAttributeCount));
    command.Capture();
}

void UnwrapKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_BYTE_PTR, CK_ULONG,
                  CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phKey) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kUnwrapKey, kEnd, rv);
    command.AddDescriptor(Object(ValueAt(phKey)));
    command.Capture();
}

void DeriveKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hBaseKey,
                    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulAttributeCount, CK_OBJECT_HANDLE_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kDeriveKey, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hBaseKey));
    command.AddDescriptor(Template(pTemplate, ulAttributeCount));
    command.Capture();
}

void DeriveKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE,
                  CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phKey) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kDeriveKey, kEnd, rv);
    command.AddDescriptor(Object(ValueAt(phKey)));
    AddKeysOfConnection(command, pMechanism);
    command.Capture();
}
