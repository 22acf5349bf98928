// Builds the records of M-of-N activation.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void SetMofNCmdStart(CK_BBOOL bEnable) {
    StartRecord record(kCmdSetMofN);
    record.AddDescriptor(BooleanChild(bEnable));
    record.Capture();
}

void SetMofNCmdEnd(CK_RV rv, CK_BBOOL) { CaptureResult(kCmdSetMofN, rv); }

void GenerateMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdGenerateMofN, hSession); }

void GenerateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdGenerateMofN, rv); }

void GenerateCloneableMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdGenerateCloneableMofN, hSession);
}

void GenerateCloneableMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CaptureResult(kCmdGenerateCloneableMofN, rv);
}

void ModifyMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdModifyMofN, hSession); }

void ModifyMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdModifyMofN, rv); }

void CloneMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdCloneMofN, hSession); }

void CloneMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdCloneMofN, rv); }

void CloneModifyMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdCloneModifyMofN, hSession); }

void CloneModifyMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdCloneModifyMofN, rv); }

void ActivateMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdActivateMofN, hSession); }

void ActivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdActivateMofN, rv); }

void DeactivateMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdDeactivateMofN, hSession); }

void DeactivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdDeactivateMofN, rv); }

void GetMofNStatusCmdStart(CK_SLOT_ID slotID, CA_M_OF_N_STATUS*) { CaptureSlot(kCmdGetMofNStatus, slotID); }

void GetMofNStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CA_M_OF_N_STATUS* pStatus) {
    EndRecord record(kCmdGetMofNStatus, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        if (pStatus != nullptr) record.AddDescriptor(MofNStatusChild(pStatus));
    }
    record.Capture();
}

void DuplicateMofNCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdDuplicateMofN, hSession); }

void DuplicateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdDuplicateMofN, rv); }

void IsMofNEnabledCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulEnabled) {
    CaptureSlotAndPointers(kCmdIsMofNEnabled, slotID, {pulEnabled});
}

void IsMofNEnabledCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulEnabled) {
    CaptureNumberOfSlot(kCmdIsMofNEnabled, rv, slotID, pulEnabled, "enabled=");
}

void IsMofNRequiredCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulRequired) {
    CaptureSlotAndPointers(kCmdIsMofNRequired, slotID, {pulRequired});
}

void IsMofNRequiredCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulRequired) {
    CaptureNumberOfSlot(kCmdIsMofNRequired, rv, slotID, pulRequired, "required=");
}
