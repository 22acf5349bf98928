// TreeMemory holds the memory of descriptor trees. Each logged call builds two trees and soon forgets them.
// Their parts lie on the stack of the thread that builds them: stack memory costs almost nothing, and no
// other thread's processor has it in its cache.
#pragma once

#include <cstddef>

#include "host/record_lock.h"

namespace ckscribe {

// While an object of this class lives, trees take their memory from it as long as it has room, and from the
// heap afterwards. Objects may be nested. Make the object under the record lock, before the trees; they must
// not outlive it.
class TreeMemory {
public:
    static constexpr std::size_t kSize = 2048;

    TreeMemory() CKSCRIBE_NEEDS(theRecordLock) : outer(current) { current = this; }
    ~TreeMemory() { current = outer; }
    TreeMemory(const TreeMemory&) = delete;
    TreeMemory& operator=(const TreeMemory&) = delete;

    // Returns `size` bytes, aligned for any object. Throws std::bad_alloc.
    static void* Take(std::size_t size);

    // Gives back memory of that size. It must come from the innermost object or from the heap; null is
    // allowed. A debug build ends the process for any other memory. An object uses its room again only if the
    // piece that was taken last is given back first.
    static void GiveBack(void* memory, std::size_t size);

private:
    bool Holds(const std::byte* piece) const;
    bool IsHeldFurtherOut(const std::byte* piece) const;

    static TreeMemory* current;

    TreeMemory* const outer;
    std::size_t used = 0;
    alignas(std::max_align_t) std::byte block[kSize];
};

}  // namespace ckscribe
