// This library lies beside a module that needs it.
#include <p11-kit/pkcs11.h>

extern "C" __attribute__((visibility("default"))) CK_ULONG NumberOfSlots() { return MODULE_SLOTS; }
