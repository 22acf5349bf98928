// This application asks once for a long list: long_list LIBRARY COUNT. The target gives it COUNT handles.

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>

#include <cstdlib>
#include <cstring>
#include <numeric>
#include <vector>

#include "tests/calls/scripted_target.h"

CK_RV AnswerCall(const char* function, const TargetWord* arguments, std::size_t) {
    if (std::strcmp(function, "C_FindObjects") != 0) return CKR_OK;
    auto* const handles = reinterpret_cast<CK_OBJECT_HANDLE*>(arguments[1]);
    std::iota(handles, handles + arguments[2], 1);
    *reinterpret_cast<CK_ULONG*>(arguments[3]) = arguments[2];
    return CKR_OK;
}

void TargetIsLoaded() {}
void TargetIsUnloaded() {}

int main(int count, char** arguments) {
    if (count != 3) return 2;
    void* const library = dlopen(arguments[1], RTLD_NOW);
    if (library == nullptr) return 3;
    std::vector<CK_OBJECT_HANDLE> handles(std::strtoul(arguments[2], nullptr, 10));
    CK_ULONG found = 0;
    reinterpret_cast<CK_C_Logout>(dlsym(library, "C_Logout"))(1);
    const CK_RV rv = reinterpret_cast<CK_C_FindObjects>(dlsym(library, "C_FindObjects"))(
        1, handles.data(), handles.size(), &found);
    return rv == CKR_OK && found == handles.size() && handles.back() == found ? 0 : 4;
}
