// Records of modules, firmware and of resetting a device.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void RestartCmdStart(CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdRestart, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void RestartCmdEnd(CK_RV rv, CK_SLOT_ID) {
    CommandDescriptor command(kCmdRestart, kEnd, rv);
    command.Capture();
}

void GetModuleListCmdStart(CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdGetModuleList, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void GetModuleListCmdEnd(CK_RV rv, CK_SLOT_ID) {
    CommandDescriptor command(kCmdGetModuleList, kEnd, rv);
    command.Capture();
}

void GetModuleInfoCmdStart(CK_SLOT_ID slotID, CK_ULONG ulModuleId, CK_VOID_PTR pInfo) {
    CommandDescriptor command(kCmdGetModuleInfo, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulModuleId));
    command.AddDescriptor(Pointer(pInfo));
    command.Capture();
}

void GetModuleInfoCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_VOID_PTR) {
    CommandDescriptor command(kCmdGetModuleInfo, kEnd, rv);
    command.Capture();
}

void LoadModuleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CommandDescriptor command(kCmdLoadModule, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pulModuleId));
    command.Capture();
}

void LoadModuleCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CommandDescriptor command(kCmdLoadModule, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulModuleId));
        AddNumberAt(command, pulModuleId);
    }
    command.Capture();
}

void LoadEncryptedModuleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CommandDescriptor command(kCmdLoadEncryptedModule, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pulModuleId));
    command.Capture();
}

void LoadEncryptedModuleCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CommandDescriptor command(kCmdLoadEncryptedModule, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulModuleId));
        AddNumberAt(command, pulModuleId);
    }
    command.Capture();
}

void UnloadModuleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulModuleId) {
    CommandDescriptor command(kCmdUnloadModule, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulModuleId));
    command.Capture();
}

void UnloadModuleCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CommandDescriptor command(kCmdUnloadModule, kEnd, rv);
    command.Capture();
}

void PerformModuleCallCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulModuleId) {
    CommandDescriptor command(kCmdPerformModuleCall, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulModuleId));
    command.Capture();
}

void PerformModuleCallCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CommandDescriptor command(kCmdPerformModuleCall, kEnd, rv);
    command.Capture();
}

void FirmwareUpdateCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTarget, CK_BYTE_PTR pFirst,
                            CK_ULONG ulFirstLen, CK_BYTE_PTR pSecond, CK_ULONG ulSecondLen,
                            CK_BYTE_PTR pThird, CK_ULONG ulThirdLen) {
    CommandDescriptor command(kCmdFirmwareUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulTarget));
    command.AddDescriptor(Pointer(pFirst));
    AddBytes(command, pFirst, ulFirstLen);
    command.AddDescriptor(Pointer(pSecond));
    AddBytes(command, pSecond, ulSecondLen);
    command.AddDescriptor(Pointer(pThird));
    AddBytes(command, pThird, ulThirdLen);
    command.Capture();
}

void FirmwareUpdateCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                          CK_BYTE_PTR, CK_ULONG) {
    CommandDescriptor command(kCmdFirmwareUpdate, kEnd, rv);
    command.Capture();
}

void FirmwareRollbackCmdStart(CK_SESSION_HANDLE hSession) {
    CommandDescriptor command(kCmdFirmwareRollback, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void FirmwareRollbackCmdEnd(CK_RV rv, CK_SESSION_HANDLE) {
    CommandDescriptor command(kCmdFirmwareRollback, kEnd, rv);
    command.Capture();
}

void CapabilityUpdateCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pFirst, CK_ULONG ulFirstLen,
                              CK_BYTE_PTR pSecond, CK_ULONG ulSecondLen) {
    CommandDescriptor command(kCmdCapabilityUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Pointer(pFirst));
    AddBytes(command, pFirst, ulFirstLen);
    command.AddDescriptor(Pointer(pSecond));
    AddBytes(command, pSecond, ulSecondLen);
    command.Capture();
}

void CapabilityUpdateCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    CommandDescriptor command(kCmdCapabilityUpdate, kEnd, rv);
    command.Capture();
}

void GetRollbackFirmwareVersionCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulVersion) {
    CommandDescriptor command(kCmdGetRollbackFirmwareVersion, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulVersion));
    command.Capture();
}

void GetRollbackFirmwareVersionCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulVersion) {
    CommandDescriptor command(kCmdGetRollbackFirmwareVersion, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulVersion));
        AddNumberAt(command, pulVersion);
    }
    command.Capture();
}

void ResetDeviceCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CommandDescriptor command(kCmdResetDevice, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Flags(flags));
    command.AddDescriptor(Number(ulOption));
    command.Capture();
}

void ResetDeviceCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) {
    CommandDescriptor command(kCmdResetDevice, kEnd, rv);
    command.Capture();
}

void ZeroizeCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CommandDescriptor command(kCmdZeroize, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Flags(flags));
    command.AddDescriptor(Number(ulOption));
    command.Capture();
}

void ZeroizeCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) {
    CommandDescriptor command(kCmdZeroize, kEnd, rv);
    command.Capture();
}

void FactoryResetCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CommandDescriptor command(kCmdFactoryReset, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Flags(flags));
    command.AddDescriptor(Number(ulOption));
    command.Capture();
}

void FactoryResetCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) {
    CommandDescriptor command(kCmdFactoryReset, kEnd, rv);
    command.Capture();
}

void MTKSetStorageCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulStorage) {
    CommandDescriptor command(kCmdMTKSetStorage, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulStorage));
    command.Capture();
}

void MTKSetStorageCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CommandDescriptor command(kCmdMTKSetStorage, kEnd, rv);
    command.Capture();
}

void MTKRestoreCmdStart(CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdMTKRestore, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void MTKRestoreCmdEnd(CK_RV rv, CK_SLOT_ID) {
    CommandDescriptor command(kCmdMTKRestore, kEnd, rv);
    command.Capture();
}

void MTKResplitCmdStart(CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdMTKResplit, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void MTKResplitCmdEnd(CK_RV rv, CK_SLOT_ID) {
    CommandDescriptor command(kCmdMTKResplit, kEnd, rv);
    command.Capture();
}

void MTKZeroizeCmdStart(CK_SLOT_ID slotID) {
    CommandDescriptor command(kCmdMTKZeroize, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void MTKZeroizeCmdEnd(CK_RV rv, CK_SLOT_ID) {
    CommandDescriptor command(kCmdMTKZeroize, kEnd, rv);
    command.Capture();
}

void MTKGetStateCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulState) {
    CommandDescriptor command(kCmdMTKGetState, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulState));
    command.Capture();
}

void MTKGetStateCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulState) {
    CommandDescriptor command(kCmdMTKGetState, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulState));
        AddNumberAt(command, pulState);
    }
    command.Capture();
}

void GetTSVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTsv) {
    CommandDescriptor command(kCmdGetTSV, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulTsv));
    command.Capture();
}

void GetTSVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTsv) {
    CommandDescriptor command(kCmdGetTSV, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulTsv));
        AddNumberAt(command, pulTsv);
    }
    command.Capture();
}
