#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

unsigned char ByteAt(std::string_view text, std::size_t at) { return static_cast<unsigned char>(text[at]); }

// Returns the size in bytes of the character at `at` if it stays unchanged, or 0 if its first byte is to be
// written as \xNN.
std::size_t LengthOfCharacter(std::string_view text, std::size_t at) {
    const unsigned first = ByteAt(text, at);
    if (first < 0x80) return first >= ' ' && first != 0x7f ? 1 : 0;
    const std::size_t length = first >= 0xc2 && first < 0xe0   ? 2
                               : first >= 0xe0 && first < 0xf0 ? 3
                               : first >= 0xf0 && first < 0xf5 ? 4
                                                               : 0;
    if (length == 0 || text.size() - at < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((ByteAt(text, at + i) & 0xc0) != 0x80) return 0;
    const unsigned second = ByteAt(text, at + 1);
    const bool isControl = first == 0xc2 && second < 0xa0;
    const bool isTooLong = (first == 0xe0 && second < 0xa0) || (first == 0xf0 && second < 0x90);
    const bool isNoCharacter = (first == 0xed && second >= 0xa0) || (first == 0xf4 && second >= 0x90);
    // These characters turn the direction in which a terminal shows text.
    const bool turns =
        first == 0xe2 && ((second == 0x80 && ByteAt(text, at + 2) >= 0xa8 && ByteAt(text, at + 2) <= 0xae) ||
                          (second == 0x81 && ByteAt(text, at + 2) >= 0xa6 && ByteAt(text, at + 2) <= 0xa9));
    return isControl || isTooLong || isNoCharacter || turns ? 0 : length;
}

void AddEscaped(std::string& text, unsigned char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += "\\x";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
}

}  // namespace

std::string Harmless(std::string_view text) {
    std::string harmless;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = LengthOfCharacter(text, at);
        if (length == 0)
            AddEscaped(harmless, ByteAt(text, at++));
        else
            harmless += text.substr(at, length), at += length;
    }
    return harmless;
}

std::string InQuotes(std::string_view text) {
    std::string quoted = "\"";
    std::size_t done = 0;
    for (std::size_t at; (at = text.find_first_of("\"\\", done)) != std::string_view::npos; done = at + 1) {
        quoted += Harmless(text.substr(done, at - done));
        quoted += '\\';
        quoted += text[at];
    }
    return quoted + Harmless(text.substr(done)) + '"';
}

}  // namespace ckscribe
