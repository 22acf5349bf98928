// The names of numbers for those who want as many names as there are: the name that this system gives the
// number (functions/pkcs11_names.h), or else the name that PKCS#11 has for it today, from the header of the
// distribution. Where the header has two names for a number, it is the one that it lists first.
//
// One name may stand for two numbers: CKM_AES_GCM is this system's 0x8000011C and the standard's 0x1087.
//
// Every function is pure, never fails and returns constant text: any thread may call them at any time.
#pragma once

#include <string_view>

namespace ckscribe {

std::string_view FullNameOfAttribute(unsigned long type);      // empty when unknown
std::string_view FullNameOfMechanism(unsigned long type);      // empty when unknown
std::string_view FullNameOfResult(unsigned long returnValue);  // "CKR_UNKNOWN" when unknown

}  // namespace ckscribe
