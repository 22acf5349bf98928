// Records of cloning keys and of the secrets that allow it.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

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
    CommandDescriptor command(kCmdSetCloningDomain, kStart, 0);
    command.AddDescriptor(Pin(pDomain));
    command.Capture();
}

void SetCloningDomainCmdEnd(CK_RV rv, CK_BYTE_PTR, CK_ULONG) { CaptureResult(kCmdSetCloningDomain, rv); }

void ClonePrivateKeyCmdStart(CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                             CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    CommandDescriptor command(kCmdClonePrivateKey, kStart, 0);
    command.AddDescriptor(Number(hTargetSession));
    command.AddDescriptor(Number(hSourceSession));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Pointer(phClone));
    command.Capture();
}

void ClonePrivateKeyCmdEnd(CK_RV rv, CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                           CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    CommandDescriptor command(kCmdClonePrivateKey, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Number(hTargetSession));
        command.AddDescriptor(Number(hSourceSession));
        command.AddDescriptor(Object(hObject));
        command.AddDescriptor(Pointer(phClone));
        if (phClone != nullptr) command.AddDescriptor(Object(ValueAt(phClone)));
    }
    command.Capture();
}

void CloneObjectCmdStart(CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                         CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    CommandDescriptor command(kCmdCloneObject, kStart, 0);
    command.AddDescriptor(Number(hTargetSession));
    command.AddDescriptor(Number(hSourceSession));
    command.AddDescriptor(Number(ulObjectType, "Type="));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Pointer(phClone));
    command.Capture();
}

void CloneObjectCmdEnd(CK_RV rv, CK_SESSION_HANDLE hTargetSession, CK_SESSION_HANDLE hSourceSession,
                       CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject, CK_OBJECT_HANDLE_PTR phClone) {
    CommandDescriptor command(kCmdCloneObject, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Number(hTargetSession));
        command.AddDescriptor(Number(hSourceSession));
        command.AddDescriptor(Number(ulObjectType, "Type="));
        command.AddDescriptor(Number(hObject));
        command.AddDescriptor(Pointer(phClone));
        AddNumberAt(command, phClone);
    }
    command.Capture();
}

void GenerateCloningKEVCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pKev, CK_ULONG_PTR pulKevLen) {
    CommandDescriptor command(kCmdGenerateCloningKEV, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pKev));
    command.AddDescriptor(Pointer(pulKevLen));
    AddNumberAt(command, pulKevLen);
    command.Capture();
}

void GenerateCloningKEVCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR pKev,
                              CK_ULONG_PTR pulKevLen) {
    CommandDescriptor command(kCmdGenerateCloningKEV, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Number(AddressOf(pKev)));
        command.AddDescriptor(Number(AddressOf(pulKevLen)));
        AddNumberAt(command, pulKevLen);
        command.AddDescriptor(Pin(pKev));
    }
    command.Capture();
}

void CloneAsTargetInitCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSourceData, CK_ULONG ulSourceDataLen,
                               CK_BYTE_PTR pKev, CK_ULONG, CK_BBOOL bReplicate, CK_BYTE_PTR pTargetData,
                               CK_ULONG_PTR pulTargetDataLen) {
    CommandDescriptor command(kCmdCloneAsTargetInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pSourceData));
    AddBytes(command, pSourceData, ulSourceDataLen);
    command.AddDescriptor(Pointer(pKev));
    command.AddDescriptor(Pin(pKev));
    command.AddDescriptor(Boolean(bReplicate));
    command.AddDescriptor(Pointer(pTargetData));
    command.AddDescriptor(Pointer(pulTargetDataLen));
    AddNumberAt(command, pulTargetDataLen);
    command.Capture();
}

void CloneAsTargetInitCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR,
                             CK_ULONG, CK_BBOOL, CK_BYTE_PTR pTargetData, CK_ULONG_PTR pulTargetDataLen) {
    CaptureBufferOfSession(kCmdCloneAsTargetInit, rv, hSession, pTargetData, pulTargetDataLen);
}

void CloneAsSourceCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                           CK_BYTE_PTR pTargetData, CK_ULONG ulTargetDataLen, CK_BBOOL bReplicate,
                           CK_BYTE_PTR pClone, CK_ULONG_PTR pulCloneLen) {
    CommandDescriptor command(kCmdCloneAsSource, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulObjectType, "Type="));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Pointer(pTargetData));
    AddBytes(command, pTargetData, ulTargetDataLen);
    command.AddDescriptor(Boolean(bReplicate));
    command.AddDescriptor(Pointer(pClone));
    command.AddDescriptor(Pointer(pulCloneLen));
    AddNumberAt(command, pulCloneLen);
    command.Capture();
}

void CloneAsSourceCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_OBJECT_HANDLE, CK_BYTE_PTR,
                         CK_ULONG, CK_BBOOL, CK_BYTE_PTR pClone, CK_ULONG_PTR pulCloneLen) {
    CaptureBufferOfSession(kCmdCloneAsSource, rv, hSession, pClone, pulCloneLen);
}

void CloneAsTargetCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pKev, CK_ULONG, CK_BYTE_PTR pClone,
                           CK_ULONG ulCloneLen, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                           CK_BBOOL bReplicate, CK_OBJECT_HANDLE_PTR phClone) {
    CommandDescriptor command(kCmdCloneAsTarget, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pKev));
    command.AddDescriptor(Pin(pKev));
    command.AddDescriptor(Pointer(pClone));
    AddBytes(command, pClone, ulCloneLen);
    command.AddDescriptor(Number(ulObjectType, "Type="));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Boolean(bReplicate));
    command.AddDescriptor(Pointer(phClone));
    command.Capture();
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
