#pragma once

#include <p11-kit/pkcs11.h>

// What every function of interposing_library.cpp returns.
inline constexpr CK_RV kInterposed = 0x80000BAD;
