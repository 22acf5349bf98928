// Calls the functions of the vendor without knowing their prototypes.
//
// A target's own prototype may be longer than what a record shows of it. Every vendor function is therefore
// taken and handed on as a row of machine words, as many as the longest record needs, which is more than
// sixteen. All arguments of these functions are integers or pointers. A row is sound where each of them is
// one word whatever its type (System V ABI on x86-64, and on 64-bit ARM outside of macOS):
//
//  - The first words come in registers, the others in order on the stack, where the caller removes them.
//  - A function never looks at words that it has no parameter for. Therefore neither end notices how many
//    words the other one has in mind.
//  - Words that a caller did not give hold anything: left-overs in registers, and the variables of the
//    functions that the thread is inside of. They are read and handed on, and never written.
//  - The stack of a coroutine may end right above its outermost function. Words that are not there are 0.
#pragma once

#include <p11-kit/pkcs11.h>

#include <array>
#include <cstddef>

#include "host/stack_words.h"

namespace ckscribe {

using VendorWord = CK_ULONG;

inline constexpr std::size_t kVendorWords = 20;
using VendorWords = std::array<VendorWord, kVendorWords>;

}  // namespace ckscribe

// A function of the vendor is called with these words.
#define VENDOR_PARAMETERS                                                                               \
    const ckscribe::VendorWord w0, const ckscribe::VendorWord w1, const ckscribe::VendorWord w2,        \
        const ckscribe::VendorWord w3, const ckscribe::VendorWord w4, const ckscribe::VendorWord w5,    \
        const ckscribe::VendorWord w6, const ckscribe::VendorWord w7, const ckscribe::VendorWord w8,    \
        const ckscribe::VendorWord w9, const ckscribe::VendorWord w10, const ckscribe::VendorWord w11,  \
        const ckscribe::VendorWord w12, const ckscribe::VendorWord w13, const ckscribe::VendorWord w14, \
        const ckscribe::VendorWord w15, const ckscribe::VendorWord w16, const ckscribe::VendorWord w17, \
        const ckscribe::VendorWord w18, const ckscribe::VendorWord w19
#define VENDOR_ARGUMENTS \
    w0, w1, w2, w3, w4, w5, w6, w7, w8, w9, w10, w11, w12, w13, w14, w15, w16, w17, w18, w19

// An exported function of the vendor declares the words that come in registers. It asks for the others only
// with ReceivedWords(VENDOR_RECEIVED), because a declared parameter is read unconditionally.
#if defined(__x86_64__)
#define VENDOR_REGISTERS                                                                         \
    const ckscribe::VendorWord w0, const ckscribe::VendorWord w1, const ckscribe::VendorWord w2, \
        const ckscribe::VendorWord w3, const ckscribe::VendorWord w4, const ckscribe::VendorWord w5
#define VENDOR_REGISTER_WORDS w0, w1, w2, w3, w4, w5
#elif defined(__aarch64__) && !defined(__clang__)
#define VENDOR_REGISTERS                                                                             \
    const ckscribe::VendorWord w0, const ckscribe::VendorWord w1, const ckscribe::VendorWord w2,     \
        const ckscribe::VendorWord w3, const ckscribe::VendorWord w4, const ckscribe::VendorWord w5, \
        const ckscribe::VendorWord w6, const ckscribe::VendorWord w7
#define VENDOR_REGISTER_WORDS w0, w1, w2, w3, w4, w5, w6, w7
#else
#error "vendor functions: which words come in registers, and where the others begin, is not known here"
#endif
#define VENDOR_RECEIVED __builtin_dwarf_cfa(), VENDOR_REGISTER_WORDS

namespace ckscribe {

using VendorFunction = CK_RV (*)(VENDOR_PARAMETERS);
using VendorExport = CK_RV(VENDOR_REGISTERS);

// Returns all words of a call. `stack` is where the words on the stack begin.
template <class... Registers>
[[gnu::always_inline]] inline VendorWords ReceivedWords(const void* stack, Registers... registers) {
    VendorWords words;
    std::size_t place = 0;
    ((words[place++] = registers), ...);
    constexpr std::size_t kInRegisters = sizeof...(registers);
    CopyStackWords<kVendorWords - kInRegisters>(static_cast<const VendorWord*>(stack),
                                                words.data() + kInRegisters);
    return words;
}

}  // namespace ckscribe
