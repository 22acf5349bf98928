// Builds the records of objects: their identifiers, use and destruction.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

using namespace ckscribe;

void DestroyMultipleObjectsCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulCount,
                                    CK_OBJECT_HANDLE_PTR phObjects, CK_ULONG_PTR pulIndex) {
    StartRecord record(kCmdDestroyMultipleObjects);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(NumberChild(ulCount));
    record.AddDescriptor(PointerChild(phObjects));
    if (phObjects != nullptr) record.AddDescriptor(HandleListChild(phObjects, ulCount));
    record.AddDescriptor(PointerChild(pulIndex));
    record.Capture();
}

void DestroyMultipleObjectsCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_OBJECT_HANDLE_PTR,
                                  CK_ULONG_PTR pulIndex) {
    EndRecord record(kCmdDestroyMultipleObjects, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SessionChild(hSession));
        record.AddDescriptor(PointerChild(pulIndex));
        AddNumberAt(record, pulIndex, "Index=");
    }
    record.Capture();
}

void GetTokenObjectUIDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                               CK_BYTE_PTR pOuid, CK_ULONG_PTR) {
    StartRecord record(kCmdGetTokenObjectUID);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulObjectType, "Type="));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(PointerChild(pOuid));
    record.Capture();
}

void GetTokenObjectUIDCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                             CK_BYTE_PTR pOuid, CK_ULONG_PTR pulOuidLen) {
    EndRecord record(kCmdGetTokenObjectUID, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulObjectType, "Type="));
        record.AddDescriptor(ObjectChild(hObject));
        record.AddDescriptor(PointerChild(pOuid));
        AddBytesOfUnshownLength(record, pOuid, ValueAt(pulOuidLen), "OUID=");
    }
    record.Capture();
}

void GetTokenObjectHandleCmdStart(CK_SLOT_ID slotID, CK_BYTE_PTR pOuid, CK_ULONG ulOuidLen,
                                  CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    StartRecord record(kCmdGetTokenObjectHandle);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(PointerChild(pOuid));
    AddBytesOfUnshownLength(record, pOuid, ulOuidLen, "OUID=");
    record.AddDescriptor(PointerChild(pulObjectType));
    record.AddDescriptor(PointerChild(phObject));
    record.Capture();
}

void GetTokenObjectHandleCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_BYTE_PTR pOuid, CK_ULONG ulOuidLen,
                                CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    EndRecord record(kCmdGetTokenObjectHandle, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(PointerChild(pOuid));
        AddBytesOfUnshownLength(record, pOuid, ulOuidLen, "OUID=");
        record.AddDescriptor(PointerChild(pulObjectType));
        record.AddDescriptor(PointerChild(phObject));
        AddNumberAt(record, pulObjectType, "Type=");
        if (phObject != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phObject)));
    }
    record.Capture();
}

void GetObjectUIDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulObjectType,
                          CK_OBJECT_HANDLE hObject, CK_BYTE_PTR pOuid, CK_ULONG_PTR) {
    StartRecord record(kCmdGetObjectUID);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber, "Container="));
    record.AddDescriptor(NumberChild(ulObjectType, "ObjType="));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(PointerChild(pOuid));
    record.Capture();
}

void GetObjectUIDCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulObjectType,
                        CK_OBJECT_HANDLE hObject, CK_BYTE_PTR pOuid, CK_ULONG_PTR pulOuidLen) {
    EndRecord record(kCmdGetObjectUID, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerNumber, "Container="));
        record.AddDescriptor(NumberChild(ulObjectType, "ObjType="));
        record.AddDescriptor(ObjectChild(hObject));
        record.AddDescriptor(PointerChild(pOuid));
        AddBytesOfUnshownLength(record, pOuid, ValueAt(pulOuidLen));
    }
    record.Capture();
}

void GetObjectHandleCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_BYTE_PTR pOuid,
                             CK_ULONG ulOuidLen, CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    StartRecord record(kCmdGetObjectHandle);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(NumberChild(ulContainerNumber, "Container="));
    record.AddDescriptor(PointerChild(pOuid));
    AddBytesOfUnshownLength(record, pOuid, ulOuidLen);
    record.AddDescriptor(PointerChild(pulObjectType));
    record.AddDescriptor(PointerChild(phObject));
    record.Capture();
}

void GetObjectHandleCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_BYTE_PTR pOuid,
                           CK_ULONG ulOuidLen, CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    EndRecord record(kCmdGetObjectHandle, rv);
    if (ShowsOutputs(rv)) {
        record.AddDescriptor(SlotChild(slotID));
        record.AddDescriptor(NumberChild(ulContainerNumber, "Container="));
        record.AddDescriptor(PointerChild(pOuid));
        AddBytesOfUnshownLength(record, pOuid, ulOuidLen);
        record.AddDescriptor(PointerChild(pulObjectType));
        record.AddDescriptor(PointerChild(phObject));
        AddNumberAt(record, pulObjectType, "Type=");
        if (phObject != nullptr) record.AddDescriptor(ObjectChild(ValueAt(phObject)));
    }
    record.Capture();
}

void ModifyUsageCountCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ULONG ulCommandType,
                              CK_ULONG ulValue) {
    StartRecord record(kCmdModifyUsageCount);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(NumberChild(ulCommandType, "Type="));
    record.AddDescriptor(NumberChild(ulValue, "Value="));
    record.Capture();
}

void ModifyUsageCountCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdModifyUsageCount, rv);
}
