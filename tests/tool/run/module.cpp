// This is a PKCS#11 module of the tests of `ckscribe run`. What it has beside C_GetFunctionList lies in its
// list. It is built several times. Each build has another number of slots, which tells the builds apart.
//
// C_Sign answers by the first byte of the data: 'c' crashes, 'e' is an error, anything else is well.
// C_WaitForSlotEvent never returns.

#include <p11-kit/pkcs11.h>
#include <unistd.h>

#include <csignal>

#define EXPORTED extern "C" __attribute__((visibility("default")))

#ifdef MODULE_NEEDS_NEIGHBOUR
// The function lies in a library that the loader finds through this module's $ORIGIN.
extern "C" CK_ULONG NumberOfSlots();
#else
namespace {
CK_ULONG NumberOfSlots() { return MODULE_SLOTS; }
}  // namespace
#endif

namespace {

CK_RV Initialize(CK_VOID_PTR) { return CKR_OK; }
CK_RV Finalize(CK_VOID_PTR) { return CKR_OK; }

CK_RV GetSlotList(CK_BBOOL, CK_SLOT_ID_PTR slots, CK_ULONG_PTR count) {
    if (slots != nullptr && *count < NumberOfSlots()) return CKR_BUFFER_TOO_SMALL;
    *count = NumberOfSlots();
    for (CK_ULONG i = 0; slots != nullptr && i < *count; ++i) slots[i] = 70 + i;
    return CKR_OK;
}

CK_RV OpenSession(CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR session) {
    *session = 31;
    return CKR_OK;
}

CK_RV Sign(CK_SESSION_HANDLE, CK_BYTE_PTR data, CK_ULONG, CK_BYTE_PTR signature, CK_ULONG_PTR size) {
    if (data[0] == 'c') std::raise(SIGSEGV);
    if (data[0] == 'e') return CKR_DEVICE_ERROR;
    for (CK_ULONG i = 0; i < *size; ++i) signature[i] = static_cast<CK_BYTE>(0xa0 + i);
    return CKR_OK;
}

CK_RV WaitForSlotEvent(CK_FLAGS, CK_SLOT_ID_PTR, CK_VOID_PTR) {
    for (;;) pause();
}

CK_FUNCTION_LIST MakeList();
CK_FUNCTION_LIST list = MakeList();

CK_RV GetFunctionList(CK_FUNCTION_LIST_PTR_PTR result) {
    *result = &list;
    return CKR_OK;
}

CK_FUNCTION_LIST MakeList() {
    CK_FUNCTION_LIST made{};
    made.version = {2, 40};
    made.C_GetFunctionList = GetFunctionList;
    made.C_Initialize = Initialize;
    made.C_Finalize = Finalize;
    made.C_GetSlotList = GetSlotList;
    made.C_OpenSession = OpenSession;
    made.C_Sign = Sign;
    made.C_WaitForSlotEvent = WaitForSlotEvent;
    return made;
}

}  // namespace

EXPORTED CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR result) { return GetFunctionList(result); }

#ifdef MODULE_HAS_OTHER_INTERFACE
EXPORTED CK_RV NSC_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR result) { return GetFunctionList(result); }
#endif
