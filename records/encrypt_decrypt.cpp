// Records of PKCS#11 sections "Encryption functions" and "Decryption functions".

#include "records/record_children.h"
#include "records/standard_records.h"

namespace {

// They say "pus" for a "pul" argument, and those of the update call lack the closing "="; kept, they are part
// of the format.
constexpr const char* kEncryptedDataLenAddress = "pusEncryptedDataLen=";
constexpr const char* kEncryptedDataLen = "*pusEncryptedDataLen=";
constexpr const char* kEncryptedPartLenAddress = "pusEncryptedPartLen";
constexpr const char* kEncryptedPartLen = "*pusEncryptedPartLen";

}  // namespace

void EncryptInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void EncryptInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kInit, kEnd, rv);
    command.Capture();
}

void EncryptStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR,
                  CK_ULONG_PTR pulEncryptedDataLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pData, ulDataLen));
    command.AddDescriptor(HexNumber(AddressOf(pulEncryptedDataLen), kEncryptedDataLenAddress));
    command.AddDescriptor(DecimalNumber(ValueAt(pulEncryptedDataLen), kEncryptedDataLen));
    command.Capture();
}

void EncryptEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedData,
                CK_ULONG_PTR pulEncryptedDataLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kEnd, rv);
    command.AddDescriptor(Bytes(pEncryptedData, ValueAt(pulEncryptedDataLen)));
    command.AddDescriptor(HexNumber(AddressOf(pulEncryptedDataLen), kEncryptedDataLenAddress));
    command.AddDescriptor(DecimalNumber(ValueAt(pulEncryptedDataLen), kEncryptedDataLen));
    command.Capture();
}

void EncryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen, CK_BYTE_PTR,
                        CK_ULONG_PTR pulEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pPart, ulPartLen));
    command.AddDescriptor(HexNumber(AddressOf(pulEncryptedPartLen), kEncryptedPartLenAddress));
    command.AddDescriptor(DecimalNumber(ValueAt(pulEncryptedPartLen), kEncryptedPartLen));
    command.Capture();
}

void EncryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pEncryptedPart,
                      CK_ULONG_PTR pulEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kUpdate, kEnd, rv);
    if (pEncryptedPart == nullptr || rv == CKR_BUFFER_TOO_SMALL) {
        command.AddDescriptor(HexNumber(AddressOf(pulEncryptedPartLen), kEncryptedPartLenAddress));
        command.AddDescriptor(DecimalNumber(ValueAt(pulEncryptedPartLen), kEncryptedPartLen));
    } else {
        command.AddDescriptor(Bytes(pEncryptedPart, ValueAt(pulEncryptedPartLen)));
    }
    command.Capture();
}

void EncryptFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kFinal, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void EncryptFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pLastEncryptedPart,
                     CK_ULONG_PTR pulLastEncryptedPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kEncrypt, kFinal, kEnd, rv);
    command.AddDescriptor(Bytes(pLastEncryptedPart, ValueAt(pulLastEncryptedPartLen)));
    command.Capture();
}

void DecryptInitStart(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kInit, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Mechanism(pMechanism));
    command.AddDescriptor(Object(hKey));
    command.Capture();
}

void DecryptInitEnd(CK_RV rv, CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kInit, kEnd, rv);
    command.Capture();
}

void DecryptStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedData, CK_ULONG ulEncryptedDataLen,
                  CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pEncryptedData, ulEncryptedDataLen));
    command.Capture();
}

void DecryptEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pData,
                CK_ULONG_PTR pulDataLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kEnd, rv);
    command.AddDescriptor(Bytes(pData, ValueAt(pulDataLen)));
    command.Capture();
}

void DecryptUpdateStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart, CK_ULONG ulEncryptedPartLen,
                        CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kUpdate, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.AddDescriptor(Bytes(pEncryptedPart, ulEncryptedPartLen));
    command.Capture();
}

void DecryptUpdateEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR pPart,
                      CK_ULONG_PTR pulPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kUpdate, kEnd, rv);
    command.AddDescriptor(Bytes(pPart, ValueAt(pulPartLen)));
    command.Capture();
}

void DecryptFinalStart(CK_SESSION_HANDLE hSession, CK_BYTE_PTR, CK_ULONG_PTR) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kFinal, kStart, 0);
    command.AddDescriptor(Session(hSession));
    command.Capture();
}

void DecryptFinalEnd(CK_RV rv, CK_SESSION_HANDLE, CK_BYTE_PTR pLastPart, CK_ULONG_PTR pulLastPartLen) {
    if (!IsLogged(kEverything)) return;
    CommandDescriptor command(kDecrypt, kFinal, kEnd, rv);
    command.AddDescriptor(Bytes(pLastPart, ValueAt(pulLastPartLen)));
    command.Capture();
}
