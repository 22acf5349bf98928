// This library of the application makes a call before the program starts.

#include <p11-kit/pkcs11.h>
#include <unistd.h>

namespace {

__attribute__((constructor)) void Call() {
    if (C_Logout(7) != 1007) _exit(7);
}

}  // namespace
