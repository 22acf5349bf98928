// Builds the records of PKCS#11 section "Session management functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void OpenSessionStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR) {
    if (!LevelSelects(kOpenSession)) return;
    StartRecord record(kOpenSession);
    record.AddDescriptor(SlotChild(slotID));
    record.AddDescriptor(FlagsChild(flags));
    record.Capture();
}

void OpenSessionEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR phSession) {
    if (!LevelSelects(kOpenSession)) return;
    EndRecord record(kOpenSession, rv);
    record.AddDescriptor(SessionChild(ValueAt(phSession)));
    record.Capture();
}

void CloseSessionStart(CK_SESSION_HANDLE hSession) {
    if (!LevelSelects(kCloseSession)) return;
    StartRecord record(kCloseSession);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void CloseSessionEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!LevelSelects(kCloseSession)) return;
    EndRecord record(kCloseSession, rv);
    record.Capture();
}

void CloseAllSessionsStart(CK_SLOT_ID slotID) {
    if (!LevelSelects(kCloseAllSessions)) return;
    StartRecord record(kCloseAllSessions);
    record.AddDescriptor(SlotChild(slotID));
    record.Capture();
}

void CloseAllSessionsEnd(CK_RV rv, CK_SLOT_ID) {
    if (!LevelSelects(kCloseAllSessions)) return;
    EndRecord record(kCloseAllSessions, rv);
    record.Capture();
}

void GetSessionInfoStart(CK_SESSION_HANDLE hSession, CK_SESSION_INFO_PTR) {
    if (!LevelSelects(kGetSessionInfo)) return;
    StartRecord record(kGetSessionInfo);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void GetSessionInfoEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SESSION_INFO_PTR pInfo) {
    if (!LevelSelects(kGetSessionInfo)) return;
    EndRecord record(kGetSessionInfo, rv);
    record.AddDescriptor(SessionInfoChild(pInfo));
    record.Capture();
}

void GetOperationStateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kGetOperationState)) return;
    StartRecord record(kGetOperationState);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void GetOperationStateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pOperationState,
                          CK_ULONG_PTR pulOperationStateLen) {
    if (!LevelSelects(kGetOperationState)) return;
    EndRecord record(kGetOperationState, rv);
    record.AddDescriptor(BytesChild(pOperationState, ValueAt(pulOperationStateLen)));
    record.Capture();
}

void SetOperationStateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pOperationState,
                            CK_ULONG ulOperationStateLen, CK_OBJECT_HANDLE hEncryptionKey,
                            CK_OBJECT_HANDLE hAuthenticationKey) {
    if (!LevelSelects(kSetOperationState)) return;
    StartRecord record(kSetOperationState);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pOperationState, ulOperationStateLen));
    record.AddDescriptor(ObjectChild(hEncryptionKey));
    record.AddDescriptor(ObjectChild(hAuthenticationKey));
    record.Capture();
}

void SetOperationStateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_OBJECT_HANDLE,
                          CK_OBJECT_HANDLE) {
    if (!LevelSelects(kSetOperationState)) return;
    EndRecord record(kSetOperationState, rv);
    record.Capture();
}

void LoginStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_UTF8CHAR_PTR pPin, CK_ULONG) {
    if (!LevelSelects(kLogin)) return;
    StartRecord record(kLogin);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(UserTypeChild(userType));
    record.AddDescriptor(PinChild(pPin));
    record.Capture();
}

void LoginEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_UTF8CHAR_PTR, CK_ULONG) {
    if (!LevelSelects(kLogin)) return;
    EndRecord record(kLogin, rv);
    record.Capture();
}

void LogoutStart(CK_SESSION_HANDLE hSession) {
    if (!LevelSelects(kLogout)) return;
    StartRecord record(kLogout);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void LogoutEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!LevelSelects(kLogout)) return;
    EndRecord record(kLogout, rv);
    record.Capture();
}
