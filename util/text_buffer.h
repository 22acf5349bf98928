// Builds a growing text in memory, with the few conversions that log records need. Their results are those of
// printf. They cost a small part of printf, because a logged call makes dozens of them.
//
// Threads: one thread at a time uses an object. Growing may throw std::bad_alloc. The text so far is still
// there then.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace ckscribe {

class TextBuffer {
public:
    // An object holds this many bytes in itself. On the stack, most records then need no other memory, and no
    // other processor has these bytes in its cache.
    static constexpr std::size_t kFirstCapacity = 1024;

    TextBuffer() = default;
    ~TextBuffer();
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    void Append(char character) { *Room(1) = character, ++size; }
    // This function is inline, so that an instruction or two store a literal.
    void Append(std::string_view more) {
        if (more.empty()) return;
        std::memcpy(Room(more.size()), more.data(), more.size());
        size += more.size();
    }
    // Appends several parts and asks for room once. Literals are stored without a call.
    void AppendParts(const std::same_as<std::string_view> auto&... parts) {
        const std::size_t added = (... + parts.size());
        char* at = Room(added);
        ((at = std::copy(parts.begin(), parts.end(), at)), ...);
        size += added;
    }
    void AppendSpaces(std::size_t count);

    void AppendDecimal(unsigned long value);                     // "%lu"
    void AppendDecimal(long value);                              // "%ld"
    void AppendPadded(int value, unsigned width);                // "%0<width>d", width 1 to 16
    void AppendHex(unsigned long value);                         // "0x%lx"
    void AppendHexBytes(const void* bytes, std::size_t length);  // "%02x" of each byte

    // Returns the text so far, without a terminator. It is valid until the next call that changes it.
    std::string_view Text() const { return {text, size}; }
    std::size_t Capacity() const { return capacity; }
    void Clear() { size = 0; }

private:
    // Returns a place for at least `more` further characters. The caller writes there and adds the number of
    // written characters to `size`.
    char* Room(std::size_t more) {
        if (capacity - size < more) Grow(more);
        return text + size;
    }
    [[gnu::cold]] void Grow(std::size_t more);
    void SetEnd(const char* end) { size = static_cast<std::size_t>(end - text); }

    char* text = first;
    std::size_t size = 0;
    std::size_t capacity = kFirstCapacity;
    char first[kFirstCapacity];
};

}  // namespace ckscribe
