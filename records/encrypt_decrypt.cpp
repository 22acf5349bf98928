// Builds the records of PKCS#11 sections "Encryption functions" and "Decryption functions".

#include "records/record_children.h"
#include "records/standard_records.h"

using namespace ckscribe;

namespace {

// COMPAT: These labels say "pus" where the arguments say "pul", and those of the update call lack the "=".
constexpr const char* kEncryptedDataLenAddress = "pusEncryptedDataLen=";
constexpr const char* kEncryptedDataLen = "*pusEncryptedDataLen=";
constexpr const char* kEncryptedPartLenAddress = "pusEncryptedPartLen";
constexpr const char* kEncryptedPartLen = "*pusEncryptedPartLen";

}  // namespace

void EncryptInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kEncrypt)) return;
    StartRecord record(kEncrypt, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void EncryptInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kEncrypt)) return;
    EndRecord record(kEncrypt, CommandSpecifier::kInit, rv);
    record.Capture();
}

void EncryptStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR,
                  CK_ULONG_PTR pulEncryptedDataLen) {
    if (!LevelSelects(kEncrypt)) return;
    StartRecord record(kEncrypt);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pData, ulDataLen));
    record.AddDescriptor(HexNumberChild(AsNumber(pulEncryptedDataLen), kEncryptedDataLenAddress));
    record.AddDescriptor(DecimalNumberChild(ValueAt(pulEncryptedDataLen), kEncryptedDataLen));
    record.Capture();
}

void EncryptEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedData,
                CK_ULONG_PTR pulEncryptedDataLen) {
    if (!LevelSelects(kEncrypt)) return;
    EndRecord record(kEncrypt, rv);
    record.AddDescriptor(BytesChild(pEncryptedData, ValueAt(pulEncryptedDataLen)));
    record.AddDescriptor(HexNumberChild(AsNumber(pulEncryptedDataLen), kEncryptedDataLenAddress));
    record.AddDescriptor(DecimalNumberChild(ValueAt(pulEncryptedDataLen), kEncryptedDataLen));
    record.Capture();
}

void EncryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen, CK_BYTE_PTR,
                        CK_ULONG_PTR pulEncryptedPartLen) {
    if (!LevelSelects(kEncrypt)) return;
    StartRecord record(kEncrypt, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pPart, ulPartLen));
    record.AddDescriptor(HexNumberChild(AsNumber(pulEncryptedPartLen), kEncryptedPartLenAddress));
    record.AddDescriptor(DecimalNumberChild(ValueAt(pulEncryptedPartLen), kEncryptedPartLen));
    record.Capture();
}

void EncryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedPart,
                      CK_ULONG_PTR pulEncryptedPartLen) {
    if (!LevelSelects(kEncrypt)) return;
    EndRecord record(kEncrypt, CommandSpecifier::kUpdate, rv);
    if (pEncryptedPart == nullptr || rv == CKR_BUFFER_TOO_SMALL) {
        record.AddDescriptor(HexNumberChild(AsNumber(pulEncryptedPartLen), kEncryptedPartLenAddress));
        record.AddDescriptor(DecimalNumberChild(ValueAt(pulEncryptedPartLen), kEncryptedPartLen));
    } else {
        record.AddDescriptor(BytesChild(pEncryptedPart, ValueAt(pulEncryptedPartLen)));
    }
    record.Capture();
}

void EncryptFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kEncrypt)) return;
    StartRecord record(kEncrypt, CommandSpecifier::kFinal);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void EncryptFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pLastEncryptedPart,
                     CK_ULONG_PTR pulLastEncryptedPartLen) {
    if (!LevelSelects(kEncrypt)) return;
    EndRecord record(kEncrypt, CommandSpecifier::kFinal, rv);
    record.AddDescriptor(BytesChild(pLastEncryptedPart, ValueAt(pulLastEncryptedPartLen)));
    record.Capture();
}

void DecryptInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!LevelSelects(kDecrypt)) return;
    StartRecord record(kDecrypt, CommandSpecifier::kInit);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(MechanismChild(pMechanism));
    record.AddDescriptor(ObjectChild(hKey));
    record.Capture();
}

void DecryptInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!LevelSelects(kDecrypt)) return;
    EndRecord record(kDecrypt, CommandSpecifier::kInit, rv);
    record.Capture();
}

void DecryptStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedData, CK_ULONG ulEncryptedDataLen,
                  CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kDecrypt)) return;
    StartRecord record(kDecrypt);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pEncryptedData, ulEncryptedDataLen));
    record.Capture();
}

void DecryptEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pData,
                CK_ULONG_PTR pulDataLen) {
    if (!LevelSelects(kDecrypt)) return;
    EndRecord record(kDecrypt, rv);
    record.AddDescriptor(BytesChild(pData, ValueAt(pulDataLen)));
    record.Capture();
}

void DecryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart, CK_ULONG ulEncryptedPartLen,
                        CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kDecrypt)) return;
    StartRecord record(kDecrypt, CommandSpecifier::kUpdate);
    record.AddDescriptor(SessionChild(hSession));
    record.AddDescriptor(BytesChild(pEncryptedPart, ulEncryptedPartLen));
    record.Capture();
}

void DecryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pPart,
                      CK_ULONG_PTR pulPartLen) {
    if (!LevelSelects(kDecrypt)) return;
    EndRecord record(kDecrypt, CommandSpecifier::kUpdate, rv);
    record.AddDescriptor(BytesChild(pPart, ValueAt(pulPartLen)));
    record.Capture();
}

void DecryptFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!LevelSelects(kDecrypt)) return;
    StartRecord record(kDecrypt, CommandSpecifier::kFinal);
    record.AddDescriptor(SessionChild(hSession));
    record.Capture();
}

void DecryptFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pLastPart, CK_ULONG_PTR pulLastPartLen) {
    if (!LevelSelects(kDecrypt)) return;
    EndRecord record(kDecrypt, CommandSpecifier::kFinal, rv);
    record.AddDescriptor(BytesChild(pLastPart, ValueAt(pulLastPartLen)));
    record.Capture();
}
