// These functions work on the arrays and templates of PKCS#11. Any thread may call them; the arrays stay the
// caller's.

#pragma once

#include <p11-kit/pkcs11.h>

// Returns the object class that the first CKA_CLASS entry of `count` entries holds. Returns all ones if there
// is no such entry or if it has no room for a class.
unsigned long attributeClass(const CK_ATTRIBUTE* attributes, unsigned long count);

// Copies `*inCount` numbers. `*outCount` is the room of `out` in numbers; if the result is CKR_OK, it becomes
// the number of copied numbers. Returns CKR_BUFFER_TOO_SMALL and copies nothing if there is not enough room.
// Returns CKR_DATA_LEN_RANGE if a number does not fit in 32 bits, after copying the numbers before it.
CK_RV CopyULONGArrayTo32Array(unsigned long* in, unsigned long* inCount, unsigned int* out,
                              unsigned int* outCount);

// Does the same in the other direction, where every number fits.
CK_RV Copy32ArrayToULONGArray(unsigned int* in, unsigned int* inCount, unsigned long* out,
                              unsigned long* outCount);
