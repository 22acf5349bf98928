// Builds the records of PKCS#11 section "Object management functions".

#include <algorithm>

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void CreateObjectStart(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount,
                       CK_OBJECT_HANDLE_PTR) {
    if (!LevelSelects(kCreateObject)) return;
    StartRecord record(kCreateObject);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(TemplateChild(pTemplate, ulCount));
    record.Capture();
}

void CreateObjectEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phObject) {
    if (!LevelSelects(kCreateObject)) return;
    EndRecord record(kCreateObject, rv);
    record.AddDescriptor(ObjectChild(ValueAt(phObject)));
    record.Capture();
}

void CopyObjectStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
                     CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR) {
    if (!LevelSelects(kCopyObject)) return;
    StartRecord record(kCopyObject);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(TemplateChild(pTemplate, ulCount));
    record.Capture();
}

void CopyObjectEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG,
                   CK_OBJECT_HANDLE_PTR phNewObject) {
    if (!LevelSelects(kCopyObject)) return;
    EndRecord record(kCopyObject, rv);
    record.AddDescriptor(ObjectChild(ValueAt(phNewObject)));
    record.Capture();
}

void DestroyObjectStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject) {
    if (!LevelSelects(kDestroyObject)) return;
    StartRecord record(kDestroyObject);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.Capture();
}

void DestroyObjectEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kDestroyObject)) return;
    EndRecord record(kDestroyObject, rv);
    record.Capture();
}

void GetObjectSizeStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ULONG_PTR) {
    if (!LevelSelects(kGetObjectSize)) return;
    StartRecord record(kGetObjectSize);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.Capture();
}

void GetObjectSizeEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG_PTR pulSize) {
    if (!LevelSelects(kGetObjectSize)) return;
    EndRecord record(kGetObjectSize, rv);
    record.AddDescriptor(ShortNumberChild(ValueAt(pulSize)));
    record.Capture();
}

void GetAttributeValueStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
                            CK_ULONG ulCount) {
    if (!LevelSelects(kGetAttributeValue)) return;
    StartRecord record(kGetAttributeValue);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(TemplateWithoutValuesChild(pTemplate, ulCount));
    record.Capture();
}

void GetAttributeValueEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR pTemplate,
                          CK_ULONG ulCount) {
    if (!LevelSelects(kGetAttributeValue)) return;
    EndRecord record(kGetAttributeValue, rv);
    // COMPAT: If the first attribute is unavailable, the record shows no attribute at all.
    if (pTemplate != nullptr && ValueAt(pTemplate).ulValueLen != CK_UNAVAILABLE_INFORMATION)
        record.AddDescriptor(TemplateChild(pTemplate, ulCount));
    record.Capture();
}

void SetAttributeValueStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
                            CK_ULONG ulCount) {
    if (!LevelSelects(kSetAttributeValue)) return;
    StartRecord record(kSetAttributeValue);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hObject));
    record.AddDescriptor(TemplateChild(pTemplate, ulCount));
    record.Capture();
}

void SetAttributeValueEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG) {
    if (!LevelSelects(kSetAttributeValue)) return;
    EndRecord record(kSetAttributeValue, rv);
    record.Capture();
}

void FindObjectsInitStart(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount) {
    if (!LevelSelects(kFindObjects)) return;
    StartRecord record(kFindObjects, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(TemplateChild(pTemplate, ulCount));
    record.Capture();
}

void FindObjectsInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG) {
    if (!LevelSelects(kFindObjects)) return;
    EndRecord record(kFindObjects, CommandSpecifier::kInit, rv);
    record.Capture();
}

void FindObjectsStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR, CK_ULONG ulMaxObjectCount,
                      CK_ULONG_PTR) {
    if (!LevelSelects(kFindObjects)) return;
    StartRecord record(kFindObjects);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ShortNumberChild(ulMaxObjectCount));
    record.Capture();
}

// A target that refuses the call need not set the count. The list then ends where the caller's array ends.
void FindObjectsEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE_PTR phObject, CK_ULONG ulMaxObjectCount,
                    CK_ULONG_PTR pulObjectCount) {
    if (!LevelSelects(kFindObjects)) return;
    EndRecord record(kFindObjects, rv);
    record.AddDescriptor(HandleListChild(phObject, std::min(ValueAt(pulObjectCount), ulMaxObjectCount)));
    record.AddDescriptor(ShortNumberChild(ValueAt(pulObjectCount)));
    record.Capture();
}

// COMPAT: The record looks like one of C_FindObjects. It does not say "Final".
void FindObjectsFinalStart(CK_SESSION_HANDLE hSession) {
    if (!LevelSelects(kFindObjects)) return;
    StartRecord record(kFindObjects);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void FindObjectsFinalEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!LevelSelects(kFindObjects)) return;
    EndRecord record(kFindObjects, rv);
    record.Capture();
}
