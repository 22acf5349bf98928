// A CallMemory is the memory that a fuzzed call may point into: one page, with unmapped ones around it.
#pragma once

#include <p11-kit/pkcs11.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class CallMemory {
public:
    // The page has the same address in every process, so that an input may hold pointers to it.
    static constexpr CK_ULONG kPage = 0x12345000;
    static constexpr CK_ULONG kSize = 0x1000;
    static constexpr CK_ULONG kEnd = kPage + kSize;

    CallMemory();
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;

    // Fills the page with zeros, and its end with `bytes`. Takes at most a page of them.
    void Fill(const std::uint8_t* bytes, std::size_t size);

    // Sets the words that lie within the page, in their order. Ignores the others.
    void SetWords(const std::vector<std::pair<CK_ULONG, CK_ULONG>>& addressesAndWords);

    // Returns whether the process or a sanitizer may have mapped memory for itself at an address.
    static bool IsForeign(CK_ULONG address) { return address >= kLowestForeign && address < kEndOfForeign; }

    // Return how much can be read from an address on.
    std::size_t Readable(CK_ULONG address, CK_ULONG length) const;
    std::size_t ReadableCount(CK_ULONG address, CK_ULONG count, std::size_t elementSize) const;
    std::string Bytes(CK_ULONG address, CK_ULONG length) const;  // the readable ones
    std::string Text(CK_ULONG address) const;                    // up to a terminator
    template <class Object>
    bool Read(CK_ULONG address, Object& object) const {
        return ReadBytes(address, &object, sizeof object);
    }
    CK_ULONG Word(CK_ULONG address) const {  // 0 if there is none
        CK_ULONG word = 0;
        Read(address, word);
        return word;
    }

    std::string Contents() const { return Bytes(kPage, kSize); }

private:
    static constexpr CK_ULONG kLowestForeign = 0x7fff8000;
    static constexpr CK_ULONG kEndOfForeign = CK_ULONG{1} << 47;

    void RemoveForeignAddresses();
    bool ReadBytes(CK_ULONG address, void* object, std::size_t size) const;
};
