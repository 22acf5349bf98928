// Rich text: the form in which byte values that are mostly printable are written between double quotes.
// A byte from 0 to 31 becomes a backslash and one character of kRichTextEscapes, a backslash becomes two, a
// double quote becomes two; every other byte stands as it is.
//
// Pure functions: any thread may call them at any time.

#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

// The escape character of each byte is the one at its index. Only the first 32 are ever written; all 36 are
// understood when read.
inline constexpr std::string_view kRichTextEscapes = "0123456789abcdefghijklmnopqrstuvwxyz";

// A control byte is one below.
inline constexpr unsigned char kFirstPrintableByte = 32;

constexpr bool IsControlByte(unsigned char byte) { return byte < kFirstPrintableByte; }

// A value with a byte above is no text of any kind.
inline constexpr unsigned char kLastPrintableByte = 126;

// The character that follows the backslash of a control byte (0 to 31).
constexpr char RichTextEscape(unsigned char controlByte) { return kRichTextEscapes[controlByte]; }

// The byte (0 to 35) that a character after a backslash stands for: a digit or a letter, small or capital.
// Nothing for any other character, a second backslash included.
constexpr std::optional<char> ByteOfRichTextEscape(char escape) {
    const char small = escape >= 'A' && escape <= 'Z' ? static_cast<char>(escape - 'A' + 'a') : escape;
    const std::size_t index = kRichTextEscapes.find(small);
    if (index == std::string_view::npos) return std::nullopt;
    return static_cast<char>(index);
}

// Writes `bytes` as rich text, without the quotes around them: `put` takes one character after the other.
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

// Takes one byte, as it was written, off the front of `text`, which must not be empty, and returns it. An
// escape that is unknown or cut off is taken off, too, and gives nothing.
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
