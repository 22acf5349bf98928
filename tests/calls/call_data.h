// This file makes arguments for calls.
#pragma once

#include <gtest/gtest.h>
#include <p11-kit/pkcs11.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>
#include <vector>

// Returns the characters without a terminator, in memory of exactly that size.
inline std::vector<CK_BYTE> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

// Fills an output buffer and sets its length, as a target does.
inline void Put(const std::vector<CK_BYTE>& bytes, std::vector<CK_BYTE>& buffer, CK_ULONG& length) {
    std::copy(bytes.begin(), bytes.end(), buffer.begin());
    length = bytes.size();
}

// Fills a fixed field of the standard's structures with a text and blanks.
template <class Character, std::size_t size>
void PutPadded(Character (&field)[size], std::string_view text) {
    std::fill(std::begin(field), std::end(field), Character{' '});
    std::copy(text.begin(), text.end(), field);
}

// A MemoryAtFixedAddress lies at an address that the test knows. Arguments lie there if a record shows their
// address.
class MemoryAtFixedAddress {
public:
    MemoryAtFixedAddress() {
        void* const page = mmap(reinterpret_cast<void*>(kPage), kSize, PROT_READ | PROT_WRITE,
                                MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        EXPECT_EQ(reinterpret_cast<void*>(kPage), page);
    }
    ~MemoryAtFixedAddress() { munmap(reinterpret_cast<void*>(kPage), kSize); }
    MemoryAtFixedAddress(const MemoryAtFixedAddress&) = delete;
    MemoryAtFixedAddress& operator=(const MemoryAtFixedAddress&) = delete;

    // Returns an object whose bytes are zero, at an address from 0x12345000 to 0x12345fff.
    template <class Object>
    Object& At(std::uintptr_t address) {
        EXPECT_TRUE(address >= kPage && address + sizeof(Object) <= kPage + kSize);
        return *reinterpret_cast<Object*>(address);
    }

private:
    static constexpr std::uintptr_t kPage = 0x12345000;
    static constexpr std::size_t kSize = 0x1000;
};

// A MemoryBeforeAGap is readable memory that ends where unreadable memory begins.
class MemoryBeforeAGap {
public:
    MemoryBeforeAGap() {
        pages = static_cast<char*>(
            mmap(nullptr, 2 * kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        EXPECT_NE(MAP_FAILED, static_cast<void*>(pages));
        EXPECT_EQ(0, mprotect(pages + kSize, kSize, PROT_NONE));
    }
    ~MemoryBeforeAGap() { munmap(pages, 2 * kSize); }
    MemoryBeforeAGap(const MemoryBeforeAGap&) = delete;
    MemoryBeforeAGap& operator=(const MemoryBeforeAGap&) = delete;

    // Returns a copy of the elements at the very end of the readable memory.
    template <class Element>
    Element* Last(const std::vector<Element>& elements) {
        char* const place = pages + kSize - elements.size() * sizeof(Element);
        std::memcpy(place, elements.data(), elements.size() * sizeof(Element));
        return reinterpret_cast<Element*>(place);
    }

    void* Gap() { return pages + kSize; }

private:
    static constexpr std::size_t kSize = 0x1000;
    char* pages;
};
