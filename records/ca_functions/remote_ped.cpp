// Builds the records of remote PIN entry devices.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void InitializeRemotePEDVectorCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdInitializeRemotePEDVector, hSession);
}

void InitializeRemotePEDVectorCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CaptureResult(kCmdInitializeRemotePEDVector, rv);
}

void DeleteRemotePEDVectorCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdDeleteRemotePEDVector, hSession);
}

void DeleteRemotePEDVectorCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CaptureResult(kCmdDeleteRemotePEDVector, rv);
}

void GetRemotePEDVectorStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus) {
    CaptureSlotAndPointers(kCmdGetRemotePEDVectorStatus, slotID, {pulStatus});
}

void GetRemotePEDVectorStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus) {
    CaptureNumberOfSlot(kCmdGetRemotePEDVectorStatus, rv, slotID, pulStatus);
}

void ConfigureRemotePEDCmdStart(CK_SLOT_ID slotID, CK_CHAR_PTR pHostName, CK_ULONG ulPort, CK_ULONG_PTR) {
    StartRecord record(kCmdConfigureRemotePED);
    record.AddDescriptor(SlotChild(slotID));
    AddName(record, pHostName, LengthOfText(pHostName));
    record.AddDescriptor(NumberChild(ulPort));
    record.Capture();
}

void ConfigureRemotePEDCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_CHAR_PTR pHostName, CK_ULONG ulPort,
                              CK_ULONG_PTR pulPedId) {
    EndRecord record(kCmdConfigureRemotePED, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        AddName(record, pHostName, LengthOfText(pHostName));
        record.AddDescriptor(NumberChild(ulPort));
        record.AddDescriptor(PointerChild(pulPedId));
        AddNumberAt(record, pulPedId);
    }
    record.Capture();
}

void DismantleRemotePEDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulPedId) {
    StartRecord record(kCmdDismantleRemotePED);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulPedId));
    record.Capture();
}

void DismantleRemotePEDCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) { CaptureResult(kCmdDismantleRemotePED, rv); }

void SpRawReadCmdStart(CK_SLOT_ID slotID, CK_VOID_PTR pData) {
    CaptureSlotAndPointers(kCmdSpRawRead, slotID, {pData});
}

void SpRawReadCmdEnd(CK_RV rv, CK_SLOT_ID, CK_VOID_PTR) { CaptureResult(kCmdSpRawRead, rv); }

void SpRawWriteCmdStart(CK_SLOT_ID slotID, CK_VOID_PTR pData) {
    CaptureSlotAndPointers(kCmdSpRawWrite, slotID, {pData});
}

void SpRawWriteCmdEnd(CK_RV rv, CK_SLOT_ID, CK_VOID_PTR) { CaptureResult(kCmdSpRawWrite, rv); }
