// Writes JSON (RFC 8259) into a TextBuffer, on one line: no blank and no new line stands outside a string.
//
// The writer sets the commas. The caller ends every object and array that it begins, and writes a key before
// each value of an object. The writer's output is valid UTF-8 for all input bytes, and no byte can end a
// string early.
//
// Threads: one thread at a time uses an object. Every function may throw std::bad_alloc.
#pragma once

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

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }

    // `key` is a constant of the program and holds nothing that JSON escapes.
    void Key(std::string_view key);

    // Writes a number up to 2^53, which every reader of JSON keeps exactly. Writes a greater one as a string
    // of its decimal digits.
    void Number(unsigned long number);
    void Boolean(bool value);
    // Writes a string that holds nothing that JSON escapes: a constant of the program, or digits.
    void Constant(std::string_view text);
    // Writes a string. Escapes control characters and all characters that JSON does not allow in a string.
    // Bytes that are no UTF-8 become U+FFFD.
    void Text(std::string_view text);
    // Writes a string with two small hexadecimal digits for each byte.
    void Hex(const void* bytes, std::size_t length);
    // Writes values that are JSON already, with commas between them. Writes nothing if `json` is empty.
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

// True if a person can read the bytes: they are valid UTF-8 without control characters. True if there are
// none.
bool IsReadableText(std::string_view bytes);

}  // namespace ckscribe
