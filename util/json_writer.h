// Writes JSON (RFC 8259) into a TextBuffer, on one line: no blank and no new line stands outside a string.
//
// The writer sets the commas. The caller ends every object and array that it begins, and writes a key before
// each value of an object. The writer's output is valid UTF-8 for all input bytes, and no byte can end a
// string early.
//
// Threads: one thread at a time uses an object. Every function may throw std::bad_alloc.
#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>

#include "util/text_buffer.h"

namespace ckscribe {

class JsonWriter {
public:
    // The caller owns `out`, which must outlive the writer. The caller may append to it between two values.
    explicit JsonWriter(TextBuffer& out) : out(out) {}
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void BeginObject() { Begin("{"); }
    // Begins an object with a first member. `key` and `constant` are as for Member().
    [[gnu::always_inline]] void BeginObject(std::string_view key, std::string_view constant) {
        Put(kBraceAndQuote, key, kBetweenStrings, constant, kQuote);
    }
    void EndObject() { End('}'); }
    void BeginArray() { Begin("["); }
    void EndArray() { End(']'); }

    // Writes a key. `key` is a constant of the program and holds nothing that JSON escapes. The function is
    // inline, so that a few instructions store a literal: a line has some twenty keys.
    [[gnu::always_inline]] void Key(std::string_view key) {
        Put(kQuote, key, kQuoteAndColon);
        needsComma = false;
    }
    // Writes a key and its value as Key() and Constant() do.
    [[gnu::always_inline]] void Member(std::string_view key, std::string_view constant) {
        Put(kQuote, key, kBetweenStrings, constant, kQuote);
    }

    // Writes a number up to 2^53, which every reader of JSON keeps exactly. Writes a greater one as a string
    // of its decimal digits.
    void Number(unsigned long number) {
        if (number >= 10) return LongNumber(number);
        const char digit = static_cast<char>('0' + number);  // most are handles, flags and results
        Put(std::string_view(&digit, 1));
    }
    void Boolean(bool value);
    // Writes a string that holds nothing that JSON escapes: a constant of the program, or digits.
    void Constant(std::string_view text) { Put(kQuote, text, kQuote); }
    // Writes a string. Escapes control characters, the separators of lines and paragraphs, and all characters
    // that JSON does not allow in a string. Bytes that are no UTF-8 become U+FFFD.
    void Text(std::string_view text);
    // Writes a string with two small hexadecimal digits for each byte.
    void Hex(const void* bytes, std::size_t length);
    // Writes values or members that are JSON already, with commas between them, from several parts of a text
    // that is not empty.
    void Written(std::same_as<std::string_view> auto... parts) { Put(parts...); }

    TextBuffer& Out() { return out; }

private:
    static constexpr std::string_view kQuote = "\"";
    static constexpr std::string_view kBraceAndQuote = "{\"";
    static constexpr std::string_view kBetweenStrings = "\":\"";
    static constexpr std::string_view kComma = ",";
    static constexpr std::string_view kQuoteAndColon = "\":";

    // Writes the parts of a value, with a comma in front where one is needed.
    [[gnu::always_inline]] void Put(std::same_as<std::string_view> auto... parts) {
        if (needsComma) {
            out.AppendParts(kComma, parts...);
        } else {
            out.AppendParts(parts...);
        }
        needsComma = true;
    }
    void Begin(std::string_view bracket) {
        Put(bracket);
        needsComma = false;
    }
    void End(char bracket) {
        out.Append(bracket);
        needsComma = true;
    }
    void Separate() {
        if (needsComma) out.Append(',');
        needsComma = true;
    }
    void LongNumber(unsigned long number);
    void Escape(unsigned char character);

    TextBuffer& out;
    bool needsComma = false;
};

// Returns whether a person can read the bytes: they are valid UTF-8 without control characters. Returns true
// if there are none.
bool IsReadableText(std::string_view bytes);

}  // namespace ckscribe
