// Builds the records of PKCS#11 section "Key management functions".

#include "records/record_children.h"
#include "records/ssl3_structures.h"
#include "records/standard_records.h"

using namespace ckscribe;

namespace {

// Adds the handles that CKM_SSL3_KEY_AND_MAC_DERIVE returns through the mechanism's parameter.
void AddKeysOfConnection(CommandDescriptor& record, const CK_MECHANISM* mechanism) {
    const CK_MECHANISM used = ValueAt(mechanism);
    if (used.mechanism != CKM_SSL3_KEY_AND_MAC_DERIVE) return;
    const auto parameter = ValueAt(static_cast<const CK_SSL3_KEY_MAT_PARAMS*>(used.pParameter));
    const CK_SSL3_KEY_MAT_OUT keys = ValueAt(parameter.pReturnedKeyMaterial);
    record.AddDescriptor(ObjectChild(keys.hClientMacSecret));
    record.AddDescriptor(ObjectChild(keys.hServerMacSecret));
    record.AddDescriptor(ObjectChild(keys.hClientKey));
    record.AddDescriptor(ObjectChild(keys.hServerKey));
}

}  // namespace

void GenerateKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_ATTRIBUTE_PTR pTemplate,
                      CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR) {
    if (!LevelSelects(kGenerateKey)) return;
    StartRecord record(kGenerateKey);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(TemplateChild(pTemplate, ulCount));
    record.Capture();
}

void GenerateKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG,
                    CK_OBJECT_HANDLE_PTR phKey) {
    if (!LevelSelects(kGenerateKey)) return;
    EndRecord record(kGenerateKey, rv);
    record.AddDescriptor(ObjectChild(ValueAt(phKey)));
    record.Capture();
}

void GenerateKeyPairStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism,
                          CK_ATTRIBUTE_PTR pPublicKeyTemplate, CK_ULONG ulPublicKeyAttributeCount,
                          CK_ATTRIBUTE_PTR pPrivateKeyTemplate, CK_ULONG ulPrivateKeyAttributeCount,
                          CK_OBJECT_HANDLE_PTR, CK_OBJECT_HANDLE_PTR) {
    if (!LevelSelects(kGenerateKeyPair)) return;
    StartRecord record(kGenerateKeyPair);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(TemplateChild(pPublicKeyTemplate, ulPublicKeyAttributeCount));
    record.AddDescriptor(TemplateChild(pPrivateKeyTemplate, ulPrivateKeyAttributeCount));
    record.Capture();
}

void GenerateKeyPairEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG,
                        CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phPublicKey,
                        CK_OBJECT_HANDLE_PTR phPrivateKey) {
    if (!LevelSelects(kGenerateKeyPair)) return;
    EndRecord record(kGenerateKeyPair, rv);
    record.AddDescriptor(ObjectChild(ValueAt(phPublicKey)));
    record.AddDescriptor(ObjectChild(ValueAt(phPrivateKey)));
    record.Capture();
}

void WrapKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hWrappingKey,
                  CK_OBJECT_HANDLE hKey, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kWrapKey)) return;
    StartRecord record(kWrapKey);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hWrappingKey));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void WrapKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_OBJECT_HANDLE,
                CK_BYTE_PTR pWrappedKey, CK_ULONG_PTR pulWrappedKeyLen) {
    if (!LevelSelects(kWrapKey)) return;
    EndRecord record(kWrapKey, rv);
    record.AddDescriptor(BytesChild(pWrappedKey, ValueAt(pulWrappedKeyLen)));
    record.AddDescriptor(ShortNumberChild(ValueAt(pulWrappedKeyLen)));
    record.Capture();
}

void UnwrapKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hUnwrappingKey,
                    CK_BYTE_PTR pWrappedKey, CK_ULONG ulWrappedKeyLen, CK_ATTRIBUTE_PTR pTemplate,
                    CK_ULONG ulAttributeCount, CK_OBJECT_HANDLE_PTR) {
    if (!LevelSelects(kUnwrapKey)) return;
    StartRecord record(kUnwrapKey);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hUnwrappingKey));
    record.AddDescriptor(BytesChild(pWrappedKey, ulWrappedKeyLen));
    record.AddDescriptor(TemplateChild(pTemplate, ulAttributeCount));
    record.Capture();
}

void UnwrapKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_BYTE_PTR, CK_ULONG,
                  CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phKey) {
    if (!LevelSelects(kUnwrapKey)) return;
    EndRecord record(kUnwrapKey, rv);
    record.AddDescriptor(ObjectChild(ValueAt(phKey)));
    record.Capture();
}

void DeriveKeyStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hBaseKey,
                    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulAttributeCount, CK_OBJECT_HANDLE_PTR) {
    if (!LevelSelects(kDeriveKey)) return;
    StartRecord record(kDeriveKey);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hBaseKey));
    record.AddDescriptor(TemplateChild(pTemplate, ulAttributeCount));
    record.Capture();
}

void DeriveKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE,
                  CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phKey) {
    if (!LevelSelects(kDeriveKey)) return;
    EndRecord record(kDeriveKey, rv);
    record.AddDescriptor(ObjectChild(ValueAt(phKey)));
    AddKeysOfConnection(record, pMechanism);
    record.Capture();
}
