#include "util/text_buffer.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <new>

#include "util/hex_digits.h"

namespace ckscribe {

namespace {

constexpr std::size_t kMostDecimalDigits = 20;  // 2^64 has as many
constexpr std::size_t kMostHexDigits = 16;

}  // namespace

TextBuffer::~TextBuffer() {
    if (text != first) std::free(text);
}

void TextBuffer::Grow(std::size_t more) {
    if (more > static_cast<std::size_t>(-1) / 4 - size) throw std::bad_alloc();
    std::size_t wanted = capacity;
    while (wanted < size + more) wanted *= 2;
    const bool isFirst = text == first;
    void* const grown = isFirst ? std::malloc(wanted) : std::realloc(text, wanted);
    if (grown == nullptr) throw std::bad_alloc();
    if (isFirst) std::memcpy(grown, first, size);
    text = static_cast<char*>(grown);
    capacity = wanted;
}

void TextBuffer::AppendSpaces(std::size_t count) {
    if (count == 0) return;
    std::memset(Room(count), ' ', count);
    size += count;
}

void TextBuffer::AppendDecimal(unsigned long value) {
    char* const digits = Room(kMostDecimalDigits);
    SetEnd(std::to_chars(digits, digits + kMostDecimalDigits, value).ptr);
}

void TextBuffer::AppendDecimal(long value) {
    char* const digits = Room(1 + kMostDecimalDigits);
    SetEnd(std::to_chars(digits, digits + 1 + kMostDecimalDigits, value).ptr);
}

void TextBuffer::AppendPadded(int value, unsigned width) {
    const bool isNegative = value < 0;
    char* digits = Room(width + 1 + kMostDecimalDigits);
    if (isNegative) *digits++ = '-';
    const unsigned magnitude = static_cast<unsigned>(value);
    char* end =
        std::to_chars(digits, digits + kMostDecimalDigits, isNegative ? 0 - magnitude : magnitude).ptr;
    char* const wanted = digits + width - (isNegative ? 1 : 0);
    if (end < wanted) {
        std::memmove(digits + (wanted - end), digits, static_cast<std::size_t>(end - digits));
        std::memset(digits, '0', static_cast<std::size_t>(wanted - end));
        end = wanted;
    }
    SetEnd(end);
}

void TextBuffer::AppendHex(unsigned long value) {
    Append("0x");
    char* const digits = Room(kMostHexDigits);
    SetEnd(std::to_chars(digits, digits + kMostHexDigits, value, 16).ptr);
}

void TextBuffer::AppendHexBytes(const void* bytes, std::size_t length) {
    if (length > static_cast<std::size_t>(-1) / 8) throw std::bad_alloc();
    WriteHexDigits(bytes, length, Room(2 * length));
    size += 2 * length;
}

}  // namespace ckscribe
