// Builds the records of masked objects and of keys that are stored outside the token.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

namespace {

// These say whether a form of authorisation has a number of shares, and whether it has secrets.
bool NamesShares(CK_ULONG form) { return form != 0 && form != 4; }
bool BringsSecrets(CK_ULONG form) { return form == 1 || form == 5; }
bool NamesSecrets(CK_ULONG form) { return form == 1 || form == 2 || form == 5 || form == 6; }

// Calls `add` for each entry of a list of byte strings. The list ends at its count, or at the first entry
// that has no data or no length.
template <class Add>
void ForEachByteString(CK_ULONG count, CK_BYTE_PTR* strings, const CK_ULONG* lengths, const Add& add) {
    for (CK_ULONG i = 0; i < count; ++i) {
        const CK_BYTE_PTR string = ValueAt(strings, i);
        const CK_ULONG length = ValueAt(lengths, i);
        if (string == nullptr || length == 0) return;
        add(string, length);
    }
}

// Adds one mask for each secret.
void AddSecrets(CommandDescriptor& record, CK_ULONG count, CK_BYTE_PTR* secrets, const CK_ULONG* lengths) {
    ForEachByteString(count, secrets, lengths,
                      [&](const void* secret, CK_ULONG) { record.AddDescriptor(PinChild(secret)); });
}

using Child = AbstractDescriptor* (*)(const void* bytes, CK_ULONG length, const char* label);

void AddByteStrings(CommandDescriptor& record, CK_ULONG count, CK_BYTE_PTR* strings, const CK_ULONG* lengths,
                    Child child, const char* label) {
    ForEachByteString(count, strings, lengths, [&](const void* string, CK_ULONG length) {
        record.AddDescriptor(child(string, length, label));
    });
}

void CaptureSessionAndMechanism(CommandType type, CK_SESSION_HANDLE session, const CK_MECHANISM* mechanism) {
    StartRecord record(type);
    record.AddDescriptor(NumberChild(session));
    record.AddDescriptor(PointerChild(mechanism));
    if (mechanism != nullptr) record.AddDescriptor(MechanismChild(mechanism));
    record.Capture();
}

}  // namespace

void ExtractMaskedObjectCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
                                 CK_BYTE_PTR pMaskedObject, CK_ULONG_PTR pusMaskedObjectLen) {
    StartRecord record(kCmdExtractMaskedObject);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(PointerChild(pMaskedObject));
    record.AddDescriptor(PointerChild(pusMaskedObjectLen));
    if (pusMaskedObjectLen != nullptr) record.AddDescriptor(ShortNumberChild(ValueAt(pusMaskedObjectLen)));
    record.Capture();
}

void ExtractMaskedObjectCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
                               CK_BYTE_PTR pMaskedObject, CK_ULONG_PTR pusMaskedObjectLen) {
    EndRecord record(kCmdExtractMaskedObject, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(ObjectChild(hObject));
        record.AddDescriptor(PointerChild(pMaskedObject));
        record.AddDescriptor(PointerChild(pusMaskedObjectLen));
        if (pusMaskedObjectLen != nullptr)
            record.AddDescriptor(ShortNumberChild(ValueAt(pusMaskedObjectLen)));
        AddBytes(record, pMaskedObject, ValueAt(pusMaskedObjectLen));
    }
    record.Capture();
}

void InsertMaskedObjectCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR phObject,
                                CK_BYTE_PTR pMaskedObject, CK_ULONG ulMaskedObjectLen) {
    StartRecord record(kCmdInsertMaskedObject);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(phObject));
    record.AddDescriptor(PointerChild(pMaskedObject));
    record.AddDescriptor(NumberChild(ulMaskedObjectLen));
    AddBytes(record, pMaskedObject, ulMaskedObjectLen);
    record.Capture();
}

void InsertMaskedObjectCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR phObject,
                              CK_BYTE_PTR, CK_ULONG) {
    CaptureObjectOfSession(kCmdInsertMaskedObject, rv, hSession, phObject);
}

void MultisignValueCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMaskedKey, CK_ULONG ulMaskedKeyLen,
                            CK_BYTE_PTR* ppInputs, CK_ULONG ulInputCount, CK_ULONG_PTR pulInputLens,
                            CK_BYTE_PTR, CK_ULONG_PTR) {
    StartRecord record(kCmdMultisignValue);
    record.AddDescriptor(SessionChild(hSession));
    AddBytes(record, pMaskedKey, ulMaskedKeyLen);
    record.AddDescriptor(PointerChild(ppInputs));
    record.AddDescriptor(NumberChild(ulInputCount, "inputCnt="));
    AddByteStrings(record, ulInputCount, ppInputs, pulInputLens, ValueChild, "in=");
    record.Capture();
}

void MultisignValueCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR*, CK_ULONG,
                          CK_ULONG_PTR, CK_BYTE_PTR pSignature, CK_ULONG_PTR pulSignatureLen) {
    CaptureMeasuredBufferOfSession(kCmdMultisignValue, rv, hSession, pSignature, pulSignatureLen);
}

void SIMExtractCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulHandleCount, CK_OBJECT_HANDLE_PTR phObjects,
                        CK_ULONG ulAuthForm, CK_ULONG ulN, CK_ULONG ulM, CK_ULONG_PTR pulSecretLens,
                        CK_BYTE_PTR* ppSecrets, CK_BBOOL bDelete, CK_ULONG_PTR pulBlobLen,
                        CK_BYTE_PTR pBlob) {
    StartRecord record(kCmdSIMExtract);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(phObjects));
    if (phObjects != nullptr) record.AddDescriptor(HandleListChild(phObjects, ulHandleCount));
    record.AddDescriptor(NumberChild(ulAuthForm, "authForm="));
    if (NamesShares(ulAuthForm)) {
        record.AddDescriptor(NumberChild(ulN, "N="));
        record.AddDescriptor(NumberChild(ulM, "M="));
    }
    if (BringsSecrets(ulAuthForm)) AddSecrets(record, ulN, ppSecrets, pulSecretLens);
    record.AddDescriptor(BooleanChild(bDelete, "delete="));
    record.AddDescriptor(PointerChild(pulBlobLen));
    record.AddDescriptor(PointerChild(pBlob));
    record.Capture();
}

void SIMExtractCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_OBJECT_HANDLE_PTR, CK_ULONG,
                      CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_BYTE_PTR*, CK_BBOOL, CK_ULONG_PTR pulBlobLen,
                      CK_BYTE_PTR pBlob) {
    EndRecord record(kCmdSIMExtract, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pulBlobLen));
        record.AddDescriptor(PointerChild(pBlob));
        AddBytes(record, pBlob, ValueAt(pulBlobLen));
    }
    record.Capture();
}

void SIMInsertCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulAuthForm, CK_ULONG ulSecretCount,
                       CK_ULONG_PTR pulSecretLens, CK_BYTE_PTR* ppSecrets, CK_ULONG ulBlobLen,
                       CK_BYTE_PTR pBlob, CK_ULONG_PTR pulHandleCount, CK_OBJECT_HANDLE_PTR phObjects) {
    StartRecord record(kCmdSIMInsert);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulAuthForm, "authForm="));
    if (NamesSecrets(ulAuthForm)) {
        record.AddDescriptor(NumberChild(ulSecretCount, "secretCnt="));
        AddSecrets(record, ulSecretCount, ppSecrets, pulSecretLens);
    }
    record.AddDescriptor(PointerChild(pBlob));
    AddBytes(record, pBlob, ulBlobLen);
    record.AddDescriptor(PointerChild(pulHandleCount));
    record.AddDescriptor(PointerChild(phObjects));
    record.Capture();
}

void SIMInsertCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_BYTE_PTR*,
                     CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR pulHandleCount, CK_OBJECT_HANDLE_PTR phObjects) {
    EndRecord record(kCmdSIMInsert, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pulHandleCount));
        AddNumberAt(record, pulHandleCount, "hdlCount=");
        record.AddDescriptor(PointerChild(phObjects));
        if (phObjects != nullptr && pulHandleCount != nullptr)
            record.AddDescriptor(HandleListChild(phObjects, ValueAt(pulHandleCount)));
    }
    record.Capture();
}

void SIMMultiSignCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulAuthForm, CK_ULONG ulSecretCount,
                          CK_ULONG_PTR pulSecretLens, CK_BYTE_PTR* ppSecrets, CK_ULONG ulBlobLen,
                          CK_BYTE_PTR pBlob, CK_ULONG ulInputCount, CK_ULONG_PTR pulInputLens,
                          CK_BYTE_PTR* ppInputs, CK_ULONG_PTR pulSignatureLens, CK_BYTE_PTR* ppSignatures) {
    StartRecord record(kCmdSIMMultiSign);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulAuthForm, "authForm="));
    if (NamesSecrets(ulAuthForm)) {
        record.AddDescriptor(NumberChild(ulSecretCount, "secretCnt="));
        AddSecrets(record, ulSecretCount, ppSecrets, pulSecretLens);
    }
    record.AddDescriptor(PointerChild(pBlob));
    AddBytes(record, pBlob, ulBlobLen);
    record.AddDescriptor(NumberChild(ulInputCount, "inputCnt="));
    AddByteStrings(record, ulInputCount, ppInputs, pulInputLens, BytesChild, "in=");
    record.AddDescriptor(PointerChild(pulSignatureLens));
    record.AddDescriptor(PointerChild(ppSignatures));
    record.Capture();
}

void SIMMultiSignCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_BYTE_PTR*,
                        CK_ULONG, CK_BYTE_PTR, CK_ULONG ulInputCount, CK_ULONG_PTR, CK_BYTE_PTR*,
                        CK_ULONG_PTR pulSignatureLens, CK_BYTE_PTR* ppSignatures) {
    EndRecord record(kCmdSIMMultiSign, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pulSignatureLens));
        record.AddDescriptor(PointerChild(ppSignatures));
        AddByteStrings(record, ulInputCount, ppSignatures, pulSignatureLens, BytesChild, "sig=");
    }
    record.Capture();
}

void ExtractCmdStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    CaptureSessionAndMechanism(kCmdExtract, hSession, pMechanism);
}

void ExtractCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    EndRecord record(kCmdExtract, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pMechanism));
        if (pMechanism != nullptr) record.AddDescriptor(MechanismChild(pMechanism));
    }
    record.Capture();
}

void InsertCmdStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    CaptureSessionAndMechanism(kCmdInsert, hSession, pMechanism);
}

void InsertCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR) { CaptureResult(kCmdInsert, rv); }
