#include "util/hex_digits.h"

#include <cstring>

namespace {

// Sixteen bytes on which the compiler works at once; every x86-64 processor has registers for that.
constexpr std::size_t kBlock = 16;
using Block = unsigned char __attribute__((vector_size(kBlock)));

Block DigitsOf(Block nibbles) {
    const Block isLetter = reinterpret_cast<Block>(nibbles > 9);
    return nibbles + '0' + (isLetter & ('a' - '0' - 10));
}

void WriteDigitsOfBlock(const unsigned char* bytes, char* digits) {
    Block block;
    std::memcpy(&block, bytes, kBlock);
    const Block high = DigitsOf(block >> 4);
    const Block low = DigitsOf(block & 15);
    const Block first =
        __builtin_shufflevector(high, low, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    const Block second =
        __builtin_shufflevector(high, low, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
    std::memcpy(digits, &first, kBlock);
    std::memcpy(digits + kBlock, &second, kBlock);
}

void WriteDigitsOfByte(unsigned char byte, char* digits) {
    constexpr char kDigits[] = "0123456789abcdef";
    digits[0] = kDigits[byte >> 4];
    digits[1] = kDigits[byte & 15];
}

}  // namespace

void WriteHexDigits(const void* bytes, std::size_t length, char* digits) {
    const unsigned char* const from = static_cast<const unsigned char*>(bytes);
    const std::size_t whole = length / kBlock * kBlock;
    for (std::size_t i = 0; i < whole; i += kBlock) WriteDigitsOfBlock(from + i, digits + 2 * i);
    for (std::size_t i = whole; i < length; ++i) WriteDigitsOfByte(from[i], digits + 2 * i);
}
