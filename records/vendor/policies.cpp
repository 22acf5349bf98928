// Records of capabilities and policies.

#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void GetFPVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulFpv) {
    CommandDescriptor command(kCmdGetFPV, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulFpv));
    command.Capture();
}

void GetFPVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulFpv) {
    CommandDescriptor command(kCmdGetFPV, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulFpv));
        AddNumberAt(command, pulFpv);
    }
    command.Capture();
}

void GetTPVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv) {
    CommandDescriptor command(kCmdGetTPV, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulTpv));
    command.Capture();
}

void GetTPVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv) {
    CommandDescriptor command(kCmdGetTPV, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulTpv));
        AddNumberAt(command, pulTpv);
    }
    command.Capture();
}

void GetExtendedTPVCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv, CK_ULONG_PTR pulTpvExtension) {
    CommandDescriptor command(kCmdGetExtendedTPV, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulTpv));
    command.AddDescriptor(Pointer(pulTpvExtension));
    command.Capture();
}

void GetExtendedTPVCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulTpv, CK_ULONG_PTR pulTpvExtension) {
    CommandDescriptor command(kCmdGetExtendedTPV, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulTpv));
        AddNumberAt(command, pulTpv);
        command.AddDescriptor(Pointer(pulTpvExtension));
        AddNumberAt(command, pulTpvExtension);
    }
    command.Capture();
}

void SetTPVCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTpv) {
    CommandDescriptor command(kCmdSetTPV, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulTpv));
    command.Capture();
}

void SetTPVCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CommandDescriptor command(kCmdSetTPV, kEnd, rv);
    command.Capture();
}

void SetExtendedTPVCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulTpv, CK_ULONG ulTpvExtension) {
    CommandDescriptor command(kCmdSetExtendedTPV, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulTpv));
    command.AddDescriptor(Number(ulTpvExtension));
    command.Capture();
}

void SetExtendedTPVCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdSetExtendedTPV, kEnd, rv);
    command.Capture();
}

void GetConfigurationElementDescriptionCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainer,
                                                CK_ULONG ulCapability, CK_ULONG ulElementId,
                                                CK_ULONG_PTR pulBitLength, CK_ULONG_PTR pulDestructive,
                                                CK_ULONG_PTR pulRestricted, CK_CHAR_PTR pDescription) {
    CommandDescriptor command(kCmdGetConfigurationElementDescription, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainer, "cnt="));
    command.AddDescriptor(Number(ulCapability, "cap="));
    command.AddDescriptor(Number(ulElementId, "id="));
    command.AddDescriptor(Pointer(pulBitLength));
    command.AddDescriptor(Pointer(pulDestructive));
    command.AddDescriptor(Pointer(pulRestricted));
    command.AddDescriptor(Pointer(pDescription));
    command.Capture();
}

void GetConfigurationElementDescriptionCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainer,
                                              CK_ULONG ulCapability, CK_ULONG ulElementId,
                                              CK_ULONG_PTR pulBitLength, CK_ULONG_PTR pulDestructive,
                                              CK_ULONG_PTR pulRestricted, CK_CHAR_PTR pDescription) {
    CommandDescriptor command(kCmdGetConfigurationElementDescription, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainer, "cnt="));
        command.AddDescriptor(Number(ulCapability, "cap="));
        command.AddDescriptor(Number(ulElementId, "id="));
        command.AddDescriptor(Pointer(pulBitLength));
        command.AddDescriptor(Pointer(pulDestructive));
        command.AddDescriptor(Pointer(pulRestricted));
        command.AddDescriptor(Pointer(pDescription));
        AddNumberAt(command, pulBitLength, "bitLen=");
        AddNumberAt(command, pulDestructive, "dest=");
        AddNumberAt(command, pulRestricted, "rest=");
        AddBytes(command, pDescription, ReadableTextLength(pDescription));
    }
    command.Capture();
}

void GetHSMCapabilitySetCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                                 CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetHSMCapabilitySet, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    capsOrPolicyPtrsAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    command.Capture();
}

void GetHSMCapabilitySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                               CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetHSMCapabilitySet, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        capsOrPolicyDescAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    }
    command.Capture();
}

void GetHSMCapabilitySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetHSMCapabilitySetting, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulId, "id="));
    command.AddDescriptor(Pointer(pulValue));
    command.Capture();
}

void GetHSMCapabilitySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetHSMCapabilitySetting, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulId, "id="));
        command.AddDescriptor(Pointer(pulValue));
        AddNumberAt(command, pulValue, "val=");
    }
    command.Capture();
}

void GetHSMPolicySetCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                             CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetHSMPolicySet, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    capsOrPolicyPtrsAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    command.Capture();
}

void GetHSMPolicySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                           CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetHSMPolicySet, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        capsOrPolicyDescAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    }
    command.Capture();
}

void GetHSMPolicySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetHSMPolicySetting, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulId, "id="));
    command.AddDescriptor(Pointer(pulValue));
    command.Capture();
}

void GetHSMPolicySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetHSMPolicySetting, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulId, "id="));
        command.AddDescriptor(Pointer(pulValue));
        AddNumberAt(command, pulValue, "val=");
    }
    command.Capture();
}

void GetContainerCapabilitySetCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulIds,
                                       CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                       CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetContainerCapabilitySet, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "part="));
    capsOrPolicyPtrsAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    command.Capture();
}

void GetContainerCapabilitySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                     CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                     CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetContainerCapabilitySet, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "part="));
        capsOrPolicyDescAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    }
    command.Capture();
}

void GetContainerCapabilitySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                           CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetContainerCapabilitySetting, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "part="));
    command.AddDescriptor(Number(ulId, "id="));
    command.AddDescriptor(Pointer(pulValue));
    command.Capture();
}

void GetContainerCapabilitySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                         CK_ULONG ulId, CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetContainerCapabilitySetting, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "part="));
        command.AddDescriptor(Number(ulId, "id="));
        command.AddDescriptor(Pointer(pulValue));
        AddNumberAt(command, pulValue, "val=");
    }
    command.Capture();
}

void GetContainerPolicySetCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulIds,
                                   CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                   CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetContainerPolicySet, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "part="));
    capsOrPolicyPtrsAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    command.Capture();
}

void GetContainerPolicySetCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulIds,
                                 CK_ULONG_PTR pulIdCount, CK_ULONG_PTR pulValues,
                                 CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetContainerPolicySet, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "part="));
        capsOrPolicyDescAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    }
    command.Capture();
}

void GetContainerPolicySettingCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                       CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetContainerPolicySetting, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "part="));
    command.AddDescriptor(Number(ulId, "id="));
    command.AddDescriptor(Pointer(pulValue));
    command.Capture();
}

void GetContainerPolicySettingCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                     CK_ULONG_PTR pulValue) {
    CommandDescriptor command(kCmdGetContainerPolicySetting, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "part="));
        command.AddDescriptor(Number(ulId, "id="));
        command.AddDescriptor(Pointer(pulValue));
        AddNumberAt(command, pulValue, "val=");
    }
    command.Capture();
}

void SetHSMPolicyCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulId, CK_ULONG ulValue) {
    CommandDescriptor command(kCmdSetHSMPolicy, kStart, 0);
    command.AddDescriptor(Session(hSession));
    capsOrPolicyArrayAdd(command, 1, &ulId, &ulValue);
    command.Capture();
}

void SetHSMPolicyCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdSetHSMPolicy, kEnd, rv);
    command.Capture();
}

void SetHSMPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulCount, CK_ULONG_PTR pulIds,
                            CK_ULONG_PTR pulValues) {
    CommandDescriptor command(kCmdSetHSMPolicies, kStart, 0);
    command.AddDescriptor(Session(hSession));
    capsOrPolicyArrayAdd(command, ulCount, pulIds, pulValues);
    command.Capture();
}

void SetHSMPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdSetHSMPolicies, kEnd, rv);
    command.Capture();
}

void SetDestructiveHSMPolicyCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulId, CK_ULONG ulValue) {
    CommandDescriptor command(kCmdSetDestructiveHSMPolicy, kStart, 0);
    command.AddDescriptor(Session(hSession));
    capsOrPolicyArrayAdd(command, 1, &ulId, &ulValue);
    command.Capture();
}

void SetDestructiveHSMPolicyCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdSetDestructiveHSMPolicy, kEnd, rv);
    command.Capture();
}

void SetDestructiveHSMPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulCount, CK_ULONG_PTR pulIds,
                                       CK_ULONG_PTR pulValues) {
    CommandDescriptor command(kCmdSetDestructiveHSMPolicies, kStart, 0);
    command.AddDescriptor(Session(hSession));
    capsOrPolicyArrayAdd(command, ulCount, pulIds, pulValues);
    command.Capture();
}

void SetDestructiveHSMPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdSetDestructiveHSMPolicies, kEnd, rv);
    command.Capture();
}

void SetContainerPolicyCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerNumber, CK_ULONG ulId,
                                CK_ULONG ulValue) {
    CommandDescriptor command(kCmdSetContainerPolicy, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulContainerNumber, "part="));
    capsOrPolicyArrayAdd(command, 1, &ulId, &ulValue);
    command.Capture();
}

void SetContainerPolicyCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG, CK_ULONG) {
    CommandDescriptor command(kCmdSetContainerPolicy, kEnd, rv);
    command.Capture();
}

void SetContainerPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerNumber, CK_ULONG ulCount,
                                  CK_ULONG_PTR pulIds, CK_ULONG_PTR pulValues) {
    CommandDescriptor command(kCmdSetContainerPolicies, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulContainerNumber, "part="));
    capsOrPolicyArrayAdd(command, ulCount, pulIds, pulValues);
    command.Capture();
}

void SetContainerPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdSetContainerPolicies, kEnd, rv);
    command.Capture();
}

void GetTokenCapabilitiesCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                                  CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetTokenCapabilities, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    capsOrPolicyPtrsAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    command.Capture();
}

void GetTokenCapabilitiesCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                                CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetTokenCapabilities, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        capsOrPolicyDescAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    }
    command.Capture();
}

void SetTokenPoliciesCmdStart(CK_SESSION_HANDLE hSession, CK_SLOT_ID slotID, CK_ULONG ulCount,
                              CK_ULONG_PTR pulIds, CK_ULONG_PTR pulValues) {
    CommandDescriptor command(kCmdSetTokenPolicies, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Slot(slotID));
    capsOrPolicyArrayAdd(command, ulCount, pulIds, pulValues);
    command.Capture();
}

void SetTokenPoliciesCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SLOT_ID, CK_ULONG, CK_ULONG_PTR, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdSetTokenPolicies, kEnd, rv);
    command.Capture();
}

void GetTokenPoliciesCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                              CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetTokenPolicies, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    capsOrPolicyPtrsAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    command.Capture();
}

void GetTokenPoliciesCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulIds, CK_ULONG_PTR pulIdCount,
                            CK_ULONG_PTR pulValues, CK_ULONG_PTR pulValueCount) {
    CommandDescriptor command(kCmdGetTokenPolicies, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        capsOrPolicyDescAdd(command, pulIds, pulIdCount, pulValues, pulValueCount);
    }
    command.Capture();
}
