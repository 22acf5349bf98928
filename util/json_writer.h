// Writes JSON (RFC 8259) into a TextBuffer, on one line: no blank and no new line stands outside a string.
//
// The writer sets the commas. Its caller sees to it that every object and array that begins also ends, and
// that each value in an object follows its key. Whatever bytes it is given, what it writes is valid UTF-8 and
// stays within its string.
//
// One thread at a time. Everything may throw std::bad_alloc.
#pragma once

#include <cstddef>
#include <string_view>

#include "util/text_buffer.h"

namespace ckscribe {

class JsonWriter {
public:
    // `out` stays the caller's, must outlive the writer, and may be added to directly between two values.
    explicit JsonWriter(TextBuffer& out) : out(out) {}
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }

    // `key` must hold nothing that JSON escapes: it is a constant of the program.
    void Key(std::string_view key);

    // A number up to 2^53, which every reader of JSON keeps exactly; above, a string of its decimal digits.
    void Number(unsigned long number);
    void Boolean(bool value);
    // A string that holds nothing that JSON escapes: a constant of the program, digits.
    void Constant(std::string_view text);
    // Characters that JSON does not allow in a string, and all control characters, are escaped. Bytes that
    // are no UTF-8 become U+FFFD.
    void Text(std::string_view text);
    // Two small hexadecimal digits for each byte.
    void Hex(const void* bytes, std::size_t length);
    // Values that are JSON already, with commas between them; nothing if `json` is empty.
    void Written(std::string_view json);

    TextBuffer& Out() { return out; }

private:
    void Begin(char bracket) {
        Separate();
        out.Append(bracket);
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
    void Escape(unsigned char character);

    TextBuffer& out;
    bool needsComma = false;
};

// Whether bytes are a text that a person can read: valid UTF-8 without control characters. True of no bytes.
bool IsReadableText(std::string_view bytes);

}  // namespace ckscribe
