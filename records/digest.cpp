// Records of PKCS#11 section "Message digesting functions".

#include "records/record_children.h"
#include "records/standard_records.h"

void DigestInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.Capture();
}

void DigestInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kInit, kEnd, rv);
    command.Capture();
}

void DigestStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR,
                 CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pData, ulDataLen));
    command.Capture();
}

void DigestEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pDigest,
               CK_ULONG_PTR pulDigestLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kEnd, rv);
    command.AddDescriptor(Bytes(pDigest, ValueAt(pulDigestLen)));
    command.Capture();
}

void DigestUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pPart, ulPartLen));
    command.Capture();
}

void DigestUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kUpdate, kEnd, rv);
    command.Capture();
}

void DigestKeyStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kKey, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void DigestKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kKey, kEnd, rv);
    command.Capture();
}

void DigestFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kFinal, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void DigestFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pDigest, CK_ULONG_PTR pulDigestLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigest, kFinal, kEnd, rv);
    command.AddDescriptor(Bytes(pDigest, ValueAt(pulDigestLen)));
    command.Capture();
}
