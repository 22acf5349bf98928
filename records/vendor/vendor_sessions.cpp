// Records of sessions, applications and secondary slots.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void OpenSessionCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_FLAGS flags,
                         CK_VOID_PTR pApplication, CK_NOTIFY, CK_SESSION_HANDLE_PTR) {
    CommandDescriptor command(kCmdOpenSession, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber));
    command.AddDescriptor(Flags(flags));
    command.AddDescriptor(Number(AddressOf(pApplication)));
    command.Capture();
}

void OpenSessionCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_FLAGS flags,
                       CK_VOID_PTR pApplication, CK_NOTIFY, CK_SESSION_HANDLE_PTR phSession) {
    CommandDescriptor command(kCmdOpenSession, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber));
        command.AddDescriptor(Flags(flags));
        command.AddDescriptor(Number(AddressOf(pApplication)));
        if (phSession != nullptr) command.AddDescriptor(Session(ValueAt(phSession)));
    }
    command.Capture();
}

void CloseApplicationIDForContainerCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulIdHigh,
                                            CK_ULONG ulIdLow) {
    CommandDescriptor command(kCmdCloseApplicationIDForContainer, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "Container Number"));
    command.AddDescriptor(Number(ulIdHigh));
    command.AddDescriptor(Number(ulIdLow));
    command.Capture();
}

void CloseApplicationIDForContainerCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdCloseApplicationIDForContainer, kEnd, rv);
    command.Capture();
}

void OpenApplicationIDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulIdHigh, CK_ULONG ulIdLow) {
    CommandDescriptor command(kCmdOpenApplicationID, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulIdHigh));
    command.AddDescriptor(Number(ulIdLow));
    command.Capture();
}

void OpenApplicationIDCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdOpenApplicationID, kEnd, rv);
    command.Capture();
}

void OpenApplicationIDForContainerCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulIdHigh,
                                           CK_ULONG ulIdLow) {
    CommandDescriptor command(kCmdOpenApplicationIDForContainer, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "Container Number"));
    command.AddDescriptor(Number(ulIdHigh));
    command.AddDescriptor(Number(ulIdLow));
    command.Capture();
}

void OpenApplicationIDForContainerCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdOpenApplicationIDForContainer, kEnd, rv);
    command.Capture();
}

void SetApplicationIDCmdStart(CK_ULONG ulIdHigh, CK_ULONG ulIdLow) {
    CommandDescriptor command(kCmdSetApplicationID, kStart, 0);
    command.AddDescriptor(Number(ulIdHigh));
    command.AddDescriptor(Number(ulIdLow));
    command.Capture();
}

void SetApplicationIDCmdEnd(CK_RV rv, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdSetApplicationID, kEnd, rv);
    command.Capture();
}

void GetPrimarySlotCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CommandDescriptor command(kCmdGetPrimarySlot, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pSlotID));
    command.Capture();
}

void GetPrimarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CommandDescriptor command(kCmdGetPrimarySlot, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pSlotID));
        if (pSlotID != nullptr) command.AddDescriptor(Slot(ValueAt(pSlotID)));
    }
    command.Capture();
}

void GetSecondarySlotCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CommandDescriptor command(kCmdGetSecondarySlot, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pSlotID));
    command.Capture();
}

void GetSecondarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_SLOT_ID_PTR pSlotID) {
    CommandDescriptor command(kCmdGetSecondarySlot, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pSlotID));
        if (pSlotID != nullptr) command.AddDescriptor(Slot(ValueAt(pSlotID)));
    }
    command.Capture();
}

void SwitchSecondarySlotCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_ULONG ulInstance) {
    CommandDescriptor command(kCmdSwitchSecondarySlot, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulInstance));
    command.Capture();
}

void SwitchSecondarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_ULONG) {
    CommandDescriptor command(kCmdSwitchSecondarySlot, kEnd, rv);
    command.Capture();
}

void CloseSecondarySessionCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_ULONG ulInstance) {
    CommandDescriptor command(kCmdCloseSecondarySession, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulInstance));
    command.Capture();
}

void CloseSecondarySessionCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_ULONG) {
    CommandDescriptor command(kCmdCloseSecondarySession, kEnd, rv);
    command.Capture();
}

void CloseAllSecondarySessionsCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdCloseAllSecondarySessions, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void CloseAllSecondarySessionsCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdCloseAllSecondarySessions, kEnd, rv);
    command.Capture();
}

void ChoosePrimarySlotCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdChoosePrimarySlot, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void ChoosePrimarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdChoosePrimarySlot, kEnd, rv);
    command.Capture();
}

void ChooseSecondarySlotCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdChooseSecondarySlot, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void ChooseSecondarySlotCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdChooseSecondarySlot, kEnd, rv);
    command.Capture();
}

void CheckOperationStateCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulOperation) {
    CommandDescriptor command(kCmdCheckOperationState, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulOperation));
    command.Capture();
}

void CheckOperationStateCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CommandDescriptor command(kCmdCheckOperationState, kEnd, rv);
    command.Capture();
}
