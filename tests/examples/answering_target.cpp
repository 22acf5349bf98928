// A target that answers one function at once.

#include <p11-kit/pkcs11.h>

extern "C" CK_RV C_Logout(CK_SESSION_HANDLE) { return CKR_OK; }

extern "C" CK_RV C_GetFunctionList(CK_FUNCTION_LIST**) { return CKR_FUNCTION_FAILED; }
