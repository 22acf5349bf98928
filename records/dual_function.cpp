// Builds the records of PKCS#11 section "Dual-function cryptographic functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

namespace {

void AddEncryptedPart(CommandDescriptor& record, CK_RV rv, CK_BYTE_PTR encryptedPart, CK_ULONG_PTR length) {
    const bool isPart = encryptedPart != nullptr && rv != CKR_BUFFER_TOO_SMALL;
    record.AddDescriptor(isPart ? BytesChild(encryptedPart, ValueAt(length)) : NumberChild(ValueAt(length)));
}

}  // namespace

void DigestEncryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen, CK_BYTE_PTR,
                              CK_ULONG_PTR pulEncryptedPartLen) {
    if (!LevelSelects(kDigestEncrypt)) return;
    StartRecord record(kDigestEncrypt, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pPart, ulPartLen));
    record.AddDescriptor(NumberChild(ValueAt(pulEncryptedPartLen)));
    record.Capture();
}

void DigestEncryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedPart,
                            CK_ULONG_PTR pulEncryptedPartLen) {
    if (!LevelSelects(kDigestEncrypt)) return;
    EndRecord record(kDigestEncrypt, CommandSpecifier::kUpdate, rv);
    AddEncryptedPart(record, rv, pEncryptedPart, pulEncryptedPartLen);
    record.Capture();
}

void DecryptDigestUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
                              CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kDecryptDigest)) return;
    StartRecord record(kDecryptDigest, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pEncryptedPart, ulEncryptedPartLen));
    record.Capture();
}

void DecryptDigestUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pPart,
                            CK_ULONG_PTR pulPartLen) {
    if (!LevelSelects(kDecryptDigest)) return;
    EndRecord record(kDecryptDigest, CommandSpecifier::kUpdate, rv);
    record.AddDescriptor(BytesChild(pPart, ValueAt(pulPartLen)));
    record.Capture();
}

void SignEncryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen, CK_BYTE_PTR,
                            CK_ULONG_PTR pulEncryptedPartLen) {
    if (!LevelSelects(kSignEncrypt)) return;
    StartRecord record(kSignEncrypt, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pPart, ulPartLen));
    record.AddDescriptor(NumberChild(ValueAt(pulEncryptedPartLen)));
    record.Capture();
}

void SignEncryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedPart,
                          CK_ULONG_PTR pulEncryptedPartLen) {
    if (!LevelSelects(kSignEncrypt)) return;
    EndRecord record(kSignEncrypt, CommandSpecifier::kUpdate, rv);
    AddEncryptedPart(record, rv, pEncryptedPart, pulEncryptedPartLen);
    record.Capture();
}

void DecryptVerifyUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
                              CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kDecryptVerify)) return;
    StartRecord record(kDecryptVerify, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pEncryptedPart, ulEncryptedPartLen));
    record.Capture();
}

void DecryptVerifyUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pPart,
                            CK_ULONG_PTR pulPartLen) {
    if (!LevelSelects(kDecryptVerify)) return;
    EndRecord record(kDecryptVerify, CommandSpecifier::kUpdate, rv);
    record.AddDescriptor(BytesChild(pPart, ValueAt(pulPartLen)));
    record.Capture();
}
