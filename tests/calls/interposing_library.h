#pragma once

#include <p11-kit/pkcs11.h>

// Every function of interposing_library.cpp returns this value.
inline constexpr CK_RV kInterposed = 0x80000BAD;
