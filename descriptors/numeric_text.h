// Numeric text is the form of byte values that are not text: two lowercase hexadecimal digits a byte, the
// high half first.

#pragma once

#include <cstdio>
#include <string_view>

#include "util/hex_digits.h"

namespace ckscribe {

// Writes `bytes` as numeric text, without the quotes around them.
inline void WriteNumericText(std::FILE* stream, std::string_view bytes) {
    for (const char byte : bytes) {
        char digits[2];
        ckscribe::WriteHexDigits(&byte, 1, digits);
        std::fwrite(digits, 1, sizeof digits, stream);
    }
}

}  // namespace ckscribe
