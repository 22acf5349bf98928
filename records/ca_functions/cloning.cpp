// Builds the records of cloning keys and of the secrets that allow it.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void ManualKCVCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdManualKCV, hSession); }

void ManualKCVCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdManualKCV, rv); }

void SetLKCVCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pDomain, CK_ULONG ulDomainLen) {
    CaptureSessionAndSecret(kCmdSetLKCV, hSession, pDomain, ulDomainLen);
}

void SetLKCVCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { CaptureResult(kCmdSetLKCV, rv); }

void SetKCVCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pDomain, CK_ULONG ulDomainLen) {
    CaptureSessionAndSecret(kCmdSetKCV, hSession, pDomain, ulDomainLen);
}

void SetKCVCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { CaptureResult(kCmdSetKCV, rv); }

void SetRDKCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pDomain, CK_ULONG ulDomainLen) {
    CaptureSessionAndSecret(kCmdSetRDK, hSession, pDomain, ulDomainLen);
}

void SetRDKCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { CaptureResult(kCmdSetRDK, rv); }

void SetCloningDomainCmdStart(CK_BYTE_PTR pDomain, CK_ULONG) {
    StartRecord record(kCmdSetCloningDomain);
    record.AddDescriptor(PinChild(pDomain));
    record.Capture();
}

void SetCloningDomainCmdEnd(CK_RV rv, CK_BYTE_PTR, CK_ULONG) { CaptureResult(kCmdSetCloningDomain, rv); }

void ClonePrivateKeyCmdStart(CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                             CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    StartRecord record(kCmdClonePrivateKey);
    record.AddDescriptor(NumberChild(hTargetSession));
    record.AddDescriptor(NumberChild(hSourceSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(PointerChild(phClone));
    record.Capture();
}

void ClonePrivateKeyCmdEnd(CK_RV rv, CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                           CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    EndRecord record(kCmdClonePrivateKey, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(NumberChild(hTargetSession));
        record.AddDescriptor(NumberChild(hSourceSession));
        record.AddDescriptor(ObjectChild(hObject));
        record.AddDescriptor(PointerChild(phClone));
        if (phClone != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phClone)));
    }
    record.Capture();
}

void CloneObjectCmdStart(CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                         CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    StartRecord record(kCmdCloneObject);
    record.AddDescriptor(NumberChild(hTargetSession));
    record.AddDescriptor(NumberChild(hSourceSession));
    record.AddDescriptor(NumberChild(ulObjectType, "Type="));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(PointerChild(phClone));
    record.Capture();
}

void CloneObjectCmdEnd(CK_RV rv, CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                       CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    EndRecord record(kCmdCloneObject, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(NumberChild(hTargetSession));
        record.AddDescriptor(NumberChild(hSourceSession));
        record.AddDescriptor(NumberChild(ulObjectType, "Type="));
        record.AddDescriptor(NumberChild(hObject));
        record.AddDescriptor(PointerChild(phClone));
        AddNumberAt(record, phClone);
    }
    record.Capture();
}

void GenerateCloningKEVCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pKev, CK_ULONG_PTR pulKevLen) {
    StartRecord record(kCmdGenerateCloningKEV);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pKev));
    record.AddDescriptor(PointerChild(pulKevLen));
    AddPinLengthAt(record, pulKevLen);
    record.Capture();
}

void GenerateCloningKEVCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pKev,
                              CK_ULONG_PTR pulKevLen) {
    EndRecord record(kCmdGenerateCloningKEV, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(NumberChild(AsNumber(pKev)));
        record.AddDescriptor(NumberChild(AsNumber(pulKevLen)));
        AddPinLengthAt(record, pulKevLen);
        record.AddDescriptor(PinChild(pKev));
    }
    record.Capture();
}

void CloneAsTargetInitCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSourceData, CK_ULONG ulSourceDataLen,
                               CK_BYTE_PTR pKev, CK_ULONG, CK_BBOOL bReplicate, CK_BYTE_PTR pTargetData,
                               CK_ULONG_PTR pulTargetDataLen) {
    StartRecord record(kCmdCloneAsTargetInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pSourceData));
    AddBytes(record, pSourceData, ulSourceDataLen);
    record.AddDescriptor(PointerChild(pKev));
    record.AddDescriptor(PinChild(pKev));
    record.AddDescriptor(BooleanChild(bReplicate));
    record.AddDescriptor(PointerChild(pTargetData));
    record.AddDescriptor(PointerChild(pulTargetDataLen));
    AddNumberAt(record, pulTargetDataLen);
    record.Capture();
}

void CloneAsTargetInitCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR,
                             CK_ULONG, CK_BBOOL, CK_BYTE_PTR pTargetData, CK_ULONG_PTR pulTargetDataLen) {
    CaptureBufferOfSession(kCmdCloneAsTargetInit, rv, hSession, pTargetData, pulTargetDataLen);
}

void CloneAsSourceCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                           CK_BYTE_PTR pTargetData, CK_ULONG ulTargetDataLen, CK_BBOOL bReplicate,
                           CK_BYTE_PTR pClone, CK_ULONG_PTR pulCloneLen) {
    StartRecord record(kCmdCloneAsSource);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulObjectType, "Type="));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(PointerChild(pTargetData));
    AddBytes(record, pTargetData, ulTargetDataLen);
    record.AddDescriptor(BooleanChild(bReplicate));
    record.AddDescriptor(PointerChild(pClone));
    record.AddDescriptor(PointerChild(pulCloneLen));
    AddNumberAt(record, pulCloneLen);
    record.Capture();
}

void CloneAsSourceCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_OBJECT_HANDLE, CK_BYTE_PTR,
                         CK_ULONG, CK_BBOOL, CK_BYTE_PTR pClone, CK_ULONG_PTR pulCloneLen) {
    CaptureBufferOfSession(kCmdCloneAsSource, rv, hSession, pClone, pulCloneLen);
}

void CloneAsTargetCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pKev, CK_ULONG, CK_BYTE_PTR pClone,
                           CK_ULONG ulCloneLen, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                           CK_BBOOL bReplicate, CK_OBJECT_HANDLE_PTR phClone) {
    StartRecord record(kCmdCloneAsTarget);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pKev));
    record.AddDescriptor(PinChild(pKev));
    record.AddDescriptor(PointerChild(pClone));
    AddBytes(record, pClone, ulCloneLen);
    record.AddDescriptor(NumberChild(ulObjectType, "Type="));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(BooleanChild(bReplicate));
    record.AddDescriptor(PointerChild(phClone));
    record.Capture();
}

void CloneAsTargetCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                         CK_ULONG, CK_OBJECT_HANDLE, CK_BBOOL, CK_OBJECT_HANDLE_PTR phClone) {
    CaptureObjectOfSession(kCmdCloneAsTarget, rv, hSession, phClone);
}

void CloneObjectToAllSessionsCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject) {
    CaptureSessionAndObject(kCmdCloneObjectToAllSessions, hSession, hObject);
}

void CloneObjectToAllSessionsCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) {
    CaptureResult(kCmdCloneObjectToAllSessions, rv);
}

void CloneAllObjectsToSessionCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID) {
    CaptureSessionAndSlot(kCmdCloneAllObjectsToSession, hSession, slotID);
}

void CloneAllObjectsToSessionCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID) {
    CaptureResult(kCmdCloneAllObjectsToSession, rv);
}
