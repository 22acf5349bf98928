// This program is linked with its module.
#include <p11-kit/pkcs11.h>

#include <cstdio>

int main() {
    CK_FUNCTION_LIST* list = nullptr;
    CK_ULONG count = 0;
    if (C_GetFunctionList(&list) != CKR_OK || list->C_GetSlotList(CK_FALSE, nullptr, &count) != CKR_OK)
        return 1;
    std::printf("%lu slots\n", count);
}
