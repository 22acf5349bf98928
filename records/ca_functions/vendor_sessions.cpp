// Builds the records of sessions, applications and secondary slots.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

namespace {

void CaptureApplicationOfContainer(CommandType type, CK_SLOT_ID slot, CK_ULONG container, CK_ULONG idHigh,
                                   CK_ULONG idLow) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    record.AddDescriptor(NumberChild(container, "Container Number"));
    record.AddDescriptor(NumberChild(idHigh));
    record.AddDescriptor(NumberChild(idLow));
    record.Capture();
}

void CaptureSessionSlotAndNumber(CommandType type, CK_SESSION_HANDLE session, CK_SLOT_ID slot,
                                 CK_ULONG number) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    record.AddDescriptor(SlotChild(slot));
    record.AddDescriptor(NumberChild(number));
    record.Capture();
}

void CaptureSlotOfSession(CommandType type, CK_RV rv, CK_SESSION_HANDLE session, const CK_SLOT_ID* slot) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(session));
        record.AddDescriptor(PointerChild(slot));
        if (slot != nullptr) record.AddDescriptor(SlotChild(ValueAt(slot)));
    }
    record.Capture();
}

}  // namespace

void OpenSessionCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_FLAGS flags,
                         CK_VOID_PTR pApplication, CK_NOTIFY, CK_SESSION_HANDLE_PTR) {
    StartRecord record(kCmdOpenSession);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber));
    record.AddDescriptor(FlagsChild(flags));
    record.AddDescriptor(NumberChild(AsNumber(pApplication)));
    record.Capture();
}

void OpenSessionCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_FLAGS flags,
                       CK_VOID_PTR pApplication, CK_NOTIFY, CK_SESSION_HANDLE_PTR phSession) {
    EndRecord record(kCmdOpenSession, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerNumber));
        record.AddDescriptor(FlagsChild(flags));
        record.AddDescriptor(NumberChild(AsNumber(pApplication)));
        if (phSession != nullptr) record.AddDescriptor(SessionChild(ValueAt(phSession)));
    }
    record.Capture();
}

void CloseApplicationIDForContainerCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulIdHigh,
                                            CK_ULONG ulIdLow) {
    CaptureApplicationOfContainer(kCmdCloseApplicationIDForContainer, slotID, ulContainerNumber, ulIdHigh,
                                  ulIdLow);
}

void CloseApplicationIDForContainerCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdCloseApplicationIDForContainer, rv);
}

void OpenApplicationIDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulIdHigh, CK_ULONG ulIdLow) {
    StartRecord record(kCmdOpenApplicationID);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulIdHigh));
    record.AddDescriptor(NumberChild(ulIdLow));
    record.Capture();
}

void OpenApplicationIDCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdOpenApplicationID, rv);
}

void OpenApplicationIDForContainerCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulIdHigh,
                                           CK_ULONG ulIdLow) {
    CaptureApplicationOfContainer(kCmdOpenApplicationIDForContainer, slotID, ulContainerNumber, ulIdHigh,
                                  ulIdLow);
}

void OpenApplicationIDForContainerCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdOpenApplicationIDForContainer, rv);
}

void SetApplicationIDCmdStart(CK_ULONG ulIdHigh, CK_ULONG ulIdLow) {
    StartRecord record(kCmdSetApplicationID);
    record.AddDescriptor(NumberChild(ulIdHigh));
    record.AddDescriptor(NumberChild(ulIdLow));
    record.Capture();
}

void SetApplicationIDCmdEnd(CK_RV rv, CK_ULONG, CK_ULONG) { CaptureResult(kCmdSetApplicationID, rv); }

void GetPrimarySlotCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CaptureSessionAndPointers(kCmdGetPrimarySlot, hSession, {pSlotID});
}

void GetPrimarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CaptureSlotOfSession(kCmdGetPrimarySlot, rv, hSession, pSlotID);
}

void GetSecondarySlotCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CaptureSessionAndPointers(kCmdGetSecondarySlot, hSession, {pSlotID});
}

void GetSecondarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CaptureSlotOfSession(kCmdGetSecondarySlot, rv, hSession, pSlotID);
}

void SwitchSecondarySlotCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_ULONG ulInstance) {
    CaptureSessionSlotAndNumber(kCmdSwitchSecondarySlot, hSession, slotID, ulInstance);
}

void SwitchSecondarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_ULONG) {
    CaptureResult(kCmdSwitchSecondarySlot, rv);
}

void CloseSecondarySessionCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_ULONG ulInstance) {
    CaptureSessionSlotAndNumber(kCmdCloseSecondarySession, hSession, slotID, ulInstance);
}

void CloseSecondarySessionCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_ULONG) {
    CaptureResult(kCmdCloseSecondarySession, rv);
}

void CloseAllSecondarySessionsCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdCloseAllSecondarySessions, hSession);
}

void CloseAllSecondarySessionsCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CaptureResult(kCmdCloseAllSecondarySessions, rv);
}

void ChoosePrimarySlotCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdChoosePrimarySlot, hSession);
}

void ChoosePrimarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdChoosePrimarySlot, rv); }

void ChooseSecondarySlotCmdStart(CK_SESSION_HANDLE hSession) {
    CaptureSession(kCmdChooseSecondarySlot, hSession);
}

void ChooseSecondarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdChooseSecondarySlot, rv); }

void CheckOperationStateCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulOperation) {
    CaptureSessionAndNumber(kCmdCheckOperationState, hSession, ulOperation);
}

void CheckOperationStateCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CaptureResult(kCmdCheckOperationState, rv);
}
