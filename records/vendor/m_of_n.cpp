// Records of M-of-N activation.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void SetMofNCmdStart(CK_BBOOL bEnable) {
    CommandDescriptor command(kCmdSetMofN, kStart, 0);
    command.AddDescriptor(Boolean(bEnable));
    command.Capture();
}

void SetMofNCmdEnd(CK_RV rv, CK_BBOOL) {
    CommandDescriptor command(kCmdSetMofN, kEnd, rv);
    command.Capture();
}

void GenerateMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdGenerateMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GenerateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdGenerateMofN, kEnd, rv);
    command.Capture();
}

void GenerateCloneableMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdGenerateCloneableMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GenerateCloneableMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdGenerateCloneableMofN, kEnd, rv);
    command.Capture();
}

void ModifyMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdModifyMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void ModifyMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdModifyMofN, kEnd, rv);
    command.Capture();
}

void CloneMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdCloneMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void CloneMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdCloneMofN, kEnd, rv);
    command.Capture();
}

void CloneModifyMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdCloneModifyMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void CloneModifyMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdCloneModifyMofN, kEnd, rv);
    command.Capture();
}

void ActivateMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdActivateMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void ActivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdActivateMofN, kEnd, rv);
    command.Capture();
}

void DeactivateMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdDeactivateMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void DeactivateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdDeactivateMofN, kEnd, rv);
    command.Capture();
}

void GetMofNStatusCmdStart(CK_SLOT_ID slotID, CA_M_OF_N_STATUS*) {
    CommandDescriptor command(kCmdGetMofNStatus, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void GetMofNStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CA_M_OF_N_STATUS* pStatus) {
    CommandDescriptor command(kCmdGetMofNStatus, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        if (pStatus != nullptr) command.AddDescriptor(MofNStatus(pStatus));
    }
    command.Capture();
}

void DuplicateMofNCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdDuplicateMofN, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void DuplicateMofNCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdDuplicateMofN, kEnd, rv);
    command.Capture();
}

void IsMofNEnabledCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulEnabled) {
    CommandDescriptor command(kCmdIsMofNEnabled, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulEnabled));
    command.Capture();
}

void IsMofNEnabledCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulEnabled) {
    CommandDescriptor command(kCmdIsMofNEnabled, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulEnabled));
        AddNumberAt(command, pulEnabled, "enabled=");
    }
    command.Capture();
}

void IsMofNRequiredCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulRequired) {
    CommandDescriptor command(kCmdIsMofNRequired, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulRequired));
    command.Capture();
}

void IsMofNRequiredCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulRequired) {
    CommandDescriptor command(kCmdIsMofNRequired, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulRequired));
        AddNumberAt(command, pulRequired, "required=");
    }
    command.Capture();
}
