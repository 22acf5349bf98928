// The parameter of a mechanism is valid by its length and, for some mechanisms, by its content.

#pragma once

#include <p11-kit/pkcs11.h>

#include <cstdint>

namespace ckscribe {

struct MechanismParamResult {
    // The code is 0 if the parameter is valid, otherwise 0x710000: CKR_MECHANISM_PARAM_INVALID (0x71) in bits
    // 16 to 23.
    std::uint32_t code = 0;
};

}  // namespace ckscribe

// `mechanism` stays the caller's; null is invalid. Its parameter may lie at any address and is read only if
// its length is the one that the mechanism needs. The memory that the parameter points to is never read. The
// function is pure: any thread may call it at any time.
ckscribe::MechanismParamResult ValidateCkMechanismParam(CK_MECHANISM* mechanism);
