// Records of objects: their identifiers, use and destruction.

#include "records/shared_vendor_records.h"
#include "records/vendor_children.h"
#include "records/vendor_commands.h"
#include "records/vendor_records.h"

void DestroyMultipleObjectsCmdStart(CK_SESSION_HANDLE hSession, CK_ULONG ulCount,
                                    CK_OBJECT_HANDLE_PTR phObjects, CK_ULONG_PTR pulIndex) {
    CommandDescriptor command(kCmdDestroyMultipleObjects, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Number(ulCount));
    command.AddDescriptor(Pointer(phObjects));
    if (phObjects != nullptr) command.AddDescriptor(HandleList(phObjects, ulCount));
    command.AddDescriptor(Pointer(pulIndex));
    command.Capture();
}

void DestroyMultipleObjectsCmdEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG, CK_OBJECT_HANDLE_PTR,
                                  CK_ULONG_PTR pulIndex) {
    CommandDescriptor command(kCmdDestroyMultipleObjects, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Session(hSession));
        command.AddDescriptor(Pointer(pulIndex));
        AddNumberAt(command, pulIndex, "Index=");
    }
    command.Capture();
}

void GetTokenObjectUIDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                               CK_BYTE_PTR pOuid, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdGetTokenObjectUID, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulObjectType, "Type="));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Pointer(pOuid));
    command.Capture();
}

void GetTokenObjectUIDCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulObjectType, CK_OBJECT_HANDLE hObject,
                             CK_BYTE_PTR pOuid, CK_ULONG_PTR pulOuidLen) {
    CommandDescriptor command(kCmdGetTokenObjectUID, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulObjectType, "Type="));
        command.AddDescriptor(Object(hObject));
        command.AddDescriptor(Pointer(pOuid));
        AddBytes(command, pOuid, ValueAt(pulOuidLen), "OUID=");
    }
    command.Capture();
}

void GetTokenObjectHandleCmdStart(CK_SLOT_ID slotID, CK_BYTE_PTR pOuid, CK_ULONG ulOuidLen,
                                  CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    CommandDescriptor command(kCmdGetTokenObjectHandle, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Pointer(pOuid));
    AddBytes(command, pOuid, ulOuidLen, "OUID=");
    command.AddDescriptor(Pointer(pulObjectType));
    command.AddDescriptor(Pointer(phObject));
    command.Capture();
}

void GetTokenObjectHandleCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_BYTE_PTR pOuid, CK_ULONG ulOuidLen,
                                CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    CommandDescriptor command(kCmdGetTokenObjectHandle, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Pointer(pOuid));
        AddBytes(command, pOuid, ulOuidLen, "OUID=");
        command.AddDescriptor(Pointer(pulObjectType));
        command.AddDescriptor(Pointer(phObject));
        AddNumberAt(command, pulObjectType, "Type=");
        if (phObject != nullptr) command.AddDescriptor(Object(ValueAt(phObject)));
    }
    command.Capture();
}

void GetObjectUIDCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulObjectType,
                          CK_OBJECT_HANDLE hObject, CK_BYTE_PTR pOuid, CK_ULONG_PTR) {
    CommandDescriptor command(kCmdGetObjectUID, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "Container="));
    command.AddDescriptor(Number(ulObjectType, "ObjType="));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Pointer(pOuid));
    command.Capture();
}

void GetObjectUIDCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_ULONG ulObjectType,
                        CK_OBJECT_HANDLE hObject, CK_BYTE_PTR pOuid, CK_ULONG_PTR pulOuidLen) {
    CommandDescriptor command(kCmdGetObjectUID, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "Container="));
        command.AddDescriptor(Number(ulObjectType, "ObjType="));
        command.AddDescriptor(Object(hObject));
        command.AddDescriptor(Pointer(pOuid));
        AddBytes(command, pOuid, ValueAt(pulOuidLen));
    }
    command.Capture();
}

void GetObjectHandleCmdStart(CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_BYTE_PTR pOuid,
                             CK_ULONG ulOuidLen, CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    CommandDescriptor command(kCmdGetObjectHandle, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Number(ulContainerNumber, "Container="));
    command.AddDescriptor(Pointer(pOuid));
    AddBytes(command, pOuid, ulOuidLen);
    command.AddDescriptor(Pointer(pulObjectType));
    command.AddDescriptor(Pointer(phObject));
    command.Capture();
}

void GetObjectHandleCmdEnd(CK_RV rv, CK_SLOT_ID slotID, CK_ULONG ulContainerNumber, CK_BYTE_PTR pOuid,
                           CK_ULONG ulOuidLen, CK_ULONG_PTR pulObjectType, CK_OBJECT_HANDLE_PTR phObject) {
    CommandDescriptor command(kCmdGetObjectHandle, kEnd, rv);
    if (ShowsOutputs(rv)) {
        command.AddDescriptor(Slot(slotID));
        command.AddDescriptor(Number(ulContainerNumber, "Container="));
        command.AddDescriptor(Pointer(pOuid));
        AddBytes(command, pOuid, ulOuidLen);
        command.AddDescriptor(Pointer(pulObjectType));
        command.AddDescriptor(Pointer(phObject));
        AddNumberAt(command, pulObjectType, "Type=");
        if (phObject != nullptr) command.AddDescriptor(Object(ValueAt(phObject)));
    }
    command.Capture();
}

void ModifyUsageCountCmdStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ULONG ulCommandType,
                              CK_ULONG ulValue) {
    CommandDescriptor command(kCmdModifyUsageCount, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Number(ulCommandType, "Type="));
    command.AddDescriptor(Number(ulValue, "Value="));
    command.Capture();
}

void ModifyUsageCountCmdEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG, CK_ULONG) {
    CaptureResult(kCmdModifyUsageCount, rv);
}
