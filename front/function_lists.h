// Puts this library's entry points into the two lists of functions that a target hands out: an application
// that calls through a list then reaches the exports, too.
#pragma once

#include <p11-kit/pkcs11.h>

#include "front/vendor_words.h"

// The vendor's list holds its version and one pointer for each function, in the order of the vendor's header.
struct CK_TOLK_CA_FUNCTION_LIST {
    CK_VERSION version;
#define CA_EVERY_ROW(Name) ckscribe::VendorFunction CA_##Name;
#include "functions/functions.def"
};

namespace ckscribe {

// Both return `rv`. If `rv` is CKR_OK, they overwrite the list that the target returned, except its version,
// and remember what stood there. If the list cannot be written or remembered, they hand out a copy with the
// target's version instead, which lives as long as this library. The target must not be unloaded meanwhile.
CK_RV WithOwnEntryPoints(CK_RV rv, CK_FUNCTION_LIST_PTR_PTR ppFunctionList);
CK_RV WithOwnEntryPoints(CK_RV rv, CK_TOLK_CA_FUNCTION_LIST** ppList);

}  // namespace ckscribe
