#include "descriptors/byte_kinds.h"

#include <bit>
#include <cstring>

#include "descriptors/rich_text.h"
#include "util/byte_block.h"

namespace ckscribe {

namespace {

using CharBlock = char __attribute__((vector_size(kByteBlock)));

// Returns one bit for each byte of `bytes`, each of which is all ones or zero.
template <class Comparison>
unsigned BitsOf(Comparison bytes) {
#ifdef __SSE2__
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(reinterpret_cast<CharBlock>(bytes)));
#else
    unsigned bits = 0;
    for (std::size_t i = 0; i < kByteBlock; ++i) bits |= bytes[i] != 0 ? 1U << i : 0U;
    return bits;
#endif
}

void AddBlock(const unsigned char* bytes, ByteKinds& kinds) {
    ckscribe::ByteBlock block;
    std::memcpy(&block, bytes, kByteBlock);
    kinds.isText = BitsOf(block > kLastPrintableByte) == 0;
    const unsigned controls = BitsOf(block < kFirstPrintableByte);
    if (controls != 0) kinds.controls += static_cast<unsigned long>(std::popcount(controls));
}

void AddByte(unsigned char byte, ByteKinds& kinds) {
    kinds.isText = byte <= kLastPrintableByte;
    if (IsControlByte(byte)) ++kinds.controls;
}

}  // namespace

ByteKinds KindsOf(const void* bytes, std::size_t length) {
    const unsigned char* const from = static_cast<const unsigned char*>(bytes);
    const std::size_t whole = length / kByteBlock * kByteBlock;
    ByteKinds kinds;
    for (std::size_t i = 0; i < whole && kinds.isText; i += kByteBlock) AddBlock(from + i, kinds);
    for (std::size_t i = whole; i < length && kinds.isText; ++i) AddByte(from[i], kinds);
    return kinds;
}

}  // namespace ckscribe
