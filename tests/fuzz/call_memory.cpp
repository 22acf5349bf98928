#include "tests/fuzz/call_memory.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

char* Pointer(CK_ULONG address) { return reinterpret_cast<char*>(address); }

}  // namespace

CallMemory::CallMemory() {
    void* const around = Pointer(kPage - kSize);
    if (mmap(around, 3 * kSize, PROT_NONE, MAP_PRIVATE | MAP_ANON, -1, 0) != around) std::abort();
    if (mprotect(Pointer(kPage), kSize, PROT_READ | PROT_WRITE) != 0) std::abort();
}

void CallMemory::Fill(const std::uint8_t* bytes, std::size_t size) {
    const std::size_t taken = std::min(size, kSize);
    std::memset(Pointer(kPage), 0, kSize);
    if (taken != 0) std::memcpy(Pointer(kEnd - taken), bytes, taken);
    RemoveForeignAddresses();
}

void CallMemory::SetWords(const std::vector<std::pair<CK_ULONG, CK_ULONG>>& addressesAndWords) {
    for (const auto& [address, word] : addressesAndWords) {
        if (Readable(address, sizeof word) == sizeof word) std::memcpy(Pointer(address), &word, sizeof word);
    }
    RemoveForeignAddresses();
}

// The loop goes from front to back: a change does not touch a word that was looked at before.
void CallMemory::RemoveForeignAddresses() {
    constexpr char kHighestByteOfNoAddress = 0x40;
    for (CK_ULONG address = kPage; address + sizeof(CK_ULONG) <= kEnd; ++address) {
        if (IsForeign(Word(address))) *Pointer(address + sizeof(CK_ULONG) - 1) = kHighestByteOfNoAddress;
    }
}

std::size_t CallMemory::Readable(CK_ULONG address, CK_ULONG length) const {
    if (address < kPage || address >= kEnd) return 0;
    return std::min(length, kEnd - address);
}

std::size_t CallMemory::ReadableCount(CK_ULONG address, CK_ULONG count, std::size_t elementSize) const {
    return std::min(count, Readable(address, kSize) / elementSize);
}

std::string CallMemory::Bytes(CK_ULONG address, CK_ULONG length) const {
    const std::size_t readable = Readable(address, length);
    return readable == 0 ? "" : std::string(Pointer(address), readable);
}

std::string CallMemory::Text(CK_ULONG address) const {
    const std::string text = Bytes(address, kSize);
    return text.substr(0, text.find('\0'));
}

bool CallMemory::ReadBytes(CK_ULONG address, void* object, std::size_t size) const {
    if (Readable(address, size) != size) return false;
    std::memcpy(object, Pointer(address), size);
    return true;
}
