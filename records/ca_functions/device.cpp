// Builds the records of modules, firmware and of resetting a device.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void RestartCmdStart(CK_SLOT_ID slotID) { CaptureSlot(kCmdRestart, slotID); }

void RestartCmdEnd(CK_RV rv, CK_SLOT_ID) { CaptureResult(kCmdRestart, rv); }

void GetModuleListCmdStart(CK_SLOT_ID slotID) { CaptureSlot(kCmdGetModuleList, slotID); }

void GetModuleListCmdEnd(CK_RV rv, CK_SLOT_ID) { CaptureResult(kCmdGetModuleList, rv); }

void GetModuleInfoCmdStart(CK_SLOT_ID slotID, CK_ULONG ulModuleId, CK_VOID_PTR pInfo) {
    StartRecord record(kCmdGetModuleInfo);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulModuleId));
    record.AddDescriptor(PointerChild(pInfo));
    record.Capture();
}

void GetModuleInfoCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG, CK_VOID_PTR) {
    CaptureResult(kCmdGetModuleInfo, rv);
}

void LoadModuleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CaptureSessionAndPointers(kCmdLoadModule, hSession, {pulModuleId});
}

void LoadModuleCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CaptureNumberOfSession(kCmdLoadModule, rv, hSession, pulModuleId);
}

void LoadEncryptedModuleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CaptureSessionAndPointers(kCmdLoadEncryptedModule, hSession, {pulModuleId});
}

void LoadEncryptedModuleCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG_PTR pulModuleId) {
    CaptureNumberOfSession(kCmdLoadEncryptedModule, rv, hSession, pulModuleId);
}

void UnloadModuleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulModuleId) {
    CaptureSessionAndNumber(kCmdUnloadModule, hSession, ulModuleId);
}

void UnloadModuleCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) { CaptureResult(kCmdUnloadModule, rv); }

void PerformModuleCallCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulModuleId) {
    CaptureSessionAndNumber(kCmdPerformModuleCall, hSession, ulModuleId);
}

void PerformModuleCallCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CaptureResult(kCmdPerformModuleCall, rv);
}

void FirmwareUpdateCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTarget, CK_BYTE_PTR pFirst,
                            CK_ULONG ulFirstLen, CK_BYTE_PTR pSecond, CK_ULONG ulSecondLen,
                            CK_BYTE_PTR pThird, CK_ULONG ulThirdLen) {
    StartRecord record(kCmdFirmwareUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulTarget));
    record.AddDescriptor(PointerChild(pFirst));
    AddBytes(record, pFirst, ulFirstLen);
    record.AddDescriptor(PointerChild(pSecond));
    AddBytes(record, pSecond, ulSecondLen);
    record.AddDescriptor(PointerChild(pThird));
    AddBytes(record, pThird, ulThirdLen);
    record.Capture();
}

void FirmwareUpdateCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG,
                          CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdFirmwareUpdate, rv);
}

void FirmwareRollbackCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdFirmwareRollback, hSession); }

void FirmwareRollbackCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdFirmwareRollback, rv); }

void CapabilityUpdateCmdStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pFirst, CK_ULONG ulFirstLen,
                              CK_BYTE_PTR pSecond, CK_ULONG ulSecondLen) {
    StartRecord record(kCmdCapabilityUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(PointerChild(pFirst));
    AddBytes(record, pFirst, ulFirstLen);
    record.AddDescriptor(PointerChild(pSecond));
    AddBytes(record, pSecond, ulSecondLen);
    record.Capture();
}

void CapabilityUpdateCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) {
    CaptureResult(kCmdCapabilityUpdate, rv);
}

void GetRollbackFirmwareVersionCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulVersion) {
    CaptureSlotAndPointers(kCmdGetRollbackFirmwareVersion, slotID, {pulVersion});
}

void GetRollbackFirmwareVersionCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulVersion) {
    CaptureNumberOfSlot(kCmdGetRollbackFirmwareVersion, rv, slotID, pulVersion);
}

void ResetDeviceCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CaptureSlotFlagsAndNumber(kCmdResetDevice, slotID, flags, ulOption);
}

void ResetDeviceCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) { CaptureResult(kCmdResetDevice, rv); }

void ZeroizeCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CaptureSlotFlagsAndNumber(kCmdZeroize, slotID, flags, ulOption);
}

void ZeroizeCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) { CaptureResult(kCmdZeroize, rv); }

void FactoryResetCmdStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_ULONG ulOption) {
    CaptureSlotFlagsAndNumber(kCmdFactoryReset, slotID, flags, ulOption);
}

void FactoryResetCmdEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_ULONG) { CaptureResult(kCmdFactoryReset, rv); }

void MTKSetStorageCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulStorage) {
    CaptureSessionAndNumber(kCmdMTKSetStorage, hSession, ulStorage);
}

void MTKSetStorageCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) { CaptureResult(kCmdMTKSetStorage, rv); }

void MTKRestoreCmdStart(CK_SLOT_ID slotID) { CaptureSlot(kCmdMTKRestore, slotID); }

void MTKRestoreCmdEnd(CK_RV rv, CK_SLOT_ID) { CaptureResult(kCmdMTKRestore, rv); }

void MTKResplitCmdStart(CK_SLOT_ID slotID) { CaptureSlot(kCmdMTKResplit, slotID); }

void MTKResplitCmdEnd(CK_RV rv, CK_SLOT_ID) { CaptureResult(kCmdMTKResplit, rv); }

void MTKZeroizeCmdStart(CK_SLOT_ID slotID) { CaptureSlot(kCmdMTKZeroize, slotID); }

void MTKZeroizeCmdEnd(CK_RV rv, CK_SLOT_ID) { CaptureResult(kCmdMTKZeroize, rv); }

void MTKGetStateCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulState) {
    CaptureSlotAndPointers(kCmdMTKGetState, slotID, {pulState});
}

void MTKGetStateCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulState) {
    CaptureNumberOfSlot(kCmdMTKGetState, rv, slotID, pulState);
}

void GetTSVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTsv) {
    CaptureSlotAndPointers(kCmdGetTSV, slotID, {pulTsv});
}

void GetTSVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTsv) {
    CaptureNumberOfSlot(kCmdGetTSV, rv, slotID, pulTsv);
}
