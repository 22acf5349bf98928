// Builds the records of containers, and of the state and storage of tokens and containers.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void RestartForContainerCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber) {
    StartRecord record(kCmdRestartForContainer);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber, "Container Number"));
    record.Capture();
}

void RestartForContainerCmdEnd(CK_RV rv, CK_SLOT_ID, CK_ULONG) { CaptureResult(kCmdRestartForContainer, rv); }

void GetUserContainerNumberCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR) {
    CaptureSlot(kCmdGetUserContainerNumber, slotID);
}

void GetUserContainerNumberCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulContainerNumber) {
    EndRecord record(kCmdGetUserContainerNumber, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        AddNumberAt(record, pulContainerNumber, "Container Number");
    }
    record.Capture();
}

void GetUserContainerNameCmdStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pName, CK_ULONG_PTR pulNameLen) {
    StartRecord record(kCmdGetUserContainerName);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pName, "pName="));
    record.AddDescriptor(PointerChild(pulNameLen, "pNameLen="));
    AddNumberAt(record, pulNameLen, "Name length=");
    record.Capture();
}

void GetUserContainerNameCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pName, CK_ULONG_PTR pulNameLen) {
    EndRecord record(kCmdGetUserContainerName, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pName, "pName="));
        record.AddDescriptor(PointerChild(pulNameLen, "pNameLen="));
        AddNumberAt(record, pulNameLen, "Name length=");
        AddNameText(record, pName, ValueAt(pulNameLen));
    }
    record.Capture();
}

void SetUserContainerNameCmdStart(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pName, CK_ULONG ulNameLen) {
    StartRecord record(kCmdSetUserContainerName);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pName, "pName="));
    record.AddDescriptor(NumberChild(ulNameLen, "length="));
    AddNameText(record, pName, ulNameLen, "Name=");
    record.Capture();
}

void SetUserContainerNameCmdEnd(CK_RV rv, CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG) {
    CaptureResult(kCmdSetUserContainerName, rv);
}

void GetContainerStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulFlags,
                                CK_ULONG_PTR pulFailedSoLogins, CK_ULONG_PTR pulFailedOfficerLogins,
                                CK_ULONG_PTR pulFailedUserLogins) {
    StartRecord record(kCmdGetContainerStatus);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber, "Container Number"));
    record.AddDescriptor(PointerChild(pulFlags, "Container Status Flags Ptr"));
    record.AddDescriptor(PointerChild(pulFailedSoLogins, "Failed SO Login Ptr"));
    record.AddDescriptor(PointerChild(pulFailedOfficerLogins, "Failed Crypto Officer Login Ptr"));
    record.AddDescriptor(PointerChild(pulFailedUserLogins, "Failed Crypto User Ptr"));
    record.Capture();
}

void GetContainerStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG_PTR pulFlags,
                              CK_ULONG_PTR pulFailedSoLogins, CK_ULONG_PTR pulFailedOfficerLogins,
                              CK_ULONG_PTR pulFailedUserLogins) {
    EndRecord record(kCmdGetContainerStatus, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerNumber, "Container Number"));
        record.AddDescriptor(PointerChild(pulFlags, "Container Status Flags Ptr"));
        record.AddDescriptor(PointerChild(pulFailedSoLogins, "Failed SO Login Ptr"));
        record.AddDescriptor(PointerChild(pulFailedOfficerLogins, "Failed Crypto Officer Login Ptr"));
        record.AddDescriptor(PointerChild(pulFailedUserLogins, "Failed Crypto User Ptr"));
        AddNumberAt(record, pulFlags, "Container Status Flags");
        AddNumberAt(record, pulFailedSoLogins, "Failed SO Logins");
        AddNumberAt(record, pulFailedOfficerLogins, "Failed Crypto Officer Logins");
        AddNumberAt(record, pulFailedUserLogins, "Failed Crypto User Logins");
    }
    record.Capture();
}

void GetTokenStatusCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulFlags, CK_ULONG_PTR pulSessionCount,
                            CK_ULONG_PTR pulRwSessionCount) {
    StartRecord record(kCmdGetTokenStatus);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pulFlags, "Flags Ptr"));
    record.AddDescriptor(PointerChild(pulSessionCount, "Session Count Ptr"));
    record.AddDescriptor(PointerChild(pulRwSessionCount, "R/W Session Count Ptr"));
    record.Capture();
}

void GetTokenStatusCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulFlags, CK_ULONG_PTR pulSessionCount,
                          CK_ULONG_PTR pulRwSessionCount) {
    EndRecord record(kCmdGetTokenStatus, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pulFlags, "Flags Ptr"));
        record.AddDescriptor(PointerChild(pulSessionCount, "Session Count Ptr"));
        record.AddDescriptor(PointerChild(pulRwSessionCount, "R/W Session Count Ptr"));
        AddNumberAt(record, pulFlags, "Flags");
        AddNumberAt(record, pulSessionCount, "Session Count");
        AddNumberAt(record, pulRwSessionCount, "R/W Session Count");
    }
    record.Capture();
}

void GetHSMStorageInformationCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                      CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree) {
    CaptureSlotAndPointers(kCmdGetHSMStorageInformation, slotID, {pulOverhead, pulTotal, pulUsed, pulFree});
}

void GetHSMStorageInformationCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulOverhead,
                                    CK_ULONG_PTR pulTotal, CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree) {
    EndRecord record(kCmdGetHSMStorageInformation, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pulOverhead));
        AddNumberAt(record, pulOverhead, "OvrHd=");
        record.AddDescriptor(PointerChild(pulTotal));
        AddNumberAt(record, pulTotal, "Total=");
        record.AddDescriptor(PointerChild(pulUsed));
        AddNumberAt(record, pulUsed, "Used=");
        record.AddDescriptor(PointerChild(pulFree));
        AddNumberAt(record, pulFree, "Free=");
    }
    record.Capture();
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
    EndRecord record(kCmdGetTokenStorageInformation, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pulOverhead));
        record.AddDescriptor(PointerChild(pulTotal));
        record.AddDescriptor(PointerChild(pulUsed));
        record.AddDescriptor(PointerChild(pulFree));
        record.AddDescriptor(PointerChild(pulObjectCount));
        AddNumberAt(record, pulOverhead, "OvrHd=");
        AddNumberAt(record, pulTotal, "Total=");
        AddNumberAt(record, pulUsed, "Used=");
        AddNumberAt(record, pulFree, "Free=");
        AddNumberAt(record, pulObjectCount, "ObjCnt=");
    }
    record.Capture();
}

void GetContainerStorageInformationCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                            CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                            CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree,
                                            CK_ULONG_PTR pulObjectCount) {
    StartRecord record(kCmdGetContainerStorageInformation);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber));
    record.AddDescriptor(PointerChild(pulOverhead));
    record.AddDescriptor(PointerChild(pulTotal));
    record.AddDescriptor(PointerChild(pulUsed));
    record.AddDescriptor(PointerChild(pulFree));
    record.AddDescriptor(PointerChild(pulObjectCount));
    record.Capture();
}

void GetContainerStorageInformationCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber,
                                          CK_ULONG_PTR pulOverhead, CK_ULONG_PTR pulTotal,
                                          CK_ULONG_PTR pulUsed, CK_ULONG_PTR pulFree,
                                          CK_ULONG_PTR pulObjectCount) {
    EndRecord record(kCmdGetContainerStorageInformation, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerNumber));
        record.AddDescriptor(PointerChild(pulOverhead));
        record.AddDescriptor(PointerChild(pulTotal));
        record.AddDescriptor(PointerChild(pulUsed));
        record.AddDescriptor(PointerChild(pulFree));
        record.AddDescriptor(PointerChild(pulObjectCount));
        AddNumberAt(record, pulOverhead, "OvrHd=");
        AddNumberAt(record, pulTotal, "Total=");
        AddNumberAt(record, pulUsed, "Used=");
        AddNumberAt(record, pulFree, "Free=");
        AddNumberAt(record, pulObjectCount, "ObjCnt=");
    }
    record.Capture();
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
    StartRecord record(kCmdCreateContainer);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulContainerType));
    record.AddDescriptor(PointerChild(pLabel));
    AddName(record, pLabel, ulLabelLen);
    record.AddDescriptor(PinLengthChild(ulPinLen));
    record.AddDescriptor(PinChild(pPin));
    record.AddDescriptor(NumberChild(ulOption1));
    record.AddDescriptor(NumberChild(ulOption2));
    record.AddDescriptor(NumberChild(ulOption3));
    record.AddDescriptor(NumberChild(ulOption4));
    record.AddDescriptor(NumberChild(ulOption5));
    record.AddDescriptor(NumberChild(AsNumber(pulContainerNumber)));
    record.Capture();
}

void CreateContainerCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG ulContainerType,
                           CK_UTF8CHAR_PTR pLabel, CK_ULONG ulLabelLen, CK_UTF8CHAR_PTR pPin,
                           CK_ULONG ulPinLen, CK_ULONG ulOption1, CK_ULONG ulOption2, CK_ULONG ulOption3,
                           CK_ULONG ulOption4, CK_ULONG ulOption5, CK_ULONG_PTR pulContainerNumber) {
    EndRecord record(kCmdCreateContainer, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(NumberChild(ulContainerType));
        record.AddDescriptor(PointerChild(pLabel));
        AddName(record, pLabel, ulLabelLen);
        record.AddDescriptor(PinLengthChild(ulPinLen));
        record.AddDescriptor(PinChild(pPin));
        record.AddDescriptor(NumberChild(ulOption1));
        record.AddDescriptor(NumberChild(ulOption2));
        record.AddDescriptor(NumberChild(ulOption3));
        record.AddDescriptor(NumberChild(ulOption4));
        record.AddDescriptor(NumberChild(ulOption5));
        record.AddDescriptor(NumberChild(AsNumber(pulContainerNumber)));
        AddNumberAt(record, pulContainerNumber);
    }
    record.Capture();
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
    StartRecord record(kCmdGetContainerList);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerType));
    record.AddDescriptor(NumberChild(ulFirst));
    record.AddDescriptor(PointerChild(pulContainers));
    record.AddDescriptor(PointerChild(pulCount));
    AddNumberAt(record, pulCount);
    record.Capture();
}

void GetContainerListCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerType, CK_ULONG ulFirst,
                            CK_ULONG_PTR pulContainers, CK_ULONG_PTR pulCount) {
    EndRecord record(kCmdGetContainerList, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerType));
        record.AddDescriptor(NumberChild(ulFirst));
        record.AddDescriptor(PointerChild(pulContainers));
        record.AddDescriptor(PointerChild(pulCount));
        AddNumberAt(record, pulCount);
        if (pulContainers != nullptr) record.AddDescriptor(HandleListChild(pulContainers, ValueAt(pulCount)));
    }
    record.Capture();
}

void GetContainerNameCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_UTF8CHAR_PTR pName,
                              CK_ULONG_PTR pulNameLen) {
    StartRecord record(kCmdGetContainerName);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber));
    record.AddDescriptor(PointerChild(pName));
    record.AddDescriptor(PointerChild(pulNameLen));
    AddNumberAt(record, pulNameLen);
    record.Capture();
}

void GetContainerNameCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_UTF8CHAR_PTR pName,
                            CK_ULONG_PTR pulNameLen) {
    EndRecord record(kCmdGetContainerName, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerNumber));
        record.AddDescriptor(PointerChild(pName));
        record.AddDescriptor(PointerChild(pulNameLen));
        AddNumberAt(record, pulNameLen);
        AddName(record, pName, ValueAt(pulNameLen));
    }
    record.Capture();
}

void GetNumberOfAllowedContainersCmdStart(CK_SLOT_ID slotID, CK_ULONG_PTR pulNumber) {
    CaptureSlotAndPointers(kCmdGetNumberOfAllowedContainers, slotID, {pulNumber});
}

void GetNumberOfAllowedContainersCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG_PTR pulNumber) {
    CaptureNumberOfSlot(kCmdGetNumberOfAllowedContainers, rv, slotID, pulNumber);
}
