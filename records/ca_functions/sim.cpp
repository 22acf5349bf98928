// Records of masked objects and of keys that are stored outside the token.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

namespace {

// What the vendor's forms of authorisation bring along.
bool NamesShares(CK_ULONG form) { return form != 0 && form != 4; }
bool BringsSecrets(CK_ULONG form) { return form == 1 || form == 5; }
bool NamesSecrets(CK_ULONG form) { return form == 1 || form == 2 || form == 5 || form == 6; }

// Calls `add` for each entry of a list of byte strings, up to its end or the first entry without data or
// length.
template <class Add>
void ForEachByteString(CK_ULONG count, CK_BYTE_PTR* strings, const CK_ULONG* lengths, const Add& add) {
    for (CK_ULONG i = 0; i < count; ++i) {
        const CK_BYTE_PTR string = ValueAt(strings, i);
        const CK_ULONG length = ValueAt(lengths, i);
        if (string == nullptr || length == 0) return;
        add(string, length);
    }
}

// One mask for each secret.
void AddSecrets(CommandDescriptor& command, CK_ULONG count, CK_BYTE_PTR* secrets, const CK_ULONG* lengths) {
    ForEachByteString(count, secrets, lengths,
                      [&](const void* secret, CK_ULONG) { command.AddDescriptor(Pin(secret)); });
}

using Child = AbstractDescriptor* (*)(const void* bytes, CK_ULONG length, const char* label);

void AddByteStrings(CommandDescriptor& command, CK_ULONG count, CK_BYTE_PTR* strings, const CK_ULONG* lengths,
                    Child child, const char* label) {
    ForEachByteString(count, strings, lengths, [&](const void* string, CK_ULONG length) {
        command.AddDescriptor(child(string, length, label));
    });
}

void CaptureSessionAndMechanism(CommandType type, CK_SESSION_HANDLE session, const CK_MECHANISM* mechanism) {
    CommandDescriptor command(type, kStart, 0);
    command.AddDescriptor(Number(session));
    command.AddDescriptor(Pointer(mechanism));
    if (mechanism != nullptr) command.AddDescriptor(Mechanism(mechanism));
    command.Capture();
}

}  // namespace

void ExtractMaskedObjectCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
                                 CK_BYTE_PTR pMaskedObject, CK_ULONG_PTR pusMaskedObjectLen) {
    CommandDescriptor command(kCmdExtractMaskedObject, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Pointer(pMaskedObject));
    command.AddDescriptor(Pointer(pusMaskedObjectLen));
    if (pusMaskedObjectLen != nullptr) command.AddDescriptor(ShortNumber(ValueAt(pusMaskedObjectLen)));
    command.Capture();
}

void ExtractMaskedObjectCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
                               CK_BYTE_PTR pMaskedObject, CK_ULONG_PTR pusMaskedObjectLen) {
    CommandDescriptor command(kCmdExtractMaskedObject, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Object(hObject));
        command.AddDescriptor(Pointer(pMaskedObject));
        command.AddDescriptor(Pointer(pusMaskedObjectLen));
        if (pusMaskedObjectLen != nullptr) command.AddDescriptor(ShortNumber(ValueAt(pusMaskedObjectLen)));
        AddBytes(command, pMaskedObject, ValueAt(pusMaskedObjectLen));
    }
    command.Capture();
}

void InsertMaskedObjectCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR phObject,
                                CK_BYTE_PTR pMaskedObject, CK_ULONG ulMaskedObjectLen) {
    CommandDescriptor command(kCmdInsertMaskedObject, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(phObject));
    command.AddDescriptor(Pointer(pMaskedObject));
    command.AddDescriptor(Number(ulMaskedObjectLen));
    AddBytes(command, pMaskedObject, ulMaskedObjectLen);
    command.Capture();
}

void InsertMaskedObjectCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR phObject,
                              CK_BYTE_PTR, CK_ULONG) {
    CaptureObjectOfSession(kCmdInsertMaskedObject, rv, hSession, phObject);
}

void MultisignValueCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pMaskedKey, CK_ULONG ulMaskedKeyLen,
                            CK_BYTE_PTR* ppInputs, CK_ULONG ulInputCount, CK_ULONG_PTR pulInputLens,
                            CK_BYTE_PTR, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdMultisignValue, kStart, 0);
    command.AddDescriptor(Session(hSession));
    AddBytes(command, pMaskedKey, ulMaskedKeyLen);
    command.AddDescriptor(Pointer(ppInputs));
    command.AddDescriptor(Number(ulInputCount, "inputCnt="));
    AddByteStrings(command, ulInputCount, ppInputs, pulInputLens, Value, "in=");
    command.Capture();
}

void MultisignValueCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR*, CK_ULONG,
                          CK_ULONG_PTR, CK_BYTE_PTR pSignature, CK_ULONG_PTR pulSignatureLen) {
    CaptureMeasuredBufferOfSession(kCmdMultisignValue, rv, hSession, pSignature, pulSignatureLen);
}

void SIMExtractCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulHandleCount, CK_OBJECT_HANDLE_PTR phObjects,
                        CK_ULONG ulAuthForm, CK_ULONG ulN, CK_ULONG ulM, CK_ULONG_PTR pulSecretLens,
                        CK_BYTE_PTR* ppSecrets, CK_BBOOL bDelete, CK_ULONG_PTR pulBlobLen,
                        CK_BYTE_PTR pBlob) {
    CommandDescriptor command(kCmdSIMExtract, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(phObjects));
    if (phObjects != nullptr) command.AddDescriptor(HandleList(phObjects, ulHandleCount));
    command.AddDescriptor(Number(ulAuthForm, "authForm="));
    if (NamesShares(ulAuthForm)) {
        command.AddDescriptor(Number(ulN, "N="));
        command.AddDescriptor(Number(ulM, "M="));
    }
    if (BringsSecrets(ulAuthForm)) AddSecrets(command, ulN, ppSecrets, pulSecretLens);
    command.AddDescriptor(Boolean(bDelete, "delete="));
    command.AddDescriptor(Pointer(pulBlobLen));
    command.AddDescriptor(Pointer(pBlob));
    command.Capture();
}

void SIMExtractCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_OBJECT_HANDLE_PTR, CK_ULONG,
                      CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_BYTE_PTR*, CK_BBOOL, CK_ULONG_PTR pulBlobLen,
                      CK_BYTE_PTR pBlob) {
    CommandDescriptor command(kCmdSIMExtract, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulBlobLen));
        command.AddDescriptor(Pointer(pBlob));
        AddBytes(command, pBlob, ValueAt(pulBlobLen));
    }
    command.Capture();
}

void SIMInsertCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulAuthForm, CK_ULONG ulSecretCount,
                       CK_ULONG_PTR pulSecretLens, CK_BYTE_PTR* ppSecrets, CK_ULONG ulBlobLen,
                       CK_BYTE_PTR pBlob, CK_ULONG_PTR pulHandleCount, CK_OBJECT_HANDLE_PTR phObjects) {
    CommandDescriptor command(kCmdSIMInsert, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulAuthForm, "authForm="));
    if (NamesSecrets(ulAuthForm)) {
        command.AddDescriptor(Number(ulSecretCount, "secretCnt="));
        AddSecrets(command, ulSecretCount, ppSecrets, pulSecretLens);
    }
    command.AddDescriptor(Pointer(pBlob));
    AddBytes(command, pBlob, ulBlobLen);
    command.AddDescriptor(Pointer(pulHandleCount));
    command.AddDescriptor(Pointer(phObjects));
    command.Capture();
}

void SIMInsertCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_BYTE_PTR*,
                     CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR pulHandleCount, CK_OBJECT_HANDLE_PTR phObjects) {
    CommandDescriptor command(kCmdSIMInsert, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulHandleCount));
        AddNumberAt(command, pulHandleCount, "hdlCount=");
        command.AddDescriptor(Pointer(phObjects));
        if (phObjects != nullptr && pulHandleCount != nullptr)
            command.AddDescriptor(HandleList(phObjects, ValueAt(pulHandleCount)));
    }
    command.Capture();
}

void SIMMultiSignCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulAuthForm, CK_ULONG ulSecretCount,
                          CK_ULONG_PTR pulSecretLens, CK_BYTE_PTR* ppSecrets, CK_ULONG ulBlobLen,
                          CK_BYTE_PTR pBlob, CK_ULONG ulInputCount, CK_ULONG_PTR pulInputLens,
                          CK_BYTE_PTR* ppInputs, CK_ULONG_PTR pulSignatureLens, CK_BYTE_PTR* ppSignatures) {
    CommandDescriptor command(kCmdSIMMultiSign, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulAuthForm, "authForm="));
    if (NamesSecrets(ulAuthForm)) {
        command.AddDescriptor(Number(ulSecretCount, "secretCnt="));
        AddSecrets(command, ulSecretCount, ppSecrets, pulSecretLens);
    }
    command.AddDescriptor(Pointer(pBlob));
    AddBytes(command, pBlob, ulBlobLen);
    command.AddDescriptor(Number(ulInputCount, "inputCnt="));
    AddByteStrings(command, ulInputCount, ppInputs, pulInputLens, Bytes, "in=");
    command.AddDescriptor(Pointer(pulSignatureLens));
    command.AddDescriptor(Pointer(ppSignatures));
    command.Capture();
}

void SIMMultiSignCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_BYTE_PTR*,
                        CK_ULONG, CK_BYTE_PTR, CK_ULONG ulInputCount, CK_ULONG_PTR, CK_BYTE_PTR*,
                        CK_ULONG_PTR pulSignatureLens, CK_BYTE_PTR* ppSignatures) {
    CommandDescriptor command(kCmdSIMMultiSign, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulSignatureLens));
        command.AddDescriptor(Pointer(ppSignatures));
        AddByteStrings(command, ulInputCount, ppSignatures, pulSignatureLens, Bytes, "sig=");
    }
    command.Capture();
}

void ExtractCmdStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    CaptureSessionAndMechanism(kCmdExtract, hSession, pMechanism);
}

void ExtractCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    CommandDescriptor command(kCmdExtract, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pMechanism));
        if (pMechanism != nullptr) command.AddDescriptor(Mechanism(pMechanism));
    }
    command.Capture();
}

void InsertCmdStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    CaptureSessionAndMechanism(kCmdInsert, hSession, pMechanism);
}

void InsertCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR) { CaptureResult(kCmdInsert, rv); }
