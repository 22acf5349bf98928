// These functions serve those who want as many names as there are. They return the name that this system
// gives the number (functions/pkcs11_names.h), or else the name that PKCS#11 has for the number today.
// Today's names come from the header of the distribution. If the header has two names for a number, the one
// that it lists first counts.
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
