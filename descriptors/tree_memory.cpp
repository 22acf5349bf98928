#include "descriptors/tree_memory.h"

#include <cassert>
#include <functional>
#include <new>

#include "util/cache_line.h"

namespace ckscribe {

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
    if (own == nullptr || !own->Holds(piece)) {
        assert(own == nullptr || !own->IsHeldFurtherOut(piece));
        return ::operator delete(memory);
    }
    assert(piece + Rounded(size) <= own->block + own->used);
    if (piece + Rounded(size) == own->block + own->used) own->used -= Rounded(size);
}

bool TreeMemory::Holds(const std::byte* piece) const {
    const std::less<> isBelow;
    return !isBelow(piece, block) && isBelow(piece, block + kSize);
}

bool TreeMemory::IsHeldFurtherOut(const std::byte* piece) const {
    for (const TreeMemory* each = outer; each != nullptr; each = each->outer) {
        if (each->Holds(piece)) return true;
    }
    return false;
}

}  // namespace ckscribe
