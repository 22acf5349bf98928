#include "descriptors/byte_kinds.h"

#include <bit>
#include <cstring>

#include "descriptors/rich_text.h"

namespace {

// Sixteen bytes on which the processor works at once. Byte by byte, a text of some kilobytes would take as
// long as writing the record that it stands in.
constexpr std::size_t kBlock = 16;
using Block = unsigned char __attribute__((vector_size(kBlock)));
using SignedBlock = char __attribute__((vector_size(kBlock)));

// Of bytes that are all ones or zero: one bit each.
template <class Comparison>
unsigned BitsOf(Comparison bytes) {
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(reinterpret_cast<SignedBlock>(bytes)));
}

void AddBlock(const unsigned char* bytes, ByteKinds& kinds) {
    Block block;
    std::memcpy(&block, bytes, kBlock);
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
    const std::size_t whole = length / kBlock * kBlock;
    ByteKinds kinds;
    for (std::size_t i = 0; i < whole && kinds.isText; i += kBlock) AddBlock(from + i, kinds);
    for (std::size_t i = whole; i < length && kinds.isText; ++i) AddByte(from[i], kinds);
    return kinds;
}
