// Numeric text: the form in which byte values that are not text are written, two lowercase hexadecimal digits
// a byte, the high half first.

#pragma once

#include <cstdio>
#include <string_view>

// Writes `bytes` as numeric text, without the quotes around them.
inline void WriteNumericText(std::FILE* stream, std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        std::fputc(kDigits[value / 16], stream);
        std::fputc(kDigits[value % 16], stream);
    }
}
