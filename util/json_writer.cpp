#include "util/json_writer.h"

#include <algorithm>

namespace ckscribe {

namespace {

constexpr unsigned long kLargestExactNumber = 1UL << 53;
constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

constexpr bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Returns whether the second byte of a character may follow the first. UTF-8 has one form for each character,
// and none for surrogates or for numbers above U+10FFFF.
constexpr bool MayFollow(unsigned char first, unsigned char second) {
    switch (first) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second <= 0x9F;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second <= 0x8F;
        default:
            return true;
    }
}

constexpr std::size_t LengthByFirstByte(unsigned char first) {
    if (first < 0x80) return 1;
    if (first < 0xC2) return 0;
    if (first < 0xE0) return 2;
    if (first < 0xF0) return 3;
    return first < 0xF5 ? 4 : 0;
}

// Returns the number of bytes of the first character in `text`, and 0 if `text` begins with no character.
// `text` is not empty.
std::size_t CharacterLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = LengthByFirstByte(byte(0));
    if (length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(byte(i))) return 0;
    }
    return length < 2 || MayFollow(byte(0), byte(1)) ? length : 0;
}

// Returns true for U+0000 to U+001F, U+007F, and U+0080 to U+009F.
bool IsControl(std::string_view character) {
    const unsigned char first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1) return first < 0x20 || first == 0x7F;
    return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

// Returns true for U+2028 and U+2029. JSON allows them in a string, but some readers of lines end a line
// there.
bool SeparatesLines(std::string_view character) {
    return character == "\xE2\x80\xA8" || character == "\xE2\x80\xA9";
}

constexpr bool StandsForItself(char character) {
    return character >= 0x20 && character < 0x7F && character != '"' && character != '\\';
}

}  // namespace

void JsonWriter::LongNumber(unsigned long number) {
    Separate();
    const bool isExact = number <= kLargestExactNumber;
    if (!isExact) out.Append('"');
    out.AppendDecimal(number);
    if (!isExact) out.Append('"');
}

void JsonWriter::Boolean(bool value) {
    Separate();
    out.Append(value ? std::string_view("true") : std::string_view("false"));
}

void JsonWriter::Text(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), StandsForItself)) return Constant(text);
    Separate();
    out.Append('"');
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && StandsForItself(text[plain])) ++plain;
        out.Append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        const std::size_t length = CharacterLength(text);
        if (length == 0) {
            out.Append(kReplacementCharacter);
            text.remove_prefix(1);
            continue;
        }
        if (length == 1) {
            Escape(static_cast<unsigned char>(text[0]));
        } else if (IsControl(text.substr(0, length))) {
            Escape(static_cast<unsigned char>(text[1]));
        } else if (SeparatesLines(text.substr(0, length))) {
            out.Append(text[2] == '\xA8' ? std::string_view("\\u2028") : std::string_view("\\u2029"));
        } else {
            out.Append(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
    out.Append('"');
}

// Takes characters from U+0000 to U+009F: their last byte in UTF-8 is their number.
void JsonWriter::Escape(unsigned char character) {
    if (character == '"' || character == '\\') {
        out.Append('\\');
        out.Append(static_cast<char>(character));
        return;
    }
    out.Append("\\u00");
    out.AppendHexBytes(&character, 1);
}

void JsonWriter::Hex(const void* bytes, std::size_t length) {
    Separate();
    out.Append('"');
    out.AppendHexBytes(bytes, length);
    out.Append('"');
}

bool IsReadableText(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = CharacterLength(bytes);
        if (length == 0 || IsControl(bytes.substr(0, length))) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

}  // namespace ckscribe
