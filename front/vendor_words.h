// How the functions of the vendor are called without knowing their prototypes.
//
// A target's own prototype may be longer than what a record shows of it. Every vendor function is therefore
// taken and handed on as a row of machine words, more than any record needs and never fewer than sixteen.
// That is sound on x86-64 as Linux and FreeBSD use it (System V ABI): an integer or pointer argument is one
// word whatever its type, the first six come in registers and the others on the caller's stack, the caller
// removes what it pushed, and a function never looks at words that it has no parameter for. Words that a
// caller did not give are whatever lay there: memory above a return address always exists, and what is read
// from it is only handed on.
#pragma once

#include <p11-kit/pkcs11.h>

#include <array>
#include <cstddef>

using Word = CK_ULONG;

inline constexpr std::size_t kVendorWords = 20;
using VendorWords = std::array<Word, kVendorWords>;

#define VENDOR_PARAMETERS                                                                               \
    Word w0, Word w1, Word w2, Word w3, Word w4, Word w5, Word w6, Word w7, Word w8, Word w9, Word w10, \
        Word w11, Word w12, Word w13, Word w14, Word w15, Word w16, Word w17, Word w18, Word w19
#define VENDOR_ARGUMENTS \
    w0, w1, w2, w3, w4, w5, w6, w7, w8, w9, w10, w11, w12, w13, w14, w15, w16, w17, w18, w19

using VendorFunction = CK_RV (*)(VENDOR_PARAMETERS);
