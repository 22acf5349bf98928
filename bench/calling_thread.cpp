#include "bench/calling_thread.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>

void Require(CK_RV rv, const char* what) {
    if (rv == CKR_OK) [[likely]]
        return;
    std::fprintf(stderr, "%s gave 0x%lx\n", what, rv);
    std::exit(1);
}

CallingThread::CallingThread(CK_FUNCTION_LIST& library) : library(library) {
    // Data of a cryptographic device is not printable.
    for (unsigned i = 0; i < kPage; ++i) {
        in[i] = static_cast<CK_BYTE>(i * 167 + 13);
        out[i] = static_cast<CK_BYTE>(i * 91 + 200);
    }
    CK_SLOT_ID slot = 0;
    CK_ULONG count = 1;
    Require(library.C_GetSlotList(CK_FALSE, &slot, &count), "C_GetSlotList");
    Require(library.C_OpenSession(slot, CKF_SERIAL_SESSION, nullptr, nullptr, &session), "C_OpenSession");
}

CallingThread::~CallingThread() { library.C_CloseSession(session); }

void CallingThread::Sign() {
    CK_ULONG length = kDigest;
    Require(library.C_Sign(session, in, kDigest, out, &length), "C_Sign");
}

void CallingThread::GetSessionInfo() {
    Require(library.C_GetSessionInfo(session, &info), "C_GetSessionInfo");
}

void CallingThread::FindObjectsInit() {
    static CK_OBJECT_CLASS objectClass = CKO_PRIVATE_KEY;
    static CK_KEY_TYPE keyType = CKK_RSA;
    static CK_BBOOL isOnToken = CK_TRUE;
    static CK_UTF8CHAR label[] = {'S', 'i', 'g', 'n', 'i', 'n', 'g', ' ', 'k', 'e', 'y'};
    static CK_ATTRIBUTE wanted[] = {
        {CKA_CLASS, &objectClass, sizeof objectClass},
        {CKA_KEY_TYPE, &keyType, sizeof keyType},
        {CKA_TOKEN, &isOnToken, sizeof isOnToken},
        {CKA_LABEL, label, sizeof label},
    };
    Require(library.C_FindObjectsInit(session, wanted, std::size(wanted)), "C_FindObjectsInit");
}

void CallingThread::EncryptUpdate() { EncryptUpdate(kPage); }

void CallingThread::EncryptUpdate(CK_ULONG length) {
    CK_ULONG outLength = length;
    Require(library.C_EncryptUpdate(session, in, length, out, &outLength), "C_EncryptUpdate");
}

void CallingThread::Mix() {
    CK_OBJECT_HANDLE key = 17;
    CK_ULONG count = 1;
    CK_MECHANISM encryption = {CKM_AES_CBC, in, 16};
    CK_MECHANISM signature = {CKM_RSA_PKCS, nullptr, 0};
    FindObjectsInit();
    Require(library.C_FindObjects(session, &key, 1, &count), "C_FindObjects");
    Require(library.C_FindObjectsFinal(session), "C_FindObjectsFinal");
    Require(library.C_EncryptInit(session, &encryption, key), "C_EncryptInit");
    EncryptUpdate(kText);
    Require(library.C_SignInit(session, &signature, key), "C_SignInit");
    Sign();
    GetSessionInfo();
}
