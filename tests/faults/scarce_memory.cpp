#include "tests/faults/scarce_memory.h"

#include <dlfcn.h>

#if __has_include(<malloc_np.h>)
#include <malloc_np.h>  // FreeBSD's
#else
#include <malloc.h>
#endif

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <new>

#include "tests/noexcept_of_system.h"

#define REPLACEMENT __attribute__((visibility("default")))

// A sanitizer that is linked into this program has these names for its own functions. Without one they are
// null.
#define SANITIZERS __attribute__((weak))
extern "C" {
SANITIZERS void* __interceptor_malloc(std::size_t size);
SANITIZERS void* __interceptor_calloc(std::size_t count, std::size_t size);
SANITIZERS void* __interceptor_realloc(void* block, std::size_t size);
SANITIZERS void* __interceptor_aligned_alloc(std::size_t alignment, std::size_t size);
SANITIZERS void* __interceptor_memalign(std::size_t alignment, std::size_t size);
SANITIZERS int __interceptor_posix_memalign(void** block, std::size_t alignment, std::size_t size);
SANITIZERS void __interceptor_free(void* block);
}

namespace {

std::atomic<long> blocks{0};
std::atomic<long> bytes{0};

thread_local bool isRefusing = false;
thread_local bool wasRefused = false;
thread_local unsigned long allocationsBefore = 0;
thread_local Refused refused = Refused::kOne;

bool IsRefused() {
    if (!isRefusing) return false;
    if (allocationsBefore > 0) {
        --allocationsBefore;
        return false;
    }
    if (wasRefused && refused == Refused::kOne) return false;
    wasRefused = true;
    errno = ENOMEM;
    return true;
}

void FindOriginals();

// An Original is the function behind one of the replacements below: the sanitizer's, or that of the next
// library. It needs no construction at run time.
template <class Function>
class Original {
public:
    constexpr Original(const char* name, Function* sanitizers) : name(name), sanitizers(sanitizers) {}

    template <class... Arguments>
    auto operator()(Arguments... arguments) {
        if (function.load(std::memory_order_relaxed) == nullptr) FindOriginals();
        return function.load(std::memory_order_relaxed)(arguments...);
    }

    void Find() {
        Function* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
        function.store(sanitizers != nullptr ? sanitizers : next, std::memory_order_relaxed);
    }

private:
    const char* name;
    Function* sanitizers;
    std::atomic<Function*> function{nullptr};
};

constinit Original<void*(std::size_t)> originalMalloc("malloc", __interceptor_malloc);
constinit Original<void*(std::size_t, std::size_t)> originalCalloc("calloc", __interceptor_calloc);
constinit Original<void*(void*, std::size_t)> originalRealloc("realloc", __interceptor_realloc);
constinit Original<void*(std::size_t, std::size_t)> originalAlignedAlloc("aligned_alloc",
                                                                         __interceptor_aligned_alloc);
constinit Original<void*(std::size_t, std::size_t)> originalMemalign("memalign", __interceptor_memalign);
constinit Original<int(void**, std::size_t, std::size_t)> originalPosixMemalign("posix_memalign",
                                                                                __interceptor_posix_memalign);
constinit Original<void(void*)> originalFree("free", __interceptor_free);

// Finds all originals at once: a later look-up may itself free what an earlier one left.
void FindOriginals() {
    originalMalloc.Find();
    originalCalloc.Find();
    originalRealloc.Find();
    originalAlignedAlloc.Find();
    originalMemalign.Find();
    originalPosixMemalign.Find();
    originalFree.Find();
}

// Before this program's own code runs, the sanitizers cannot say how large a block is.
bool isCounting = false;
__attribute__((constructor)) void BeginToCount() { isCounting = true; }

long SizeOf(void* block) {
    return isCounting && block != nullptr ? static_cast<long>(malloc_usable_size(block)) : 0;
}

void Count(void* block, long sign) {
    if (!isCounting || block == nullptr) return;
    blocks += sign;
    bytes += sign * SizeOf(block);
}

void* Counted(void* block) {
    Count(block, 1);
    return block;
}

void* New(std::size_t size) {
    void* const block = malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

}  // namespace

extern "C" {

REPLACEMENT void* malloc(std::size_t size) NOEXCEPT_OF_SYSTEM {
    return IsRefused() ? nullptr : Counted(originalMalloc(size));
}

REPLACEMENT void* calloc(std::size_t count, std::size_t size) NOEXCEPT_OF_SYSTEM {
    return IsRefused() ? nullptr : Counted(originalCalloc(count, size));
}

REPLACEMENT void* realloc(void* block, std::size_t size) NOEXCEPT_OF_SYSTEM {
    if (IsRefused()) return nullptr;
    const long sizeBefore = SizeOf(block);
    void* const changed = originalRealloc(block, size);
    if (changed == nullptr && size != 0) return nullptr;
    if (isCounting && block != nullptr) {
        --blocks;
        bytes -= sizeBefore;
    }
    return Counted(changed);
}

REPLACEMENT void* aligned_alloc(std::size_t alignment, std::size_t size) NOEXCEPT_OF_SYSTEM {
    return IsRefused() ? nullptr : Counted(originalAlignedAlloc(alignment, size));
}

REPLACEMENT void* memalign(std::size_t alignment, std::size_t size) NOEXCEPT_OF_SYSTEM {
    return IsRefused() ? nullptr : Counted(originalMemalign(alignment, size));
}

REPLACEMENT int posix_memalign(void** block, std::size_t alignment, std::size_t size) NOEXCEPT_OF_SYSTEM {
    if (IsRefused()) return ENOMEM;
    const int result = originalPosixMemalign(block, alignment, size);
    if (result == 0) Count(*block, 1);
    return result;
}

REPLACEMENT void free(void* block) NOEXCEPT_OF_SYSTEM {
    Count(block, -1);
    originalFree(block);
}
}

REPLACEMENT void* operator new(std::size_t size) { return New(size); }
REPLACEMENT void* operator new[](std::size_t size) { return New(size); }
REPLACEMENT void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return malloc(size); }
REPLACEMENT void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return malloc(size); }
REPLACEMENT void operator delete(void* block) noexcept { free(block); }
REPLACEMENT void operator delete[](void* block) noexcept { free(block); }
REPLACEMENT void operator delete(void* block, std::size_t) noexcept { free(block); }
REPLACEMENT void operator delete[](void* block, std::size_t) noexcept { free(block); }
REPLACEMENT void operator delete(void* block, const std::nothrow_t&) noexcept { free(block); }
REPLACEMENT void operator delete[](void* block, const std::nothrow_t&) noexcept { free(block); }

void RefuseAllocation(unsigned long number, Refused which) {
    allocationsBefore = number;
    refused = which;
    wasRefused = false;
    isRefusing = true;
}

bool StopRefusing() {
    isRefusing = false;
    return wasRefused;
}

long AllocatedBlocks() { return blocks; }
long AllocatedBytes() { return bytes; }
