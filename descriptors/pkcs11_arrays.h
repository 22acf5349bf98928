// Small helpers for the arrays and templates of PKCS#11. Any thread may call them; the arrays are the
// caller's.

#pragma once

#include <p11-kit/pkcs11.h>

// The object class that the first CKA_CLASS entry of `count` entries holds. All ones when there is no such
// entry or when it has no room for a class.
unsigned long attributeClass(const CK_ATTRIBUTE* attributes, unsigned long count);

// Copies `*inCount` numbers. `*outCount` is the room of `out` in numbers and becomes the number of those
// copied when the result is CKR_OK. CKR_BUFFER_TOO_SMALL when there is not enough room: nothing is copied.
// CKR_DATA_LEN_RANGE when a number does not fit in 32 bits: those before it are copied.
CK_RV CopyULONGArrayTo32Array(unsigned long* in, unsigned long* inCount, unsigned int* out,
                              unsigned int* outCount);

// The same in the other direction, where every number fits.
CK_RV Copy32ArrayToULONGArray(unsigned int* in, unsigned int* inCount, unsigned long* out,
                              unsigned long* outCount);
