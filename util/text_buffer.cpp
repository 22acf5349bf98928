#include "util/text_buffer.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kFirstCapacity = 1024;
constexpr std::size_t kLongestNumber = 24;  // 20 digits of 2^64, a sign, "0x"

// Writes the digits of a number in front of `end` and returns where they begin.
char* DigitsBefore(char* end, unsigned long value) {
    do {
        *--end = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    return end;
}

std::string_view Between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// The digit of a number below 16, by arithmetic alone: unlike a table look-up the compiler turns it into
// instructions on sixteen bytes at a time.
inline char HexDigit(unsigned char nibble) {
    return static_cast<char>(nibble + (nibble > 9 ? 'a' - 10 : '0'));
}

}  // namespace

TextBuffer::~TextBuffer() { std::free(text); }

TextBuffer::TextBuffer(TextBuffer&& other) noexcept
    : text(std::exchange(other.text, nullptr)),
      size(std::exchange(other.size, 0)),
      capacity(std::exchange(other.capacity, 0)) {}

TextBuffer& TextBuffer::operator=(TextBuffer&& other) noexcept {
    std::swap(text, other.text);
    std::swap(size, other.size);
    std::swap(capacity, other.capacity);
    return *this;
}

void TextBuffer::Grow(std::size_t more) {
    if (more > static_cast<std::size_t>(-1) / 4 - size) throw std::bad_alloc();
    std::size_t wanted = capacity == 0 ? kFirstCapacity : capacity;
    while (wanted < size + more) wanted *= 2;
    void* grown = std::realloc(text, wanted);
    if (grown == nullptr) throw std::bad_alloc();
    text = static_cast<char*>(grown);
    capacity = wanted;
}

void TextBuffer::Append(std::string_view more) {
    if (more.empty()) return;
    std::memcpy(Room(more.size()), more.data(), more.size());
    size += more.size();
}

void TextBuffer::AppendSpaces(std::size_t count) {
    if (count == 0) return;
    std::memset(Room(count), ' ', count);
    size += count;
}

void TextBuffer::AppendDecimal(unsigned long value) {
    char digits[kLongestNumber];
    char* const end = digits + sizeof digits;
    Append(Between(DigitsBefore(end, value), end));
}

void TextBuffer::AppendDecimal(long value) {
    if (value < 0) Append('-');
    const unsigned long magnitude = static_cast<unsigned long>(value);
    AppendDecimal(value < 0 ? 0 - magnitude : magnitude);
}

void TextBuffer::AppendPadded(int value, unsigned width) {
    char digits[kLongestNumber + 16];
    char* const end = digits + sizeof digits;
    const unsigned magnitude = static_cast<unsigned>(value);
    char* begin = DigitsBefore(end, value < 0 ? 0 - magnitude : magnitude);
    const char* const padded = end - width + (value < 0 ? 1 : 0);
    while (begin > padded) *--begin = '0';
    if (value < 0) *--begin = '-';
    Append(Between(begin, end));
}

void TextBuffer::AppendHex(unsigned long value) {
    char digits[kLongestNumber];
    char* const end = digits + sizeof digits;
    char* begin = end;
    do {
        *--begin = HexDigit(static_cast<unsigned char>(value % 16));
        value /= 16;
    } while (value != 0);
    *--begin = 'x';
    *--begin = '0';
    Append(Between(begin, end));
}

void TextBuffer::AppendHexBytes(const void* bytes, std::size_t length) {
    if (length > static_cast<std::size_t>(-1) / 8) throw std::bad_alloc();
    const unsigned char* const from = static_cast<const unsigned char*>(bytes);
    char* const to = Room(2 * length);
    for (std::size_t i = 0; i < length; ++i) {
        to[2 * i] = HexDigit(from[i] >> 4);
        to[2 * i + 1] = HexDigit(from[i] & 15);
    }
    size += 2 * length;
}
