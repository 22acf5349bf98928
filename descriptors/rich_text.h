// Rich text is the form of byte values that are mostly printable; it stands between double quotes. A byte
// from 0 to 31 becomes a backslash and one character of kRichTextEscapes. A backslash becomes two, a double
// quote becomes two, and every other byte stands as it is.
//
// The functions are pure: any thread may call them at any time.

#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

namespace ckscribe {

// The index of each escape character is the byte that it stands for. Only the first 32 are written; all 36
// are understood when they are read.
inline constexpr std::string_view kRichTextEscapes = "0123456789abcdefghijklmnopqrstuvwxyz";

// A byte below this value is a control byte.
inline constexpr unsigned char kFirstPrintableByte = 32;

constexpr bool IsControlByte(unsigned char byte) { return byte < kFirstPrintableByte; }

// A value with a byte above this one is not text.
inline constexpr unsigned char kLastPrintableByte = 126;

// Returns the character that follows the backslash of a control byte (0 to 31).
constexpr char RichTextEscape(unsigned char controlByte) { return kRichTextEscapes[controlByte]; }

// Returns the byte (0 to 35) that a character after a backslash stands for. The character is a digit or a
// letter, small or capital. Any other character, a second backslash included, gives nothing.
constexpr std::optional<char> ByteOfRichTextEscape(char escape) {
    const char small = escape >= 'A' && escape <= 'Z' ? static_cast<char>(escape - 'A' + 'a') : escape;
    const std::size_t index = kRichTextEscapes.find(small);
    if (index == std::string_view::npos) return std::nullopt;
    return static_cast<char>(index);
}

// Writes `bytes` as rich text, without the quotes around them. `put` takes one character after the other.
template <class Put>
void PutRichText(std::string_view bytes, const Put& put) {
    for (const char byte : bytes) {
        if (IsControlByte(static_cast<unsigned char>(byte))) {
            put('\\');
            put(RichTextEscape(static_cast<unsigned char>(byte)));
        } else {
            if (byte == '\\' || byte == '"') put(byte);
            put(byte);
        }
    }
}

inline void WriteRichText(std::FILE* stream, std::string_view bytes) {
    PutRichText(bytes, [stream](char character) { std::fputc(character, stream); });
}

// Takes one written byte off the front of `text`, which must not be empty, and returns the byte. Also takes
// off an escape that is unknown or cut off, and then returns nothing.
inline std::optional<char> TakeRichTextByte(std::string_view& text) {
    const auto takeCharacter = [&text] {
        const char character = text.front();
        text.remove_prefix(1);
        return character;
    };
    const char first = takeCharacter();
    if (first == '"' && text.starts_with('"')) return takeCharacter();
    if (first != '\\') return first;
    if (text.empty()) return std::nullopt;
    if (text.starts_with('\\')) return takeCharacter();
    return ByteOfRichTextEscape(takeCharacter());
}

}  // namespace ckscribe
