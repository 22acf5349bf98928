// Makes the measured calls as one thread of an application makes them.
#pragma once

#include <p11-kit/pkcs11.h>

// Each thread has an object of its own, with its own session and buffers, as PKCS#11 asks of applications. A
// call that fails ends the program, because its time would mean something else.
class CallingThread {
public:
    // Opens a session. `library` has been initialised.
    explicit CallingThread(CK_FUNCTION_LIST& library);
    ~CallingThread();
    CallingThread(const CallingThread&) = delete;
    CallingThread& operator=(const CallingThread&) = delete;

    void Sign();  // 32 bytes in, 32 bytes out
    void GetSessionInfo();
    void FindObjectsInit();  // a template of four attributes
    void EncryptUpdate();    // 4 KiB in, 4 KiB out
    void Mix();              // finds a key, encrypts and signs with it: kCallsInMix calls

    static constexpr int kCallsInMix = 8;

private:
    void EncryptUpdate(CK_ULONG length);

    static constexpr CK_ULONG kDigest = 32;
    static constexpr CK_ULONG kText = 256;
    static constexpr CK_ULONG kPage = 4096;

    CK_FUNCTION_LIST& library;
    CK_SESSION_HANDLE session = 0;
    CK_SESSION_INFO info = {};
    CK_BYTE in[kPage];
    CK_BYTE out[kPage];
};

// Ends the program with a message unless `rv` is CKR_OK.
void Require(CK_RV rv, const char* what);
