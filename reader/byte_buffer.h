// A ByteBuffer holds bytes and uses its memory again and again. Space() leaves new bytes without a value. At
// least kPadding bytes behind the last one may always be read.
//
// One thread at a time may use a buffer.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace ckscribe {

class ByteBuffer {
public:
    static constexpr std::size_t kPadding = 64;

    std::size_t Size() const { return size; }
    const char* Data() const { return bytes.get(); }
    std::string_view View() const { return {bytes.get(), size}; }

    // Returns room for `count` bytes behind the last one. It is valid until the next change.
    char* Space(std::size_t count) {
        if (size + count > capacity) Reallocate(std::max(size + count, capacity + capacity / 2));
        return bytes.get() + size;
    }
    // Adds the first `count` bytes of that room to the buffer.
    void Grow(std::size_t count) { size += count; }
    void Shrink(std::size_t newSize) { size = newSize; }

    void Append(std::string_view more) {
        if (more.empty()) return;
        std::memcpy(Space(more.size()), more.data(), more.size());
        Grow(more.size());
    }
    void Assign(std::string_view other) {
        size = 0;
        Append(other);
    }
    void DropFront(std::size_t count) {
        if (count == 0) return;
        std::memmove(bytes.get(), bytes.get() + count, size - count);
        size -= count;
    }

private:
    void Reallocate(std::size_t newCapacity) {
        std::unique_ptr<char[]> grown(new char[newCapacity + kPadding]);
        if (size != 0) std::memcpy(grown.get(), bytes.get(), size);
        std::memset(grown.get() + newCapacity, 0, kPadding);
        bytes = std::move(grown);
        capacity = newCapacity;
    }

    std::unique_ptr<char[]> bytes{new char[kPadding]{}};
    std::size_t size = 0;
    std::size_t capacity = 0;
};

}  // namespace ckscribe
