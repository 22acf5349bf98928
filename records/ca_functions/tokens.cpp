// Builds the records of tokens: inserting, erasing, storing, counting.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void FindAdminSlotForSlotCmdStart(CK_SLOT_ID slotID, CK_SLOT_ID_PTR pAdminSlotID,
                                  CK_SLOT_ID_PTR pOtherSlotID) {
    CaptureSlotAndPointers(kCmdFindAdminSlotForSlot, slotID, {pAdminSlotID, pOtherSlotID});
}

void FindAdminSlotForSlotCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_SLOT_ID_PTR pAdminSlotID,
                                CK_SLOT_ID_PTR pOtherSlotID) {
    EndRecord record(kCmdFindAdminSlotForSlot, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pAdminSlotID));
        record.AddDescriptor(PointerChild(pOtherSlotID));
        if (pAdminSlotID != nullptr) record.AddDescriptor(SlotChild(ValueAt(pAdminSlotID)));
        if (pOtherSlotID != nullptr) record.AddDescriptor(SlotChild(ValueAt(pOtherSlotID)));
    }
    record.Capture();
}

void TokenInsertCmdStart(CK_SESSION_HANDLE hSession, CK_VOID_PTR pTokenHandle, CK_SLOT_ID slotID) {
    StartRecord record(kCmdTokenInsert);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pTokenHandle, "TknHndle="));
    record.AddDescriptor(SlotChild(slotID));
    record.Capture();
}

void TokenInsertCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_VOID_PTR, CK_SLOT_ID) {
    CaptureResult(kCmdTokenInsert, rv);
}

void TokenInsertNoAuthCmdStart(CK_VOID_PTR pTokenHandle, CK_SLOT_ID slotID) {
    StartRecord record(kCmdTokenInsertNoAuth);
    record.AddDescriptor(PointerChild(pTokenHandle, "TknHndle="));
    record.AddDescriptor(SlotChild(slotID));
    record.Capture();
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
    StartRecord record(kCmdGetTokenCertificates);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulCertificateType));
    record.AddDescriptor(PointerChild(pCertificates));
    record.AddDescriptor(PointerChild(pulCertificatesLen));
    AddNumberAt(record, pulCertificatesLen);
    record.Capture();
}

void GetTokenCertificatesCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulCertificateType,
                                CK_BYTE_PTR pCertificates, CK_ULONG_PTR pulCertificatesLen) {
    EndRecord record(kCmdGetTokenCertificates, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulCertificateType));
        record.AddDescriptor(PointerChild(pCertificates));
        record.AddDescriptor(PointerChild(pulCertificatesLen));
        AddNumberAt(record, pulCertificatesLen);
        AddBytes(record, pCertificates, ValueAt(pulCertificatesLen));
    }
    record.Capture();
}

void ReadCommonStoreCmdStart(CK_ULONG ulIndex, CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen) {
    StartRecord record(kCmdReadCommonStore);
    record.AddDescriptor(NumberChild(ulIndex));
    record.AddDescriptor(PointerChild(pData));
    record.AddDescriptor(PointerChild(pulDataLen));
    AddNumberAt(record, pulDataLen);
    record.Capture();
}

void ReadCommonStoreCmdEnd(CK_RV rv, CK_ULONG ulIndex, CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen) {
    EndRecord record(kCmdReadCommonStore, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(NumberChild(ulIndex));
        record.AddDescriptor(PointerChild(pData));
        record.AddDescriptor(PointerChild(pulDataLen));
        AddNumberAt(record, pulDataLen);
        AddBytes(record, pData, ValueAt(pulDataLen));
    }
    record.Capture();
}

void WriteCommonStoreCmdStart(CK_ULONG ulIndex, CK_BYTE_PTR pData, CK_ULONG ulDataLen) {
    StartRecord record(kCmdWriteCommonStore);
    record.AddDescriptor(NumberChild(ulIndex));
    record.AddDescriptor(PointerChild(pData));
    AddBytes(record, pData, ulDataLen);
    record.AddDescriptor(NumberChild(ulDataLen));
    record.Capture();
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
    StartRecord record(kCmdEnableUnauthTokenInsertion);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulMaximum, "Max="));
    record.AddDescriptor(PointerChild(pulContext));
    record.Capture();
}

void EnableUnauthTokenInsertionCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG ulMaximum,
                                      CK_ULONG_PTR pulContext) {
    EndRecord record(kCmdEnableUnauthTokenInsertion, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(NumberChild(ulMaximum, "Max="));
        record.AddDescriptor(PointerChild(pulContext));
        AddNumberAt(record, pulContext, "Ctxt=");
    }
    record.Capture();
}

void GetUnauthTokenInsertionStatusCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContext,
                                           CK_ULONG_PTR pulMaximum, CK_ULONG_PTR pulCurrent) {
    StartRecord record(kCmdGetUnauthTokenInsertionStatus);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulContext, "Ctxt="));
    record.AddDescriptor(PointerChild(pulMaximum));
    record.AddDescriptor(PointerChild(pulCurrent));
    record.Capture();
}

void GetUnauthTokenInsertionStatusCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG ulContext,
                                         CK_ULONG_PTR pulMaximum, CK_ULONG_PTR pulCurrent) {
    EndRecord record(kCmdGetUnauthTokenInsertionStatus, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(NumberChild(ulContext, "Ctxt="));
        record.AddDescriptor(PointerChild(pulMaximum));
        record.AddDescriptor(PointerChild(pulCurrent));
        AddNumberAt(record, pulMaximum, "Max=");
        AddNumberAt(record, pulCurrent, "Cur=");
    }
    record.Capture();
}

void DisableUnauthTokenInsertionCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContext) {
    StartRecord record(kCmdDisableUnauthTokenInsertion);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulContext, "Ctxt="));
    record.Capture();
}

void DisableUnauthTokenInsertionCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CaptureResult(kCmdDisableUnauthTokenInsertion, rv);
}
