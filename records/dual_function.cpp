// Records of PKCS#11 section "Dual-function cryptographic functions".

#include "records/record_children.h"
#include "records/standard_records.h"

namespace {

void AddEncryptedPart(CommandDescriptor& command, CK_RV rv, CK_BYTE_PTR encryptedPart, CK_ULONG_PTR length) {
    const bool isPart = encryptedPart != nullptr && rv != CKR_BUFFER_TOO_SMALL;
    command.AddDescriptor(isPart ? Bytes(encryptedPart, ValueAt(length)) : Number(ValueAt(length)));
}

}  // namespace

void DigestEncryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen, CK_BYTE_PTR,
                              CK_ULONG_PTR pulEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigestEncrypt, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pPart, ulPartLen));
    command.AddDescriptor(Number(ValueAt(pulEncryptedPartLen)));
    command.Capture();
}

void DigestEncryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedPart,
                            CK_ULONG_PTR pulEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDigestEncrypt, kUpdate, kEnd, rv);
    AddEncryptedPart(command, rv, pEncryptedPart, pulEncryptedPartLen);
    command.Capture();
}

void DecryptDigestUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
                              CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecryptDigest, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pEncryptedPart, ulEncryptedPartLen));
    command.Capture();
}

void DecryptDigestUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pPart,
                            CK_ULONG_PTR pulPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecryptDigest, kUpdate, kEnd, rv);
    command.AddDescriptor(Bytes(pPart, ValueAt(pulPartLen)));
    command.Capture();
}

void SignEncryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen, CK_BYTE_PTR,
                            CK_ULONG_PTR pulEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSignEncrypt, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pPart, ulPartLen));
    command.AddDescriptor(Number(ValueAt(pulEncryptedPartLen)));
    command.Capture();
}

void SignEncryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedPart,
                          CK_ULONG_PTR pulEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kSignEncrypt, kUpdate, kEnd, rv);
    AddEncryptedPart(command, rv, pEncryptedPart, pulEncryptedPartLen);
    command.Capture();
}

void DecryptVerifyUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
                              CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecryptVerify, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pEncryptedPart, ulEncryptedPartLen));
    command.Capture();
}

void DecryptVerifyUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pPart,
                            CK_ULONG_PTR pulPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecryptVerify, kUpdate, kEnd, rv);
    command.AddDescriptor(Bytes(pPart, ValueAt(pulPartLen)));
    command.Capture();
}
