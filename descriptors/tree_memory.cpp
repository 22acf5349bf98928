#include "descriptors/tree_memory.h"

#include <functional>
#include <new>

#include "util/cache_line.h"

alignas(kCacheLine) TreeMemory* TreeMemory::current = nullptr;

namespace {

constexpr std::size_t Rounded(std::size_t size) {
    constexpr std::size_t kAlignment = alignof(std::max_align_t);
    return (size + kAlignment - 1) / kAlignment * kAlignment;
}

}  // namespace

void* TreeMemory::Take(std::size_t size) {
    TreeMemory* const own = current;
    if (own == nullptr || size > kSize || Rounded(size) > kSize - own->used) return ::operator new(size);
    void* const piece = own->block + own->used;
    own->used += Rounded(size);
    return piece;
}

void TreeMemory::GiveBack(void* memory, std::size_t size) {
    TreeMemory* const own = current;
    std::byte* const piece = static_cast<std::byte*>(memory);
    const std::less<> isBelow;
    if (own == nullptr || isBelow(piece, own->block) || !isBelow(piece, own->block + kSize))
        return ::operator delete(memory);
    if (piece + Rounded(size) == own->block + own->used) own->used -= Rounded(size);
}
