// Records of remote PIN entry devices.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void InitializeRemotePEDVectorCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdInitializeRemotePEDVector, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void InitializeRemotePEDVectorCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdInitializeRemotePEDVector, kEnd, rv);
    command.Capture();
}

void DeleteRemotePEDVectorCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdDeleteRemotePEDVector, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void DeleteRemotePEDVectorCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdDeleteRemotePEDVector, kEnd, rv);
    command.Capture();
}

void GetRemotePEDVectorStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus) {
    CommandDescriptor command(kCmdGetRemotePEDVectorStatus, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulStatus));
    command.Capture();
}

void GetRemotePEDVectorStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulStatus) {
    CommandDescriptor command(kCmdGetRemotePEDVectorStatus, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulStatus));
        AddNumberAt(command, pulStatus);
    }
    command.Capture();
}

void ConfigureRemotePEDCmdStart(CK_SLOT_ID slotID, CK_CHAR_PTR pHostName, CK_ULONG ulPort, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdConfigureRemotePED, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    AddBytes(command, pHostName, ReadableTextLength(pHostName));
    command.AddDescriptor(Number(ulPort));
    command.Capture();
}

void ConfigureRemotePEDCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_CHAR_PTR pHostName, CK_ULONG ulPort,
                              CK_ULONG_PTR pulPedId) {
    CommandDescriptor command(kCmdConfigureRemotePED, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        AddBytes(command, pHostName, ReadableTextLength(pHostName));
        command.AddDescriptor(Number(ulPort));
        command.AddDescriptor(Pointer(pulPedId));
        AddNumberAt(command, pulPedId);
    }
    command.Capture();
}

void DismantleRemotePEDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulPedId) {
    CommandDescriptor command(kCmdDismantleRemotePED, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulPedId));
    command.Capture();
}

void DismantleRemotePEDCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) {
    CommandDescriptor command(kCmdDismantleRemotePED, kEnd, rv);
    command.Capture();
}

void SpRawReadCmdStart(CK_SLOT_ID slotID, CK_VOID_PTR pData) {
    CommandDescriptor command(kCmdSpRawRead, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pData));
    command.Capture();
}

void SpRawReadCmdEnd(CK_RV rv, CK_SLOT_ID, CK_VOID_PTR) {
    CommandDescriptor command(kCmdSpRawRead, kEnd, rv);
    command.Capture();
}

void SpRawWriteCmdStart(CK_SLOT_ID slotID, CK_VOID_PTR pData) {
    CommandDescriptor command(kCmdSpRawWrite, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pData));
    command.Capture();
}

void SpRawWriteCmdEnd(CK_RV rv, CK_SLOT_ID, CK_VOID_PTR) {
    CommandDescriptor command(kCmdSpRawWrite, kEnd, rv);
    command.Capture();
}
