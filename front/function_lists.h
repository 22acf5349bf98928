// The two lists of functions that a target hands out, with this library's entry points put in: an application
// that calls through a list reaches the exports, too.
#pragma once

#include <p11-kit/pkcs11.h>

#include "front/vendor_words.h"

// The vendor's list: its version and one pointer for each function, in the order of the vendor's header.
struct CK_TOLK_CA_FUNCTION_LIST {
    CK_VERSION version;
#define CA_EVERY_ROW(Name) VendorFunction CA_##Name;
#include "functions/functions.def"
};

// Give `rv` back. On CKR_OK the list that the target returned is overwritten in place but for its version; in
// place of one that cannot be written, a copy with the target's version is handed out, which lives as long as
// this library.
CK_RV WithOwnEntryPoints(CK_RV rv, CK_FUNCTION_LIST_PTR_PTR ppFunctionList);
CK_RV WithOwnEntryPoints(CK_RV rv, CK_TOLK_CA_FUNCTION_LIST** ppList);
