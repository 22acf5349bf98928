// Records of PKCS#11 section "Session management functions".

#include "records/record_children.h"
#include "records/standard_records.h"

void OpenSessionStart(CK_SLOT_ID slotID, CK_FLAGS flags, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kOpenSession, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.AddDescriptor(Flags(flags));
    command.Capture();
}

void OpenSessionEnd(CK_RV rv, CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR phSession) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kOpenSession, kEnd, rv);
    command.AddDescriptor(Session(ValueAt(phSession)));
    command.Capture();
}

void CloseSessionStart(CK_SESSION_HANDLE hSession) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kCloseSession, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void CloseSessionEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kCloseSession, kEnd, rv);
    command.Capture();
}

void CloseAllSessionsStart(CK_SLOT_ID slotID) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kCloseAllSessions, kStart, 0);
    command.AddDescriptor(Slot(slotID));
    command.Capture();
}

void CloseAllSessionsEnd(CK_RV rv, CK_SLOT_ID) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kCloseAllSessions, kEnd, rv);
    command.Capture();
}

void GetSessionInfoStart(CK_SESSION_HANDLE hSession, CK_SESSION_INFO_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetSessionInfo, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GetSessionInfoEnd(CK_RV rv, CK_SESSION_HANDLE, CK_SESSION_INFO_PTR pInfo) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetSessionInfo, kEnd, rv);
    command.AddDescriptor(SessionInfo(pInfo));
    command.Capture();
}

void GetOperationStateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetOperationState, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void GetOperationStateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pOperationState,
                          CK_ULONG_PTR pulOperationStateLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kGetOperationState, kEnd, rv);
    command.AddDescriptor(Bytes(pOperationState, ValueAt(pulOperationStateLen)));
    command.Capture();
}

void SetOperationStateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pOperationState,
                            CK_ULONG ulOperationStateLen, CK_OBJECT_HANDLE hEncryptionKey,
                            CK_OBJECT_HANDLE hAuthenticationKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSetOperationState, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pOperationState, ulOperationStateLen));
    command.AddDescriptor(Object(hEncryptionKey));
    command.AddDescriptor(Object(hAuthenticationKey));
    command.Capture();
}

void SetOperationStateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_OBJECT_HANDLE,
                          CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSetOperationState, kEnd, rv);
    command.Capture();
}

void LoginStart(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_UTF8CHAR_PTR pPin, CK_ULONG) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kLogin, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(UserType(userType));
    command.AddDescriptor(Pin(pPin));
    command.Capture();
}

void LoginEnd(CK_RV rv, CK_SESSION_HANDLE, CK_USER_TYPE, CK_UTF8CHAR_PTR, CK_ULONG) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kLogin, kEnd, rv);
    command.Capture();
}

void LogoutStart(CK_SESSION_HANDLE hSession) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kLogout, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void LogoutEnd(CK_RV rv, CK_SESSION_HANDLE) {
    if (!IsLogged(kAdministering)) return;
    CommandDescriptor command(kLogout, kEnd, rv);
    command.Capture();
}
