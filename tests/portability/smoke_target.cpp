// This target has the functions that the smoke test calls.

#include <p11-kit/pkcs11.h>
#include <unistd.h>

#include <cstring>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

CK_FUNCTION_LIST functions{};

}  // namespace

EXPORTED CK_RV C_Initialize(void*) { return CKR_OK; }
EXPORTED CK_RV C_Finalize(void*) { return CKR_OK; }

EXPORTED CK_RV C_GetFunctionList(CK_FUNCTION_LIST** list) {
    functions.version = {2, 40};
    functions.C_Initialize = C_Initialize;
    *list = &functions;
    return CKR_OK;
}

EXPORTED CK_RV C_Login(CK_SESSION_HANDLE, CK_USER_TYPE, CK_UTF8CHAR*, CK_ULONG) { return CKR_PIN_INCORRECT; }

// Gives the data, turned around, as the signature.
EXPORTED CK_RV C_Sign(CK_SESSION_HANDLE, CK_BYTE* data, CK_ULONG dataLength, CK_BYTE* signature,
                      CK_ULONG* signatureLength) {
    if (*signatureLength < dataLength) return CKR_BUFFER_TOO_SMALL;
    for (CK_ULONG i = 0; i < dataLength; ++i) signature[i] = data[dataLength - 1 - i];
    *signatureLength = dataLength;
    return CKR_OK;
}

// Refuses without a look at its arguments.
EXPORTED CK_RV C_CreateObject(CK_SESSION_HANDLE, CK_ATTRIBUTE*, CK_ULONG, CK_OBJECT_HANDLE*) {
    return CKR_ATTRIBUTE_VALUE_INVALID;
}

// Waits for a cancellation.
EXPORTED CK_RV C_WaitForSlotEvent(CK_FLAGS, CK_SLOT_ID*, void*) {
    for (;;) pause();
}

// This is one of the vendor's functions.
EXPORTED CK_RV CA_GetFPV(CK_SLOT_ID slot, CK_ULONG* value) {
    *value = 100 + slot;
    return CKR_OK;
}
