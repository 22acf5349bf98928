// These functions return the names under which numbers of PKCS#11 appear in the log.
//
// COMPAT: The names are a fixed set. Values that the standard got later are unknown here. Some names have the
// vendor's number although the standard has given them another one since (CKM_AES_GCM is 0x8000011C).
//
// Every function is pure, never fails and returns constant text: any thread may call them at any time.

#pragma once

#include <string_view>

std::string_view GetAttributeType(unsigned long type);           // "CKA_XXX" when unknown
std::string_view GetObjectClass(unsigned long objectClass);      // "CKO_UNKNOWN" when unknown
std::string_view GetKeyType(unsigned long type);                 // "CKK_UNKNOWN" when unknown
std::string_view GetCertificateType(unsigned long type);         // "CKC_UNKNOWN" when unknown
std::string_view GetErrorCode(unsigned long returnValue);        // "CKR_UNKNOWN" when unknown
std::string_view GetMechanismType(unsigned long mechanismType);  // "Unknown Mechanism Type" when unknown

namespace ckscribe {

struct ReturnValueRow {
    const char* name;
    unsigned long value;
};

}  // namespace ckscribe

// The table has every return value that GetErrorCodeForString finds, in the order in which it looks. COMPAT:
// Three standard names stand in it twice, with the same value.
extern const ckscribe::ReturnValueRow CKR_LookupTable[191];

// Stores the return value of that name in `*value` and returns 0 (CKR_OK). The name is compared exactly. For
// any other name, and for null, stores 0 and returns 7 (CKR_ARGUMENTS_BAD). `value` must not be null.
unsigned long GetErrorCodeForString(const char* name, unsigned long* value);
