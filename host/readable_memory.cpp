#include "host/readable_memory.h"

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "host/lasting_memory.h"
#include "util/cache_line.h"

namespace ckscribe {

// Both kernels copy a new signal mask in before they look at the operation. If they are asked for an
// operation that does not exist, they change nothing. They answer EFAULT if the address cannot be read, and
// EINVAL if it can. The system call is direct, because the C library may look at its arguments first.
bool KernelCanRead(std::uintptr_t address) {
    constexpr long kNoSuchOperation = -1;
    constexpr std::size_t kLargestMask = 16;
    const std::uintptr_t inside = address & ~(kLargestMask - 1);
#if defined(__linux__)
    const long result = syscall(SYS_rt_sigprocmask, kNoSuchOperation, inside, nullptr, std::size_t{8});
#elif defined(__FreeBSD__)
    const long result = syscall(SYS_sigprocmask, kNoSuchOperation, inside, nullptr);
#else
#error "readable memory: no way known to ask this system's kernel"
#endif
    return result == 0 || errno != EFAULT;
}

namespace {

// Remembers pages that can be read. Asking the kernel for every argument of every record would cost as much
// as writing the record. But an application may unmap a page and still name it in a later call.
struct KnownPage {
    std::uintptr_t page = 0;
    unsigned long epoch = 0;
};
constexpr std::size_t kKnownPages = 64;
KnownPage knownPages[kKnownPages];
alignas(ckscribe::kCacheLine) unsigned long epoch = 1;

KnownPage& PlaceOf(std::uintptr_t page) { return knownPages[page / kPageSize % kKnownPages]; }

bool CanBeRead(std::uintptr_t address) {
    if (!KernelCanRead(address)) return false;
    const std::uintptr_t page = address & ~(kPageSize - 1);
    PlaceOf(page) = {page, epoch};
    return true;
}

bool FirstPageCanBeRead(std::uintptr_t address) {
    const std::uintptr_t page = address & ~(kPageSize - 1);
    if (page == 0) return false;
    KnownPage& known = PlaceOf(page);
    if (known.page != page) return CanBeRead(address);
    if (known.epoch != epoch && !IsLastingPage(page)) return CanBeRead(address);
    known.epoch = epoch;
    return true;
}

// A wrong length may go beyond the application's memory. Therefore the kernel is asked about further pages
// more often.
bool FurtherPageCanBeRead(std::uintptr_t page) {
    return (PlaceOf(page).page == page && IsLastingPage(page)) || CanBeRead(page);
}

}  // namespace

std::size_t ReadableLength(const void* address, std::size_t length) {
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(address);
    if (length == 0 || !FirstPageCanBeRead(begin)) return 0;
    const std::uintptr_t last = begin + std::min<std::uintptr_t>(length - 1, UINTPTR_MAX - begin);
    for (std::uintptr_t page = (begin & ~(kPageSize - 1)) + kPageSize; page != 0 && page <= last;
         page += kPageSize) {
        if (!FurtherPageCanBeRead(page)) return page - begin;
    }
    return last - begin + 1;
}

bool CopyReadable(const void* address, void* object, std::size_t size) {
    if (ReadableLength(address, size) != size) return false;
    std::memcpy(object, address, size);
    return true;
}

std::size_t ReadableTextLength(const void* address) {
    const char* const text = static_cast<const char*>(address);
    std::size_t length = 0;
    for (;;) {
        const std::uintptr_t place = reinterpret_cast<std::uintptr_t>(text) + length;
        const std::size_t restOfPage = kPageSize - place % kPageSize;
        if (ReadableLength(text + length, restOfPage) == 0) return length;
        const std::size_t found = strnlen(text + length, restOfPage);
        length += found;
        if (found < restOfPage) return length;
    }
}

void ForgetReadablePages() { ++epoch; }

}  // namespace ckscribe
