// Records of tokens: inserting, erasing, storing, counting.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void FindAdminSlotForSlotCmdStart(CK_SLOT_ID slotID, CK_SLOT_ID_PTR pAdminSlotID,
                                  CK_SLOT_ID_PTR pOtherSlotID) {
    CommandDescriptor command(kCmdFindAdminSlotForSlot, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pAdminSlotID));
    command.AddDescriptor(Pointer(pOtherSlotID));
    command.Capture();
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
    CommandDescriptor command(kCmdTokenInsert, kEnd, rv);
    command.Capture();
}

void TokenInsertNoAuthCmdStart(CK_VOID_PTR pTokenHandle, CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdTokenInsertNoAuth, kStart, 0);
    command.AddDescriptor(Pointer(pTokenHandle, "TknHndle="));
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void TokenInsertNoAuthCmdEnd(CK_RV rv, CK_VOID_PTR, CK_SLOT_ID) {
    CommandDescriptor command(kCmdTokenInsertNoAuth, kEnd, rv);
    command.Capture();
}

void TokenZeroizeCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CommandDescriptor command(kCmdTokenZeroize, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Flags(flags));
    command.AddDescriptor(Number(ulOption));
    command.Capture();
}

void TokenZeroizeCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) {
    CommandDescriptor command(kCmdTokenZeroize, kEnd, rv);
    command.Capture();
}

void TokenDeleteCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdTokenDelete, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void TokenDeleteCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID) {
    CommandDescriptor command(kCmdTokenDelete, kEnd, rv);
    command.Capture();
}

void GenerateTokenKeysCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdGenerateTokenKeys, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GenerateTokenKeysCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdGenerateTokenKeys, kEnd, rv);
    command.Capture();
}

void GetTokenCertificateInfoCmdStart(CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdGetTokenCertificateInfo, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void GetTokenCertificateInfoCmdEnd(CK_RV rv, CK_SLOT_ID) {
    CommandDescriptor command(kCmdGetTokenCertificateInfo, kEnd, rv);
    command.Capture();
}

void SetTokenCertificateSignatureCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdSetTokenCertificateSignature, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void SetTokenCertificateSignatureCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdSetTokenCertificateSignature, kEnd, rv);
    command.Capture();
}

void GetTokenInsertionCountCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulCount) {
    CommandDescriptor command(kCmdGetTokenInsertionCount, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulCount));
    command.Capture();
}

void GetTokenInsertionCountCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulCount) {
    CommandDescriptor command(kCmdGetTokenInsertionCount, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulCount));
        AddNumberAt(command, pulCount, "cnt=");
    }
    command.Capture();
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
    CommandDescriptor command(kCmdWriteCommonStore, kEnd, rv);
    command.Capture();
}

void GetTunnelSlotNumberCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTunnelSlot) {
    CommandDescriptor command(kCmdGetTunnelSlotNumber, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulTunnelSlot));
    command.Capture();
}

void GetTunnelSlotNumberCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTunnelSlot) {
    CommandDescriptor command(kCmdGetTunnelSlotNumber, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulTunnelSlot));
        AddNumberAt(command, pulTunnelSlot);
    }
    command.Capture();
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
    CommandDescriptor command(kCmdDisableUnauthTokenInsertion, kEnd, rv);
    command.Capture();
}
