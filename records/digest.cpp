// Builds the records of PKCS#11 section "Message digesting functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

void DigestInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism) {
    if (!LevelSelects(kDigest)) return;
    StartRecord record(kDigest, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.Capture();
}

void DigestInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR) {
    if (!LevelSelects(kDigest)) return;
    EndRecord record(kDigest, CommandSpecifier::kInit, rv);
    record.Capture();
}

void DigestStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR,
                 CK_ULONG_PTR) {
    if (!LevelSelects(kDigest)) return;
    StartRecord record(kDigest);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pData, ulDataLen));
    record.Capture();
}

void DigestEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pDigest,
               CK_ULONG_PTR pulDigestLen) {
    if (!LevelSelects(kDigest)) return;
    EndRecord record(kDigest, rv);
    record.AddDescriptor(BytesChild(pDigest, ValueAt(pulDigestLen)));
    record.Capture();
}

void DigestUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen) {
    if (!LevelSelects(kDigest)) return;
    StartRecord record(kDigest, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pPart, ulPartLen));
    record.Capture();
}

void DigestUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) {
    if (!LevelSelects(kDigest)) return;
    EndRecord record(kDigest, CommandSpecifier::kUpdate, rv);
    record.Capture();
}

void DigestKeyStart(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kDigest)) return;
    StartRecord record(kDigest, CommandSpecifier::kKey);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void DigestKeyEnd(CK_RV rv, CK_SESSION_HANDLE, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kDigest)) return;
    EndRecord record(kDigest, CommandSpecifier::kKey, rv);
    record.Capture();
}

void DigestFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kDigest)) return;
    StartRecord record(kDigest, CommandSpecifier::kFinal);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void DigestFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pDigest, CK_ULONG_PTR pulDigestLen) {
    if (!LevelSelects(kDigest)) return;
    EndRecord record(kDigest, CommandSpecifier::kFinal, rv);
    record.AddDescriptor(BytesChild(pDigest, ValueAt(pulDigestLen)));
    record.Capture();
}
