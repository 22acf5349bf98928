// Records of containers, and of the state and storage of tokens and containers.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void RestartForContainerCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber) {
    CommandDescriptor command(kCmdRestartForContainer, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "Container Number"));
    command.Capture();
}

void RestartForContainerCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) { CaptureResult(kCmdRestartForContainer, rv); }

void GetUserContainerNumberCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR) {
    CaptureSlot(kCmdGetUserContainerNumber, slotID);
}

void GetUserContainerNumberCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulContainerNumber) {
    CommandDescriptor command(kCmdGetUserContainerNumber, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        AddNumberAt(command, pulContainerNumber, "Container Number");
    }
    command.Capture();
}

void GetUserContainerNameCmdStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pName, CK_ULONG_PTR pulNameLen) {
    CommandDescriptor command(kCmdGetUserContainerName, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pName, "pName="));
    command.AddDescriptor(Pointer(pulNameLen, "pNameLen="));
    AddNumberAt(command, pulNameLen, "Name length=");
    command.Capture();
}

void GetUserContainerNameCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pName, CK_ULONG_PTR pulNameLen) {
    CommandDescriptor command(kCmdGetUserContainerName, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pName, "pName="));
        command.AddDescriptor(Pointer(pulNameLen, "pNameLen="));
        AddNumberAt(command, pulNameLen, "Name length=");
        AddText(command, pName, ValueAt(pulNameLen));
    }
    command.Capture();
}

void SetUserContainerNameCmdStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pName, CK_ULONG ulNameLen) {
    CommandDescriptor command(kCmdSetUserContainerName, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pName, "pName="));
    command.AddDescriptor(Number(ulNameLen, "length="));
    AddText(command, pName, ulNameLen, "Name=");
    command.Capture();
}

void SetUserContainerNameCmdEnd(CK_RV rv, CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdSetUserContainerName, rv);
}

void GetContainerStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulFlags,
                                CK_ULONG_PTR pulFailedSoLogins, CK_ULONG_PTR pulFailedOfficerLogins,
                                CK_ULONG_PTR pulFailedUserLogins) {
    CommandDescriptor command(kCmdGetContainerStatus, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "Container Number"));
    command.AddDescriptor(Pointer(pulFlags, "Container Status Flags Ptr"));
    command.AddDescriptor(Pointer(pulFailedSoLogins, "Failed SO Login Ptr"));
    command.AddDescriptor(Pointer(pulFailedOfficerLogins, "Failed Crypto Officer Login Ptr"));
    command.AddDescriptor(Pointer(pulFailedUserLogins, "Failed Crypto User Ptr"));
    command.Capture();
}

void GetContainerStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulFlags,
                              CK_ULONG_PTR pulFailedSoLogins, CK_ULONG_PTR pulFailedOfficerLogins,
                              CK_ULONG_PTR pulFailedUserLogins) {
    CommandDescriptor command(kCmdGetContainerStatus, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "Container Number"));
        command.AddDescriptor(Pointer(pulFlags, "Container Status Flags Ptr"));
        command.AddDescriptor(Pointer(pulFailedSoLogins, "Failed SO Login Ptr"));
        command.AddDescriptor(Pointer(pulFailedOfficerLogins, "Failed Crypto Officer Login Ptr"));
        command.AddDescriptor(Pointer(pulFailedUserLogins, "Failed Crypto User Ptr"));
        AddNumberAt(command, pulFlags, "Container Status Flags");
        AddNumberAt(command, pulFailedSoLogins, "Failed SO Logins");
        AddNumberAt(command, pulFailedOfficerLogins, "Failed Crypto Officer Logins");
        AddNumberAt(command, pulFailedUserLogins, "Failed Crypto User Logins");
    }
    command.Capture();
}

void GetTokenStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulFlags, CK_ULONG_PTR pulSessionCount,
                            CK_ULONG_PTR pulRwSessionCount) {
    CommandDescriptor command(kCmdGetTokenStatus, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pulFlags, "Flags Ptr"));
    command.AddDescriptor(Pointer(pulSessionCount, "Session Count Ptr"));
    command.AddDescriptor(Pointer(pulRwSessionCount, "R/W Session Count Ptr"));
    command.Capture();
}

void GetTokenStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulFlags, CK_ULONG_PTR pulSessionCount,
                          CK_ULONG_PTR pulRwSessionCount) {
    CommandDescriptor command(kCmdGetTokenStatus, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulFlags, "Flags Ptr"));
        command.AddDescriptor(Pointer(pulSessionCount, "Session Count Ptr"));
        command.AddDescriptor(Pointer(pulRwSessionCount, "R/W Session Count Ptr"));
        AddNumberAt(command, pulFlags, "Flags");
        AddNumberAt(command, pulSessionCount, "Session Count");
        AddNumberAt(command, pulRwSessionCount, "R/W Session Count");
    }
    command.Capture();
}

void GetHSMStorageInformationCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                      CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree) {
    CaptureSlotAndPointers(kCmdGetHSMStorageInformation, slotID, {pulOverhead, pulTotal, pulUsed, pulFree});
}

void GetHSMStorageInformationCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulOverhead,
                                    CK_ULONG_PTR pulTotal, CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree) {
    CommandDescriptor command(kCmdGetHSMStorageInformation, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulOverhead));
        AddNumberAt(command, pulOverhead, "OvrHd=");
        command.AddDescriptor(Pointer(pulTotal));
        AddNumberAt(command, pulTotal, "Total=");
        command.AddDescriptor(Pointer(pulUsed));
        AddNumberAt(command, pulUsed, "Used=");
        command.AddDescriptor(Pointer(pulFree));
        AddNumberAt(command, pulFree, "Free=");
    }
    command.Capture();
}

void GetTokenStorageInformationCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                        CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree,
                                        CK_ULONG_PTR pulObjectCount) {
    CaptureSlotAndPointers(kCmdGetTokenStorageInformation, slotID,
                           {pulOverhead, pulTotal, pulUsed, pulFree, pulObjectCount});
}

void GetTokenStorageInformationCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulOverhead,
                                      CK_ULONG_PTR pulTotal, CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree,
                                      CK_ULONG_PTR pulObjectCount) {
    CommandDescriptor command(kCmdGetTokenStorageInformation, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pulOverhead));
        command.AddDescriptor(Pointer(pulTotal));
        command.AddDescriptor(Pointer(pulUsed));
        command.AddDescriptor(Pointer(pulFree));
        command.AddDescriptor(Pointer(pulObjectCount));
        AddNumberAt(command, pulOverhead, "OvrHd=");
        AddNumberAt(command, pulTotal, "Total=");
        AddNumberAt(command, pulUsed, "Used=");
        AddNumberAt(command, pulFree, "Free=");
        AddNumberAt(command, pulObjectCount, "ObjCnt=");
    }
    command.Capture();
}

void GetContainerStorageInformationCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                            CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                            CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree,
                                            CK_ULONG_PTR pulObjectCount) {
    CommandDescriptor command(kCmdGetContainerStorageInformation, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber));
    command.AddDescriptor(Pointer(pulOverhead));
    command.AddDescriptor(Pointer(pulTotal));
    command.AddDescriptor(Pointer(pulUsed));
    command.AddDescriptor(Pointer(pulFree));
    command.AddDescriptor(Pointer(pulObjectCount));
    command.Capture();
}

void GetContainerStorageInformationCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                          CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                          CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree,
                                          CK_ULONG_PTR pulObjectCount) {
    CommandDescriptor command(kCmdGetContainerStorageInformation, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber));
        command.AddDescriptor(Pointer(pulOverhead));
        command.AddDescriptor(Pointer(pulTotal));
        command.AddDescriptor(Pointer(pulUsed));
        command.AddDescriptor(Pointer(pulFree));
        command.AddDescriptor(Pointer(pulObjectCount));
        AddNumberAt(command, pulOverhead, "OvrHd=");
        AddNumberAt(command, pulTotal, "Total=");
        AddNumberAt(command, pulUsed, "Used=");
        AddNumberAt(command, pulFree, "Free=");
        AddNumberAt(command, pulObjectCount, "ObjCnt=");
    }
    command.Capture();
}

void SetContainerSizeCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerNumber, CK_ULONG ulSize) {
    CaptureSessionAndNumbers(kCmdSetContainerSize, hSession, ulContainerNumber, ulSize);
}

void SetContainerSizeCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdSetContainerSize, rv);
}

void CreateContainerCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerType, CK_UTF8CHAR_PTR pLabel,
                             CK_ULONG ulLabelLen, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_ULONG ulOption1,
                             CK_ULONG ulOption2, CK_ULONG ulOption3, CK_ULONG ulOption4, CK_ULONG ulOption5,
                             CK_ULONG_PTR pulContainerNumber) {
    CommandDescriptor command(kCmdCreateContainer, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulContainerType));
    command.AddDescriptor(Pointer(pLabel));
    AddBytes(command, pLabel, ulLabelLen);
    command.AddDescriptor(Number(ulPinLen));
    command.AddDescriptor(Pin(pPin));
    command.AddDescriptor(Number(ulOption1));
    command.AddDescriptor(Number(ulOption2));
    command.AddDescriptor(Number(ulOption3));
    command.AddDescriptor(Number(ulOption4));
    command.AddDescriptor(Number(ulOption5));
    command.AddDescriptor(Number(AddressOf(pulContainerNumber)));
    command.Capture();
}

void CreateContainerCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG ulContainerType,
                           CK_UTF8CHAR_PTR pLabel, CK_ULONG ulLabelLen, CK_UTF8CHAR_PTR pPin,
                           CK_ULONG ulPinLen, CK_ULONG ulOption1, CK_ULONG ulOption2, CK_ULONG ulOption3,
                           CK_ULONG ulOption4, CK_ULONG ulOption5, CK_ULONG_PTR pulContainerNumber) {
    CommandDescriptor command(kCmdCreateContainer, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Number(ulContainerType));
        command.AddDescriptor(Pointer(pLabel));
        AddBytes(command, pLabel, ulLabelLen);
        command.AddDescriptor(Number(ulPinLen));
        command.AddDescriptor(Pin(pPin));
        command.AddDescriptor(Number(ulOption1));
        command.AddDescriptor(Number(ulOption2));
        command.AddDescriptor(Number(ulOption3));
        command.AddDescriptor(Number(ulOption4));
        command.AddDescriptor(Number(ulOption5));
        command.AddDescriptor(Number(AddressOf(pulContainerNumber)));
        AddNumberAt(command, pulContainerNumber);
    }
    command.Capture();
}

void DeleteContainerCmdStart(CK_SESSION_HANDLE hSession) { CaptureSession(kCmdDeleteContainer, hSession); }

void DeleteContainerCmdEnd(CK_RV rv, CK_SESSION_HANDLE) { CaptureResult(kCmdDeleteContainer, rv); }

void DeleteContainerWithHandleCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulContainerNumber) {
    CaptureSessionAndNumber(kCmdDeleteContainerWithHandle, hSession, ulContainerNumber);
}

void DeleteContainerWithHandleCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ULONG) {
    CaptureResult(kCmdDeleteContainerWithHandle, rv);
}

void GetContainerListCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerType, CK_ULONG ulFirst,
                              CK_ULONG_PTR pulContainers, CK_ULONG_PTR pulCount) {
    CommandDescriptor command(kCmdGetContainerList, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerType));
    command.AddDescriptor(Number(ulFirst));
    command.AddDescriptor(Pointer(pulContainers));
    command.AddDescriptor(Pointer(pulCount));
    AddNumberAt(command, pulCount);
    command.Capture();
}

void GetContainerListCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerType, CK_ULONG ulFirst,
                            CK_ULONG_PTR pulContainers, CK_ULONG_PTR pulCount) {
    CommandDescriptor command(kCmdGetContainerList, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerType));
        command.AddDescriptor(Number(ulFirst));
        command.AddDescriptor(Pointer(pulContainers));
        command.AddDescriptor(Pointer(pulCount));
        AddNumberAt(command, pulCount);
        if (pulContainers != nullptr) command.AddDescriptor(HandleList(pulContainers, ValueAt(pulCount)));
    }
    command.Capture();
}

void GetContainerNameCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_UTF8CHAR_PTR pName,
                              CK_ULONG_PTR pulNameLen) {
    CommandDescriptor command(kCmdGetContainerName, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber));
    command.AddDescriptor(Pointer(pName));
    command.AddDescriptor(Pointer(pulNameLen));
    AddNumberAt(command, pulNameLen);
    command.Capture();
}

void GetContainerNameCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_UTF8CHAR_PTR pName,
                            CK_ULONG_PTR pulNameLen) {
    CommandDescriptor command(kCmdGetContainerName, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber));
        command.AddDescriptor(Pointer(pName));
        command.AddDescriptor(Pointer(pulNameLen));
        AddNumberAt(command, pulNameLen);
        AddBytes(command, pName, ValueAt(pulNameLen));
    }
    command.Capture();
}

void GetNumberOfAllowedContainersCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulNumber) {
    CaptureSlotAndPointers(kCmdGetNumberOfAllowedContainers, slotID, {pulNumber});
}

void GetNumberOfAllowedContainersCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulNumber) {
    CaptureNumberOfSlot(kCmdGetNumberOfAllowedContainers, rv, slotID, pulNumber);
}
