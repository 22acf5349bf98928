// This is a target library whose functions succeed and do nothing. The time of a call over it is the time of
// the logger.
//
// It has a version, a slot and a session, because peers want these before they forward anything.

#pragma GCC visibility push(default)
#include <p11-kit/pkcs11.h>
#pragma GCC visibility pop

#include <atomic>

namespace {

constexpr CK_SLOT_ID kSlot = 1;

// Answers for every function but the four below. The functions differ by their types.
template <class... Arguments>
CK_RV Answer(CK_RV (*)(Arguments...), Arguments...) {
    return CKR_OK;
}

CK_RV Answer(CK_C_GetInfo, CK_INFO_PTR info) {
    *info = {};
    info->cryptokiVersion = {2, 20};
    return CKR_OK;
}

CK_RV Answer(CK_C_GetSlotList, CK_BBOOL, CK_SLOT_ID_PTR slots, CK_ULONG_PTR count) {
    if (slots != nullptr) *slots = kSlot;
    *count = 1;
    return CKR_OK;
}

CK_RV Answer(CK_C_OpenSession, CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR session) {
    static std::atomic<CK_SESSION_HANDLE> latest{1000};
    *session = ++latest;
    return CKR_OK;
}

CK_RV Answer(CK_C_GetFunctionList, CK_FUNCTION_LIST_PTR_PTR result) {
    static CK_FUNCTION_LIST list = [] {
        CK_FUNCTION_LIST own = {};
        own.version = {2, 20};
#define C_EVERY_ROW(Name, ...) own.C_##Name = C_##Name;
#include "functions/functions.def"
        return own;
    }();
    *result = &list;
    return CKR_OK;
}

}  // namespace

#define UNWRAP(...) __VA_ARGS__
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    extern "C" CK_RV C_##Name Parameters { return Answer(&C_##Name, UNWRAP Arguments); }
#define CA_EVERY_ROW(Name) \
    extern "C" __attribute__((visibility("default"))) CK_RV CA_##Name() { return CKR_OK; }
#include "functions/functions.def"
