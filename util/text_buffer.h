// A growing text in memory, with the few conversions that log records need. They give what printf would give,
// at a small part of its cost: a logged call makes dozens of them.
//
// One thread at a time. Growing may throw std::bad_alloc; the text written so far is then still there.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace ckscribe {

class TextBuffer {
public:
    // What an object holds in itself: on the stack it takes no memory from elsewhere for most records, and no
    // other thread's processor has that memory in its cache.
    static constexpr std::size_t kFirstCapacity = 1024;

    TextBuffer() = default;
    ~TextBuffer();
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    void Append(char character) { *Room(1) = character, ++size; }
    // Inline, so that a literal is stored by an instruction or two.
    void Append(std::string_view more) {
        if (more.empty()) return;
        std::memcpy(Room(more.size()), more.data(), more.size());
        size += more.size();
    }
    void AppendSpaces(std::size_t count);

    void AppendDecimal(unsigned long value);                     // "%lu"
    void AppendDecimal(long value);                              // "%ld"
    void AppendPadded(int value, unsigned width);                // "%0<width>d", width 1 to 16
    void AppendHex(unsigned long value);                         // "0x%lx"
    void AppendHexBytes(const void* bytes, std::size_t length);  // "%02x" of each byte

    // The text so far, valid until the next call that changes it; it has no terminator.
    std::string_view Text() const { return {text, size}; }
    std::size_t Capacity() const { return capacity; }
    void Clear() { size = 0; }

private:
    // A place for at least `more` further characters. The caller writes there and adds what it wrote to
    // `size`.
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
