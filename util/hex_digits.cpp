#include "util/hex_digits.h"

#include <cstring>

#include "util/byte_block.h"

namespace {

ByteBlock DigitsOf(ByteBlock nibbles) {
    const ByteBlock isLetter = reinterpret_cast<ByteBlock>(nibbles > 9);
    return nibbles + '0' + (isLetter & ('a' - '0' - 10));
}

void WriteDigitsOfBlock(const unsigned char* bytes, char* digits) {
    ByteBlock block;
    std::memcpy(&block, bytes, kByteBlock);
    const ByteBlock high = DigitsOf(block >> 4);
    const ByteBlock low = DigitsOf(block & 15);
    const ByteBlock first =
        __builtin_shufflevector(high, low, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    const ByteBlock second =
        __builtin_shufflevector(high, low, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
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
