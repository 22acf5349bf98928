// Tells whether the parameter of a mechanism can be one: its length and, for some mechanisms, what is in it.

#pragma once

#include <p11-kit/pkcs11.h>

#include <cstdint>

struct MechanismParamResult {
    // 0 when the parameter is valid, otherwise 0x710000: CKR_MECHANISM_PARAM_INVALID (0x71) in bits 16 to 23.
    std::uint32_t code = 0;
};

// `mechanism` stays the caller's and may be null, which is invalid. Its parameter may lie at any address; it
// is read only when its length is the one that the mechanism needs, and the memory that it points to never
// is. Pure: any thread may call it at any time.
MechanismParamResult ValidateCkMechanismParam(CK_MECHANISM* mechanism);
