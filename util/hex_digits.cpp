#include "util/hex_digits.h"

#include <cstring>

#include "util/byte_block.h"

namespace ckscribe {

namespace {

ByteBlock DigitsOf(ByteBlock nibbles) {
    const ByteBlock isLetter = reinterpret_cast<ByteBlock>(nibbles > 9);
    return nibbles + '0' + (isLetter & ('a' - '0' - 10));
}

// Takes eight bytes of each block from byte `kFrom` on, in turn. The first one comes from `high`.
template <int kFrom>
ByteBlock Interleaved(ByteBlock high, ByteBlock low) {
    constexpr int h = kFrom;
    constexpr int l = kFrom + static_cast<int>(kByteBlock);
#if defined(__clang__)
    return __builtin_shufflevector(high, low, h, l, h + 1, l + 1, h + 2, l + 2, h + 3, l + 3, h + 4, l + 4,
                                   h + 5, l + 5, h + 6, l + 6, h + 7, l + 7);
#else
    return __builtin_shuffle(high, low,
                             ByteBlock{h, l, h + 1, l + 1, h + 2, l + 2, h + 3, l + 3, h + 4, l + 4, h + 5,
                                       l + 5, h + 6, l + 6, h + 7, l + 7});
#endif
}

void WriteDigitsOfBlock(const unsigned char* bytes, char* digits) {
    ByteBlock block;
    std::memcpy(&block, bytes, kByteBlock);
    const ByteBlock high = DigitsOf(block >> 4);
    const ByteBlock low = DigitsOf(block & 15);
    const ByteBlock first = Interleaved<0>(high, low);
    const ByteBlock second = Interleaved<8>(high, low);
    std::memcpy(digits, &first, kByteBlock);
    std::memcpy(digits + kByteBlock, &second, kByteBlock);
}

void WriteDigitsOfByte(unsigned char byte, char* digits) {
    constexpr char kDigits[] = "0123456789abcdef";
    digits[0] = kDigits[byte >> 4];
    digits[1] = kDigits[byte & 15];
}

}  // namespace

void WriteHexDigits(const void* bytes, std::size_t length, char* digits) {
    const unsigned char* const from = static_cast<const unsigned char*>(bytes);
    const std::size_t whole = length / kByteBlock * kByteBlock;
    for (std::size_t i = 0; i < whole; i += kByteBlock) WriteDigitsOfBlock(from + i, digits + 2 * i);
    for (std::size_t i = whole; i < length; ++i) WriteDigitsOfByte(from[i], digits + 2 * i);
}

}  // namespace ckscribe
