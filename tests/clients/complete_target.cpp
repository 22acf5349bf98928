// A target library that lacks no function. It is linked with the library of a software token, which has the
// standard functions, and defines every function of the vendor itself. The library under test then announces
// nothing on standard output.

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

#define CA_EVERY_ROW(Name)      \
    EXPORTED CK_RV CA_##Name(); \
    EXPORTED CK_RV CA_##Name() { return CKR_FUNCTION_NOT_SUPPORTED; }
#include "functions/functions.def"

// ssh-agent loads only libraries that define this symbol themselves.
EXPORTED CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList) {
    return reinterpret_cast<CK_C_GetFunctionList>(dlsym(RTLD_NEXT, "C_GetFunctionList"))(ppFunctionList);
}
