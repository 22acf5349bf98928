#include "util/tolk_text.h"

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

bool IsSingleByte(char c) { return static_cast<signed char>(c) >= 0; }
bool IsWhite(char c) { return IsSingleByte(c) && (std::isspace(c) || std::iscntrl(c)); }
bool IsLetter(char c) { return IsSingleByte(c) && std::isalpha(c); }
bool IsDigit(char c) { return IsSingleByte(c) && std::isdigit(c); }
bool IsHexDigit(char c) { return IsSingleByte(c) && std::isxdigit(c); }

int Folded(char c) { return static_cast<signed char>(IsLetter(c) ? c | 0x20 : c); }
int Capital(char c) { return IsSingleByte(c) ? std::toupper(c) : c; }

unsigned char ByteOf(int high, int low) { return static_cast<unsigned char>(high << 4 | low); }

bool AreHexDigits(const char* s) {
    while (IsHexDigit(*s)) ++s;
    return *s == '\0';
}

bool DecimalValue(const char* digits, unsigned* value) {
    if (std::strlen(digits) > 10) return false;
    for (*value = 0; *digits != '\0'; ++digits) {
        const int digit = Tolk_atox(*digits);
        if (*value >= UINT_MAX / 10 && digit > 5) {
            std::puts("error");
            return false;
        }
        *value = *value * 10 + static_cast<unsigned>(digit);
    }
    return true;
}

bool HexadecimalValue(const char* digits, unsigned* value) {
    if (std::strlen(digits) > 8) return false;
    for (*value = 0; *digits != '\0'; ++digits)
        *value = *value * 16 + static_cast<unsigned>(Tolk_atox(*digits));
    return true;
}

// COMPAT: takes no more than eight binary digits, though the result has room for 32.
bool BinaryValue(const char* digits, unsigned* value) {
    if (std::strlen(digits) > 8) return false;
    for (*value = 0; *digits != '\0'; ++digits) {
        if (*digits != '0' && *digits != '1') return false;
        *value = *value * 2 + (*digits == '1');
    }
    return true;
}

bool DigitsValue(const char* digits, int radix, unsigned* value) {
    switch (radix) {
        case 2:
            return BinaryValue(digits, value);
        case 10:
            return DecimalValue(digits, value);
        case 16:
            return HexadecimalValue(digits, value);
        default:
            return false;
    }
}

}  // namespace

