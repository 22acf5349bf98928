// A target library that lacks nothing: linked with a software token's library, in which the standard
// functions are found, it has every function of the vendor beside them. Nothing is announced on standard
// output then.

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

#define CA_EVERY_ROW(Name)      \
    EXPORTED CK_RV CA_##Name(); \
    EXPORTED CK_RV CA_##Name() { return CKR_FUNCTION_NOT_SUPPORTED; }
#include "functions/functions.def"

// ssh-agent loads only what has this symbol itself.
EXPORTED CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList) {
    return reinterpret_cast<CK_C_GetFunctionList>(dlsym(RTLD_NEXT, "C_GetFunctionList"))(ppFunctionList);
}
