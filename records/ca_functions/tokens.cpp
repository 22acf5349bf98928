// Records of tokens: inserting, erasing, storing, counting.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void FindAdminSlotForSlotCmdStart(CK_SLOT_ID slotID, CK_SLOT_ID_PTR pAdminSlotID,
                                  CK_SLOT_ID_PTR pOtherSlotID) {
    CaptureSlotAndPointers(kCmdFindAdminSlotForSlot, slotID, {pAdminSlotID, pOtherSlotID});
}

void FindAdminSlotForSlotCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_SLOT_ID_PTR pAdminSlotID,
                                CK_SLOT_ID_PTR pOtherSlotID) {
    CommandDescriptor command(kCmdFindAdminSlotForSlot, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pAdminSlotID));
        command.AddDescriptor(Pointer(pOtherSlotID));
        if (pAdminSlotID != nullptr) command.AddDescriptor(Slot(ValueAt(pAdminSlotID)));
        if (pOtherSlotID != nullptr) command.AddDescriptor(Slot(ValueAt(pOtherSlotID)));
    }
    command.Capture();
}

void TokenInsertCmdStart(CK_SESSION_HANDLE hSession, CK_VOID_PTR pTokenHandle, CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdTokenInsert, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pTokenHandle, "TknHndle="));
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void TokenInsertCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_VOID_PTR, CK_SLOT_ID) {
    CaptureResult(kCmdTokenInsert, rv);
}

void TokenInsertNoAuthCmdStart(CK_VOID_PTR pTokenHandle, CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdTokenInsertNoAuth, kStart, 0);
    command.AddDescriptor(Pointer(pTokenHandle, "TknHndle="));
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void TokenInsertNoAuthCmdEnd(CK_RV rv, CK_VOID_PTR, CK_SLOT_ID) { CaptureResult(kCmdTokenInsertNoAuth, rv); }

void TokenZeroizeCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CaptureSlotFlagsAndNumber(kCmdTokenZeroize, slotID, flags, ulOption);
}

void TokenZeroizeCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) { CaptureResult(kCmdTokenZeroize, rv); }

void TokenDeleteCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID) {
    CaptureSessionAndSlot(kCmdTokenDelete, hSession, slotID);
}

void TokenDeleteCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID) { CaptureResult(kCmdTokenDelete, rv); }

void GenerateTokenKeysCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdGenerateTokenKeys, hSession);
}

void GenerateTokenKeysCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdGenerateTokenKeys, rv); }

void GetTokenCertificateInfoCmdStart(CK_SLOT_ID slotID) { CaptureSlot(kCmdGetTokenCertificateInfo, slotID); }

void GetTokenCertificateInfoCmdEnd(CK_RV rv, CK_SLOT_ID) { CaptureResult(kCmdGetTokenCertificateInfo, rv); }

void SetTokenCertificateSignatureCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdSetTokenCertificateSignature, hSession);
}

void SetTokenCertificateSignatureCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CaptureResult(kCmdSetTokenCertificateSignature, rv);
}

void GetTokenInsertionCountCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulCount) {
    CaptureSlotAndPointers(kCmdGetTokenInsertionCount, slotID, {pulCount});
}

void GetTokenInsertionCountCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulCount) {
    CaptureNumberOfSlot(kCmdGetTokenInsertionCount, rv, slotID, pulCount, "cnt=");
}

void GetTokenCertificatesCmdStart(CK_SLOT_ID slotID, CK_ULONG ulCertificateType, CK_BYTE_PTR pCertificates,
                                  CK_ULONG_PTR pulCertificatesLen) {
    CommandDescriptor command(kCmdGetTokenCertificates, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulCertificateType));
    command.AddDescriptor(Pointer(pCertificates));
    command.AddDescriptor(Pointer(pulCertificatesLen));
    AddNumberAt(command, pulCertificatesLen);
    command.Capture();
}

void GetTokenCertificatesCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulCertificateType,
                                CK_BYTE_PTR pCertificates, CK_ULONG_PTR pulCertificatesLen) {
    CommandDescriptor command(kCmdGetTokenCertificates, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulCertificateType));
        command.AddDescriptor(Pointer(pCertificates));
        command.AddDescriptor(Pointer(pulCertificatesLen));
        AddNumberAt(command, pulCertificatesLen);
        AddBytes(command, pCertificates, ValueAt(pulCertificatesLen));
    }
    command.Capture();
}

void ReadCommonStoreCmdStart(CK_ULONG ulIndex, CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen) {
    CommandDescriptor command(kCmdReadCommonStore, kStart, 0);
    command.AddDescriptor(Number(ulIndex));
    command.AddDescriptor(Pointer(pData));
    command.AddDescriptor(Pointer(pulDataLen));
    AddNumberAt(command, pulDataLen);
    command.Capture();
}

void ReadCommonStoreCmdEnd(CK_RV rv, CK_ULONG ulIndex, CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen) {
    CommandDescriptor command(kCmdReadCommonStore, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Number(ulIndex));
        command.AddDescriptor(Pointer(pData));
        command.AddDescriptor(Pointer(pulDataLen));
        AddNumberAt(command, pulDataLen);
        AddBytes(command, pData, ValueAt(pulDataLen));
    }
    command.Capture();
}

void WriteCommonStoreCmdStart(CK_ULONG ulIndex, CK_BYTE_PTR pData, CK_ULONG ulDataLen) {
    CommandDescriptor command(kCmdWriteCommonStore, kStart, 0);
    command.AddDescriptor(Number(ulIndex));
    command.AddDescriptor(Pointer(pData));
    AddBytes(command, pData, ulDataLen);
    command.AddDescriptor(Number(ulDataLen));
    command.Capture();
}

void WriteCommonStoreCmdEnd(CK_RV rv, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdWriteCommonStore, rv);
}

void GetTunnelSlotNumberCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTunnelSlot) {
    CaptureSlotAndPointers(kCmdGetTunnelSlotNumber, slotID, {pulTunnelSlot});
}

void GetTunnelSlotNumberCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTunnelSlot) {
    CaptureNumberOfSlot(kCmdGetTunnelSlotNumber, rv, slotID, pulTunnelSlot);
}

void EnableUnauthTokenInsertionCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulMaximum,
                                        CK_ULONG_PTR pulContext) {
    CommandDescriptor command(kCmdEnableUnauthTokenInsertion, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulMaximum, "Max="));
    command.AddDescriptor(Pointer(pulContext));
    command.Capture();
}

void EnableUnauthTokenInsertionCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG ulMaximum,
                                      CK_ULONG_PTR pulContext) {
    CommandDescriptor command(kCmdEnableUnauthTokenInsertion, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Number(ulMaximum, "Max="));
        command.AddDescriptor(Pointer(pulContext));
        AddNumberAt(command, pulContext, "Ctxt=");
    }
    command.Capture();
}

void GetUnauthTokenInsertionStatusCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContext,
                                           CK_ULONG_PTR pulMaximum, CK_ULONG_PTR pulCurrent) {
    CommandDescriptor command(kCmdGetUnauthTokenInsertionStatus, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulContext, "Ctxt="));
    command.AddDescriptor(Pointer(pulMaximum));
    command.AddDescriptor(Pointer(pulCurrent));
    command.Capture();
}

void GetUnauthTokenInsertionStatusCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG ulContext,
                                         CK_ULONG_PTR pulMaximum, CK_ULONG_PTR pulCurrent) {
    CommandDescriptor command(kCmdGetUnauthTokenInsertionStatus, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Number(ulContext, "Ctxt="));
        command.AddDescriptor(Pointer(pulMaximum));
        command.AddDescriptor(Pointer(pulCurrent));
        AddNumberAt(command, pulMaximum, "Max=");
        AddNumberAt(command, pulCurrent, "Cur=");
    }
    command.Capture();
}

void DisableUnauthTokenInsertionCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContext) {
    CommandDescriptor command(kCmdDisableUnauthTokenInsertion, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulContext, "Ctxt="));
    command.Capture();
}

void DisableUnauthTokenInsertionCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CaptureResult(kCmdDisableUnauthTokenInsertion, rv);
}