int Tolk_atox(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

int Tolk_isHexHeader(const char* s) {
    if (s[0] == 'x' || s[0] == 'X') return 1;
    return s[0] == '0' && (s[1] == 'x' || s[1] == 'X') ? 2 : 0;
}

unsigned long Tolk_strnlen(const char* s, unsigned long max) { return ::strnlen(s, max); }

void* Tolk_memdup(const void* p, int size) {
    void* copy = std::malloc(static_cast<size_t>(size));
    if (copy != nullptr && size != 0) std::memcpy(copy, p, static_cast<size_t>(size));
    return copy;
}

int Tolk_stricmp(const char* a, const char* b) {
    for (; *a != '\0' && *b != '\0'; ++a, ++b) {
        if (Folded(*a) != Folded(*b)) return Folded(*a) > Folded(*b) ? 1 : -1;
    }
    return (*a != '\0') - (*b != '\0');
}

int Tolk_strnicmp(const char* a, const char* b, int n) {
    if (n == 0) return 0;
    for (long pair = 1;; ++pair, ++a, ++b) {
        const int difference = Folded(*a) - Folded(*b);
        if (difference != 0 || *a == '\0' || pair == n) return difference;
    }
}

const char* Tolk_SkipWhiteSpaces(const char* s) {
    while (*s != '\0' && IsWhite(*s)) ++s;
    return s;
}

char* Tolk_SkipWhiteSpaces(char* s) {
    return const_cast<char*>(Tolk_SkipWhiteSpaces(static_cast<const char*>(s)));
}

void Tolk_RemoveTrailingWhitespaces(char* s) {
    for (size_t length = std::strlen(s); length > 0 && IsWhite(s[length - 1]); --length) s[length - 1] = '\0';
}

char* Tolk_TrimWhiteSpaces(char* s) {
    char* text = Tolk_SkipWhiteSpaces(s);
    Tolk_RemoveTrailingWhitespaces(text);
    return text;
}

int Tolk_IsIntegerString(const char* s, int hex) {
    if (*s == '-' || *s == '+') ++s;
    while (hex ? IsHexDigit(*s) : IsDigit(*s)) ++s;
    return *s == '\0';
}

int Tolk_atoi(const char* s, int radix, int* out) {
    // COMPAT: the radix serves as the flag, and hexadecimal digits are therefore admitted in every radix.
    if (!Tolk_IsIntegerString(s, radix)) return -1;
    const char sign = *s == '-' || *s == '+' ? *s++ : '\0';
    unsigned value = 0;
    if (!DigitsValue(s, radix, &value)) return -1;
    if (sign == '-') {
        if (value > 0x80000000U) return -1;
        value = 0U - value;
    } else if (sign == '+' && value > INT_MAX) {
        return -1;
    }
    *out = static_cast<int>(value);
    return 0;
}

int Tolk_AsciiHexToBin(const char* s, unsigned char* out, int hex, int* outLen) {
    if (s == nullptr || outLen == nullptr || !Tolk_IsIntegerString(s, hex)) return -1;
    const size_t length = std::strlen(s);
    *outLen = static_cast<int>((length + 1) / 2);
    if (out == nullptr) return 0;
    if (!AreHexDigits(s)) return -1;
    if (length % 2 != 0) {
        *out = ByteOf(*out & 0x0F, Tolk_atox(*s++));
        ++out;
    }
    for (; *s != '\0'; s += 2) *out++ = ByteOf(Tolk_atox(s[0]), Tolk_atox(s[1]));
    return 0;
}

int Tolk_AsciiHexToNewByteArray(const char* s, unsigned char** out, int* outLen) {
    const int sized = Tolk_AsciiHexToBin(s, nullptr, 1, outLen);
    if (sized != 0 || out == nullptr) return sized;
    // The block is cleared, because the first byte takes part in an odd conversion. It has one byte more, so
    // that the empty text gets a block, too.
    auto* bytes = static_cast<unsigned char*>(std::calloc(static_cast<size_t>(*outLen) + 1, 1));
    if (bytes == nullptr) return -1;
    if (Tolk_AsciiHexToBin(s, bytes, 1, outLen) != 0) {
        std::free(bytes);
        return -1;
    }
    *out = bytes;
    return 0;
}

unsigned long Tolk_AsciiToHex(const char* s, unsigned char* out, unsigned long max) {
    if (s == nullptr || out == nullptr) return 0;
    const size_t length = std::strlen(s);
    if (length % 2 != 0 || length / 2 > max) return 0;
    for (; *s != '\0'; s += 2) {
        const int high = Tolk_atox(s[0]);
        const int low = Tolk_atox(s[1]);
        if (high < 0 || low < 0) return 0;
        *out++ = ByteOf(high, low);
    }
    return length / 2;
}

const char* Tolk_ParseTagValuePair(const char* line, const char* tag) {
    line = Tolk_SkipWhiteSpaces(line);
    while (*tag != '\0' && *line != '\0' && Capital(*line) == Capital(*tag)) ++line, ++tag;
    if (*tag != '\0' || (*line != ' ' && *line != '=')) return nullptr;
    line = Tolk_SkipWhiteSpaces(line);
    return *line == '=' ? Tolk_SkipWhiteSpaces(line + 1) : nullptr;
}

char* Tolk_ParseTagValuePair(char* line, const char* tag) {
    return const_cast<char*>(Tolk_ParseTagValuePair(static_cast<const char*>(line), tag));
}

int Tolk_ParseTagValuePairAsBoolean(const char* line, const char* tag, unsigned char* out) {
    const char* value = Tolk_ParseTagValuePair(line, tag);
    if (value == nullptr) return -1;
    const bool isTrue = Tolk_stricmp(value, "1") == 0 || Tolk_stricmp(value, "true") == 0;
    const bool isFalse = Tolk_stricmp(value, "0") == 0 || Tolk_stricmp(value, "false") == 0;
    if (!isTrue && !isFalse) return -1;
    *out = isTrue;
    return 0;
}

int Tolk_ParseTagValuePairAsInteger(const char* line, const char* tag, int* out) {
    const char* value = Tolk_ParseTagValuePair(line, tag);
    return value == nullptr ? -1 : Tolk_atoi(value, 10, out);
}

char* Tolk_FormatAsBinary(const void* data, int bits, int group, char* out) {
    const auto* bytes = static_cast<const unsigned char*>(data);
    char* end = out;
    for (int bit = bits - 1; bit >= 0; --bit) {
        *end++ = (bytes[bit / 8] >> (bit % 8) & 1) != 0 ? '1' : '0';
        if (group != 0 && bit % group == 0) *end++ = ' ';
    }
    *end = '\0';
    return out;
}

void Tolk_PrintArrayToStream(const char* title, const unsigned char* data, int len, int perLine,
                             FILE* stream) {
    if (title != nullptr) {
        std::fprintf(stream, "%s (%d bytes @ %p):\n", title, len, static_cast<const void*>(data));
    }
    if (data == nullptr) return;
    for (int i = 0; i < len; ++i) {
        if (title != nullptr && i % perLine == 0) std::fprintf(stream, "\t%04x: ", static_cast<unsigned>(i));
        std::fprintf(stream, "%02x", data[i]);
        if (i % perLine == perLine - 1 || i == len - 1) std::fputc('\n', stream);
    }
}

void Tolk_PrintArray(const char* title, const unsigned char* data, int len, int perLine) {
    Tolk_PrintArrayToStream(title, data, len, perLine, stdout);
}

int Tolk_CopyArrayUInt32(const unsigned int* src, const unsigned int* count, unsigned long* dst,
                         unsigned long* dstCount) {
    if (*count > *dstCount) return -1;
    for (unsigned i = 0; i < *count; ++i) dst[i] = src[i];
    *dstCount = *count;
    return 0;
}
