// How the functions of the vendor are called without knowing their prototypes.
//
// A target's own prototype may be longer than what a record shows of it. Every vendor function is therefore
// taken and handed on as a row of machine words, as many as the longest record needs, which is more than
// sixteen. That is sound on x86-64 as Linux and FreeBSD use it (System V ABI):
//
//  - An argument that is an integer or a pointer, as all of these functions' are, is one word whatever its
//    type. The first six come in registers, the others in order on the stack above the return address.
//  - The caller removes what it pushed, and a function never looks at words that it has no parameter for. So
//    neither end notices how many words the other one has in mind.
//  - Words that a caller did not give are whatever is there: left-overs in registers, and the variables of
//    the functions that the thread is inside of, which are always there. They are read and handed on, and
//    never written; hence the const.
#pragma once

#include <p11-kit/pkcs11.h>

#include <array>
#include <cstddef>

using Word = CK_ULONG;

inline constexpr std::size_t kVendorWords = 20;
using VendorWords = std::array<Word, kVendorWords>;

#define VENDOR_PARAMETERS                                                                                    \
    const Word w0, const Word w1, const Word w2, const Word w3, const Word w4, const Word w5, const Word w6, \
        const Word w7, const Word w8, const Word w9, const Word w10, const Word w11, const Word w12,         \
        const Word w13, const Word w14, const Word w15, const Word w16, const Word w17, const Word w18,      \
        const Word w19
#define VENDOR_ARGUMENTS \
    w0, w1, w2, w3, w4, w5, w6, w7, w8, w9, w10, w11, w12, w13, w14, w15, w16, w17, w18, w19

using VendorFunction = CK_RV (*)(VENDOR_PARAMETERS);
