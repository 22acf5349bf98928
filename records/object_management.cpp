// Records of PKCS#11 section "Object management functions".

#include "records/record_children.h"
#include "records/standard_records.h"

void CreateObjectStart(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount,
                       CK_OBJECT_HANDLE_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kCreateObject, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Template(pTemplate, ulCount));
    command.Capture();
}

void CreateObjectEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR phObject) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kCreateObject, kEnd, rv);
    command.AddDescriptor(Object(ValueAt(phObject)));
    command.Capture();
}

void CopyObjectStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
                     CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kCopyObject, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Template(pTemplate, ulCount));
    command.Capture();
}

void CopyObjectEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG,
                   CK_OBJECT_HANDLE_PTR phNewObject) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kCopyObject, kEnd, rv);
    command.AddDescriptor(Object(ValueAt(phNewObject)));
    command.Capture();
}

void DestroyObjectStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject) {
    if (!IsLogged(kDestroying)) return;
    CommandDescriptor command(kDestroyObject, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.Capture();
}

void DestroyObjectEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) {
    if (!IsLogged(kDestroying)) return;
    CommandDescriptor command(kDestroyObject, kEnd, rv);
    command.Capture();
}

void GetObjectSizeStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetObjectSize, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.Capture();
}

void GetObjectSizeEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG_PTR pulSize) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetObjectSize, kEnd, rv);
    command.AddDescriptor(ShortNumber(ValueAt(pulSize)));
    command.Capture();
}

void GetAttributeValueStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
                            CK_ULONG ulCount) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetAttributeValue, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(TemplateWithoutValues(pTemplate, ulCount));
    command.Capture();
}

void GetAttributeValueEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR pTemplate,
                          CK_ULONG ulCount) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetAttributeValue, kEnd, rv);
    // Deliberately about the first attribute alone: when that one is unavailable, none of the list is shown.
    if (pTemplate != nullptr && ValueAt(pTemplate).ulValueLen != CK_UNAVAILABLE_INFORMATION)
        command.AddDescriptor(Template(pTemplate, ulCount));
    command.Capture();
}

void SetAttributeValueStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
                            CK_ULONG ulCount) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kSetAttributeValue, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hObject));
    command.AddDescriptor(Template(pTemplate, ulCount));
    command.Capture();
}

void SetAttributeValueEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG) {
    if (!IsLogged(kModifying)) return;
    CommandDescriptor command(kSetAttributeValue, kEnd, rv);
    command.Capture();
}

void FindObjectsInitStart(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kFindObjects, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Template(pTemplate, ulCount));
    command.Capture();
}

void FindObjectsInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kFindObjects, kInit, kEnd, rv);
    command.Capture();
}

void FindObjectsStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR, CK_ULONG ulMaxObjectCount,
                      CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kFindObjects, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(ShortNumber(ulMaxObjectCount));
    command.Capture();
}

void FindObjectsEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE_PTR phObject, CK_ULONG,
                    CK_ULONG_PTR pulObjectCount) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kFindObjects, kEnd, rv);
    command.AddDescriptor(HandleList(phObject, ValueAt(pulObjectCount)));
    command.AddDescriptor(ShortNumber(ValueAt(pulObjectCount)));
    command.Capture();
}

// Recorded like C_FindObjects, without "Final"; kept, log readers count on it.
void FindObjectsFinalStart(CK_SESSION_HANDLE hSession) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kFindObjects, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void FindObjectsFinalEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kFindObjects, kEnd, rv);
    command.Capture();
}
