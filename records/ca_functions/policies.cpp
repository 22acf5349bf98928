// Builds the records of capabilities and policies.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

namespace {

// These records show several policies or capabilities, or one of them, of the device or of one container.

void CaptureSetQuery(CommandType type, CK_SLOT_ID slot, const CK_ULONG* ids, const CK_ULONG* idCount,
                     const CK_ULONG* values, const CK_ULONG* valueCount) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    capsOrPolicyPtrsAdd(record, ids, idCount, values, valueCount);
    record.Capture();
}

void CaptureSet(CommandType type, CK_RV rv, CK_SLOT_ID slot, const CK_ULONG* ids, const CK_ULONG* idCount,
                const CK_ULONG* values, const CK_ULONG* valueCount) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slot));
        capsOrPolicyDescAdd(record, ids, idCount, values, valueCount);
    }
    record.Capture();
}

void CaptureContainerSetQuery(CommandType type, CK_SLOT_ID slot, CK_ULONG container, const CK_ULONG* ids,
                              const CK_ULONG* idCount, const CK_ULONG* values, const CK_ULONG* valueCount) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    record.AddDescriptor(NumberChild(container, "part="));
    capsOrPolicyPtrsAdd(record, ids, idCount, values, valueCount);
    record.Capture();
}

void CaptureContainerSet(CommandType type, CK_RV rv, CK_SLOT_ID slot, CK_ULONG container, const CK_ULONG* ids,
                         const CK_ULONG* idCount, const CK_ULONG* values, const CK_ULONG* valueCount) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slot));
        record.AddDescriptor(NumberChild(container, "part="));
        capsOrPolicyDescAdd(record, ids, idCount, values, valueCount);
    }
    record.Capture();
}

void CaptureSettingQuery(CommandType type, CK_SLOT_ID slot, CK_ULONG id, const CK_ULONG* value) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    record.AddDescriptor(NumberChild(id, "id="));
    record.AddDescriptor(PointerChild(value));
    record.Capture();
}

void CaptureSetting(CommandType type, CK_RV rv, CK_SLOT_ID slot, CK_ULONG id, const CK_ULONG* value) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slot));
        record.AddDescriptor(NumberChild(id, "id="));
        record.AddDescriptor(PointerChild(value));
        AddNumberAt(record, value, "val=");
    }
    record.Capture();
}

void CaptureContainerSettingQuery(CommandType type, CK_SLOT_ID slot, CK_ULONG container, CK_ULONG id,
                                  const CK_ULONG* value) {
    StartRecord record(type);
    record.AddDescriptor(SlotChild(slot));
    record.AddDescriptor(NumberChild(container, "part="));
    record.AddDescriptor(NumberChild(id, "id="));
    record.AddDescriptor(PointerChild(value));
    record.Capture();
}

void CaptureContainerSetting(CommandType type, CK_RV rv, CK_SLOT_ID slot, CK_ULONG container, CK_ULONG id,
                             const CK_ULONG* value) {
    EndRecord record(type, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slot));
        record.AddDescriptor(NumberChild(container, "part="));
        record.AddDescriptor(NumberChild(id, "id="));
        record.AddDescriptor(PointerChild(value));
        AddNumberAt(record, value, "val=");
    }
    record.Capture();
}

void CaptureNewPolicies(CommandType type, CK_SESSION_HANDLE session, CK_ULONG count, const CK_ULONG* ids,
                        const CK_ULONG* values) {
    StartRecord record(type);
    record.AddDescriptor(SessionChild(session));
    capsOrPolicyArrayAdd(record, count, ids, values);
    record.Capture();
}

void CaptureNewPolicy(CommandType type, CK_SESSION_HANDLE session, CK_ULONG id, CK_ULONG value) {
    CaptureNewPolicies(type, session, 1, &id, &value);
}

}  // namespace

void GetFPVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulFpv) {
    CaptureSlotAndPointers(kCmdGetFPV, slotID, {pulFpv});
}

void GetFPVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulFpv) {
    CaptureNumberOfSlot(kCmdGetFPV, rv, slotID, pulFpv);
}

void GetTPVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv) {
    CaptureSlotAndPointers(kCmdGetTPV, slotID, {pulTpv});
}

void GetTPVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv) {
    CaptureNumberOfSlot(kCmdGetTPV, rv, slotID, pulTpv);
}

void GetExtendedTPVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv, CK_ULONG_PTR pulTpvExtension) {
    CaptureSlotAndPointers(kCmdGetExtendedTPV, slotID, {pulTpv, pulTpvExtension});
}

void GetExtendedTPVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv, CK_ULONG_PTR pulTpvExtension) {
    EndRecord record(kCmdGetExtendedTPV, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pulTpv));
        AddNumberAt(record, pulTpv);
        record.AddDescriptor(PointerChild(pulTpvExtension));
        AddNumberAt(record, pulTpvExtension);
    }
    record.Capture();
}

void SetTPVCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTpv) {
    CaptureSessionAndNumber(kCmdSetTPV, hSession, ulTpv);
}

void SetTPVCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) { CaptureResult(kCmdSetTPV, rv); }

void SetExtendedTPVCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTpv, CK_ULONG ulTpvExtension) {
    CaptureSessionAndNumbers(kCmdSetExtendedTPV, hSession, ulTpv, ulTpvExtension);
}

void SetExtendedTPVCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdSetExtendedTPV, rv);
}

void GetConfigurationElementDescriptionCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainer,
                                                CK_ULONG ulCapability, CK_ULONG ulElementId,
                                                CK_ULONG_PTR pulBitLength, CK_ULONG_PTR pulDestructive,
                                                CK_ULONG_PTR pulRestricted, CK_CHAR_PTR pDescription) {
    StartRecord record(kCmdGetConfigurationElementDescription);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainer, "cnt="));
    record.AddDescriptor(NumberChild(ulCapability, "cap="));
    record.AddDescriptor(NumberChild(ulElementId, "id="));
    record.AddDescriptor(PointerChild(pulBitLength));
    record.AddDescriptor(PointerChild(pulDestructive));
    record.AddDescriptor(PointerChild(pulRestricted));
    record.AddDescriptor(PointerChild(pDescription));
    record.Capture();
}

void GetConfigurationElementDescriptionCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainer,
                                              CK_ULONG ulCapability, CK_ULONG ulElementId,
                                              CK_ULONG_PTR pulBitLength, CK_ULONG_PTR pulDestructive,
                                              CK_ULONG_PTR pulRestricted, CK_CHAR_PTR pDescription) {
    EndRecord record(kCmdGetConfigurationElementDescription, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainer, "cnt="));
        record.AddDescriptor(NumberChild(ulCapability, "cap="));
        record.AddDescriptor(NumberChild(ulElementId, "id="));
        record.AddDescriptor(PointerChild(pulBitLength));
        record.AddDescriptor(PointerChild(pulDestructive));
        record.AddDescriptor(PointerChild(pulRestricted));
        record.AddDescriptor(PointerChild(pDescription));
        AddNumberAt(record, pulBitLength, "bitLen=");
        AddNumberAt(record, pulDestructive, "dest=");
        AddNumberAt(record, pulRestricted, "rest=");
        AddBytes(record, pDescription, LengthOfText(pDescription));
    }
    record.Capture();
}

void GetHSMCapabilitySetCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                                 CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSetQuery(kCmdGetHSMCapabilitySet, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void GetHSMCapabilitySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                               CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSet(kCmdGetHSMCapabilitySet, rv, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void GetHSMCapabilitySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CaptureSettingQuery(kCmdGetHSMCapabilitySetting, slotID, ulId, pulValue);
}

void GetHSMCapabilitySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CaptureSetting(kCmdGetHSMCapabilitySetting, rv, slotID, ulId, pulValue);
}

void GetHSMPolicySetCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                             CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSetQuery(kCmdGetHSMPolicySet, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void GetHSMPolicySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                           CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSet(kCmdGetHSMPolicySet, rv, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void GetHSMPolicySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CaptureSettingQuery(kCmdGetHSMPolicySetting, slotID, ulId, pulValue);
}

void GetHSMPolicySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CaptureSetting(kCmdGetHSMPolicySetting, rv, slotID, ulId, pulValue);
}

void GetContainerCapabilitySetCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulIds,
                                       CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                       CK_ULONG_PTR pulValueCount) {
    CaptureContainerSetQuery(kCmdGetContainerCapabilitySet, slotID, ulContainerNumber, pulIds, pulIdCount,
                             pulValues, pulValueCount);
}

void GetContainerCapabilitySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                     CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                     CK_ULONG_PTR pulValueCount) {
    CaptureContainerSet(kCmdGetContainerCapabilitySet, rv, slotID, ulContainerNumber, pulIds, pulIdCount,
                        pulValues, pulValueCount);
}

void GetContainerCapabilitySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                           CK_ULONG_PTR pulValue) {
    CaptureContainerSettingQuery(kCmdGetContainerCapabilitySetting, slotID, ulContainerNumber, ulId,
                                 pulValue);
}

void GetContainerCapabilitySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                         CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CaptureContainerSetting(kCmdGetContainerCapabilitySetting, rv, slotID, ulContainerNumber, ulId, pulValue);
}

void GetContainerPolicySetCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulIds,
                                   CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                   CK_ULONG_PTR pulValueCount) {
    CaptureContainerSetQuery(kCmdGetContainerPolicySet, slotID, ulContainerNumber, pulIds, pulIdCount,
                             pulValues, pulValueCount);
}

void GetContainerPolicySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulIds,
                                 CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                 CK_ULONG_PTR pulValueCount) {
    CaptureContainerSet(kCmdGetContainerPolicySet, rv, slotID, ulContainerNumber, pulIds, pulIdCount,
                        pulValues, pulValueCount);
}

void GetContainerPolicySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                       CK_ULONG_PTR pulValue) {
    CaptureContainerSettingQuery(kCmdGetContainerPolicySetting, slotID, ulContainerNumber, ulId, pulValue);
}

void GetContainerPolicySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                     CK_ULONG_PTR pulValue) {
    CaptureContainerSetting(kCmdGetContainerPolicySetting, rv, slotID, ulContainerNumber, ulId, pulValue);
}

void SetHSMPolicyCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulId, CK_ULONG ulValue) {
    CaptureNewPolicy(kCmdSetHSMPolicy, hSession, ulId, ulValue);
}

void SetHSMPolicyCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdSetHSMPolicy, rv);
}

void SetHSMPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulCount, CK_ULONG_PTR pulIds,
                            CK_ULONG_PTR pulValues) {
    CaptureNewPolicies(kCmdSetHSMPolicies, hSession, ulCount, pulIds, pulValues);
}

void SetHSMPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CaptureResult(kCmdSetHSMPolicies, rv);
}

void SetDestructiveHSMPolicyCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulId, CK_ULONG ulValue) {
    CaptureNewPolicy(kCmdSetDestructiveHSMPolicy, hSession, ulId, ulValue);
}

void SetDestructiveHSMPolicyCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdSetDestructiveHSMPolicy, rv);
}

void SetDestructiveHSMPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulCount, CK_ULONG_PTR pulIds,
                                       CK_ULONG_PTR pulValues) {
    CaptureNewPolicies(kCmdSetDestructiveHSMPolicies, hSession, ulCount, pulIds, pulValues);
}

void SetDestructiveHSMPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CaptureResult(kCmdSetDestructiveHSMPolicies, rv);
}

void SetContainerPolicyCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                CK_ULONG ulValue) {
    StartRecord record(kCmdSetContainerPolicy);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulContainerNumber, "part="));
    capsOrPolicyArrayAdd(record, 1, &ulId, &ulValue);
    record.Capture();
}

void SetContainerPolicyCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdSetContainerPolicy, rv);
}

void SetContainerPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerNumber, CK_ULONG ulCount,
                                  CK_ULONG_PTR pulIds, CK_ULONG_PTR pulValues) {
    StartRecord record(kCmdSetContainerPolicies);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulContainerNumber, "part="));
    capsOrPolicyArrayAdd(record, ulCount, pulIds, pulValues);
    record.Capture();
}

void SetContainerPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CaptureResult(kCmdSetContainerPolicies, rv);
}

void GetTokenCapabilitiesCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                                  CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSetQuery(kCmdGetTokenCapabilities, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void GetTokenCapabilitiesCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                                CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSet(kCmdGetTokenCapabilities, rv, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void SetTokenPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_ULONG ulCount,
                              CK_ULONG_PTR pulIds, CK_ULONG_PTR pulValues) {
    StartRecord record(kCmdSetTokenPolicies);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(SlotChild(slotID));
    capsOrPolicyArrayAdd(record, ulCount, pulIds, pulValues);
    record.Capture();
}

void SetTokenPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CaptureResult(kCmdSetTokenPolicies, rv);
}

void GetTokenPoliciesCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                              CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSetQuery(kCmdGetTokenPolicies, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}

void GetTokenPoliciesCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                            CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CaptureSet(kCmdGetTokenPolicies, rv, slotID, pulIds, pulIdCount, pulValues, pulValueCount);
}
