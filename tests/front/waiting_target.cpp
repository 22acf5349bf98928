// This target library has one function: C_OpenSession calls the application back and then returns session 77.

#pragma GCC visibility push(default)
#include <p11-kit/pkcs11.h>

extern "C" CK_RV C_OpenSession(CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY Notify,
                               CK_SESSION_HANDLE_PTR phSession) {
    const CK_RV rv = Notify(0, 0, nullptr);
    *phSession = 77;
    return rv;
}
