// This program calls five functions of libckscribe.so as an application would, and prints their results as
// JSON. Its argument is the path of the library. The library's own output goes to standard error.

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>
#include <unistd.h>

#include <cstdio>

namespace {

template <class Function>
Function Find(void* library, const char* name) {
    return reinterpret_cast<Function>(dlsym(library, name));
}

}  // namespace

int main(int, char** words) {
    FILE* const results = fdopen(dup(STDOUT_FILENO), "w");
    dup2(STDERR_FILENO, STDOUT_FILENO);
    void* const library = dlopen(words[1], RTLD_NOW);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    CK_INFO info;
    CK_SESSION_HANDLE session = 0;
    CK_ULONG size = 0;
    const CK_RV gotInfo = Find<CK_C_GetInfo>(library, "C_GetInfo")(&info);
    const CK_RV opened =
        Find<CK_C_OpenSession>(library, "C_OpenSession")(1, CKF_SERIAL_SESSION, nullptr, nullptr, &session);
    const CK_RV loggedOut = Find<CK_C_Logout>(library, "C_Logout")(5);
    const CK_RV destroyed = Find<CK_C_DestroyObject>(library, "C_DestroyObject")(5, 6);
    const CK_RV signedUp = Find<CK_C_SignFinal>(library, "C_SignFinal")(5, nullptr, &size);
    std::fprintf(results,
                 R"({"GetInfo":%lu,"OpenSession":%lu,"Logout":%lu,"DestroyObject":%lu,"SignFinal":%lu})",
                 gotInfo, opened, loggedOut, destroyed, signedUp);
    return std::fclose(results) == 0 ? 0 : 1;
}
